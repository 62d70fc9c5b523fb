// The C entry points: the same document as the C++ writer from property-list
// text or a libplist node, and status codes instead of exceptions.
#include <gtest/gtest.h>

#include "jobticket/jotf_c_api.h"
#include "jotf_test_util.h"

namespace zorva::test {
namespace {

struct MemoryStream {
  char* data = nullptr;
  std::size_t size = 0;
  std::FILE* file = open_memstream(&data, &size);
  std::string close() {
    std::fclose(file);
    std::string text(data, size);
    std::free(data);
    return text;
  }
};

TEST(JotfCApi, WritesFromPropertyListText) {
  const std::string plist = ReadText(JotfData("exceptions.plist"));
  MemoryStream out;
  EXPECT_EQ(zorva_jotf_write_xml(plist.data(), plist.size(), out.file), ZORVA_JOTF_OK);
  EXPECT_EQ(out.close(), ReadText(JotfData("exceptions.jotf")));
}

TEST(JotfCApi, WritesFromALibplistNode) {
  const std::string plist = ReadText(JotfData("finishing-multiple.plist"));
  plist_t node = nullptr;
  plist_from_xml(plist.data(), static_cast<uint32_t>(plist.size()), &node);
  ASSERT_NE(node, nullptr);
  MemoryStream out;
  EXPECT_EQ(zorva_jotf_write_plist(node, out.file), ZORVA_JOTF_OK);
  EXPECT_EQ(out.close(), ReadText(JotfData("finishing-multiple.jotf")));
  plist_free(node);
}

TEST(JotfCApi, RefusesWhatIsNotASettingsDictionary) {
  MemoryStream out;
  const std::string array = "<plist version=\"1.0\"><array/></plist>";
  EXPECT_EQ(zorva_jotf_write_xml(array.data(), array.size(), out.file), ZORVA_JOTF_PARAM_ERR);
  EXPECT_EQ(zorva_jotf_write_xml("<plist", 6, out.file), ZORVA_JOTF_PARAM_ERR);
  EXPECT_EQ(zorva_jotf_write_xml(nullptr, 0, out.file), ZORVA_JOTF_PARAM_ERR);
  EXPECT_EQ(zorva_jotf_write_xml(array.data(), array.size(), nullptr), ZORVA_JOTF_PARAM_ERR);
  plist_t string = plist_new_string("x");
  EXPECT_EQ(zorva_jotf_write_plist(string, out.file), ZORVA_JOTF_PARAM_ERR);
  EXPECT_EQ(zorva_jotf_write_plist(nullptr, out.file), ZORVA_JOTF_PARAM_ERR);
  plist_free(string);
  EXPECT_EQ(out.close(), "");
}

}  // namespace
}  // namespace zorva::test
