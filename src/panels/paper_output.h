// The Paper/Output panel's settings and how they travel between the print
// settings and the panel: the keys it owns with their absent values, the
// order it reads and writes them in, the job-type dictionary, the duplex
// fallback chain, the finishing menu and output destinations the installed
// finisher allows, the one-line finishing description, and the rules that
// enable and disable its controls. No Qt here: the view calls in.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "core/value.h"
#include "host/setting_map.h"
#include "jobticket/jotf_finishing.h"
#include "model/background_forms.h"
#include "model/stock.h"

namespace zorva {

// ---- Job type ----------------------------------------------------------------------
namespace jobtype {
inline constexpr std::int32_t kPrint = 1;
inline constexpr std::int32_t kHold = 2;
inline constexpr std::int32_t kSave = 3;
inline constexpr std::int32_t kSecurePrint = 5;
inline constexpr std::int32_t kDelayedPrint = 6;
// "SaveDisposition" of a saved job: 2 prints it as well.
inline constexpr std::int32_t kSaveOnly = 1;
inline constexpr std::int32_t kPrintAndSave = 2;
}  // namespace jobtype

inline constexpr std::string_view kDefaultSavedJobLocation = "file:///job-repository/";
inline constexpr std::string_view kJobTypeSecurePrintPassword = "SecurePrintPassword";
inline constexpr std::string_view kJobTypeDelayedPrintTime = "DelayedPrintTime";

extern const SettingMap JobTypeMap[];
// The saved job's format ("MediaType"), as the job ticket numbers them.
extern const SettingMap JobFormatMap[];
extern const SettingMap OutputDestinationMap[];

// The "com.zorva.print.JobType" dictionary's entries.
struct JobTypeSettings {
  std::int32_t mediaType = 1;
  bool useJobName = false;
  std::int32_t jobType = jobtype::kPrint;
  std::string savedJobName;
  std::string savedJobLocation = std::string(kDefaultSavedJobLocation);
  std::string securePrintPassword;  // kept as typed; never shown elsewhere
  std::string delayedPrintTime;     // "HH:MM", empty for none
  std::int32_t saveDisposition = kUnset;

