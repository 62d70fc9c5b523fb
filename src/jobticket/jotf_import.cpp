// Reading a JOTF document: the safe XML reader, finding elements by path,
// the syntax classes, converting a node's text for a feature, and merging
// what was read into the ticket.
#include "jobticket/jotf_import.h"

#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "core/text.h"
#include "core/ticket_keys.h"
#include "jobticket/device_profile.h"

namespace zorva {

namespace {

// Deeper documents are refused by the XML reader itself (256 levels); this
// only keeps our own walks bounded should that ever change.
constexpr int kMaxWalkDepth = 512;

std::string_view NameOf(xmlNodePtr node) {
  return node && node->name ? std::string_view(reinterpret_cast<const char*>(node->name))
                            : std::string_view();
}

bool IsElement(xmlNodePtr node) {
  return node && node->type == XML_ELEMENT_NODE;
}

// ---- Parsing -----------------------------------------------------------------------

struct ErrorCollector {
  JotfImportReport* report;
  bool entityLoop = false;
};

void CollectError(void* data, const xmlError* error) {
  auto* c = static_cast<ErrorCollector*>(data);
  if (error && error->code == XML_ERR_ENTITY_LOOP) c->entityLoop = true;
  if (!c->report || !error || error->level < XML_ERR_ERROR) return;
  if (c->report->errors++ == 0) {
    c->report->firstErrorLine = error->line;
    std::string message = error->message ? error->message : "error";
    while (!message.empty() && (message.back() == '\n' || message.back() == ' ')) {
      message.pop_back();
    }
    c->report->firstError = std::move(message);
  }
}

void CollectErrorCompat(void* data, xmlErrorPtr error) {
  CollectError(data, error);
}

// No network, no DTD, no external entities, no entity substitution (the
// reader's own amplification limit stays in force: we never ask for
// XML_PARSE_HUGE), errors collected rather than printed.
int ParseOptions(const JotfImportOptions& options) {
  int flags = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NOCDATA;
  if (options.recover) flags |= XML_PARSE_RECOVER;
  return flags;
}

struct DocDeleter {
  void operator()(xmlDoc* doc) const { xmlFreeDoc(doc); }
};
using DocPtr = std::unique_ptr<xmlDoc, DocDeleter>;

struct CtxtDeleter {
  void operator()(xmlParserCtxt* c) const { xmlFreeParserCtxt(c); }
};

DocPtr Parse(std::string_view text, const JotfImportOptions& options, JotfImportReport* report) {
  if (text.size() > static_cast<std::size_t>(INT32_MAX)) return nullptr;
  std::unique_ptr<xmlParserCtxt, CtxtDeleter> ctxt(xmlNewParserCtxt());
  if (!ctxt) return nullptr;
  ErrorCollector collector{report};
  xmlSetStructuredErrorFunc(&collector, CollectErrorCompat);
  DocPtr doc(xmlCtxtReadMemory(ctxt.get(), text.data(), static_cast<int>(text.size()), nullptr,
                               nullptr, ParseOptions(options)));
  xmlSetStructuredErrorFunc(nullptr, nullptr);
  // Without recovery a document with any error is refused, even one the
  // reader handed back.
  if (doc && !options.recover && !ctxt->wellFormed) doc.reset();
  if (doc && !xmlDocGetRootElement(doc.get())) doc.reset();
  // A job ticket has no use for entities of its own; a document declaring
  // them (an expansion bomb among them) is refused even in recovery.
  if (doc && (collector.entityLoop || (doc->intSubset && doc->intSubset->entities))) doc.reset();
  return doc;
}

// ---- Applying the profile ----------------------------------------------------------

void ApplyFeatures(const FeatureList& features, xmlDocPtr doc, const char* group,
                   Dictionary* settings) {
  if (features.empty()) return;
  JotfPathIndex top(xmlDocGetRootElement(doc));
  xmlNodePtr groupNode = top.find(group);
  JotfImportContext context;
  context.document = doc;
  context.start = groupNode ? groupNode->children : nullptr;
  context.settings = settings;
  context.count = features.size();
  std::optional<JotfPathIndex> paths;
  if (context.start) paths.emplace(context.start);
  context.paths = paths ? &*paths : nullptr;
  for (const Dictionary* feature : features) {
    if (context.start) JOTFImportFeature(feature, &context);
    ++context.index;
  }
}

void ImportDocument(xmlDocPtr doc, Dictionary* settings) {
  const Value jotfTrue(true);
  ApplyFeatures(ZDPGetFeaturesWithPropertyAndValue("JOTF", &jotfTrue), doc,
                ".jotf.job-template-attributes", settings);
  FeatureList operation;
  for (std::string_view name : {"JobName", "SenderName"}) {
    if (const Dictionary* f = ZDPGetFeature(name)) operation.push_back(f);
  }
  ApplyFeatures(operation, doc, ".jotf.jotf-operation-attributes", settings);
  ComputeFinishingOptionKey(settings);
}

std::string Trimmed(std::string_view s) {
  const auto space = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
  while (!s.empty() && space(s.front())) s.remove_prefix(1);
  while (!s.empty() && space(s.back())) s.remove_suffix(1);
  return std::string(s);
}

std::string NodeText(xmlNodePtr node) {
  xmlChar* content = xmlNodeGetContent(node);
  std::string text = content ? reinterpret_cast<const char*>(content) : "";
  xmlFree(content);
  return text;
}

// A limit from the syntax dictionary, else the feature's properties.
const Value* Limit(const Dictionary* syntax, const Dictionary* feature, std::string_view name) {
  if (const Value* v = syntax ? syntax->find(name) : nullptr) return v;
  return ZDPGetFeatureProperty(feature, name);
}

std::optional<Value> NumberValue(const std::string& raw, const Dictionary* syntax,
                                 const Dictionary* feature) {
  const std::string text = Trimmed(raw);
  std::int64_t n = 0;
  const char* first = text.data() + (text.starts_with('+') ? 1 : 0);
  const auto [end, ec] = std::from_chars(first, text.data() + text.size(), n);
  if (text.empty() || ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (n < INT32_MIN || n > INT32_MAX) return std::nullopt;
  const Value* lo = Limit(syntax, feature, "Minimum");
  const Value* hi = Limit(syntax, feature, "Maximum");
  if (lo && lo->real() && static_cast<double>(n) < *lo->real()) return std::nullopt;
  if (hi && hi->real() && static_cast<double>(n) > *hi->real()) return std::nullopt;
  return Value(n);
}

std::optional<Value> NameValue(std::string text, const Dictionary* syntax,
                               const Dictionary* feature) {
  if (!IsValidUtf8(text)) return std::nullopt;
  const Value* set = Limit(syntax, feature, "CharacterSet");
  if (set && set->string() && !JotfInCharacterSet(text, *set->string())) return std::nullopt;
  return Value(std::move(text));
}

std::optional<Value> KeywordValue(const std::string& raw, const Dictionary* keywords) {
  const std::string text = Trimmed(raw);
  for (const auto& [keyword, entry] : *keywords) {
    const Dictionary* k = entry.dictionary();
    const Dictionary* props = k ? k->getDictionary("Properties") : nullptr;
    const std::string* jotfValue = props ? props->getString("JOTFValue") : nullptr;
    if (jotfValue && *jotfValue == text) return Value(keyword);
  }
  return std::nullopt;
}

// Decodes one UTF-8 character at i (advancing i); U+FFFD for a bad byte.
char32_t NextChar(std::string_view s, std::size_t& i) {
  const auto b = static_cast<unsigned char>(s[i++]);
  if (b < 0x80) return b;
  const int extra = b >= 0xF0 ? 3 : b >= 0xE0 ? 2 : b >= 0xC0 ? 1 : -1;
  if (extra < 0 || i + static_cast<std::size_t>(extra) > s.size()) return 0xFFFD;
  char32_t c = b & (0x3F >> extra);
  for (int k = 0; k < extra; ++k) c = (c << 6) | (static_cast<unsigned char>(s[i++]) & 0x3F);
  return c;
}

}  // namespace

bool JotfInCharacterSet(std::string_view text, std::string_view set) {
  std::vector<char32_t> chars;
  for (std::size_t i = 0; i < set.size();) chars.push_back(NextChar(set, i));
  for (std::size_t i = 0; i < text.size();) {
    const char32_t c = NextChar(text, i);
    bool in = false;
    for (std::size_t k = 0; k < chars.size() && !in; ++k) {
      const bool range = k + 2 < chars.size() && chars[k + 1] == U'-';
      if (range) {
        in = c >= chars[k] && c <= chars[k + 2];
        k += 2;
      } else {
        in = c == chars[k];
      }
    }
    if (!in) return false;
  }
  return true;
}

// ---- Finding nodes -----------------------------------------------------------------

namespace {

// Depth-first from node; a subtree is entered only when its path is a
// prefix of the one sought (up to a "." or the end).
xmlNodePtr SearchTowards(xmlNodePtr node, std::string_view path, std::string& at, int depth) {
  if (depth > kMaxWalkDepth) return nullptr;
  for (; node; node = node->next) {
    if (!IsElement(node)) continue;
    const std::size_t mark = at.size();
    at += '.';
    at += NameOf(node);
    xmlNodePtr found = nullptr;
    if (at.size() <= path.size() && path.starts_with(at)) {
      found = at.size() == path.size() ? node
              : path[at.size()] == '.' ? SearchTowards(node->children, path, at, depth + 1)
                                       : nullptr;
    }
    at.resize(mark);
    if (found) return found;
  }
  return nullptr;
}

}  // namespace

xmlNodePtr JotfPathIndex::find(std::string_view path) const {
  const std::string key(path);
  if (const auto it = found_.find(key); it != found_.end()) return it->second;
  std::string at;
  xmlNodePtr node = SearchTowards(start_, path, at, 0);
  found_.emplace(key, node);
  return node;
}

namespace {

// The accumulated path of the literal search: one string for every call,
// so the search is not re-entrant (as documented).
std::string gSearchPath;

xmlNodePtr Search(xmlNodePtr node, std::string_view path, int depth) {
  if (depth > kMaxWalkDepth) return nullptr;
  for (; node; node = node->next) {
    if (!IsElement(node)) continue;
    const std::size_t mark = gSearchPath.size();
    gSearchPath += '.';
    gSearchPath += NameOf(node);
    xmlNodePtr found = gSearchPath == path ? node : Search(node->children, path, depth + 1);
    gSearchPath.resize(mark);
    if (found) return found;
  }
  return nullptr;
}

}  // namespace

xmlNodePtr JOTFImportGetNode(xmlNodePtr node, std::string_view path) {
  gSearchPath.clear();
  return Search(node, path, 0);
}

std::string_view JOTFImportGetNodeSyntax(xmlNodePtr node) {
  if (!IsElement(node)) return kJotfSyntaxUnknown;
  xmlChar* attr = xmlGetProp(node, reinterpret_cast<const xmlChar*>("syntax"));
  const std::string syntax = attr ? reinterpret_cast<const char*>(attr) : "";
  xmlFree(attr);
  if (syntax == "keyword" || syntax == "mimeMediaType" || syntax == "enum") {
    return kJotfSyntaxKeyword;
  }
  if (syntax == "integer") return kJotfSyntaxNumber;
  if (syntax == "name" || syntax == "uri" || syntax == "text") return kJotfSyntaxName;
  return kJotfSyntaxUnknown;
}

std::optional<Value> JOTFImportNodeValue(xmlNodePtr node, std::string_view syntax,
                                         const Dictionary* feature) {
  if (!node || !feature) return std::nullopt;
  const Value* s = ZDPGetFeatureSyntax(feature, syntax);
  const Dictionary* syntaxDict = s ? s->dictionary() : nullptr;
  if (!syntaxDict) return std::nullopt;
  if (syntax == kJotfSyntaxKeyword) return KeywordValue(NodeText(node), syntaxDict);
  if (syntax == kJotfSyntaxNumber) return NumberValue(NodeText(node), syntaxDict, feature);
  if (syntax == kJotfSyntaxName) return NameValue(NodeText(node), syntaxDict, feature);
  return std::nullopt;
}

std::optional<Value> JOTFImportFeatureOneToOne(const Dictionary* feature,
                                               const JotfImportContext* context,
                                               std::string_view path, std::string* syntaxOut) {
  xmlNodePtr node =
      context->paths ? context->paths->find(path) : JOTFImportGetNode(context->start, path);
  if (!node) return std::nullopt;
  std::string_view syntax = JOTFImportGetNodeSyntax(node);
  // A keyword may be given by the name that stands for it.
  if (syntax == kJotfSyntaxName && ZDPGetFeatureProperty(feature, "KeywordsUseNameSyntax") &&
      *ZDPGetFeatureProperty(feature, "KeywordsUseNameSyntax") == Value(true)) {
    const FeatureList hits =
        ZDPGetKeywordsWithPropertyAndValue(feature, "NameSyntax", Value(NodeText(node)));
    const Value* keywords = ZDPGetFeatureSyntax(feature, kJotfSyntaxKeyword);
    if (!hits.empty() && keywords && keywords->dictionary()) {
      for (const auto& [keyword, entry] : *keywords->dictionary()) {
        if (entry.dictionary() == hits.front()) {
          if (syntaxOut) *syntaxOut = kJotfSyntaxKeyword;
          return Value(keyword);
        }
      }
    }
  }
  if (syntaxOut) *syntaxOut = syntax;
  return JOTFImportNodeValue(node, syntax, feature);
}

// ---- Files and merging -------------------------------------------------------------

Status JOTFImportDocumentText(std::string_view text, Dictionary* settings,
                              const JotfImportOptions& options, JotfImportReport* report) {
  if (!settings) return kParamErr;
  DocPtr doc = Parse(text, options, report);
  if (!doc) return kPrintSessionErr;
  ImportDocument(doc.get(), settings);
  return kNoErr;
}

Status JOTFImportFileAtPath(const std::filesystem::path& path, Dictionary* settings,
                            const JotfImportOptions& options, JotfImportReport* report) {
  std::FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return kPrintSessionErr;
  std::string text;
  char buffer[65536];
  std::size_t n = 0;
  while ((n = std::fread(buffer, 1, sizeof buffer, f)) > 0) text.append(buffer, n);
  const bool failed = std::ferror(f) != 0;
  std::fclose(f);
  if (failed) return kPrintSessionErr;
  return JOTFImportDocumentText(text, settings, options, report);
}

Status JOTFImportMergeIntoJobTicket(PrintSession* session, const Dictionary& settings) {
  Ticket* ticket = nullptr;
  if (!session || GetTicketFromSession(session, kPrintSettingsTicketName, &ticket) != kNoErr ||
      !ticket) {
    return kPrintSessionErr;
  }
  const bool debug = std::getenv("ZORVA_DEBUG") != nullptr;
  Status status = kNoErr;
  for (const auto& [key, value] : settings) {
    if (debug) std::cerr << "JOTF import: " << key << " (" << ValueTypeName(value.type()) << ")\n";
    const Status s = ticket->setValue(kTicketClientImport, key, value);
    if (s != kNoErr && status == kNoErr) status = s;
  }
  return status;
}

Status JOTFImportFiles(const std::vector<std::filesystem::path>& files,
                       std::vector<std::filesystem::path>* failed,
                       const JotfImportOptions& options) {
  Dictionary settings;
  for (const std::filesystem::path& file : files) {
    if (JOTFImportFileAtPath(file, &settings, options) != kNoErr && failed) {
      failed->push_back(file);
    }
  }
  return JOTFImportMergeIntoJobTicket(GetCurrentPrintSession(), settings);
}

}  // namespace zorva
