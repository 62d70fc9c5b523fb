// The watermark store: records to and from entry dictionaries, and the
// read-change-replace cycle every write of the shared watermark file goes
// through.
#include "watermarks/watermark_store.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <new>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/bundle.h"
#include "core/file_io.h"
#include "core/plist_io.h"
#include "core/value.h"
#include "host/preferences.h"

namespace zorva {

namespace {

// ---- The entry's keys, as data -------------------------------------------------

struct TextField {
  std::string_view key;
  std::string WatermarkData::*field;
  std::size_t bytes;
};

struct FloatField {
  std::string_view key;
  float WatermarkData::*field;
};

struct DoubleField {
  std::string_view key;
  double WatermarkData::*field;
};

struct IntField {
  std::string_view key;
  std::int32_t WatermarkData::*field;
};

constexpr TextField kTextFields[] = {
    {"textString", &WatermarkData::textString, kWatermarkTextBytes},
    {"filename", &WatermarkData::filename, kWatermarkTextBytes},
    {"filePath", &WatermarkData::filePath, kWatermarkFilePathBytes},
    {"fontName", &WatermarkData::fontName, kWatermarkTextBytes},
};

constexpr FloatField kFloatFields[] = {
    {"xOffset", &WatermarkData::xOffset},
    {"yOffset", &WatermarkData::yOffset},
    {"fontColorRed", &WatermarkData::fontColorRed},
    {"fontColorGreen", &WatermarkData::fontColorGreen},
    {"fontColorBlue", &WatermarkData::fontColorBlue},
    {"fontColorAlpha", &WatermarkData::fontColorAlpha},
    {"wellColorRed", &WatermarkData::wellColorRed},
    {"wellColorGreen", &WatermarkData::wellColorGreen},
    {"wellColorBlue", &WatermarkData::wellColorBlue},
    {"wellColorAlpha", &WatermarkData::wellColorAlpha},
};

constexpr DoubleField kDoubleFields[] = {
    {"xPos", &WatermarkData::xPos},
    {"yPos", &WatermarkData::yPos},
};

constexpr IntField kIntFields[] = {
    {"angle", &WatermarkData::angle},       {"density", &WatermarkData::density},
    {"scale", &WatermarkData::scale},       {"units", &WatermarkData::units},
    {"fontSize", &WatermarkData::fontSize},
};

constexpr std::string_view kGlyphCountKey = "glyphCount";
constexpr std::string_view kGlyphsKey = "glyphs";

// The three watermarks a new store starts with, each at its own place on the
// page (the names differ in length, so each is placed to sit centred).
struct DefaultWatermark {
  std::string_view stringKey;
  double xPos;
  double yPos;
};

constexpr DefaultWatermark kDefaultWatermarks[] = {
    {"DraftWatermark", 280.627441, 311.049927},
    {"ConfidentialWatermark", 201.350601, 231.773102},
    {"CopyWatermark", 276.36319, 306.785675},
};

// ---- Record <-> entry ------------------------------------------------------------

// Glyph codes are stored high byte first whatever the machine, so a file
// copied between machines reads the same everywhere.
Data EncodeGlyphs(const std::vector<std::uint16_t>& glyphs) {
  Data bytes;
  bytes.reserve(glyphs.size() * 2);
  for (std::uint16_t g : glyphs) {
    bytes.push_back(static_cast<std::uint8_t>(g >> 8));
    bytes.push_back(static_cast<std::uint8_t>(g & 0xff));
  }
  return bytes;
}

Dictionary EntryFromRecord(const WatermarkData& record) {
  Dictionary entry;
  for (const TextField& f : kTextFields) {
    entry.set(f.key, Value(CutUtf8(record.*f.field, f.bytes - 1)));
  }
  for (const FloatField& f : kFloatFields) entry.set(f.key, Value(record.*f.field));
  for (const DoubleField& f : kDoubleFields) entry.set(f.key, Value(record.*f.field));
  for (const IntField& f : kIntFields) entry.set(f.key, Value(record.*f.field));
  if (record.glyphs) {
    entry.set(kGlyphCountKey, Value(record.glyphCount()));
    entry.set(kGlyphsKey, Value(EncodeGlyphs(*record.glyphs)));
  }
  return entry;
}

// The file may come from anywhere: the count is believed only as far as the
// data backs it, and a stray odd byte is ignored.
std::optional<std::vector<std::uint16_t>> GlyphsFromEntry(const Dictionary& entry) {
  const Value* data = entry.find(kGlyphsKey);
  if (!data || !data->data()) return std::nullopt;
  const Data& bytes = *data->data();
  std::size_t count = bytes.size() / 2;
  std::int32_t stated = 0;
  const Value* countValue = entry.find(kGlyphCountKey);
  if (countValue && countValue->getNumber(stated) && stated >= 0 &&
      static_cast<std::size_t>(stated) < count) {
    count = static_cast<std::size_t>(stated);
  }
  std::vector<std::uint16_t> glyphs(count);
  for (std::size_t i = 0; i < count; ++i) {
    glyphs[i] = static_cast<std::uint16_t>((bytes[2 * i] << 8) | bytes[2 * i + 1]);
  }
  return glyphs;
}

WatermarkData RecordFromEntry(std::string_view name, const Dictionary& entry) {
  WatermarkData record;
  for (const TextField& f : kTextFields) {
    if (const std::string* s = entry.getString(f.key)) {
      record.*f.field = std::string(CutUtf8(*s, f.bytes - 1));
    }
  }
  for (const FloatField& f : kFloatFields) {
    if (const Value* v = entry.find(f.key)) v->getNumber(record.*f.field);
  }
  for (const DoubleField& f : kDoubleFields) {
    if (const Value* v = entry.find(f.key)) v->getNumber(record.*f.field);
  }
  for (const IntField& f : kIntFields) {
    if (const Value* v = entry.find(f.key)) v->toInt32(record.*f.field);
  }
  record.glyphs = GlyphsFromEntry(entry);
  record.isText = record.textString == name;
  return record;
}

// ---- The file ----------------------------------------------------------------------

// The whole store; a missing, unreadable or foreign file starts a new one.
Dictionary ReadStore(std::string_view fileName) {
  std::optional<Value> list = CopyXMLData(fileName);
  if (list && list->dictionary()) return std::move(*list->dictionary());
  return {};
}

int ReportFailure(const char* who, int err) {
  if (err != 0) std::fprintf(stderr, "%s: Error %ld writing data to file\n", who, long{err});
  return err;
}

// The store is one file in a folder every user of the machine shares, which
// is sticky like /tmp: anyone may add a file, but only its owner may replace
// it by renaming. One file for everybody keeps one list of watermarks for the
// machine, so the file is made writable by all, and a user who does not own
// it (another user created it) rewrites it in place instead of replacing it.
// Writers take turns through a lock file beside the store, held from reading
// the store to writing it back, so no writer works from a list that another
// is halfway through rewriting. The owner's writes stay atomic.
class StoreLock {
 public:
  explicit StoreLock(const std::filesystem::path& store) {
    const std::string path = store.string() + ".lock";
    // Opened without O_CREAT when it exists: a sticky folder may refuse
    // O_CREAT on a file another user owns.
    fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd_ < 0 && errno == ENOENT) {
      fd_ = ::open(path.c_str(), O_RDONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (fd_ >= 0) {
        ::fchmod(fd_, 0666);
      } else if (errno == EEXIST) {
        fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
      }
    }
    // Without a lock the write still happens, as it did before locks.
    while (fd_ >= 0 && ::flock(fd_, LOCK_EX) != 0 && errno == EINTR) {
    }
  }
  ~StoreLock() {
    if (fd_ >= 0) ::close(fd_);  // releases the lock
  }
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;

