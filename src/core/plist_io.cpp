// Property-list reading and writing through libplist, with libxml2 checking
// XML input first: it bounds element nesting and gives a readable reason for
// malformed text, which libplist does not.
#include "core/plist_io.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>
#include <plist/plist.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "core/bplist_guard.h"
#include "core/file_io.h"
#include "core/text.h"

namespace zorva {

namespace {

struct PlistDeleter {
  void operator()(void* p) const { plist_free(static_cast<plist_t>(p)); }
};
using PlistPtr = std::unique_ptr<void, PlistDeleter>;

constexpr std::string_view kBinaryMagic = "bplist00";

// ---- plist_t -> Value ----------------------------------------------------------

std::optional<Value> FromNode(plist_t node, int depth, std::string& error);

std::optional<Value> FromArray(plist_t node, int depth, std::string& error) {
  Array a;
  const uint32_t n = plist_array_get_size(node);
  for (uint32_t i = 0; i < n; ++i) {
    auto v = FromNode(plist_array_get_item(node, i), depth + 1, error);
    if (!v) return std::nullopt;
    a.push_back(std::move(*v));
  }
  return Value(std::move(a));
}

std::optional<Value> FromDict(plist_t node, int depth, std::string& error) {
  Dictionary d;
  plist_dict_iter it = nullptr;
  plist_dict_new_iter(node, &it);
  for (;;) {
    char* key = nullptr;
    plist_t item = nullptr;
    plist_dict_next_item(node, it, &key, &item);
    if (!item) {
      free(key);
      break;
    }
    std::string k = key ? key : "";
    free(key);
    auto v = FromNode(item, depth + 1, error);
    if (!v) {
      free(it);
      return std::nullopt;
    }
    d.set(k, std::move(*v));
  }
  free(it);
  return Value(std::move(d));
}

std::optional<Value> FromString(plist_t node) {
  uint64_t length = 0;
  const char* s = plist_get_string_ptr(node, &length);
  return Value(s ? std::string(s, strnlen(s, length)) : std::string());
}

std::optional<Value> FromData(plist_t node) {
  char* bytes = nullptr;
  uint64_t len = 0;
  plist_get_data_val(node, &bytes, &len);
  Data d(reinterpret_cast<const uint8_t*>(bytes), reinterpret_cast<const uint8_t*>(bytes) + len);
  free(bytes);
  return Value(std::move(d));
}

std::optional<Value> FromScalar(plist_t node, std::string& error) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      uint8_t b = 0;
      plist_get_bool_val(node, &b);
      return Value(b != 0);
    }
    case PLIST_UINT: {
      uint64_t u = 0;
      plist_get_uint_val(node, &u);
      return Value(static_cast<int64_t>(u));  // libplist keeps signed values two's-complement
    }
    case PLIST_REAL: {
      double d = 0;
      plist_get_real_val(node, &d);
      return Value(d);
    }
    case PLIST_STRING:
      return FromString(node);
    case PLIST_DATA:
      return FromData(node);
    case PLIST_DATE: {
      int32_t sec = 0;
      int32_t usec = 0;
      plist_get_date_val(node, &sec, &usec);
      return Value(Date{sec + usec / 1e6});
    }
    default:
      error = "unsupported value type in property list";
      return std::nullopt;
  }
}

std::optional<Value> FromNode(plist_t node, int depth, std::string& error) {
  if (!node) {
    error = "empty property list";
    return std::nullopt;
  }
  if (depth > kMaxPlistDepth) {
    error =
        "arrays and dictionaries nested deeper than " + std::to_string(kMaxPlistDepth) + " levels";
    return std::nullopt;
  }
  switch (plist_get_node_type(node)) {
    case PLIST_ARRAY:
      return FromArray(node, depth, error);
    case PLIST_DICT:
      return FromDict(node, depth, error);
    default:
      return FromScalar(node, error);
  }
}

// ---- Value -> plist_t ----------------------------------------------------------

// XML 1.0 cannot carry most control characters, U+FFFE or U+FFFF, and a
// binary list may hold bytes that are not UTF-8; a file holding any of them
// could not be read back by anyone, so they are written as U+FFFD.
std::string XmlSafe(const std::string& s) {
  return IsXmlText(s) ? s : ToXmlText(s);
}

plist_t ToNode(const Value& v);

plist_t ToDate(const Date& d) {
  double whole = std::floor(d.seconds);
  if (!(whole >= INT32_MIN && whole <= INT32_MAX)) whole = whole < 0 ? INT32_MIN : INT32_MAX;
  auto usec = static_cast<int32_t>(std::lround((d.seconds - std::floor(d.seconds)) * 1e6));
  if (usec >= 1000000) usec = 999999;
  return plist_new_date(static_cast<int32_t>(whole), usec);
}

