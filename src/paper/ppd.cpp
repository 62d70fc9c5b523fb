// Every libcups PPD call of the product. libcups 2 marks its PPD API
// deprecated; it is still the only reader of PPD files there is, so the
// warning is silenced here, in this one file, and nowhere else.
#include "paper/ppd.h"

#include <cups/cups.h>
#include <cups/ppd.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <utility>

#include "core/print_session.h"
#include "host/keyword_tables.h"
#include "host/setting_map.h"
#include "paper/ppd_text.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace zorva {

class PPD {
 public:
  explicit PPD(ppd_file_t* file) : file_(file) {
    if (ppd_attr_t* attr = ppdFindAttr(file_, "LanguageEncoding", nullptr); attr && attr->value) {
      languageEncoding_ = attr->value;
    }
  }
  ~PPD() { ppdClose(file_); }
  PPD(const PPD&) = delete;
  PPD& operator=(const PPD&) = delete;

  ppd_file_t* file() const { return file_; }
  std::optional<std::string_view> languageEncoding() const {
    return languageEncoding_ ? std::optional<std::string_view>(*languageEncoding_) : std::nullopt;
  }
  TextEncoding encoding() const { return EncodingForLanguageEncoding(languageEncoding()); }
  // An option or choice text libcups converted, in UTF-8 by our table.
  std::string text(const char* cupsText) const {
    return PPDTextToUtf8(cupsText, languageEncoding());
  }
  // A keyword exactly as the file has it, in UTF-8 by our table.
  std::string keyword(const char* bytes) const { return DecodeText(bytes, encoding()); }

 private:
  ppd_file_t* file_;
  std::optional<std::string> languageEncoding_;
};

void PPDCloser::operator()(PPD* ppd) const {
  delete ppd;
}

namespace {

PPDPtr Adopt(ppd_file_t* file) {
  if (file == nullptr) return nullptr;
  ppdLocalize(file);  // the user's language, when the PPD carries it
  return PPDPtr(new PPD(file));
}

ppd_option_t* FindOption(const PPD* ppd, std::string_view keyword) {
  if (ppd == nullptr || keyword.empty()) return nullptr;
  return ppdFindOption(ppd->file(), std::string(keyword).c_str());
}

PPDOptionInfo Describe(const PPD& ppd, const ppd_option_t& option) {
  PPDOptionInfo info;
  info.keyword = ppd.keyword(option.keyword);
  info.text = ppd.text(option.text);
  if (option.defchoice[0] != '\0') info.defaultChoice = ppd.keyword(option.defchoice);
  for (int i = 0; i < option.num_choices; ++i) {
    const ppd_choice_t& c = option.choices[i];
    info.choices.push_back({ppd.keyword(c.choice), ppd.text(c.text),
                            PPDTicketValueForChoice(option.keyword, c.choice)});
  }
  return info;
}

const ppd_group_t* InstallableOptionsGroup(const PPD* ppd) {
  if (ppd == nullptr) return nullptr;
  const ppd_file_t* file = ppd->file();
  for (int i = 0; i < file->num_groups; ++i) {
    if (std::strcmp(file->groups[i].name, "InstallableOptions") == 0) return &file->groups[i];
  }
  return nullptr;
}

const ppd_choice_t* FirstMarkedChoice(const ppd_option_t& option) {
  for (int i = 0; i < option.num_choices; ++i) {
    if (option.choices[i].marked) return &option.choices[i];
  }
  return nullptr;
}

struct CurrentPPD {
  PPDPtr ppd;
};

CurrentPPD& Current() {
  static CurrentPPD current;
  return current;
}

}  // namespace

// ---- Opening ------------------------------------------------------------------------

PPDPtr PPDOpenFile(const std::filesystem::path& path) {
  return Adopt(ppdOpenFile(path.c_str()));
}