 private:
  int fd_ = -1;
};

// Another user's file, rewritten whole from its start, then cut to length.
int RewriteInPlace(const std::filesystem::path& path, std::string_view text) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (fd < 0) return errno;
  int err = 0;
  for (std::size_t done = 0; err == 0 && done < text.size();) {
    const ssize_t n =
        ::pwrite(fd, text.data() + done, text.size() - done, static_cast<off_t>(done));
    if (n < 0 && errno != EINTR) err = errno;
    if (n > 0) done += static_cast<std::size_t>(n);
  }
  if (err == 0 && ::ftruncate(fd, static_cast<off_t>(text.size())) != 0) err = errno;
  if (err == 0 && ::fsync(fd) != 0) err = errno;
  ::close(fd);
  return err;
}

int WriteSharedStore(const std::filesystem::path& path, const Value& root) {
  const std::string text = ToXmlPropertyList(root);
  int err = WriteFileAtomically(path, text);
  if (err == 0) {
    // Every user's watermarks go into this one file (only the owner can
    // change the mode, and the owner is who just replaced it).
    ::chmod(path.c_str(), 0666);
  } else if (err == EPERM || err == EACCES) {
    err = RewriteInPlace(path, text);
  }
  return err;
}

// Rereads the store, applies change and, when change reports that it changed
// something, replaces the file. Out of memory on the way writes nothing.
template <class Change>
int UpdateStore(const char* who, std::string_view fileName, Change change) {
  int err = 0;
  try {
    std::optional<std::filesystem::path> path = CopyPreferenceFileURL(fileName);
    std::optional<StoreLock> lock;
    if (path) lock.emplace(*path);
    Dictionary root = ReadStore(fileName);
    if (!change(root)) return 0;
    err = path ? WriteSharedStore(*path, Value(std::move(root))) : ENOENT;
  } catch (const std::bad_alloc&) {
    err = ENOMEM;
  }
  return ReportFailure(who, err);
}

// Names that would overwrite the list or a stored font.
bool IsReservedName(std::string_view name) {
  return name == kWatermarkListKey || name.starts_with(kWatermarkFontKeyPrefix);
}

WatermarkData DefaultRecord() {
  WatermarkData record;
  record.isText = true;
  record.fontName = "ArialMT";
  record.fontSize = 72;
  record.angle = 45;
  record.density = 25;
  record.scale = 100;
  record.fontColorRed = 0.75f;
  record.fontColorGreen = 0.75f;
  record.fontColorBlue = 1.0f;
  record.fontColorAlpha = 1.0f;
  record.wellColorRed = 0.0f;
  record.wellColorGreen = 0.0f;
  record.wellColorBlue = 1.0f;
  record.wellColorAlpha = 1.0f;
  return record;
}

}  // namespace

