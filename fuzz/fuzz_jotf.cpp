// Fuzz target for the job-ticket writer. The input is either a property list
// (it starts with "<" or "bplist") or a compact recipe that builds a settings
// dictionary out of the writer's own keys, so that every section is reached.
// Every document must be written without a crash or a leak; and when every
// string in the settings is text XML allows, the document must be well-formed
// XML once the deliberate quirks are taken out (the accounting tag mismatch,
// the finishing printer's repeated line, custom names cut at 30 bytes).
#include <libxml/parser.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

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

// A stock, a special page and the option groups are all plain dictionaries.
enum class Kind : std::uint8_t { Int, Bool, String, Real, Dict, List };
constexpr int kKinds = 6;

// Keys of one kind, separated by blanks, each after the prefix.
struct KeyGroup {
  Kind kind;
  std::string_view keys;
  std::string_view prefix = "";
};
using KeyTable = std::vector<std::pair<std::string, Kind>>;

// The top-level keys the writer reads, by the kind a real ticket gives them.
constexpr std::string_view kPrint = "com.zorva.print.";
constexpr KeyGroup kTopGroups[] = {
    {Kind::Int,
     "FinishingDuplex FinishingOutputDestination Resolution OPISubsitution OPIPrescan "
     "Antialiasing HalftoneScreen LightenDarken OutputOrder TaltekEmulation "
     "AdvancedRotateImage180 FinishingOutputColor PagesToPrintSelected PagesToPrintFrom "
     "PagesToPrintTo FinishingOptions FinishingZFoldValue FinishingStaple1Value "
     "FinishingStaple2Value FinishingStapleCenterValue FinishingHolePunchValue "
     "FinishingHolePunchOptions FinishingFoldValue FinishingBindValue BookletFoldStaple "
     "FinishingSlipSheet FinishingOffset FinishingOffsetEnableSubset "
     "FinishingOffsetPagesPerSubset",
     kPrint},
    {Kind::Int,
     "com.apple.print.PrintSettings.PMDuplexing com.zorva.Act.jotf.On HiglightPrintingColor"},
    {Kind::Bool, "TonerSaver JobNotesUseJobName", kPrint},
    {Kind::String,
     "JobNotesMessage JobNotesRecipient JobNotesSheetMessage JobNotesAdditionalInfo "
     "JobNotesJobName JobNotesSenderName FinishingCustom",
     kPrint},
    {Kind::String,
     "com.apple.print.JobInfo.PMJobName com.zorva.Act.jotf.UID com.zorva.Act.jotf.AID"},
    {Kind::Dict,
     "JobLevelStock SpecialPages.FrontCover SpecialPages.BackCover JobType ImageShiftOptionsJob "
     "HighlightColorOptionsJob FullColorOptions BackgroundFormsOptions",
     kPrint},
    {Kind::List, "SpecialPages.InsertList SpecialPages.ExceptionList", kPrint},
};

// Keys of every dictionary below the top level, mixed: a stock, a special
// page, image shift, full colour, job type, highlight colour, forms.
constexpr KeyGroup kNestedGroups[] = {
    {Kind::Int,
     "Size Width Length Type Modulus Color Weight Punched SidesCoated kCoatingType Finish kGrain "
     "Source SidesImaged Quantity StartPage EndPage LightenDarken Antialiasing HalftoneScreen "
     "OutputColor Inches Y1 X2 FCLightness FCContrast FCSaturation FCCyanRed FCMagentaGreen "
     "FCYellowBlue FCTrapping FCTrappingFastDirection FCTrappingSlowDirection FCBlackOverprint "
     "RGBTextAndGraphicsProfile ImageRendering TextRendering GraphicRendering JobType "
     "SaveDisposition MediaType HiglightPrintingColor HighlightCustomColorIndex Red Green Blue "
     "Hue Saturation Value UseExistingForm CyclePages"},
    {Kind::Bool, "CustomNameOnly FullPrecision UseJobName"},
    {Kind::String,
     "CustomType CustomColor Description CustomName FCTRC RGBImagesProfile CMYKImagesProfile "
     "CMYKTextAndGraphicsProfile GrayImagesProfile GrayTextAndGraphicsProfile "
     "DestinationProfile SavedJobName SavedJobLocation MergeWithString NewFormString"},
    {Kind::Real, "X1 Y2"},
    {Kind::Dict,
     "Stock com.zorva.print.ImageShiftOptionsPage FullColorOptionsPage FCColorCast "
     "HighlightCustomColor"},
};

