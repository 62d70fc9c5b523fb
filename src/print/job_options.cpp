// Job options from the settings and the job ticket. The job ticket document
// is the product's one statement of which IPP attribute a setting becomes;
// reading the standard attributes back out of it keeps the plain IPP view of
// the job and the controller's view the same without a second set of maps.
#include "print/job_options.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <array>
#include <memory>

#include "core/ticket_keys.h"
#include "host/setting_map.h"
#include "paper/ppd.h"

namespace zorva {

namespace {

// Settings whose ticket value is a PPD main keyword's value (the keyword
// tables' domain), with the platform item read when the first is absent.
struct PPDSettingRow {
  std::string_view key;
  std::string_view fallbackKey;
  const char* mainKeyword;
};
constexpr PPDSettingRow kPPDSettings[] = {
    {tkey::kFinishingDuplex, tkey::kPMDuplexing, "Duplex"},
    {tkey::kOutputColor, {}, "ZRColorMode"},
    {tkey::kLightenDarken, {}, "ZRImageQuality"},
};

// Job-template attributes of the job ticket that are standard IPP job
// attributes every IPP printer may honour.
constexpr std::array<std::string_view, 11> kStandardAttributes = {"media-col",
                                                                  "media",
                                                                  "finishings",
                                                                  "output-bin",
                                                                  "printer-resolution",
                                                                  "copies",
                                                                  "page-ranges",
                                                                  "job-account-id",
                                                                  "job-accounting-user-id",
                                                                  "job-hold-until",
                                                                  "orientation-requested"};

// The controller's colour effect, as the standard colour mode.
struct ColorModeRow {
  std::string_view effect;
  const char* mode;
};
constexpr ColorModeRow kColorModes[] = {{"monochrome-grayscale", "monochrome"}, {"color", "color"}};

// "Duplex" values to "sides".
struct SidesRow {
  std::int32_t duplex;
  const char* sides;
};
constexpr SidesRow kSides[] = {
    {1, "one-sided"}, {2, "two-sided-long-edge"}, {3, "two-sided-short-edge"}};

// Page-format orientation (0 portrait, 1 landscape, 2 reverse portrait, 3
// reverse landscape: the turned ones are odd) as orientation-requested.
constexpr int kOrientationRequested[] = {3, 4, 6, 5};

std::optional<std::int32_t> TicketInt(const Ticket& t, std::string_view key) {
  std::int32_t v = 0;
  if (key.empty() || !t.getNumber(key, v) || v == kUnset) return std::nullopt;
  return v;
}

bool PPDOffers(const PPD* ppd, const JobOption& o) {
  return ppd == nullptr || PPDCopyChoiceText(ppd, o.name, o.value).has_value();
}

// ---- Reading the job ticket ---------------------------------------------------------

struct XmlDocFree {
  void operator()(xmlDoc* d) const { xmlFreeDoc(d); }
};

std::string Prop(const xmlNode* node, const char* name) {
  xmlChar* v = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
  if (v == nullptr) return {};
  std::string s(reinterpret_cast<const char*>(v));
  xmlFree(v);
  return s;
}

std::string Text(const xmlNode* node) {
  xmlChar* v = xmlNodeGetContent(node);
  if (v == nullptr) return {};
  std::string s(reinterpret_cast<const char*>(v));
  xmlFree(v);
  return s;
}

std::string_view Name(const xmlNode* node) {
  return reinterpret_cast<const char*>(node->name);
}

std::vector<const xmlNode*> Elements(const xmlNode* parent) {
  std::vector<const xmlNode*> out;
  for (const xmlNode* c = parent ? parent->children : nullptr; c; c = c->next) {
    if (c->type == XML_ELEMENT_NODE) out.push_back(c);
  }
  return out;
}

const xmlNode* Child(const xmlNode* parent, std::string_view name) {
  for (const xmlNode* c : Elements(parent)) {
    if (Name(c) == name) return c;
  }
  return nullptr;
}

std::string Trimmed(std::string s) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
  while (!s.empty() && blank(s.back())) s.pop_back();
  const auto first = std::find_if_not(s.begin(), s.end(), blank);
  return std::string(first, s.end());
}

// Collections nest at most this deep in a ticket we write; deeper input is
// not ours and is cut off rather than followed.
constexpr int kMaxDepth = 8;

std::string OptionValue(const xmlNode* node, int depth);

std::string CollectionValue(const xmlNode* node, int depth) {
  std::string out = "{";
  for (const xmlNode* member : Elements(node)) {
    if (out.size() > 1) out += ' ';
    out += std::string(Name(member)) + "=" + OptionValue(member, depth + 1);
  }
  return out + "}";
}

std::string OptionValue(const xmlNode* node, int depth) {
  if (depth > kMaxDepth) return {};
  // The colour adjustments carry "syntax =", which XML reads as "syntax".
  const std::string syntax = Prop(node, "syntax");
  if (syntax == "collection") return CollectionValue(node, depth);
  if (syntax == "1setOf") {
    std::string out;
    for (const xmlNode* value : Elements(node)) {
      if (!out.empty()) out += ',';
      out += OptionValue(value, depth + 1);
    }
    return out;
  }
  if (syntax == "rangeOfInteger") {
    return Trimmed(Text(Child(node, "lower-bound"))) + "-" +
           Trimmed(Text(Child(node, "upper-bound")));
  }
  if (syntax == "resolution") {
    const std::string units = Trimmed(Text(Child(node, "units")));
    return Trimmed(Text(Child(node, "cross-feed"))) + "x" +
           Trimmed(Text(Child(node, "feed-direction"))) + (units == "4" ? "dpcm" : "dpi");
  }
  // libcups takes a single top-level value as it stands; inside a
  // collection its option parser reads quotes and escapes.
  std::string text = syntax == "name" || syntax == "text" ? Text(node) : Trimmed(Text(node));
  return depth == 0 ? text : QuotedOptionValue(text);
}

}  // namespace

