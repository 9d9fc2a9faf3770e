#include "basic/numbers.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>

namespace amp {
namespace {

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Numbers, ValReadsTheNumericPrefix) {
  EXPECT_EQ(Val("12.5dB"), 12.5);
  EXPECT_EQ(Val(" \t\n-3.25"), -3.25);
  EXPECT_EQ(Val("+7"), 7);
  EXPECT_EQ(Val("-.5"), -0.5);
  EXPECT_EQ(Val("1e3x"), 1000);
  EXPECT_EQ(Val("2.5E-1"), 0.25);
  EXPECT_EQ(Val("1e"), 1);
  EXPECT_EQ(Val("1.5e-x"), 1.5);
  EXPECT_EQ(Val("12.5\x03\x71"), 12.5);  // ETX and checksum after the number
  EXPECT_EQ(Val("-0042\x03"), -42);
  EXPECT_EQ(Val("1.2.3"), 1.2);
  for (const char* none : {"", " ", "abc", "-", "+", ".", "-.", "e5", "\0035", "- 5", "\r5"}) {
    EXPECT_EQ(Val(none), 0) << none;
  }
}

TEST(Numbers, ValLongAndOutOfRange) {
  EXPECT_EQ(Val(std::string(5000, '9')), DBL_MAX);  // clamped, not inf
  EXPECT_EQ(Val("-1e400"), -DBL_MAX);
  EXPECT_EQ(Val("1e99999999999999999999999"), DBL_MAX);
  EXPECT_EQ(Val("1e-400"), 0);
  EXPECT_EQ(Val("0e999999999999"), 0);
  EXPECT_EQ(Val("0." + std::string(400, '0') + "1e401"), 1);
  EXPECT_EQ(Val(std::string(400, '0') + "1"), 1);
  EXPECT_EQ(Val("1" + std::string(400, '0') + "e-400"), 1);
  EXPECT_FALSE(CInt(Val("1e400")));
}

TEST(Numbers, CIntCLngTiesToEvenAndRange) {
  const double in[] = {0.5, 1.5, 2.5, 3.5, -0.5, -1.5, -2.5, 2.4999, -2.5001, 0.0};
  const int out[] = {0, 2, 2, 4, 0, -2, -2, 2, -3, 0};
  for (size_t i = 0; i < std::size(in); ++i) {
    EXPECT_EQ(CInt(in[i]), out[i]) << in[i];
    EXPECT_EQ(CLng(in[i]), out[i]) << in[i];
  }
  EXPECT_EQ(CInt(32767.4), 32767);
  EXPECT_FALSE(CInt(32767.5));  // rounds to 32768
  EXPECT_EQ(CInt(-32768.5), -32768);
  EXPECT_FALSE(CInt(-32769.5));
  EXPECT_EQ(CLng(2147483647.4), 2147483647);
  EXPECT_FALSE(CLng(2147483647.5));
  EXPECT_EQ(CLng(-2147483648.5), -2147483648LL);
  EXPECT_FALSE(CInt(100000.0));
  for (const double bad : {kNaN, kInf, -kInf, DBL_MAX}) {
    EXPECT_FALSE(CInt(bad));
    EXPECT_FALSE(CLng(bad));
  }
}

TEST(Numbers, IsNumericAndStrictConversion) {
  for (const char* yes : {"12", " -3.5 ", "1e3", ".5", "5.", "+7", "1E-2"}) {
    EXPECT_TRUE(IsNumeric(yes)) << yes;
  }
  for (const char* no : {"", " ", "1.2.3", "12a", "-", ".", "1e", "1 2", "\t5", "12\x03", "abc"}) {
    EXPECT_FALSE(IsNumeric(no)) << no;
  }
  EXPECT_EQ(CIntText(" 2.5 "), 2);
  EXPECT_EQ(CIntText("-32768"), -32768);
  EXPECT_FALSE(CIntText("32768"));
  EXPECT_FALSE(CIntText("12a"));
  EXPECT_EQ(CLngText("1e5"), 100000);
  EXPECT_FALSE(CLngText("1e400"));
}

TEST(Numbers, NumText) {
  EXPECT_EQ(NumText(12.5), "12.5");
  EXPECT_EQ(NumText(-0.0), "0");
  EXPECT_EQ(NumText(0.1), "0.1");
  EXPECT_EQ(NumText(0.1 + 0.2), "0.3");
  EXPECT_EQ(NumText(-0.0001), "-0.0001");
  EXPECT_EQ(NumText(0.00001), "1E-05");
  EXPECT_EQ(NumText(123456789012345.0), "123456789012345");
  EXPECT_EQ(NumText(1e15), "1E+15");
  EXPECT_EQ(NumText(-1.5e20), "-1.5E+20");
  EXPECT_EQ(NumText(kInf), "Infinity");
  EXPECT_EQ(NumText(kNaN), "NaN");
}

TEST(Numbers, FormatPictures) {
  struct Case {
    double v;
    const char* pic;
    const char* want;
  };
  const Case cases[] = {
      {12.5, "#0.0", "12.5"},
      {0.25, "#0.0", "0.3"},
      {-0.25, "#0.0", "-0.3"},
      {0.5, "##0", "1"},
      {2.5, "##0", "3"},
      {-2.5, "0", "-3"},
      {-0.4, "0", "0"},
      {-0.04, "0.0", "0.0"},
      {2.675, "0.00", "2.68"},
      {0.125, "0.00", "0.13"},
      {1.005, "0.00", "1.01"},
      {1.25, "##0.0##", "1.25"},
      {1.23456, "##0.0##", "1.235"},
      {9.9996, "##0.0##", "10.0"},
      {7, "000000", "000007"},
      {1234567, "000000", "1234567"},
      {-7, "000000", "-000007"},
      {99.96, "####0.0", "100.0"},
      {0.5, "0.0##", "0.5"},
      {1.10, "#0.0#", "1.1"},
      {1.149, "#0.0#", "1.15"},
      {0.5, "#.##", ".5"},
      {0, "###", ""},
      {12.5, ".00", "12.50"},
      {5, "0.0 dB", "5.0 dB"},
      {-5, "(0)", "-(5)"},
      {12.3, "0.0#x", "12.3x"},
      {1, "abc", "abc"},
      {2.5, "", "2.5"},
      {0.004, "0.00", "0.00"},
      {0.005, "0.00", "0.01"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Format(c.v, c.pic), c.want) << c.v << " with " << c.pic;
  }
  const std::string huge = Format(1e300, "0.0");
  EXPECT_EQ(huge.size(), 303u);
  EXPECT_EQ(huge.substr(0, 2), "10");
  EXPECT_EQ(huge.substr(299), "00.0");
  EXPECT_EQ(Format(-DBL_MAX, "#0.0").substr(0, 4), "-179");
  EXPECT_EQ(Format(kNaN, "0.0"), "NaN");
}

TEST(Numbers, PowerUnits) {
  EXPECT_DOUBLE_EQ(WattsFromdBm(30), 1.0);
  EXPECT_DOUBLE_EQ(dBmFromWatts(0.001), 0.0);
  EXPECT_NEAR(dBmFromWatts(WattsFromdBm(47.3)), 47.3, 1e-12);
  EXPECT_EQ(dBmFromWatts(0), -kInf);
}

}  // namespace
}  // namespace amp