PPDPtr PPDOpenData(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return nullptr;
  // libcups reads PPDs from file descriptors only, so the text goes into an
  // anonymous in-memory file first.
  const int fd = memfd_create("zorva-ppd", MFD_CLOEXEC);
  if (fd < 0) return nullptr;
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t n = ::write(fd, bytes.data() + written, bytes.size() - written);
    if (n <= 0) break;
    written += static_cast<std::size_t>(n);
  }
  PPDPtr ppd;
  if (written == bytes.size() && lseek(fd, 0, SEEK_SET) == 0) ppd = Adopt(ppdOpenFd(fd));
  close(fd);
  return ppd;
}

PPDPtr PPDOpenQueue(const std::string& queueName) {
  if (queueName.empty()) return nullptr;
  // A temporary copy of the queue's PPD, which we remove once it is read.
  const char* copy = cupsGetPPD2(CUPS_HTTP_DEFAULT, queueName.c_str());
  if (copy == nullptr) return nullptr;
  const std::string path = copy;
  PPDPtr ppd = PPDOpenFile(path);
  unlink(path.c_str());
  return ppd;
}

PPD* PPDGetCurrent() {
  CurrentPPD& current = Current();
  if (current.ppd) return current.ppd.get();
  const PrintSession* session = GetCurrentPrintSession();
  if (session == nullptr) return nullptr;
  if (!session->ppdPath().empty()) {
    current.ppd = PPDOpenFile(session->ppdPath());
  } else {
    current.ppd = PPDOpenQueue(session->printerName());
  }
  return current.ppd.get();
}

void PPDCloseCurrent() {
  Current().ppd.reset();
}

// ---- Reading ------------------------------------------------------------------------

std::optional<std::string> PPDManufacturer(const PPD* ppd) {
  if (!ppd || !ppd->file()->manufacturer) return std::nullopt;
  return std::string(ppd->file()->manufacturer);
}

TextEncoding PPDGetEncoding(const PPD* ppd) {
  return ppd != nullptr ? ppd->encoding() : TextEncoding::MacRoman;
}

bool PPDHasOption(const PPD* ppd, std::string_view keyword) {
  return FindOption(ppd, keyword) != nullptr;
}

std::optional<std::string> PPDCopyDefaultChoice(const PPD* ppd, std::string_view keyword) {
  const ppd_option_t* option = FindOption(ppd, keyword);
  if (option == nullptr || option->defchoice[0] == '\0') return std::nullopt;
  return ppd->keyword(option->defchoice);
}

std::optional<std::string> PPDCopyChoiceText(const PPD* ppd, std::string_view keyword,
                                             std::string_view choice) {
  ppd_option_t* option = FindOption(ppd, keyword);
  if (option == nullptr) return std::nullopt;
  const ppd_choice_t* c = ppdFindChoice(option, std::string(choice).c_str());
  if (c == nullptr) return std::nullopt;
  return ppd->text(c->text);
}

std::optional<std::string> PPDCopyCurrentChoice(const Ticket& ticket, std::string_view keyword) {
  const Dictionary* choices = ticket.getDictionary(kPPDDictionaryKey);
  const std::string* choice = choices ? choices->getString(keyword) : nullptr;
  return choice ? std::optional<std::string>(*choice) : std::nullopt;
}

void PPDSetCurrentChoice(Ticket& ticket, std::string_view keyword, std::string_view choice) {
  if (keyword.empty()) return;
  Dictionary choices;
  if (const Dictionary* stored = ticket.getDictionary(kPPDDictionaryKey)) choices = *stored;
  choices.set(keyword, Value(choice));
  ticket.setDictionary(kTicketClientPrint, kPPDDictionaryKey, std::move(choices));
}

std::vector<std::pair<std::string, std::string>> PPDJobOptions(const Ticket& ticket) {
  std::vector<std::pair<std::string, std::string>> options;
  const Dictionary* choices = ticket.getDictionary(kPPDDictionaryKey);
  if (choices == nullptr) return options;
  for (const auto& [keyword, choice] : *choices) {
    if (const std::string* text = choice.string()) options.emplace_back(keyword, *text);
  }
  return options;
}

void PPDGetTicketValueForChoiceOrDefault(const PPD* ppd, const Ticket& ticket,
                                         std::string_view keyword, std::int32_t& value) {
  std::optional<std::string> choice = PPDCopyCurrentChoice(ticket, keyword);
  if (!choice) choice = PPDCopyDefaultChoice(ppd, keyword);
  if (!choice) return;
  value = PPDTicketValueForChoice(std::string(keyword).c_str(), choice->c_str());
}

