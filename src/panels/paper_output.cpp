// The Paper/Output panel's ticket reading and writing, its finishing and
// output-destination menus and its enabling rules.
#include "panels/paper_output.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/ticket_keys.h"
#include "host/installable_options.h"
#include "host/keyword_tables.h"
#include "host/ticket_helpers.h"

namespace zorva {

namespace key = tkey;

constexpr SettingMap JobTypeMap[] = {
    {"JobTypePrint", jobtype::kPrint, 0, nullptr, 1},
    {"JobTypeHold", jobtype::kHold, 0, nullptr, 1},
    {"JobTypeSave", jobtype::kSave, 0, nullptr, 1},
    {"JobTypeSecurePrint", jobtype::kSecurePrint, 0, nullptr, 1},
    {"JobTypeDelayedPrint", jobtype::kDelayedPrint, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

constexpr SettingMap JobFormatMap[] = {
    {"JobFormatSingleTIFF", 1, 0, nullptr, 1},
    {"JobFormatMultiTIFF", 2, 0, nullptr, 1},
    {"JobFormatPDF", 3, 0, nullptr, 1},
    {"JobFormatFastReprint", 4, 0, nullptr, 1},
    {"JobFormatFastReprintDRI", 5, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

// Every destination any finisher has; PopulateOutputDestination keeps the
// ones installed.
constexpr SettingMap OutputDestinationMap[] = {
    {"Printer Default", kOutputDestinationPrinterDefault, 0, nullptr, 1},
    {"Auto", 1, 0, nullptr, 1},
    {"Finisher B: Main Stacker", 4, 0, nullptr, 1},
    {"Finisher B: Main Stacker", 12, 0, nullptr, 1},
    {"Finisher C: Main Stacker", 17, 0, nullptr, 1},
    {"Finisher C: Top Tray", 16, 0, nullptr, 1},
    {"Finisher D: Top Tray", 18, 0, nullptr, 1},
    {"Finisher B: Top Tray", 3, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

namespace {

constexpr std::string_view kClient = kTicketClientPrintingManager;
constexpr std::string_view kSystemClient = kTicketClientSystem;

// ---- Job type ---------------------------------------------------------------------------

const std::string* StringIn(const Dictionary& d, std::string_view k) {
  return d.getString(k);
}

// ---- Number keys --------------------------------------------------------------------------

struct NumberKey {
  std::string_view key;
  std::int32_t PaperOutputSettings::*field;
  std::int32_t absent;
};

// The finishing keys after the duplex, in reading and writing order.
constexpr NumberKey kFinishingKeys[] = {
    {key::kFinishingOptions, &PaperOutputSettings::finishingOptions, 0},
    {key::kFinishingOffset, &PaperOutputSettings::offset, 1},
    {key::kFinishingOffsetEnableSubset, &PaperOutputSettings::offsetEnableSubset, 0},
    {key::kFinishingOffsetPagesPerSubset, &PaperOutputSettings::pagesPerSubset, 1},
    {key::kFinishingSlipSheet, &PaperOutputSettings::slipSheet, 0},
    {key::kFinishingFold, &PaperOutputSettings::fold, 0},
    {key::kFinishingZFold, &PaperOutputSettings::zFold, 0},
    {key::kFinishingHolePunch, &PaperOutputSettings::holePunch, 0},
    {key::kFinishingHolePunchOptions, &PaperOutputSettings::holePunchOptions, 0},
    {key::kFinishingStaple1, &PaperOutputSettings::staple1, 0},
    {key::kFinishingStaple2, &PaperOutputSettings::staple2, 0},
    {key::kFinishingStapleCenter, &PaperOutputSettings::stapleCenter, 0},
    {key::kFinishingBind, &PaperOutputSettings::bind, 0},
    // The booklet's fold, which the job ticket reads for both booklet
    // finishings; kept with the other fold values.
    {key::kBookletFoldStaple, &PaperOutputSettings::bookletFoldStaple, 0},
};

std::int32_t NumberOr(const Ticket& ticket, std::string_view k, std::int32_t absent) {
  std::int32_t value = absent;
  return ticket.getNumber(k, value) ? value : absent;
}

std::int32_t DuplexFrom(const Ticket& ticket, const std::optional<std::string>& ppdDefault) {
  std::int32_t duplex = kUnset;
  if (ticket.getNumber(key::kFinishingDuplex, duplex)) return duplex;
  if (ticket.getNumber(key::kPMDuplexing, duplex)) return duplex;
  if (ppdDefault) {
    const std::int32_t value = KeywordPairValueForChoice(PPDDuplexMap, *ppdDefault);
    if (value != -1) return value;
  }
  return kUnset;
}

// Records and applies one write or removal.
class Writer {
 public:
  Writer(Ticket& ticket, std::vector<std::string>* order) : ticket_(ticket), order_(order) {}
  void number(std::string_view k, std::int64_t value, std::string_view client = kClient) {
    note(k);
    ticket_.setNumber(client, k, value);
  }
  void remove(std::string_view k) {
    note(k);
    ticket_.remove(k);
  }
  Ticket& ticket() { return ticket_; }
  void note(std::string_view k) {
    if (order_) order_->emplace_back(k);
  }

 private:
  Ticket& ticket_;
  std::vector<std::string>* order_;
};

void WriteBooklet(Writer& w, const PaperOutputSettings& s) {
  w.note(tkey::kBookletLayout);
  w.ticket().setBoolean(kClient, tkey::kBookletLayout, s.bookletLayout);
  w.number(tkey::kBookletDrawOutlines, s.bookletDrawOutlines);
  // Only a job paper with a size can force the booklet to it: read back
  // what was just stored.
  const Dictionary* stock = w.ticket().getDictionary(key::kJobLevelStock);
  std::int32_t size = kUnset;
  const bool hasSize = DictionaryGetNumber(stock, key::kSize, size);
  if (s.bookletForceNewSize && hasSize) {
    w.note(key::kBookletForceNewSize);
    w.ticket().setBoolean(kSystemClient, key::kBookletForceNewSize, true);
  } else {
    w.remove(key::kBookletForceNewSize);
  }
  w.number(tkey::kGutter, s.gutter, kSystemClient);
  w.number(tkey::kCreep, s.creep, kSystemClient);
}

void WriteDuplex(Writer& w, const PaperOutputSettings& s) {
  if (s.duplex == kUnset) {
    w.remove(key::kFinishingDuplex);
    return;
  }
  w.number(key::kFinishingDuplex, s.duplex);
  // The platform's setting uses the same three values; keep it in step.
  if (KeywordPairChoiceForValue(PPDDuplexMap, s.duplex)) w.number(key::kPMDuplexing, s.duplex);
}

// ---- Finishing menu ------------------------------------------------------------------------

enum class Group : std::uint8_t { None, Staple, Punch, ZFold };

struct FinishingMenuRow {
  const char* textKey;
  std::uint32_t command;
  FinishingItemKind kind;
  std::int32_t option;
  Group group;
  bool excludesBooklet;  // choosing it turns the booklet layout off
  bool dialog;
  std::array<std::string_view, 8> features;  // none: always
};

// "FMul" is decided by the groups appended before it; see PopulateFinishingMenu.
constexpr FinishingMenuRow kFinishingMenu[] = {
    {"Printer Default",
     FourCC("Pdef"),
     FinishingItemKind::Choice,
     finishing::kPrinterDefault,
     Group::None,
     false,
     false,
     {}},
    {"None",
     FourCC("None"),
     FinishingItemKind::Choice,
     finishing::kNone,
     Group::None,
     false,
     false,
     {}},
    {"1 Staple...",
     FourCC("Stp1"),
     FinishingItemKind::Choice,
     finishing::kOneStaple,
     Group::Staple,
     true,
     true,
     {"1StapleTL", "1StapleTR", "1StapleBR", "1StapleBL"}},
    {"2 Staples...",
     FourCC("Stp2"),
     FinishingItemKind::Choice,
     finishing::kTwoStaples,
     Group::Staple,
     true,
     true,
     {"2StaplesT", "2StaplesR", "2StaplesB", "2StaplesL"}},
    {"Center Staple...",
     FourCC("CStp"),
     FinishingItemKind::Choice,
     finishing::kCenterStaple,
     Group::Staple,
     true,
     true,
     {"1StapleT", "1StapleR", "1StapleB", "1StapleL"}},
    {"Bind...",
     FourCC("Bind"),
     FinishingItemKind::Choice,
     finishing::kBind,
     Group::None,
     true,
     true,
     {"BindLeft"}},
    {"2 Hole Punch...",
     FourCC("Hpn2"),
     FinishingItemKind::Choice,
     finishing::kTwoHolePunch,
     Group::Punch,
     true,
     true,
     {"2HolePunchL", "2HolePunchT", "2HolePunchR", "2HolePunchB"}},
    {"3 Hole Punch...",
     FourCC("Hpn3"),
     FinishingItemKind::Choice,
     finishing::kThreeHolePunch,
     Group::Punch,
     true,
     true,
     {"3HolePunchL", "3HolePunchT", "3HolePunchR", "3HolePunchB"}},
    {"4 Hole Punch...",
     FourCC("Hpn4"),
     FinishingItemKind::Choice,
     finishing::kFourHolePunch,
     Group::Punch,
     true,
     true,
     {"4HolePunchL", "4HolePunchT", "4HolePunchR", "4HolePunchB"}},
    {"Fold...",
     FourCC("Fold"),
     FinishingItemKind::Choice,
     finishing::kFold,
     Group::None,
     true,
     true,
     {"BiFoldMultiple", "BiFoldStapleMultiple", "BiFoldSingleInside", "BiFoldSingleOutside",
      "CFoldSingleInside", "CFoldSingleOutside", "ZFoldSingleInside", "ZFoldSingleOutside"}},
    {"Z Fold Half Sheet...",
     FourCC("Zfol"),
     FinishingItemKind::Choice,
     finishing::kZFoldHalfSheet,
     Group::ZFold,
     true,
     true,
     {"ZFoldHalfLeft", "ZFoldHalfRight"}},
    {"Multiple Finishing...",
     FourCC("FMul"),
     FinishingItemKind::Choice,
     finishing::kMultiple,
     Group::None,
     true,
     true,
     {}},
    {"SignatureBooklet",
     FourCC("FSBM"),
     FinishingItemKind::Choice,
     finishing::kSignatureBooklet,
     Group::None,
     true,
     false,
     {"SBM"}},
    {"Custom...",
     FourCC("Cust"),
     FinishingItemKind::Choice,
     finishing::kCustom,
     Group::None,
     false,
     true,
     {"Custom"}},
    {"-", 0, FinishingItemKind::Separator, -1, Group::None, false, false, {}},
    {"Slip Sheets",
     FourCC("Spsh"),
     FinishingItemKind::SlipSheets,
     -1,
     Group::None,
     false,
     false,
     {"SlipSheets"}},
    {"Offset/Subset...",
     FourCC("Ofsb"),
     FinishingItemKind::Offset,
     -1,
     Group::None,
     false,
     true,
     {"Offset"}},
    {"-", 0, FinishingItemKind::Separator, -1, Group::None, false, false, {}},
    {"Booklet Creation...",
     FourCC("Bkcr"),
     FinishingItemKind::Choice,
     finishing::kBooklet,
     Group::None,
     true,
     true,
     {"BiFoldMultiple", "BiFoldStapleMultiple"}},
};

const FinishingMenuRow* MenuRowFor(std::int32_t option) {
  for (const FinishingMenuRow& row : kFinishingMenu) {
    if (row.kind == FinishingItemKind::Choice && row.option == option) return &row;
  }
  return nullptr;
}

// True for a row without features, else when any of them is installed.
bool RowInstalled(const FinishingMenuRow& row) {
  if (row.features[0].empty()) return true;
  return std::any_of(row.features.begin(), row.features.end(),
                     [](std::string_view f) { return !f.empty() && getInstalledFeature(f); });
}

std::string FeatureFor(const FinishingValue& v, std::int32_t holes) {
  if (v.key != key::kFinishingHolePunch || holes == 0) return std::string(v.feature);
  return std::to_string(holes) + std::string(v.feature);
}

bool ValueInstalled(const FinishingValue& v, std::int32_t holes) {
  if (v.key == key::kFinishingHolePunchOptions) {
    for (const char edge : {'L', 'T', 'R', 'B'}) {
      if (getInstalledFeature(std::string(v.feature) + edge)) return true;
    }
    return false;
  }
  if (v.key == key::kFinishingHolePunch && holes == 0) {
    for (const std::int32_t n : {2, 3, 4}) {
      if (getInstalledFeature(FeatureFor(v, n))) return true;
    }
    return false;
  }
  return getInstalledFeature(FeatureFor(v, holes));
}

const FinishingValue* ValueRow(std::string_view k, std::int32_t value) {
  for (const FinishingValue& v : kFinishingValues) {
    if (v.key == k && v.value == value) return &v;
  }
  return nullptr;
}

// Keys of the sub-values an option reads, in the writer's terms.
std::vector<std::string_view> KeysReadBy(std::int32_t option) {
  std::vector<std::string_view> keys;
  const FinishingChoice* c = FindFinishingChoice(option);
  if (!c) return keys;
  if (c->stapleKey == kAnyStaple) {
    keys = {key::kFinishingStaple1, key::kFinishingStaple2, key::kFinishingStapleCenter};
  } else if (!c->stapleKey.empty()) {
    keys.push_back(c->stapleKey);
  }
  if (!c->foldKey.empty()) keys.push_back(c->foldKey);
  if (c->punch) {
    keys.push_back(key::kFinishingHolePunch);
    keys.push_back(key::kFinishingHolePunchOptions);
  }
  return keys;
}

// ---- Enabling rules ---------------------------------------------------------------------------

struct EnablingRule {
  PaperOutputControl control;
  bool (*enabled)(const PaperOutputSettings&);
};

constexpr EnablingRule kEnablingRules[] = {
    // Only job types with something to set up open the set-up dialog.
    {PaperOutputControl::JobTypeSetup,
     [](const PaperOutputSettings& s) {
       return JobTypeHasSettings(JobTypeSettings::FromDictionary(s.jobType).jobType);
     }},
    // A booklet made by the finisher goes to the booklet bin.
    {PaperOutputControl::OutputDestination,
     [](const PaperOutputSettings& s) {
       return !BookletFinishingFixesOutputBin(s.finishingOptions);
     }},
    // Gutter, creep, borders and the forced size belong to the booklet layout.
    {PaperOutputControl::BookletOptions,
     [](const PaperOutputSettings& s) { return s.bookletLayout; }},
    // The booklet layout prints both sides itself.
    {PaperOutputControl::Duplex, [](const PaperOutputSettings& s) { return !s.bookletLayout; }},
    // Nothing to finish while a transparency is the job's paper.
    {PaperOutputControl::FinishingButton,
     [](const PaperOutputSettings& s) { return s.jobStock.type() != kStockTypeTransparency; }},
};

}  // namespace

// ---- Job type ----------------------------------------------------------------------------------

JobTypeSettings JobTypeSettings::FromDictionary(const Dictionary& d) {
  JobTypeSettings j;
  DictionaryGetInt32(&d, key::kJobTypeMediaType, j.mediaType);
  j.useJobName = d.getBool(key::kJobTypeUseJobName).value_or(false);
  DictionaryGetInt32(&d, key::kJobTypeJobType, j.jobType);
  if (const std::string* v = StringIn(d, key::kJobTypeSavedJobName)) j.savedJobName = *v;
  if (const std::string* v = StringIn(d, key::kJobTypeSavedJobLocation)) j.savedJobLocation = *v;
  if (const std::string* v = StringIn(d, kJobTypeSecurePrintPassword)) j.securePrintPassword = *v;
  if (const std::string* v = StringIn(d, kJobTypeDelayedPrintTime)) j.delayedPrintTime = *v;
  DictionaryGetInt32(&d, key::kJobTypeSaveDisposition, j.saveDisposition);
  return j;
}

Dictionary JobTypeSettings::asTicket() const {
  Dictionary d;
  WriteTicketValue(&d, key::kJobTypeMediaType, mediaType);
  if (useJobName) d.set(key::kJobTypeUseJobName, Value(true));
  WriteTicketValue(&d, key::kJobTypeJobType, jobType);
  d.set(key::kJobTypeSavedJobName, Value(savedJobName));
  d.set(key::kJobTypeSavedJobLocation, Value(savedJobLocation));
  if (!securePrintPassword.empty()) {
    d.set(kJobTypeSecurePrintPassword, Value(securePrintPassword));
  }
  if (!delayedPrintTime.empty()) d.set(kJobTypeDelayedPrintTime, Value(delayedPrintTime));
  if (saveDisposition != kUnset)
    WriteTicketValue(&d, key::kJobTypeSaveDisposition, saveDisposition);
  return d;
}

Dictionary DefaultJobTypeDictionary() {
  return JobTypeSettings{}.asTicket();
}

bool JobTypeHasSettings(std::int32_t jobType) {
  return jobType == jobtype::kSave || jobType == jobtype::kSecurePrint ||
         jobType == jobtype::kDelayedPrint;
}

// ---- Reading and writing
// -------------------------------------------------------------------------

std::int32_t* FinishingField(PaperOutputSettings& s, std::string_view k) {
  for (const NumberKey& n : kFinishingKeys) {
    if (n.key == k) return &(s.*n.field);
  }
  return nullptr;
}

std::int32_t FinishingFieldValue(const PaperOutputSettings& s, std::string_view k) {
  for (const NumberKey& n : kFinishingKeys) {
    if (n.key == k) return s.*n.field;
  }
  return 0;
}

void ReadPaperOutputSettings(const Ticket& ticket, PaperOutputSettings& s,
                             const std::optional<std::string>& ppdDuplexDefault) {
  s.jobStock = Stock(ticket.getDictionary(key::kJobLevelStock));
  s.outputDestination = NumberOr(ticket, key::kOutputDestination, kOutputDestinationPrinterDefault);
  s.outputColor = NumberOr(ticket, key::kOutputColor, 2);
  const Dictionary* jobType = ticket.getDictionary(key::kJobType);
  s.jobType = jobType ? *jobType : DefaultJobTypeDictionary();
  s.backgroundForms = BackgroundFormsOptions(ticket.getDictionary(tkey::kBackgroundForms));
  if (ticket.getBoolean(tkey::kBookletLayout).value_or(false)) s.bookletLayout = true;
  ticket.getNumber(tkey::kBookletDrawOutlines, s.bookletDrawOutlines);
  s.bookletForceNewSize = ticket.getBoolean(key::kBookletForceNewSize).value_or(false);
  s.gutter = NumberOr(ticket, tkey::kGutter, kDefaultGutter);
  s.creep = NumberOr(ticket, tkey::kCreep, 0);
  s.duplex = DuplexFrom(ticket, ppdDuplexDefault);
  for (const NumberKey& n : kFinishingKeys) s.*n.field = NumberOr(ticket, n.key, n.absent);
  const std::string* custom = ticket.getString(key::kFinishingCustom);
  s.custom = custom ? std::optional<std::string>(*custom) : std::nullopt;
}

void ReadPaperOutputJobInfo(const Ticket& printSettings, const Ticket* pageFormat,
                            PaperOutputSettings& s) {
  const std::string* name = printSettings.getString(key::kPMJobName);
  s.jobName = name ? *name : "Unknown";
  if (pageFormat) pageFormat->getNumber(tkey::kPMOrientation, s.orientation);
}

void WritePaperOutputSettings(Ticket& ticket, const PaperOutputSettings& s,
                              std::vector<std::string>* order) {
  Writer w(ticket, order);
  w.note(key::kJobLevelStock);
  ticket.setDictionary(kClient, key::kJobLevelStock, s.jobStock.asTicket());
  if (BookletFinishingFixesOutputBin(s.finishingOptions)) {
    w.remove(key::kOutputDestination);
  } else {
    w.number(key::kOutputDestination, s.outputDestination);
  }
  w.number(key::kOutputColor, s.outputColor);
  w.note(key::kJobType);
  ticket.setDictionary(kClient, key::kJobType, s.jobType);
  w.note(tkey::kBackgroundForms);
  ticket.setDictionary(kClient, tkey::kBackgroundForms, s.backgroundForms.asTicket());
  WriteBooklet(w, s);
  WriteDuplex(w, s);
  for (const NumberKey& n : kFinishingKeys) w.number(n.key, s.*n.field);
  if (s.custom) {
    w.note(key::kFinishingCustom);
    ticket.setString(kClient, key::kFinishingCustom, *s.custom);
  } else {
    w.remove(key::kFinishingCustom);
  }
}

// ---- Finishing menu
// ---------------------------------------------------------------------------------

std::vector<FinishingMenuItem> PopulateFinishingMenu() {
  std::vector<FinishingMenuItem> menu;
  bool staple = false;
  bool punch = false;
  bool zFold = false;
  for (const FinishingMenuRow& row : kFinishingMenu) {
    bool add = RowInstalled(row);
    // Several finishings at once only when two kinds exist to combine.
    if (row.option == finishing::kMultiple) add = int(staple) + int(punch) + int(zFold) >= 2;
    if (!add) continue;
    FinishingMenuItem item{row.textKey, row.command, row.kind, row.option};
    // Bind with a single edge needs no dialog.
    if (row.option == finishing::kBind &&
        AvailableFinishingValues(key::kFinishingBind).size() < 2) {
      item.textKey = "Bind";
    }
    staple |= row.group == Group::Staple;
    punch |= row.group == Group::Punch;
    zFold |= row.group == Group::ZFold;
    menu.push_back(std::move(item));
  }
  return menu;
}

std::vector<bool> MarkFinishingMenu(const std::vector<FinishingMenuItem>& menu,
                                    const PaperOutputSettings& s) {
  std::vector<bool> marks;
  marks.reserve(menu.size());
  for (const FinishingMenuItem& item : menu) {
    switch (item.kind) {
      case FinishingItemKind::Choice:
        marks.push_back(item.option == s.finishingOptions);
        break;
      case FinishingItemKind::SlipSheets:
        marks.push_back(s.slipSheet == finishing::kSlipSheetsOn);
        break;
      case FinishingItemKind::Offset:
        marks.push_back(s.offset >= 3 || s.offsetEnableSubset != 0);
        break;
      case FinishingItemKind::Separator:
        marks.push_back(false);
        break;
    }
  }
  return marks;
}

bool FinishingOptionHasDialog(std::int32_t option) {
  if (option == finishing::kBind) return AvailableFinishingValues(key::kFinishingBind).size() >= 2;
  const FinishingMenuRow* row = MenuRowFor(option);
  return row && row->dialog;
}

void ClearUnusedFinishingValues(PaperOutputSettings& s, std::int32_t option) {
  const std::vector<std::string_view> used = KeysReadBy(option);
  for (const FinishingValue& v : kFinishingValues) {
    if (std::find(used.begin(), used.end(), v.key) == used.end()) *FinishingField(s, v.key) = 0;
  }
  if (option != finishing::kCustom) s.custom.reset();
}

void ChooseFinishingOption(PaperOutputSettings& s, std::int32_t option) {
  s.finishingOptions = option;
  ClearUnusedFinishingValues(s, option);
  if (option == finishing::kSignatureBooklet) s.bookletFoldStaple = 15;
  if (option == finishing::kBind) {
    const auto edges = AvailableFinishingValues(key::kFinishingBind);
    if (!edges.empty() && !ValueRow(key::kFinishingBind, s.bind)) s.bind = edges.front()->value;
  }
  if (FinishingExcludesBooklet(option)) UnselectBooklet(s);
}

std::vector<const FinishingValue*> AvailableFinishingValues(std::string_view k,
                                                            std::int32_t holes) {
  std::vector<const FinishingValue*> values;
  for (const FinishingValue& v : kFinishingValues) {
    if (v.key == k && ValueInstalled(v, holes)) values.push_back(&v);
  }
  return values;
}

std::vector<std::int32_t> AvailableHoleCounts() {
  std::vector<std::int32_t> counts;
  for (const FinishingValue* v : AvailableFinishingValues(key::kFinishingHolePunchOptions)) {
    counts.push_back(v->value);
  }
  return counts;
}

std::string CreateFinishingString(const PaperOutputSettings& s, const Localizer& localize) {
  std::string text;
  const auto append = [&](std::string_view k, std::string_view separator) {
    if (!text.empty()) text += separator;
    text += localize(k);
  };
  const FinishingMenuRow* row = MenuRowFor(s.finishingOptions);
  if (!row) {
    append("Printer Default", "");
  } else {
    std::string_view name = row->textKey;
    if (name.ends_with("...")) name.remove_suffix(3);
    append(name, "");
    std::string_view separator = ": ";
    for (std::string_view k : KeysReadBy(s.finishingOptions)) {
      const FinishingValue* v = ValueRow(k, FinishingFieldValue(s, k));
      if (!v) continue;
      append(v->nameKey, separator);
      separator = ", ";
    }
    if (s.finishingOptions == finishing::kCustom && s.custom && !s.custom->empty()) {
      text += separator;
      text += *s.custom;
    }
  }
  if (s.slipSheet == finishing::kSlipSheetsOn) append("Slip Sheets", "; ");
  if (s.offset >= 3 || s.offsetEnableSubset != 0) append("Offset", "; ");
  return text;
}

void UnselectBooklet(PaperOutputSettings& s) {
  s.bookletLayout = false;
}

bool FinishingExcludesBooklet(std::int32_t option) {
  const FinishingMenuRow* row = MenuRowFor(option);
  return row && row->excludesBooklet;
}

// ---- Output destinations
// ----------------------------------------------------------------------------

std::vector<OutputDestinationItem> PopulateOutputDestination() {
  std::vector<OutputDestinationItem> items = {{"Printer Default", kOutputDestinationPrinterDefault},
                                              {"Auto", 1}};
  std::string_view finisher;
  getInstallableOptionValue("Option1", finisher);
  const bool finisherC = finisher == "BFMBFM" || finisher == "BFMBFMFTM";
  if (getInstalledFeature("StackerTray1Key")) {
    items.push_back({"Finisher B: Main Stacker", getInstalledFeature("StackerTray2Key") ? 12 : 4});
  }
  if (finisherC) {
    items.push_back({"Finisher C: Main Stacker", 17});
    items.push_back({"Finisher C: Top Tray", 16});
  }
  if (getInstalledFeature("AutoSwitchTrayKey")) items.push_back({"Finisher D: Top Tray", 18});
  if (getInstalledFeature("SimpleCatchTrayKey")) items.push_back({"Finisher B: Top Tray", 3});
  return items;
}

bool BookletFinishingFixesOutputBin(std::int32_t option) {
  return option == finishing::kSignatureBooklet || option == finishing::kBooklet;
}

// ---- Enabling rules
// ------------------------------------------------------------------------------------

bool PaperOutputControlEnabled(PaperOutputControl control, const PaperOutputSettings& s) {
  for (const EnablingRule& rule : kEnablingRules) {
    if (rule.control == control) return rule.enabled(s);
  }
  return true;
}

bool EnableDisableJobTypeSetupButton(const PaperOutputSettings& s) {
  return PaperOutputControlEnabled(PaperOutputControl::JobTypeSetup, s);
}

std::string AppendSeparatorSummary(std::int32_t count, const Stock& stock,
                                   const Localizer& localize) {
  std::string paper = stock.customName().value_or(std::string());
  if (paper.empty()) {
    const char* sizeKey = LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, stock.size());
    paper = localize(sizeKey ? sizeKey : "PrinterDefault");
  }
  char number[16];
  std::snprintf(number, sizeof number, "%d", static_cast<int>(count));
  return std::string(number) + " " + localize("Slip Sheets") + ": " + paper;
}

}  // namespace zorva