std::int32_t WatermarkData::glyphCount() const {
  if (!glyphs) return 0;
  constexpr std::size_t kMax = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(glyphs->size(), kMax));
}

std::string_view CutUtf8(std::string_view text, std::size_t maxBytes) {
  if (text.size() <= maxBytes) return text;
  std::size_t end = maxBytes;
  // Back up over the continuation bytes of the character the cut would split
  // (at most three in valid UTF-8; beyond that the text is not UTF-8 anyway).
  for (int i = 0; i < 3 && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80; ++i) {
    --end;
  }
  return text.substr(0, end);
}

int saveWatermarkData(std::string_view fileName, const WatermarkData& record) {
  constexpr const char* kWho = "saveWatermarkData";
  // The key is the name as the entry stores it, cut to its field.
  const std::string name(CutUtf8(record.name(), kWatermarkTextBytes - 1));
  if (IsReservedName(name)) {
    // Nothing was written, so the write-failure message would mislead.
    std::fprintf(stderr, "%s: \"%s\" is a reserved name; the watermark was not saved\n", kWho,
                 name.c_str());
    return EINVAL;
  }
  return UpdateStore(kWho, fileName, [&](Dictionary& root) {
    root.set(name, Value(EntryFromRecord(record)));
    return true;
  });
}

bool loadWatermarkData(std::string_view fileName, std::string_view name, WatermarkData& record) {
  const Dictionary root = ReadStore(fileName);
  const Dictionary* entry = root.getDictionary(name);
  if (!entry) return false;
  record = RecordFromEntry(name, *entry);
  return true;
}

int removeWatermarkData(std::string_view fileName, std::string_view name) {
  return UpdateStore("removeWatermarkData", fileName, [&](Dictionary& root) {
    return root.getDictionary(name) != nullptr && root.erase(name);
  });
}

int saveWatermarkList(std::string_view fileName, const std::vector<std::string>& names) {
  if (fileName.empty()) return 0;
  return UpdateStore("saveWatermarkList", fileName, [&](Dictionary& root) {
    Array list;
    for (const std::string& name : names) list.push_back(Value(name));
    root.set(kWatermarkListKey, Value(std::move(list)));
    return true;
  });
}

std::vector<std::string> loadWatermarkList(std::string_view fileName) {
  std::vector<std::string> names;
  const Dictionary root = ReadStore(fileName);
  if (const Array* list = root.getArray(kWatermarkListKey)) {
    for (const Value& item : *list) {
      if (const std::string* name = item.string()) names.push_back(*name);
    }
  }
  return names;
}

std::string WatermarkFontKey(std::string_view fontName) {
  return std::string(kWatermarkFontKeyPrefix) + std::string(fontName);
}

int storeFontData(std::string_view fileName, std::string_view fontName,
                  std::span<const std::uint8_t> data) {
  constexpr const char* kWho = "storeFontData";
  if (fontName.empty()) {
    std::fprintf(stderr, "%s: a font needs a name; the font was not saved\n", kWho);
    return EINVAL;
  }
  return UpdateStore(kWho, fileName, [&](Dictionary& root) {
    root.set(WatermarkFontKey(fontName), Value(Data(data.begin(), data.end())));
    return true;
  });
}

bool loadFontData(std::string_view fileName, std::string_view fontName,
                  std::vector<std::uint8_t>& buffer) {
  if (fontName.empty()) return false;
  const Dictionary root = ReadStore(fileName);
  const Value* font = root.find(WatermarkFontKey(fontName));
  if (!font || !font->data()) return false;
  buffer.insert(buffer.end(), font->data()->begin(), font->data()->end());
  return true;
}

std::vector<WatermarkData> DefaultWatermarks(const Bundle* bundle) {
  std::vector<WatermarkData> records;
  WatermarkData record = DefaultRecord();
  for (const DefaultWatermark& d : kDefaultWatermarks) {
    const std::string_view text = bundle ? bundle->localizedString(d.stringKey) : kStringNotFound;
    record.textString = std::string(CutUtf8(text, kWatermarkTextBytes - 1));
    record.xPos = d.xPos;
    record.yPos = d.yPos;
    records.push_back(record);
  }
  return records;
}

int CreateDefaultWatermarks(const Bundle* bundle) {
  int first = 0;
  std::vector<std::string> names;
  for (const WatermarkData& record : DefaultWatermarks(bundle)) {
    names.push_back(record.name());
    const int err = saveWatermarkData(kWatermarkFileName, record);
    if (first == 0) first = err;
  }
  const int err = saveWatermarkList(kWatermarkFileName, names);
  return first != 0 ? first : err;
}

}  // namespace zorva