std::vector<PPDPaperSize> PPDPaperSizes(const PPD* ppd) {
  std::vector<PPDPaperSize> sizes;
  const ppd_option_t* option = FindOption(ppd, "PageSize");
  if (option == nullptr) return sizes;
  for (int i = 0; i < option->num_choices; ++i) {
    const ppd_choice_t& c = option->choices[i];
    PPDPaperSize size{ppd->keyword(c.choice), ppd->text(c.text)};
    if (const ppd_size_t* s = ppdPageSize(ppd->file(), c.choice)) {
      size.width = s->width;
      size.length = s->length;
    }
    sizes.push_back(std::move(size));
  }
  return sizes;
}

// ---- Menus --------------------------------------------------------------------------

std::vector<PPDMenuItem> PPDPopulateMenuWithChoices(PPD* ppd, std::string_view keyword,
                                                    bool checkConflicts) {
  std::vector<PPDMenuItem> items;
  if (ppd == nullptr || keyword.empty()) return items;
  if (checkConflicts) ppdMarkDefaults(ppd->file());
  const ppd_option_t* option = FindOption(ppd, keyword);
  const std::string key(keyword);
  if (option == nullptr) {
    std::fprintf(stderr, "Expected PPD option not found: %s\n", key.c_str());
    return items;
  }
  for (int i = 0; i < option->num_choices; ++i) {
    const ppd_choice_t& c = option->choices[i];
    if (checkConflicts && ppdMarkOption(ppd->file(), option->keyword, c.choice) > 0) continue;
    const std::int32_t value = PPDTicketValueForChoice(key.c_str(), c.choice);
    if (value == -1) {
      std::fprintf(stderr, "Skipped unrecognized choice in PPD: %s\n", c.choice);
      continue;
    }
    items.push_back({ppd->text(c.text), value, ppd->keyword(c.choice)});
  }
  return items;
}

std::vector<PPDOptionInfo> PPDMainKeywordOptions(const PPD* ppd) {
  std::vector<PPDOptionInfo> options;
  for (const MainKeyword* row = MainKeywordMap; ppd != nullptr && row->keyword; ++row) {
    if (const ppd_option_t* option = FindOption(ppd, row->keyword)) {
      options.push_back(Describe(*ppd, *option));
    }
  }
  return options;
}

std::vector<PPDOptionInfo> PPDInstallableOptions(const PPD* ppd) {
  std::vector<PPDOptionInfo> options;
  const ppd_group_t* group = InstallableOptionsGroup(ppd);
  for (int i = 0; group != nullptr && i < group->num_options; ++i) {
    options.push_back(Describe(*ppd, group->options[i]));
  }
  return options;
}

// ---- Installable options ------------------------------------------------------------

bool LoadInstallableOptions(PPD* ppd, const InstalledFeature* featureMap) {
  if (GetInstallableOptions() != nullptr) return false;
  Dictionary options;
  if (ppd != nullptr) {
    ppdMarkDefaults(ppd->file());
    const ppd_group_t* group = InstallableOptionsGroup(ppd);
    for (int i = 0; group != nullptr && i < group->num_options; ++i) {
      const ppd_option_t& option = group->options[i];
      if (const ppd_choice_t* marked = FirstMarkedChoice(option)) {
        options.set(ppd->keyword(option.keyword), Value(ppd->keyword(marked->choice)));
      }
    }
  }
  const bool stored = !options.empty();
  SetInstallableOptions(std::move(options), featureMap);
  return stored;
}

std::optional<std::string> CopyLocalizedStringForInstalledFeatureFromPlugin(
    std::string_view feature, const Bundle* bundle) {
  const char* labelKey = InstalledFeatureLabelKey(feature);
  if (labelKey == nullptr) return std::nullopt;
  if (bundle == nullptr) return std::string(kStringNotFound);
  return std::string(bundle->localizedString(labelKey));
}

}  // namespace zorva

#pragma GCC diagnostic pop