std::string QuotedOptionValue(std::string_view text) {
  constexpr std::string_view kSpecial = " \t\n\r\v\f,'\"\\{}=";
  if (!text.empty() && text.find_first_of(kSpecial) == std::string_view::npos) {
    return std::string(text);
  }
  std::string out = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + "\"";
}

std::optional<std::int32_t> JobDuplexValue(const Ticket& settings, const PPD* ppd) {
  std::optional<std::int32_t> v = TicketInt(settings, tkey::kFinishingDuplex);
  if (!v) v = TicketInt(settings, tkey::kPMDuplexing);
  if (!v && ppd != nullptr) {
    if (std::optional<std::string> choice = PPDCopyDefaultChoice(ppd, "Duplex")) {
      v = PPDTicketValueForChoice("Duplex", choice->c_str());
    }
  }
  for (const SidesRow& row : kSides) {
    if (v && row.duplex == *v) return v;
  }
  return std::nullopt;
}

std::optional<std::string> JobSides(const Ticket& settings, const PPD* ppd) {
  const std::optional<std::int32_t> duplex = JobDuplexValue(settings, ppd);
  for (const SidesRow& row : kSides) {
    if (duplex && row.duplex == *duplex) return row.sides;
  }
  return std::nullopt;
}

JobOptions PPDChoiceOptions(const Ticket& settings, const PPD* ppd) {
  JobOptions options;
  const auto given = [&](std::string_view keyword) {
    return std::any_of(options.begin(), options.end(),
                       [&](const JobOption& o) { return o.name == keyword; });
  };
  for (const PPDSettingRow& row : kPPDSettings) {
    std::optional<std::int32_t> v = TicketInt(settings, row.key);
    if (!v) v = TicketInt(settings, row.fallbackKey);
    const char* choice = v ? PPDChoiceForTicketValue(row.mainKeyword, *v) : nullptr;
    if (choice == nullptr) continue;
    JobOption o{row.mainKeyword, choice};
    if (PPDOffers(ppd, o)) options.push_back(std::move(o));
  }
  for (auto& [keyword, choice] : PPDJobOptions(settings)) {
    JobOption o{std::move(keyword), std::move(choice)};
    if (!given(o.name) && PPDOffers(ppd, o)) options.push_back(std::move(o));
  }
  return options;
}

