// Bundle folders: finding them by identifier, their resources and their
// localised string tables.
#include "core/bundle.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <mutex>

#include "core/file_io.h"
#include "core/plist_io.h"

#ifndef ZORVA_BUILD_BUNDLES
#define ZORVA_BUILD_BUNDLES ""
#endif
#ifndef ZORVA_INSTALL_BUNDLES
#define ZORVA_INSTALL_BUNDLES ""
#endif

namespace zorva {

namespace fs = std::filesystem;

struct Bundle::Tables {
  std::mutex mutex;
  std::vector<std::string> languages;
  // Per table name, one string table per language (empty when absent).
  std::map<std::string, std::vector<StringTable>, std::less<>> byTable;
};

namespace {

const char* Env(const char* name) {
  const char* v = std::getenv(name);
  return (v && *v) ? v : nullptr;
}

void AddLanguage(std::vector<std::string>& out, std::string_view locale) {
  locale = locale.substr(0, locale.find_first_of(".@"));
  if (locale.empty() || locale == "C" || locale == "POSIX") return;
  auto add = [&out](std::string_view l) {
    for (const auto& have : out) {
      if (have == l) return;
    }
    out.emplace_back(l);
  };
  add(locale);
  std::size_t sep = locale.find('_');
  if (sep != std::string_view::npos) add(locale.substr(0, sep));
}

std::vector<StringTable> LoadTable(const fs::path& root, std::string_view table,
                                   const std::vector<std::string>& languages) {
  std::vector<StringTable> tables;
  for (const auto& lang : languages) {
    fs::path file = root / "strings" / lang / (std::string(table) + ".po");
    StringTable parsed;
    if (auto bytes = ReadWholeFile(file)) {
      std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
      if (auto t = ParsePoStrings(text)) parsed = std::move(*t);
    }
    tables.push_back(std::move(parsed));
  }
  return tables;
}

}  // namespace

Bundle::~Bundle() = default;

std::vector<std::string> Bundle::PreferredLanguages() {
  std::vector<std::string> out;
  if (const char* list = Env("LANGUAGE")) {
    std::string_view rest(list);
    while (!rest.empty()) {
      std::size_t colon = rest.find(':');
      AddLanguage(out, rest.substr(0, colon));
      rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
  }
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (const char* v = Env(name)) {
      AddLanguage(out, v);
      break;
    }
  }
  AddLanguage(out, "en");
  return out;
}

std::unique_ptr<Bundle> Bundle::Open(const fs::path& path) {
  auto info = ReadPropertyListFile(path / "Info.plist");
  if (!info || !info->dictionary()) return nullptr;
  const std::string* id = info->dictionary()->getString("CFBundleIdentifier");
  if (!id || id->empty()) return nullptr;
  std::unique_ptr<Bundle> b(new Bundle());
  b->path_ = path;
  b->identifier_ = *id;
  b->tables_ = std::make_unique<Tables>();
  b->tables_->languages = PreferredLanguages();
  return b;
}

namespace {

// The file this code was loaded from: the shared library, or the program
// itself when the library is linked in (read from /proc, since the loader
// may have been given a relative path).
fs::path LoadedFrom() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&LoadedFrom), &info) != 0 && info.dli_fname &&
      fs::path(info.dli_fname).is_absolute()) {
    return info.dli_fname;
  }
  std::error_code ec;
  return fs::read_symlink("/proc/self/exe", ec);
}

// The build tree's bundles serve the programs and libraries of that build
// tree only: an installed copy of the same build finds its installed bundle,
// even on the machine where the build tree still exists.
bool RunsFromBuildTree() {
  const fs::path bundles = ZORVA_BUILD_BUNDLES;
  if (bundles.empty()) return false;
  std::error_code ec;
  const fs::path self = fs::weakly_canonical(LoadedFrom(), ec);
  const fs::path tree = fs::weakly_canonical(bundles.parent_path(), ec);
  if (self.empty() || tree.empty()) return false;
  // Inside when every component of the tree's path starts the file's path.
  return std::mismatch(tree.begin(), tree.end(), self.begin(), self.end()).first == tree.end();
}

}  // namespace

std::vector<fs::path> Bundle::SearchPath() {
  std::vector<fs::path> dirs;
  if (const char* list = Env("ZORVA_BUNDLE_PATH")) {
    std::string_view rest(list);
    while (!rest.empty()) {
      std::size_t colon = rest.find(':');
      if (colon != 0) dirs.emplace_back(rest.substr(0, colon));
      rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
  }
  static const bool fromBuildTree = RunsFromBuildTree();
  if (fromBuildTree) dirs.emplace_back(ZORVA_BUILD_BUNDLES);
  if (*ZORVA_INSTALL_BUNDLES) dirs.emplace_back(ZORVA_INSTALL_BUNDLES);
  return dirs;
}

namespace {

// The bundle with that identifier in dir: dir itself, or a folder inside it.
std::unique_ptr<Bundle> FindIn(const fs::path& dir, std::string_view identifier) {
  if (auto b = Bundle::Open(dir); b && b->identifier() == identifier) return b;
  std::error_code ec;
  std::vector<fs::path> children;
  for (const auto& e : fs::directory_iterator(dir, ec)) {
    if (e.is_directory(ec)) children.push_back(e.path());
  }
  std::sort(children.begin(), children.end());
  for (const auto& child : children) {
    if (auto b = Bundle::Open(child); b && b->identifier() == identifier) return b;
  }
  return nullptr;
}

}  // namespace

const Bundle* Bundle::FindByIdentifier(std::string_view identifier) {
  static std::mutex mutex;
  static std::map<std::string, std::unique_ptr<Bundle>, std::less<>> found;
  std::lock_guard lock(mutex);
  if (auto it = found.find(identifier); it != found.end()) return it->second.get();
  for (const auto& dir : SearchPath()) {
    if (auto b = FindIn(dir, identifier)) {
      return found.emplace(std::string(identifier), std::move(b)).first->second.get();
    }
  }
  return nullptr;  // not cached: a later call may find it once installed
}

std::optional<fs::path> Bundle::resourcePath(std::string_view name, std::string_view type) const {
  if (name.empty() || name.find("..") != std::string_view::npos) return std::nullopt;
  std::string file(name);
  if (!type.empty()) {
    file += '.';
    file += type;
  }
  fs::path p = path_ / file;
  std::error_code ec;
  if (!fs::is_regular_file(p, ec)) return std::nullopt;
  return p;
}

std::string_view Bundle::localizedString(std::string_view key, std::string_view fallback,
                                         std::string_view table) const {
  std::lock_guard lock(tables_->mutex);
  auto it = tables_->byTable.find(table);
  if (it == tables_->byTable.end()) {
    it = tables_->byTable.emplace(std::string(table), LoadTable(path_, table, tables_->languages))
             .first;
  }
  for (const StringTable& t : it->second) {
    if (auto hit = t.find(key); hit != t.end()) return hit->second;
  }
  return fallback;
}

const Bundle* GetPDEBundle() {
  return Bundle::FindByIdentifier(kBundleIdentifier);
}

std::string_view LocalizedString(std::string_view key) {
  const Bundle* b = GetPDEBundle();
  return b ? b->localizedString(key) : kStringNotFound;
}

std::optional<Value> ReadFeaturesResource() {
  const Bundle* bundle = GetPDEBundle();
  if (!bundle) return std::nullopt;
  auto path = bundle->resourcePath(kFeaturesResource, "");
  if (!path) return std::nullopt;
  return ReadPropertyListFile(*path);
}

}  // namespace zorva
