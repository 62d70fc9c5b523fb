// Helpers of the job-ticket tests: capturing what the writers send to the
// sink, checking documents with libxml2, and the golden files.
#pragma once

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "core/plist_io.h"
#include "jobticket/jotf_sink.h"
#include "support/test_support.h"

namespace zorva::test {

// Runs fn with jotf_ofp set to a memory stream; returns what was written.
template <class F>
std::string Captured(F&& fn) {
  char* data = nullptr;
  std::size_t size = 0;
  std::FILE* out = open_memstream(&data, &size);
  std::FILE* before = jotf_ofp;
  jotf_ofp = out;
  std::forward<F>(fn)();
  std::fclose(out);
  jotf_ofp = before;
  std::string text(data, size);
  std::free(data);
  return text;
}

// A sink that records the text of every call.
struct RecordingSink {
  std::vector<std::string> calls;
  JotfSink sink{this, [](void* handle, const char* text, int) {
                  static_cast<RecordingSink*>(handle)->calls.emplace_back(text);
                  return 0;
                }};
  std::string text() const {
    std::string all;
    for (const std::string& call : calls) all += call;
    return all;
  }
};

// Empty when libxml2 reads the text as well-formed XML (no network, no DTD
// loading); otherwise libxml2's message.
inline std::string XmlProblem(const std::string& text) {
  xmlDocPtr doc = xmlReadMemory(text.data(), static_cast<int>(text.size()), "jotf.xml", nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (doc) {
    xmlFreeDoc(doc);
    return {};
  }
  const xmlError* error = xmlGetLastError();
  return error && error->message ? error->message : "not well-formed";
}

inline std::filesystem::path JotfData(const std::string& name) {
  return TestData("jotf/" + name);
}

// The settings dictionary of a test input (tests/data/jotf/NAME.plist).
inline Dictionary LoadSettings(const std::string& name) {
  std::string error;
  std::optional<Value> v = ReadPropertyListFile(JotfData(name + ".plist"), &error);
  if (!v || !v->dictionary()) {
    ADD_FAILURE() << name << ": " << error;
    return {};
  }
  return *v->dictionary();
}

// Compares text with the golden file byte for byte. With
// ZORVA_UPDATE_GOLDENS=1 in the environment the golden is rewritten instead
// (review the difference before keeping it).
inline void ExpectGolden(const std::string& file, const std::string& text) {
  const std::filesystem::path path = JotfData(file);
  if (const char* update = std::getenv("ZORVA_UPDATE_GOLDENS"); update && *update == '1') {
    WriteText(path, text);
    return;
  }
  EXPECT_EQ(text, ReadText(path)) << "golden " << path;
}

}  // namespace zorva::test
