// The job options of a print job, as CUPS takes them ("name=value" pairs):
// the PPD choices of the settings that have a PPD main keyword, and the
// standard IPP job attributes the settings map to, so that a PPD queue and
// any IPP printer honour what they can of the job even without reading the
// job ticket. The standard attributes are read back from the job ticket the
// job carries, so the two never tell the printer different things.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "jobticket/jotf_page_size.h"

namespace zorva {

class PPD;

struct JobOption {
  std::string name;
  std::string value;
  friend bool operator==(const JobOption&, const JobOption&) = default;
};
using JobOptions = std::vector<JobOption>;

// The last page of a page range that means "to the end" (the platform's
// print settings keep copies, collation and the first and last page, 1-based).
inline constexpr std::int32_t kAllPages = 999999;

// The job's two-sided choice as a "Duplex" ticket value (1 none, 2 long
// edge, 3 short edge): the panel's choice, else the platform's duplex
// setting, else the PPD's default "Duplex" choice. nullopt when none of
// them gives a known value.
std::optional<std::int32_t> JobDuplexValue(const Ticket& settings, const PPD* ppd);
// The job's "sides" keyword from that value; nullopt when there is none.
std::optional<std::string> JobSides(const Ticket& settings, const PPD* ppd);

// PPD choices as job options: the settings that have a PPD main keyword,
// then the ticket's own PPD choices for keywords not yet given. With a PPD,
// only choices the PPD offers are kept.
JobOptions PPDChoiceOptions(const Ticket& settings, const PPD* ppd);

// The standard job attributes named in a job ticket document (sides is left
// to JobDuplexValue), as option values; *jobName gets the ticket's job name
// when it has one. A document that does not parse gives none.
JobOptions StandardAttributesFromJobTicket(std::string_view jobTicket, std::string* jobName);

// The standard attributes of the platform's items and the page format:
// copies, collation, page range, orientation, and the paper size when the
// job ticket gave none (hasMedia false).
JobOptions StandardAttributesFromSettings(const Ticket& settings,
                                          const std::optional<PageSizePoints>& page, bool hasMedia);

// A value as libcups' option parser reads it back unchanged: text with
// blanks, commas, quotes, braces or backslashes is quoted and escaped.
std::string QuotedOptionValue(std::string_view text);

}  // namespace zorva