KeyTable Flatten(std::span<const KeyGroup> groups) {
  KeyTable table;
  for (const KeyGroup& g : groups) {
    for (std::string_view rest = g.keys; !rest.empty();) {
      const std::size_t end = std::min(rest.find(' '), rest.size());
      table.emplace_back(std::string(g.prefix).append(rest.substr(0, end)), g.kind);
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
  }
  return table;
}

const KeyTable kTopKeys = Flatten(kTopGroups);
const KeyTable kNestedKeys = Flatten(kNestedGroups);

constexpr std::array<std::int32_t, 6> kSpecialInts = {zorva::kUnset, -1, 75, 82, 999, 2147483647};
// Characters the clean strings are made of: the five XML specials, blanks and
// letters, and characters of two, three and four bytes.
constexpr std::array<std::string_view, 16> kAlphabet = {"&", "<", ">", "'", "\"", " ", "a",  "Z",
                                                        "0", ";", "#", "é", "ß",  "€", "日", "𝄞"};
constexpr std::array<std::pair<double, double>, 4> kPages = {
    {{612, 792}, {842, 595}, {595.276, 841.89}, {0, 0}}};

class Recipe {
 public:
  explicit Recipe(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  Dictionary settings() {
    const std::uint8_t b = next();
    Dictionary options;
    if (b & 1) options.set("JOTFOptionAll", Value(true));
    if (b & 2) options.set("JOTFOptionCovers", Value(true));
    if (b & 4) options.set("JOTFOptionInserts", Value(false));
    if (b & 8) options.set("JOTFOptionExceptions", Value(1));
    Dictionary d = dictionary(kTopKeys, 24, 0);
    d.set("com.zorva.print.JOTFOptions", Value(std::move(options)));
    return d;
  }

  void setPageSize(zorva::PrintSession& session) {
    const std::uint8_t b = next();
    if (b % 4 == 0) return;
    const auto& [width, length] = kPages[(b / 4) % kPages.size()];
    session.pageFormat().setReal("Z", zorva::tkey::kPMPaperWidth, width);
    session.pageFormat().setReal("Z", zorva::tkey::kPMPaperLength, length);
    session.pageFormat().setNumber("Z", zorva::tkey::kPMOrientation, (b / 16) % 5);
  }

 private:
  std::uint8_t next() { return at_ < bytes_.size() ? bytes_[at_++] : 0; }
  bool done() const { return at_ >= bytes_.size(); }

  std::int32_t integer() {
    const std::uint8_t b = next();
    if (b < 64) return b;
    if (b < 128) return -static_cast<std::int32_t>(b - 64);
    if (b < 250) return kSpecialInts[b % kSpecialInts.size()];
    std::uint32_t raw = 0;
    for (int i = 0; i < 4; ++i) raw = (raw << 8) | next();
    return static_cast<std::int32_t>(raw);
  }

  // Clean text (the alphabet above) unless the first byte asks for raw bytes;
  // bit 0x40 makes clean text longer than the 30 bytes of a custom name.
  std::string text() {
    const std::uint8_t b = next();
    std::string s;
    for (int i = 0; i < (b & 0x3F) && !done(); ++i) {
      const char c = static_cast<char>(next());
      s.append(b & 0x80 ? std::string_view(&c, 1) : kAlphabet[std::uint8_t(c) % kAlphabet.size()]);
    }
    if ((b & 0xC0) == 0x40) s.append(40, 'x');
    return s;
  }

  // Up to maxEntries keys of the table; a key mostly holds its natural kind.
  Dictionary dictionary(const KeyTable& keys, int maxEntries, int depth) {
    Dictionary d;
    const int entries = next() % maxEntries;
    for (int i = 0; i < entries && !done(); ++i) {
      const auto& [key, natural] = keys[next() % keys.size()];
      const std::uint8_t b = next();
      d.set(key, value(b < 224 ? natural : static_cast<Kind>(b % kKinds), depth + 1));
    }
    return d;
  }

  Value value(Kind kind, int depth) {
    if (depth > 3 && kind >= Kind::Dict) kind = Kind::Int;
    if (kind == Kind::Int) return Value(integer());
    if (kind == Kind::Bool) return Value((next() & 1) != 0);
    if (kind == Kind::String) return Value(text());
    if (kind == Kind::Real) return Value(integer() / 4.0);
    if (kind == Kind::Dict) return Value(dictionary(kNestedKeys, 12, depth));
    Array list;
    for (int i = next() % 5; i > 0 && !done(); --i) {
      list.push_back(Value(dictionary(kNestedKeys, 12, depth)));
    }
    return Value(std::move(list));
  }

  std::span<const std::uint8_t> bytes_;
  std::size_t at_ = 0;
};

// Calls fn on every string value in the tree and every dictionary in it.
template <class S, class D>
void Walk(Value& v, S&& onString, D&& onDictionary) {
  if (const std::string* s = v.string()) onString(*s);
  if (Dictionary* d = v.dictionary()) {
    onDictionary(*d);
    for (auto& [key, item] : *d) Walk(item, onString, onDictionary);
  }
  if (Array* a = v.array()) {
    for (Value& item : *a) Walk(item, onString, onDictionary);
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

// Takes the quirks out: accounting, a repeating finishing line, and custom
// type and colour names whose escaped form would be cut at 30 bytes (maybe
// inside an entity or a character); then the document must parse.
void CheckWellFormed(Dictionary settings) {
  settings.erase("com.zorva.Act.jotf.On");
  if (FinishingRepeatsALine(settings)) settings.erase("com.zorva.print.FinishingOptions");
  Value root(std::move(settings));
  Walk(
      root, [](const std::string&) {},
      [](Dictionary& d) {
        for (std::string_view key : {"CustomType", "CustomColor"}) {
          const std::string* s = d.getString(key);
          if (s && zorva::XMLCreateStringByEscapingEntities(*s).size() > zorva::kMediaNameBytes) {
            d.erase(key);
          }
        }
      });
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
  Value root(std::move(*settings));
  bool xmlText = true;
  Walk(
      root, [&](const std::string& s) { xmlText = xmlText && zorva::IsXmlText(s); },
      [](Dictionary&) {});
  if (xmlText) CheckWellFormed(std::move(*root.dictionary()));
  return 0;
}