JobOptions StandardAttributesFromJobTicket(std::string_view jobTicket, std::string* jobName) {
  JobOptions options;
  if (jobTicket.empty() || jobTicket.size() > static_cast<std::size_t>(INT32_MAX)) return options;
  // Our own document, but read as carefully as any other: no network, no
  // DTD, no entity expansion. Recovery, because the accounting lines close
  // job-account-id with the end tag the accounting server expects, which no
  // strict reader accepts.
  std::unique_ptr<xmlDoc, XmlDocFree> doc(
      xmlReadMemory(jobTicket.data(), static_cast<int>(jobTicket.size()), "job-ticket.xml", nullptr,
                    XML_PARSE_NONET | XML_PARSE_RECOVER | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  const xmlNode* root = doc ? xmlDocGetRootElement(doc.get()) : nullptr;
  if (root == nullptr || Name(root) != "jotf") return options;
  if (jobName != nullptr) {
    if (const xmlNode* name = Child(Child(root, "jotf-operation-attributes"), "job-name")) {
      *jobName = Text(name);
    }
  }
  for (const xmlNode* attribute : Elements(Child(root, "job-template-attributes"))) {
    const std::string_view name = Name(attribute);
    if (name == "color-effects-type") {
      const std::string effect = Trimmed(Text(attribute));
      for (const ColorModeRow& row : kColorModes) {
        if (row.effect == effect) options.push_back({"print-color-mode", row.mode});
      }
      continue;
    }
    if (std::find(kStandardAttributes.begin(), kStandardAttributes.end(), name) ==
        kStandardAttributes.end()) {
      continue;
    }
    std::string value = OptionValue(attribute, 0);
    if (!value.empty()) options.push_back({std::string(name), std::move(value)});
  }
  return options;
}

JobOptions StandardAttributesFromSettings(const Ticket& settings,
                                          const std::optional<PageSizePoints>& page,
                                          bool hasMedia) {
  JobOptions options;
  if (std::optional<std::int32_t> copies = TicketInt(settings, tkey::kPMCopies);
      copies && *copies > 0) {
    options.push_back({"copies", std::to_string(*copies)});
  }
  if (std::optional<bool> collate = settings.getBoolean(tkey::kPMCopyCollate)) {
    options.push_back({"multiple-document-handling", *collate
                                                         ? "separate-documents-collated-copies"
                                                         : "separate-documents-uncollated-copies"});
  }
  const std::int32_t first = TicketInt(settings, tkey::kPMFirstPage).value_or(1);
  const std::int32_t last = TicketInt(settings, tkey::kPMLastPage).value_or(kAllPages);
  if (first >= 1 && last >= first && (first > 1 || last < kAllPages)) {
    options.push_back({"page-ranges", std::to_string(first) + "-" + std::to_string(last)});
  }
  if (page) {
    if (page->orientation >= 0 && page->orientation < 4) {
      options.push_back(
          {"orientation-requested", std::to_string(kOrientationRequested[page->orientation])});
    }
    std::uint32_t x = 0, y = 0;
    if (!hasMedia && MediaSizeForPage({page->width, page->length, 0}, &x, &y)) {
      options.push_back({"media-col", "{media-size={x-dimension=" + std::to_string(x) +
                                          " y-dimension=" + std::to_string(y) + "}}"});
    }
  }
  return options;
}

}  // namespace zorva