  static JobTypeSettings FromDictionary(const Dictionary& d);
  Dictionary asTicket() const;
};
// The dictionary a ticket without one gets.
Dictionary DefaultJobTypeDictionary();
// Whether a job type has a set-up dialog.
bool JobTypeHasSettings(std::int32_t jobType);

// ---- Panel settings ----------------------------------------------------------------
inline constexpr std::int32_t kOutputDestinationPrinterDefault = 19;
inline constexpr std::int32_t kDefaultGutter = 24;

struct PaperOutputSettings {
  Stock jobStock;
  std::int32_t outputDestination = kOutputDestinationPrinterDefault;
  std::int32_t outputColor = 2;
  Dictionary jobType = DefaultJobTypeDictionary();
  BackgroundFormsOptions backgroundForms;
  bool bookletLayout = false;
  std::int32_t bookletDrawOutlines = 0;
  bool bookletForceNewSize = false;
  std::int32_t gutter = kDefaultGutter;
  std::int32_t creep = 0;
  std::int32_t duplex = kUnset;  // PlexMap value
  std::int32_t finishingOptions = finishing::kPrinterDefault;
  std::int32_t offset = 1;
  std::int32_t offsetEnableSubset = 0;
  std::int32_t pagesPerSubset = 1;
  std::int32_t slipSheet = 0;
  std::int32_t fold = 0;
  std::int32_t zFold = 0;
  std::int32_t holePunch = 0;
  std::int32_t holePunchOptions = 0;
  std::int32_t staple1 = 0;
  std::int32_t staple2 = 0;
  std::int32_t stapleCenter = 0;
  std::int32_t bind = 0;
  std::int32_t bookletFoldStaple = 0;
  std::optional<std::string> custom;
  // Read only: the page format's orientation and the job's name.
  std::int32_t orientation = 1;
  std::string jobName = "Unknown";
};

// The finishing sub-value a key holds in the settings (nullptr for a key
// that is not one of them).
std::int32_t* FinishingField(PaperOutputSettings& s, std::string_view key);
std::int32_t FinishingFieldValue(const PaperOutputSettings& s, std::string_view key);

// Reads the panel's keys into s in their order. Absent keys give their
// defaults, except the booklet layout (only true turns it on) and its page
// borders (absent: unchanged). ppdDuplexDefault is the PPD's default choice
// of "Duplex", the last step of the duplex fallback.
void ReadPaperOutputSettings(const Ticket& ticket, PaperOutputSettings& s,
                             const std::optional<std::string>& ppdDuplexDefault);
// The job's name and the page orientation (Initialize's reading).
void ReadPaperOutputJobInfo(const Ticket& printSettings, const Ticket* pageFormat,
                            PaperOutputSettings& s);

// Writes the panel's keys in their order; each key touched (written or
// removed) is appended to order when given.
void WritePaperOutputSettings(Ticket& ticket, const PaperOutputSettings& s,
                              std::vector<std::string>* order = nullptr);

// ---- Finishing menu ------------------------------------------------------------------
enum class FinishingItemKind { Choice, Separator, SlipSheets, Offset };

struct FinishingMenuItem {
  std::string textKey;
  std::uint32_t command = 0;
  FinishingItemKind kind = FinishingItemKind::Choice;
  std::int32_t option = -1;  // the FinishingOptions value of a choice
};

// The menu the installed options allow, in menu order.
std::vector<FinishingMenuItem> PopulateFinishingMenu();
// Which items carry a mark for the current values (one per item).
std::vector<bool> MarkFinishingMenu(const std::vector<FinishingMenuItem>& menu,
                                    const PaperOutputSettings& s);
// Whether choosing the option needs a dialog to fill its values.
bool FinishingOptionHasDialog(std::int32_t option);
// Takes a choice that needs no dialog (printer default, none, signature
// booklet, bind with one edge); clears the sub-values the choice does not use.
void ChooseFinishingOption(PaperOutputSettings& s, std::int32_t option);
// Clears every sub-value the option does not read.
void ClearUnusedFinishingValues(PaperOutputSettings& s, std::int32_t option);

// The sub-values a dialog may offer for a key (and, for punch edges, a hole
// count), filtered by the installed features.
std::vector<const FinishingValue*> AvailableFinishingValues(std::string_view key,
                                                            std::int32_t holes = 0);
// The hole counts any punch edge is installed for.
std::vector<std::int32_t> AvailableHoleCounts();

// The one-line description of the current finishing: each key is passed to
// localize and the texts are joined.
using Localizer = std::function<std::string(std::string_view key)>;
std::string CreateFinishingString(const PaperOutputSettings& s, const Localizer& localize);

// Turns the booklet layout off.
void UnselectBooklet(PaperOutputSettings& s);
// Whether choosing the finishing turns the booklet layout off.
bool FinishingExcludesBooklet(std::int32_t option);

// ---- Output destinations -------------------------------------------------------------
struct OutputDestinationItem {
  std::string textKey;
  std::int32_t value;
};
std::vector<OutputDestinationItem> PopulateOutputDestination();
// A booklet made by the finisher leaves it no choice of output bin.
bool BookletFinishingFixesOutputBin(std::int32_t option);

// ---- Enabling rules --------------------------------------------------------------------
enum class PaperOutputControl {
  JobTypeSetup,
  OutputDestination,
  BookletOptions,
  Duplex,
  FinishingButton,
};
// Whether the control is enabled for the settings (one table holds the rules).
bool PaperOutputControlEnabled(PaperOutputControl control, const PaperOutputSettings& s);
bool EnableDisableJobTypeSetupButton(const PaperOutputSettings& s);

// The summary line for count separator sheets of a stock.
std::string AppendSeparatorSummary(std::int32_t count, const Stock& stock,
                                   const Localizer& localize);

}  // namespace zorva
