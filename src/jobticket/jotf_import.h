// Job-ticket import: reads JOTF documents back into print settings. Each
// importable feature of the device profile names, by its "ID", where in the
// document its value sits and which setting it becomes; the values of all
// chosen files are collected in one settings dictionary that is then merged
// into the print-settings ticket. Documents are untrusted: the XML reader
// never touches the network, never loads the DTD or external entities, and
// bounds entity expansion.
#pragma once

#include <libxml/tree.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/print_session.h"
#include "core/status.h"
#include "core/value.h"

namespace zorva {

// "Keyword", "Number", "Name" or "--Unknown--", the same strings as the
// device profile's syntaxes.
inline constexpr std::string_view kJotfSyntaxKeyword = "Keyword";
inline constexpr std::string_view kJotfSyntaxNumber = "Number";
inline constexpr std::string_view kJotfSyntaxName = "Name";
inline constexpr std::string_view kJotfSyntaxUnknown = "--Unknown--";

// Finding elements below a start node (the node, its siblings and their
// descendants) by path ".name.child...": the first in depth-first order, the
// answer of JOTFImportGetNode. The literal search walks the whole document
// for every path asked; this one is kept for the document, remembers every
// answer, and walks only the elements whose path leads towards the one asked
// (no other subtree can hold it), so a ticket of 100,000 pages costs a few
// steps per feature instead of a walk over every page.
class JotfPathIndex {
 public:
  explicit JotfPathIndex(xmlNodePtr start) : start_(start) {}
  xmlNodePtr find(std::string_view path) const;

 private:
  xmlNodePtr start_;
  mutable std::unordered_map<std::string, xmlNodePtr> found_;
};

// One pass over a feature list.
struct JotfImportContext {
  xmlDocPtr document = nullptr;
  xmlNodePtr start = nullptr;            // first child of the attribute group
  const JotfPathIndex* paths = nullptr;  // of start; found by walking when null
  Dictionary* settings = nullptr;
  std::size_t index = 0;  // feature being applied
  std::size_t count = 0;
};

struct JotfImportOptions {
  bool recover = false;  // read damaged files with the XML reader's recovery mode
};

// What recovery skipped in one file.
struct JotfImportReport {
  int errors = 0;
  int firstErrorLine = 0;
  std::string firstError;
};

// Reads one file into settings: 0, or kPrintSessionErr (-208) when it does not
// parse (nothing is added then).
Status JOTFImportFileAtPath(const std::filesystem::path& path, Dictionary* settings,
                            const JotfImportOptions& options = {},
                            JotfImportReport* report = nullptr);
// The same for a document in memory.
Status JOTFImportDocumentText(std::string_view text, Dictionary* settings,
                              const JotfImportOptions& options = {},
                              JotfImportReport* report = nullptr);

// Imports every file into one settings dictionary and merges it into the
// current print session's print settings. Files that do not parse are listed
// in *failed (when given); the others still count. Returns the merge's status.
Status JOTFImportFiles(const std::vector<std::filesystem::path>& files,
                       std::vector<std::filesystem::path>* failed = nullptr,
                       const JotfImportOptions& options = {});

// The literal depth-first search from node over its siblings and
// descendants for the first element whose path equals path.
xmlNodePtr JOTFImportGetNode(xmlNodePtr node, std::string_view path);

std::string_view JOTFImportGetNodeSyntax(xmlNodePtr node);

// The node's text converted for the feature: the keyword (its name in the
// profile) for "Keyword", the number for "Number" (within the feature's
// "Minimum" and "Maximum"), the text for "Name" (within its "CharacterSet").
// nullopt when the text is not acceptable.
std::optional<Value> JOTFImportNodeValue(xmlNodePtr node, std::string_view syntax,
                                         const Dictionary* feature);

// Applies one feature of the profile to the context's settings.
void JOTFImportFeature(const Dictionary* feature, JotfImportContext* context);

// One element, one value: the element at path converted for the feature, a
// name-syntax text standing for a keyword ("NameSyntax") taken as that
// keyword. syntaxOut gets the class the value was taken as.
std::optional<Value> JOTFImportFeatureOneToOne(const Dictionary* feature,
                                               const JotfImportContext* context,
                                               std::string_view path,
                                               std::string* syntaxOut = nullptr);

// Derives "com.zorva.print.FinishingOptions" from the finishing values read,
// unless a feature already set it.
void ComputeFinishingOptionKey(Dictionary* settings);

// Writes every item of settings into the session's print settings (client
// "ZORVA"). kPrintSessionErr without a session.
Status JOTFImportMergeIntoJobTicket(PrintSession* session, const Dictionary& settings);

// Whether text consists of characters of a "CharacterSet": the set lists
// characters and ranges "a-z" (a "-" first or last stands for itself).
bool JotfInCharacterSet(std::string_view text, std::string_view set);

}  // namespace zorva
