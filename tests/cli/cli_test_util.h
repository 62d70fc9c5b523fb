// Helpers shared by the zorva tool's tests: error-shape checks and reading
// property lists back with an independent implementation (Python's plistlib).
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "support/test_support.h"

namespace zorva::test {

// A failed command says one line on stderr, "zorva: ...", and nothing on stdout.
inline void ExpectOneLineError(const ToolResult& r, int code) {
  EXPECT_EQ(r.exitCode, code) << r.err;
  EXPECT_TRUE(r.out.empty()) << r.out;
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  EXPECT_EQ(r.err.rfind("zorva: ", 0), 0u) << r.err;
}

// Each top-level key of a property-list file as "key type repr" from plistlib,
// sorted; fails the test when Python cannot read the file.
inline std::string PythonView(const std::filesystem::path& file) {
  static const char* kScript =
      "import plistlib, sys\n"
      "d = plistlib.load(open(sys.argv[1], 'rb'))\n"
      "for k in sorted(d):\n"
      "    print(k, type(d[k]).__name__, repr(d[k]))\n";
  ToolResult r = RunProgram("python3", {"-c", kScript, file.string()});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  return r.out;
}

}  // namespace zorva::test
