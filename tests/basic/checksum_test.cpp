#include "basic/checksum.h"

#include <gtest/gtest.h>

#include <string>

namespace amp {
namespace {

TEST(Checksum, XorOfKnownFrames) {
  // 02^41^31^03 = 0x71.
  EXPECT_EQ(XorChecksum("\002A1\003"), 0x71);
  // 02^41^3F^21^23^28^03 = 0x55.
  EXPECT_EQ(XorChecksum("\002A?!#(\003"), 0x55);
  EXPECT_EQ(XorChecksum(""), 0);
  EXPECT_EQ(XorChecksum("\xFF\x0F"), 0xF0);  // bytes above 0x7F count unsigned
}

TEST(Checksum, PrintableFoldsIntoPrintableRange) {
  // "{A1}": 123+65+49+125 = 362; (362-32) % 95 = 45; 45+32 = 77 ('M').
  EXPECT_EQ(PrintableChecksum("{A1}"), 77);
  // "{}": 248; (248-32) % 95 = 26; 58 (':').
  EXPECT_EQ(PrintableChecksum("{}"), 58);
  // "{\xFF}": 123+255+125 = 503; (503-32) % 95 = 91; 123 ('{'): unsigned bytes.
  EXPECT_EQ(PrintableChecksum("{\xFF}"), 123);
  // "{ZZZZZZZZ}": 248+8*90 = 968; (968-32) % 95 = 81; 113 ('q').
  EXPECT_EQ(PrintableChecksum("{ZZZZZZZZ}"), 113);
  for (int n = 0; n < 300; ++n) {
    const std::string frame = "{" + std::string(static_cast<size_t>(n), static_cast<char>(n)) + "}";
    const int c = PrintableChecksum(frame);
    EXPECT_GE(c, 32) << n;
    EXPECT_LE(c, 126) << n;
  }
}

}  // namespace
}  // namespace amp
