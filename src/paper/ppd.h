// The printer's PPD as the product reads it: the process-wide current PPD
// (from the print session's CUPS queue or an explicit path), default and
// current choices, choice texts, the ticket values the keyword tables give
// them, the menu of choices a pop-up shows, and the installable options.
//
// Every libcups PPD call lives in ppd.cpp; callers hold PPDs only through
// the opaque handle below. Nothing here reports errors beyond its result: a
// missing PPD, option or choice gives nullptr, nullopt, -1 or an empty list.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/bundle.h"
#include "core/ticket.h"
#include "host/installable_options.h"
#include "host/ticket_helpers.h"

namespace zorva {

// An open PPD file. Opaque: only ppd.cpp sees libcups' structure.
class PPD;
struct PPDCloser {
  void operator()(PPD* ppd) const;
};
using PPDPtr = std::unique_ptr<PPD, PPDCloser>;

// Opens a PPD file or PPD text; nullptr when it cannot be read or parsed.
// libcups' own localisation for the user's language is applied.
PPDPtr PPDOpenFile(const std::filesystem::path& path);
PPDPtr PPDOpenData(std::span<const std::uint8_t> bytes);

// The PPD of a CUPS queue (fetched from the CUPS server the environment
// names), opened; nullptr when the queue or its PPD cannot be had.
PPDPtr PPDOpenQueue(const std::string& queueName);

// The current PPD: on first use, the current print session's explicit PPD
// path, else its queue's PPD. Kept until PPDCloseCurrent; a failure returns
// nullptr and the next call tries again.
PPD* PPDGetCurrent();
void PPDCloseCurrent();

// The PPD's "*Manufacturer" text, or nullopt. The printer's own features
// (device profile, installable options) are used only when it is exactly
// kZorvaManufacturer.
inline constexpr std::string_view kZorvaManufacturer = "Zorva";
std::optional<std::string> PPDManufacturer(const PPD* ppd);

// The text encoding of the PPD (Mac Roman for nullptr).
TextEncoding PPDGetEncoding(const PPD* ppd);

// Whether the PPD has an option with that keyword.
bool PPDHasOption(const PPD* ppd, std::string_view keyword);

// The option's default choice keyword, or nullopt.
std::optional<std::string> PPDCopyDefaultChoice(const PPD* ppd, std::string_view keyword);
// The human-readable text of a choice, in UTF-8, or nullopt.
std::optional<std::string> PPDCopyChoiceText(const PPD* ppd, std::string_view keyword,
                                             std::string_view choice);

// The ticket item holding the job's PPD choices: a dictionary of main keyword
// to choice keyword, which the print path hands to CUPS as job options
// ("-o Keyword=Choice").
inline constexpr std::string_view kPPDDictionaryKey = "com.zorva.print.PPDDictionary";

// The choice stored for keyword in the ticket's PPD dictionary, or nullopt.
std::optional<std::string> PPDCopyCurrentChoice(const Ticket& ticket, std::string_view keyword);
// Stores choice for keyword there (the dictionary is made when missing).
void PPDSetCurrentChoice(Ticket& ticket, std::string_view keyword, std::string_view choice);

// The ticket's PPD choices as CUPS job options ("Keyword", "Choice"), in
// keyword order; entries that are not text are left out.
std::vector<std::pair<std::string, std::string>> PPDJobOptions(const Ticket& ticket);

// Takes the ticket's choice, else the PPD's default; when there is one writes
// its ticket value (which may be -1) to value, otherwise leaves value alone.
void PPDGetTicketValueForChoiceOrDefault(const PPD* ppd, const Ticket& ticket,
                                         std::string_view keyword, std::int32_t& value);

// One item of a PPD choice menu: what the pop-up shows and what it stores.
struct PPDMenuItem {
  std::string text;    // the choice's text, UTF-8
  std::int32_t value;  // the ticket value
  std::string choice;  // the choice keyword
  friend bool operator==(const PPDMenuItem&, const PPDMenuItem&) = default;
};

// The items a pop-up for the main keyword shows, in PPD order. With
// checkConflicts the PPD's marks are reset to its defaults first and a
// choice whose marking conflicts with another marked option is left out.
// Choices the keyword tables do not know are left out with "Skipped
// unrecognized choice in PPD: <choice>" on standard error; a missing option
// gives no items and "Expected PPD option not found: <keyword>".
std::vector<PPDMenuItem> PPDPopulateMenuWithChoices(PPD* ppd, std::string_view keyword,
                                                    bool checkConflicts);

// A paper size of the PPD's "PageSize" option, with its dimensions in
// points (from "*PaperDimension"; 0 when the PPD gives none).
struct PPDPaperSize {
  std::string choice;
  std::string text;  // UTF-8
  double width = 0;
  double length = 0;
};
// Every "PageSize" choice in PPD order.
std::vector<PPDPaperSize> PPDPaperSizes(const PPD* ppd);

// A PPD option as the tool shows it.
struct PPDChoiceInfo {
  std::string choice;
  std::string text;    // UTF-8
  std::int32_t value;  // ticket value; -1 when the tables do not know it
};
struct PPDOptionInfo {
  std::string keyword;
  std::string text;  // UTF-8
  std::optional<std::string> defaultChoice;
  std::vector<PPDChoiceInfo> choices;
};
// The PPD's options that are main keywords of the keyword tables, in table
// order.
std::vector<PPDOptionInfo> PPDMainKeywordOptions(const PPD* ppd);
// The options of the group named exactly "InstallableOptions", in PPD order.
std::vector<PPDOptionInfo> PPDInstallableOptions(const PPD* ppd);

// Loads the installable options (option keyword to the keyword of its marked
// default choice, for every option of the group "InstallableOptions") and
// the feature table that turns them into features. Does nothing and returns
// false while options are loaded; otherwise true when at least one option
// was stored. UnloadInstallableOptions (host/installable_options.h) undoes it.
bool LoadInstallableOptions(PPD* ppd, const InstalledFeature* featureMap);

// The bundle's text for the label of the first feature row that matches
// ("STRING NOT FOUND" when the bundle lacks it); nullopt when no row matches
// or the row has no label.
std::optional<std::string> CopyLocalizedStringForInstalledFeatureFromPlugin(
    std::string_view feature, const Bundle* bundle);

}  // namespace zorva