plist_t ToNode(const Value& v) {
  switch (v.type()) {
    case ValueType::Boolean:
      return plist_new_bool(*v.boolean() ? 1 : 0);
    case ValueType::Integer:
      return plist_new_uint(static_cast<uint64_t>(*v.integer()));
    case ValueType::Real:
      return plist_new_real(*v.real());
    case ValueType::String:
      return plist_new_string(XmlSafe(*v.string()).c_str());
    case ValueType::Data:
      return plist_new_data(reinterpret_cast<const char*>(v.data()->data()), v.data()->size());
    case ValueType::Date:
      return ToDate(*v.date());
    case ValueType::Array: {
      plist_t a = plist_new_array();
      for (const Value& item : *v.array()) plist_array_append_item(a, ToNode(item));
      return a;
    }
    case ValueType::Dictionary: {
      plist_t d = plist_new_dict();
      for (const auto& [key, item] : *v.dictionary()) {
        plist_dict_set_item(d, XmlSafe(key).c_str(), ToNode(item));
      }
      return d;
    }
  }
  return plist_new_bool(0);
}

// ---- XML checking --------------------------------------------------------------

void IgnoreXmlError(void*, const char*, ...) {}

// A reason when the bytes are not well-formed XML, else an empty string.
// libplist builds its own nodes afterwards, so the check only parses: a SAX
// handler with no callbacks builds no tree (a large named-paper library
// would otherwise be held twice, as a libxml2 tree and as plist nodes).
// Entities get no declarations recorded, so a reference to one is refused
// like an undeclared one.
std::string CheckXml(std::string_view text) {
  xmlSetGenericErrorFunc(nullptr, IgnoreXmlError);
  xmlParserCtxtPtr ctxt = xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size()));
  if (!ctxt) return "out of memory";
  auto* sax = static_cast<xmlSAXHandler*>(xmlMalloc(sizeof(xmlSAXHandler)));
  if (!sax) {
    xmlFreeParserCtxt(ctxt);
    return "out of memory";
  }
  std::memset(sax, 0, sizeof *sax);
  sax->initialized = XML_SAX2_MAGIC;
  xmlFree(ctxt->sax);
  ctxt->sax = sax;
  xmlCtxtUseOptions(ctxt, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  xmlParseDocument(ctxt);
  std::string reason;
  if (!ctxt->wellFormed) {
    const xmlError* e = xmlCtxtGetLastError(ctxt);
    if (e && e->message) {
      reason = "line " + std::to_string(e->line) + ": " + e->message;
      while (!reason.empty() && (reason.back() == '\n' || reason.back() == ' ')) reason.pop_back();
    } else {
      reason = "not well-formed XML";
    }
  }
  if (ctxt->myDoc) xmlFreeDoc(ctxt->myDoc);
  xmlFreeParserCtxt(ctxt);
  return reason;
}

bool LooksBinary(std::span<const std::uint8_t> bytes) {
  return bytes.size() >= kBinaryMagic.size() &&
         std::memcmp(bytes.data(), kBinaryMagic.data(), kBinaryMagic.size()) == 0;
}

void SetError(std::string* out, std::string reason) {
  if (out) *out = std::move(reason);
}

}  // namespace

std::optional<Value> ParsePropertyList(std::span<const std::uint8_t> bytes, std::string* error) {
  if (bytes.empty()) {
    SetError(error, "empty file");
    return std::nullopt;
  }
  if (bytes.size() > UINT32_MAX || bytes.size() > INT32_MAX) {
    SetError(error, "file too large for a property list");
    return std::nullopt;
  }
  const char* text = reinterpret_cast<const char*>(bytes.data());
  const auto length = static_cast<uint32_t>(bytes.size());
  plist_t root = nullptr;
  if (LooksBinary(bytes)) {
    if (std::string reason = CheckBinaryPlistStructure(bytes, kMaxPlistDepth); !reason.empty()) {
      SetError(error, reason);
      return std::nullopt;
    }
    plist_from_bin(text, length, &root);
    if (!root) {
      SetError(error, "malformed binary property list");
      return std::nullopt;
    }
  } else {
    std::string reason = CheckXml(std::string_view(text, length));
    if (reason.empty()) plist_from_xml(text, length, &root);
    if (!root) {
      SetError(error, reason.empty() ? "not a property list" : reason);
      return std::nullopt;
    }
  }
  PlistPtr owner(root);
  std::string reason;
  auto v = FromNode(root, 0, reason);
  if (!v) SetError(error, reason);
  return v;
}

std::optional<Value> ParsePropertyList(std::string_view text, std::string* error) {
  return ParsePropertyList(std::span<const std::uint8_t>(
                               reinterpret_cast<const std::uint8_t*>(text.data()), text.size()),
                           error);
}

std::string ToXmlPropertyList(const Value& value) {
  PlistPtr node(ToNode(value));
  char* xml = nullptr;
  uint32_t length = 0;
  plist_to_xml(static_cast<plist_t>(node.get()), &xml, &length);
  std::string out = xml ? std::string(xml, length) : std::string();
  plist_to_xml_free(xml);
  return out;
}

std::optional<Value> ReadPropertyListFile(const std::filesystem::path& path, std::string* error) {
  int err = 0;
  auto bytes = ReadWholeFile(path, &err);
  if (!bytes) {
    SetError(error, ReadFailureText(err));
    return std::nullopt;
  }
  return ParsePropertyList(*bytes, error);
}

int WritePropertyListFile(const std::filesystem::path& path, const Value& value) {
  return WriteFileAtomically(path, ToXmlPropertyList(value));
}

}  // namespace zorva
