// Fuzz target for the job-ticket writer. The input is either a property list
// (it starts with "<" or "bplist") or a compact recipe that builds a settings
// dictionary out of the writer's own keys, so that every section is reached.
// Every document must be written without a crash or a leak; and when every
// string in the settings is text XML allows, the document must be well-formed
// XML once the deliberate quirks are taken out (the accounting tag mismatch,
// the finishing printer's repeated line, custom names cut at 30 bytes).
#include <libxml/parser.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include "core/plist_io.h"
#include "core/print_session.h"
#include "core/text.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_media.h"
#include "jobticket/jotf_page_size.h"

namespace {

using zorva::Array;
using zorva::Dictionary;
using zorva::Value;

enum class Kind : std::uint8_t { Int, Bool, String, Real, Stock, Page, List, Dict };

struct KeyKind {
  std::string_view key;
  Kind kind;
};

constexpr KeyKind kTopKeys[] = {
    {"com.zorva.print.JobLevelStock", Kind::Stock},
    {"com.zorva.print.SpecialPages.FrontCover", Kind::Page},
    {"com.zorva.print.SpecialPages.BackCover", Kind::Page},
    {"com.zorva.print.SpecialPages.InsertList", Kind::List},
    {"com.zorva.print.SpecialPages.ExceptionList", Kind::List},
    {"com.zorva.print.FinishingDuplex", Kind::Int},
    {"com.apple.print.PrintSettings.PMDuplexing", Kind::Int},
    {"com.zorva.print.FinishingOutputDestination", Kind::Int},
    {"com.zorva.print.Resolution", Kind::Int},
    {"com.zorva.print.OPISubsitution", Kind::Int},
    {"com.zorva.print.OPIPrescan", Kind::Int},
    {"com.zorva.print.Antialiasing", Kind::Int},
    {"com.zorva.print.HalftoneScreen", Kind::Int},
    {"com.zorva.print.LightenDarken", Kind::Int},
    {"com.zorva.print.TonerSaver", Kind::Bool},
    {"com.zorva.print.OutputOrder", Kind::Int},
    {"com.zorva.print.TaltekEmulation", Kind::Int},
    {"com.zorva.print.AdvancedRotateImage180", Kind::Int},
    {"com.zorva.print.FinishingOutputColor", Kind::Int},
    {"com.zorva.print.JobNotesMessage", Kind::String},
    {"com.zorva.print.JobNotesRecipient", Kind::String},
    {"com.zorva.print.JobNotesSheetMessage", Kind::String},
    {"com.zorva.print.JobNotesAdditionalInfo", Kind::String},
    {"com.zorva.print.JobNotesUseJobName", Kind::Bool},
    {"com.zorva.print.JobNotesJobName", Kind::String},
    {"com.zorva.print.JobNotesSenderName", Kind::String},
    {"com.apple.print.JobInfo.PMJobName", Kind::String},
    {"com.zorva.Act.jotf.On", Kind::Int},
    {"com.zorva.Act.jotf.UID", Kind::String},
    {"com.zorva.Act.jotf.AID", Kind::String},
    {"com.zorva.print.PagesToPrintSelected", Kind::Int},
    {"com.zorva.print.PagesToPrintFrom", Kind::Int},
    {"com.zorva.print.PagesToPrintTo", Kind::Int},
    {"com.zorva.print.FinishingOptions", Kind::Int},
    {"com.zorva.print.FinishingZFoldValue", Kind::Int},
    {"com.zorva.print.FinishingStaple1Value", Kind::Int},
    {"com.zorva.print.FinishingStaple2Value", Kind::Int},
    {"com.zorva.print.FinishingStapleCenterValue", Kind::Int},
    {"com.zorva.print.FinishingHolePunchValue", Kind::Int},
    {"com.zorva.print.FinishingHolePunchOptions", Kind::Int},
    {"com.zorva.print.FinishingFoldValue", Kind::Int},
    {"com.zorva.print.FinishingBindValue", Kind::Int},
    {"com.zorva.print.BookletFoldStaple", Kind::Int},
    {"com.zorva.print.FinishingSlipSheet", Kind::Int},
    {"com.zorva.print.FinishingCustom", Kind::String},
    {"com.zorva.print.FinishingOffset", Kind::Int},
    {"com.zorva.print.FinishingOffsetEnableSubset", Kind::Int},
    {"com.zorva.print.FinishingOffsetPagesPerSubset", Kind::Int},
    {"com.zorva.print.JobType", Kind::Dict},
    {"com.zorva.print.ImageShiftOptionsJob", Kind::Dict},
    {"com.zorva.print.HighlightColorOptionsJob", Kind::Dict},
    {"com.zorva.print.FullColorOptions", Kind::Dict},
    {"com.zorva.print.BackgroundFormsOptions", Kind::Dict},
    {"HiglightPrintingColor", Kind::Int},
};

// Keys of every dictionary below the top level, mixed: a stock, a special
// page, image shift, full colour, job type, highlight colour, forms.
constexpr KeyKind kNestedKeys[] = {
    {"Size", Kind::Int},
    {"Width", Kind::Int},
    {"Length", Kind::Int},
    {"Type", Kind::Int},
    {"CustomType", Kind::String},
    {"Modulus", Kind::Int},
    {"Color", Kind::Int},
    {"CustomColor", Kind::String},
    {"Weight", Kind::Int},
    {"Punched", Kind::Int},
    {"Description", Kind::String},
    {"SidesCoated", Kind::Int},
    {"kCoatingType", Kind::Int},
    {"Finish", Kind::Int},
    {"kGrain", Kind::Int},
    {"CustomName", Kind::String},
    {"CustomNameOnly", Kind::Bool},
    {"Source", Kind::Int},
    {"Stock", Kind::Stock},
    {"SidesImaged", Kind::Int},
    {"Quantity", Kind::Int},
    {"StartPage", Kind::Int},
    {"EndPage", Kind::Int},
    {"com.zorva.print.ImageShiftOptionsPage", Kind::Dict},
    {"LightenDarken", Kind::Int},
    {"FullColorOptionsPage", Kind::Dict},
    {"Antialiasing", Kind::Int},
    {"HalftoneScreen", Kind::Int},
    {"OutputColor", Kind::Int},
    {"Inches", Kind::Int},
    {"X1", Kind::Real},
    {"Y1", Kind::Int},
    {"X2", Kind::Int},
    {"Y2", Kind::Real},
    {"FullPrecision", Kind::Bool},
    {"FCLightness", Kind::Int},
    {"FCContrast", Kind::Int},
    {"FCSaturation", Kind::Int},
    {"FCColorCast", Kind::Dict},
    {"FCCyanRed", Kind::Int},
    {"FCMagentaGreen", Kind::Int},
    {"FCYellowBlue", Kind::Int},
    {"FCTrapping", Kind::Int},
    {"FCTrappingFastDirection", Kind::Int},
    {"FCTrappingSlowDirection", Kind::Int},
    {"FCBlackOverprint", Kind::Int},
    {"FCTRC", Kind::String},
    {"RGBImagesProfile", Kind::String},
    {"RGBTextAndGraphicsProfile", Kind::Int},
    {"CMYKImagesProfile", Kind::String},
    {"CMYKTextAndGraphicsProfile", Kind::String},
    {"GrayImagesProfile", Kind::String},
    {"GrayTextAndGraphicsProfile", Kind::String},
    {"DestinationProfile", Kind::String},
    {"ImageRendering", Kind::Int},
    {"TextRendering", Kind::Int},
    {"GraphicRendering", Kind::Int},
    {"JobType", Kind::Int},
    {"SaveDisposition", Kind::Int},
    {"MediaType", Kind::Int},
    {"UseJobName", Kind::Bool},
    {"SavedJobName", Kind::String},
    {"SavedJobLocation", Kind::String},
    {"HiglightPrintingColor", Kind::Int},
    {"HighlightCustomColorIndex", Kind::Int},
    {"HighlightCustomColor", Kind::Dict},
    {"Red", Kind::Int},
    {"Green", Kind::Int},
    {"Blue", Kind::Int},
    {"Hue", Kind::Int},
    {"Saturation", Kind::Int},
    {"Value", Kind::Int},
    {"UseExistingForm", Kind::Int},
    {"MergeWithString", Kind::String},
    {"CyclePages", Kind::Int},
    {"NewFormString", Kind::String},
};

constexpr std::array<std::int32_t, 6> kSpecialInts = {zorva::kUnset, -1, 75, 82, 999, 2147483647};
// Characters the clean strings are made of: the five XML specials, blanks and
// letters, and characters of two, three and four bytes.
constexpr std::array<std::string_view, 16> kAlphabet = {"&", "<", ">", "'", "\"", " ", "a",  "Z",
                                                        "0", ";", "#", "é", "ß",  "€", "日", "𝄞"};

class Recipe {
 public:
  explicit Recipe(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::uint8_t next() { return at_ < bytes_.size() ? bytes_[at_++] : 0; }
  bool done() const { return at_ >= bytes_.size(); }

  Dictionary settings() {
    Dictionary d;
    d.set("com.zorva.print.JOTFOptions", Value(options()));
    const int entries = next() % 24;
    for (int i = 0; i < entries && !done(); ++i) {
      const KeyKind& k = kTopKeys[next() % std::size(kTopKeys)];
      d.set(k.key, value(pickKind(k.kind), 0));
    }
    return d;
  }

  void setPageSize(zorva::PrintSession& session) {
    const std::uint8_t b = next();
    session.pageFormat().clear();
    if (b % 4 == 0) return;
    constexpr std::array<std::pair<double, double>, 4> kPages = {
        {{612, 792}, {842, 595}, {595.276, 841.89}, {0, 0}}};
    const auto& page = kPages[(b / 4) % kPages.size()];
    session.pageFormat().setReal("Z", zorva::kPageFormatPaperWidthKey, page.first);
    session.pageFormat().setReal("Z", zorva::kPageFormatPaperLengthKey, page.second);
    session.pageFormat().setNumber("Z", zorva::kPageFormatOrientationKey, (b / 16) % 5);
  }

 private:
  Dictionary options() {
    const std::uint8_t b = next();
    Dictionary o;
    if (b & 1) o.set("JOTFOptionAll", Value(true));
    if (b & 2) o.set("JOTFOptionCovers", Value(true));
    if (b & 4) o.set("JOTFOptionInserts", Value(false));
    if (b & 8) o.set("JOTFOptionExceptions", Value(1));
    return o;
  }

  // Mostly the kind the key holds in a real ticket; sometimes any other.
  Kind pickKind(Kind natural) {
    const std::uint8_t b = next();
    return b < 224 ? natural : static_cast<Kind>(b % 8);
  }

  std::int32_t integer() {
    const std::uint8_t b = next();
    if (b < 64) return b;
    if (b < 128) return -static_cast<std::int32_t>(b - 64);
    if (b < 250) return kSpecialInts[b % kSpecialInts.size()];
    std::uint32_t raw = 0;
    for (int i = 0; i < 4; ++i) raw = (raw << 8) | next();
    return static_cast<std::int32_t>(raw);
  }

  // Clean text (the alphabet above) unless the first byte asks for raw bytes.
  std::string text() {
    const std::uint8_t b = next();
    const std::size_t length = b & 0x3F;
    std::string s;
    for (std::size_t i = 0; i < length && !done(); ++i) {
      const std::uint8_t c = next();
      if (b & 0x80) {
        s.push_back(static_cast<char>(c));
      } else {
        s.append(kAlphabet[c % kAlphabet.size()]);
      }
    }
    if ((b & 0x40) && !(b & 0x80)) s.append(std::string(40, 'x'));  // longer than 30 bytes
    return s;
  }

  Dictionary dictionary(int depth) {
    Dictionary d;
    const int entries = next() % 12;
    for (int i = 0; i < entries && !done(); ++i) {
      const KeyKind& k = kNestedKeys[next() % std::size(kNestedKeys)];
      d.set(k.key, value(pickKind(k.kind), depth + 1));
    }
    return d;
  }

  Value value(Kind kind, int depth) {
    if (depth > 3 && kind >= Kind::Stock) kind = Kind::Int;
    switch (kind) {
      case Kind::Int:
        return Value(integer());
      case Kind::Bool:
        return Value((next() & 1) != 0);
      case Kind::String:
        return Value(text());
      case Kind::Real:
        return Value(static_cast<double>(integer()) / 4.0);
      case Kind::Stock:
      case Kind::Page:
      case Kind::Dict:
        return Value(dictionary(depth));
      case Kind::List: {
        Array list;
        const int n = next() % 5;
        for (int i = 0; i < n && !done(); ++i) list.push_back(Value(dictionary(depth)));
        return Value(std::move(list));
      }
    }
    return Value();
  }

  std::span<const std::uint8_t> bytes_;
  std::size_t at_ = 0;
};

// Every string value in the tree is text XML allows.
bool AllStringsAreXmlText(const Value& v) {
  if (const std::string* s = v.string()) return zorva::IsXmlText(*s);
  if (const Dictionary* d = v.dictionary()) {
    for (const auto& [key, item] : *d) {
      if (!AllStringsAreXmlText(item)) return false;
    }
  }
  if (const Array* a = v.array()) {
    for (const Value& item : *a) {
      if (!AllStringsAreXmlText(item)) return false;
    }
  }
  return true;
}

// Custom type and colour names whose escaped form is longer than the 30 bytes
// the media record keeps would be cut, maybe inside an entity or a character.
void DropLongCustomNames(Value& v) {
  if (Dictionary* d = v.dictionary()) {
    for (std::string_view key : {"CustomType", "CustomColor"}) {
      const std::string* s = d->getString(key);
      if (s && zorva::XMLCreateStringByEscapingEntities(*s).size() > zorva::kMediaNameBytes) {
        d->erase(key);
      }
    }
    for (auto& [key, item] : *d) DropLongCustomNames(item);
  }
  if (Array* a = v.array()) {
    for (Value& item : *a) DropLongCustomNames(item);
  }
}

// The finishing printer repeats the line before for a code it does not list.
bool FinishingRepeatsALine(const Dictionary& settings) {
  zorva::FINISHINGDATA finishing;
  zorva::FillFinishingData(&finishing, &settings);
  std::string text;
  zorva::JotfSink sink{&text, [](void* handle, const char* t, int) {
                         static_cast<std::string*>(handle)->append(t);
                         return 0;
                       }};
  zorva::WriteJotfFinishing(&sink, &finishing);
  std::istringstream lines(text);
  std::string line, before;
  while (std::getline(lines, line)) {
    if (line == before) return true;
    before = line;
  }
  return false;
}

void CheckWellFormed(Dictionary settings) {
  settings.erase("com.zorva.Act.jotf.On");
  if (FinishingRepeatsALine(settings)) settings.erase("com.zorva.print.FinishingOptions");
  Value root(std::move(settings));
  DropLongCustomNames(root);
  const std::string text = zorva::JOTFDocumentText(*root.dictionary());
  if (text.empty()) return;
  xmlDocPtr doc = xmlReadMemory(text.data(), static_cast<int>(text.size()), "jotf.xml", nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (!doc) std::abort();
  xmlFreeDoc(doc);
}

std::optional<Dictionary> Decode(std::span<const std::uint8_t> bytes, zorva::PrintSession& s) {
  const std::string_view head(reinterpret_cast<const char*>(bytes.data()),
                              bytes.size() < 6 ? bytes.size() : 6);
  if (head.starts_with("<") || head.starts_with("bplist")) {
    std::optional<Value> v = zorva::ParsePropertyList(bytes);
    if (!v || !v->dictionary()) return std::nullopt;
    return *v->dictionary();
  }
  Recipe recipe(bytes);
  recipe.setPageSize(s);
  return recipe.settings();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static zorva::PrintSession session;
  zorva::SetCurrentPrintSession(&session);
  session.pageFormat().clear();
  std::optional<Dictionary> settings = Decode(std::span(data, size), session);
  if (!settings) return 0;
  zorva::JOTFDocumentText(*settings);
  if (AllStringsAreXmlText(Value(*settings))) CheckWellFormed(std::move(*settings));
  return 0;
}
