// The shared parse vocabulary of the readers.
#include "commands/reader_support.h"

#include <gtest/gtest.h>

#include "support/scripted_unit.h"

namespace amp {
namespace {

using test::ScriptedUnit;

TEST(ReaderSupport, LocatesDataByEtxAndBlank) {
  const std::string rx = ScriptedUnit::Frame('\x06', ".P66 123");
  const std::string empty = ScriptedUnit::Frame('\x06', ".P66 ");
  std::string v;
  // A TCP reply keeps the CR that ended its line: the value still ends at
  // the ETX, so both links read the same text.
  for (const char* tail : {"", "\r"}) {
    ASSERT_TRUE(rd::BlankValue(rx + tail, 6, &v));
    EXPECT_EQ(v, "123");
    ASSERT_TRUE(rd::BlankValue(empty + tail, 6, &v));  // blank right before ETX
    EXPECT_EQ(v, "");
  }
  EXPECT_FALSE(rd::BlankValue(rx, 7, &v));  // the blank stands at 7
  EXPECT_FALSE(rd::BlankValue("\006A.P66", 1, &v));
  EXPECT_EQ(rd::ToEtx(rx, 8, 1), "123");
  EXPECT_EQ(rd::ToEtx("no end byte", 4), "end byte");
  EXPECT_EQ(rd::OpenEnd(rx, 9), "23" + rx.substr(rx.size() - 2));
  EXPECT_EQ(rd::Split("a;b;", ';'), (std::vector<std::string>{"a", "b", ""}));
}

TEST(ReaderSupport, GuardedStatementsKeepEarlierValues) {
  int16_t value = 7;
  Guarded([&] { value = ToInt16(40000.0); });
  Guarded([&] { value = TextToInt16("12a"); });
  EXPECT_EQ(value, 7);
  Guarded([&] { value = TextToInt16(" 12 "); });
  EXPECT_EQ(value, 12);
  EXPECT_EQ(ToInt16(2.5), 2);  // ties to even
  EXPECT_THROW(ToInt16(-32768.6), ConversionFailure);
  EXPECT_EQ(ToInt32(-32768.6), -32769);
}

}  // namespace
}  // namespace amp
