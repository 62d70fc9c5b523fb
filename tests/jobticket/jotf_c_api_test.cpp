// The C entry points: the same document as the C++ writer from property-list
// text or a libplist node, and status codes instead of exceptions.
#include <gtest/gtest.h>

#include "jobticket/jotf_c_api.h"
#include "jotf_test_util.h"

namespace zorva::test {
namespace {

TEST(JotfCApi, WritesFromPropertyListTextOrALibplistNode) {
  const std::string text = ReadText(JotfData("exceptions.plist"));
  EXPECT_EQ(Captured([&] {
              EXPECT_EQ(zorva_jotf_write_xml(text.data(), text.size(), jotf_ofp), ZORVA_JOTF_OK);
            }),
            ReadText(JotfData("exceptions.jotf")));
  const std::string plist = ReadText(JotfData("finishing-multiple.plist"));
  plist_t node = nullptr;
  plist_from_xml(plist.data(), static_cast<uint32_t>(plist.size()), &node);
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(Captured([&] { EXPECT_EQ(zorva_jotf_write_plist(node, jotf_ofp), ZORVA_JOTF_OK); }),
            ReadText(JotfData("finishing-multiple.jotf")));
  plist_free(node);
}

TEST(JotfCApi, RefusesWhatIsNotASettingsDictionary) {
  const std::string array = "<plist version=\"1.0\"><array/></plist>";
  plist_t string = plist_new_string("x");
  EXPECT_EQ(
      Captured([&] {
        FILE* out = jotf_ofp;
        EXPECT_EQ(zorva_jotf_write_xml(array.data(), array.size(), out), ZORVA_JOTF_PARAM_ERR);
        EXPECT_EQ(zorva_jotf_write_xml("<plist", 6, out), ZORVA_JOTF_PARAM_ERR);
        EXPECT_EQ(zorva_jotf_write_xml(nullptr, 0, out), ZORVA_JOTF_PARAM_ERR);
        EXPECT_EQ(zorva_jotf_write_xml(array.data(), array.size(), nullptr), ZORVA_JOTF_PARAM_ERR);
        EXPECT_EQ(zorva_jotf_write_plist(string, out), ZORVA_JOTF_PARAM_ERR);
        EXPECT_EQ(zorva_jotf_write_plist(nullptr, out), ZORVA_JOTF_PARAM_ERR);
      }),
      "");
  plist_free(string);
}

}  // namespace
}  // namespace zorva::test
