#include "basic/text.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace amp {
namespace {

TEST(Text, MidBoundaries) {
  const std::string s = "\002A12.5\003";  // Len 7; a reply body starts at 3
  EXPECT_EQ(Len(s), 7);
  EXPECT_EQ(Mid(s, 3), "12.5\x03");
  EXPECT_EQ(Mid(s, 3, 4), "12.5");
  EXPECT_EQ(Mid(s, 1, 1), "\x02");
  EXPECT_EQ(Mid(s, 7), "\x03");  // start = Len
  EXPECT_EQ(Mid(s, 8), "");      // start = Len+1
  EXPECT_EQ(Mid(s, 0), "");      // start below 1
  EXPECT_EQ(Mid(s, 3, 0), "");
  EXPECT_EQ(Mid(s, 6, 100), "5\x03");  // length beyond the end
  EXPECT_EQ(Mid(s, 6, LONG_MAX), "5\x03");
  EXPECT_EQ(Mid(s, LONG_MAX, LONG_MAX), "");
  EXPECT_EQ(Mid(s, 2, -7), "A12.5\x03");
  EXPECT_EQ(Mid("", 1), "");
}

TEST(Text, LeftRight) {
  EXPECT_EQ(Left("abc", 2), "ab");
  EXPECT_EQ(Left("abc", -1), "");
  EXPECT_EQ(Left("abc", 9), "abc");
  EXPECT_EQ(Right("abc", 2), "bc");
  EXPECT_EQ(Right("abc", -3), "");
  EXPECT_EQ(Right("abc", LONG_MAX), "abc");
}

TEST(Text, InStrBoundaries) {
  EXPECT_EQ(InStr("a,b,c", ","), 2);
  EXPECT_EQ(InStr(2, "a,b,c", ","), 2);
  EXPECT_EQ(InStr(3, "a,b,c", ","), 4);
  EXPECT_EQ(InStr(5, "a,b,c", ","), 0);
  EXPECT_EQ(InStr(5, "a,b,c", "c"), 5);  // start = Len
  EXPECT_EQ(InStr(6, "a,b,c", "c"), 0);  // start = Len+1
  EXPECT_EQ(InStr(0, "a,b,c", "a"), 0);  // start below 1
  EXPECT_EQ(InStr("ab", "abc"), 0);      // find longer than s
  EXPECT_EQ(InStr("abc", ""), 1);
  EXPECT_EQ(InStr(4, "abc", ""), 4);  // empty find: start up to Len+1
  EXPECT_EQ(InStr(5, "abc", ""), 0);
  EXPECT_EQ(InStr(0, "abc", ""), 0);
  EXPECT_EQ(InStr(LONG_MAX, "abc", "c"), 0);
  EXPECT_EQ(InStr(1, "\002A\0035\003", "\x03"), 3);
}

TEST(Text, TrimAndCase) {
  EXPECT_EQ(LTrim("  a b  "), "a b  ");
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim("\ta\t"), "\ta\t");  // blanks only
  EXPECT_EQ(UCase("aZ1\xE4"), "AZ1\xE4");
}

TEST(Text, ChrAsc) {
  EXPECT_EQ(Chr(65), "A");
  EXPECT_EQ(Chr(0), std::string(1, '\0'));
  EXPECT_EQ(Asc(Chr(255)), 255);
  EXPECT_EQ(Chr(256), "");
  EXPECT_EQ(Chr(-1), "");
  EXPECT_EQ(Asc("AB"), 65);
  EXPECT_EQ(Asc(""), -1);
}

TEST(Text, ReadableAndHex) {
  EXPECT_EQ(Readable("\002A1\003q"), "<STX>A1<ETX>q");
  EXPECT_EQ(Readable("\x06\x15\r\n"), "<ACK><NAK><CR><LF>");
  EXPECT_EQ(Readable(std::string("\x00\x1f \x7e\x7f\xff", 6)), "<00><1f> ~<7f><ff>");
  EXPECT_EQ(Hex("\002A1\003q"), "02 41 31 03 71");
  EXPECT_EQ(Hex(std::string("\x00\xff\xab", 3)), "00 FF AB");
}

// The address shape test of the menus and the unit list is this pattern,
// not an address validator: letters before each last digit pass.
TEST(Text, LikePatterns) {
  struct Case {
    const char* text;
    const char* pattern;
    bool match;
  };
  const char* kDotted = "**#.**#.**#.**#";
  for (const Case& c : std::vector<Case>{{"10.0.0.254", kDotted, true},
                                         {"a1.b2.c3.d4", kDotted, true},
                                         {"1.2.3.4.5", kDotted, true},
                                         {"10.0.0", kDotted, false},
                                         {"10.0.0.x", kDotted, false},
                                         {"10..0.1", kDotted, false},
                                         {"10.0.0.1 ", kDotted, false},
                                         {"", kDotted, false},
                                         {"abc", "a?c", true},
                                         {"ac", "a?c", false},
                                         {"", "*", true},
                                         {"x", "", false},
                                         {"x#9", "x*#", true}})
    EXPECT_EQ(Like(c.text, c.pattern), c.match) << c.text << " ~ " << c.pattern;
}

}  // namespace
}  // namespace amp
