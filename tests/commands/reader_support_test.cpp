// The shared parse vocabulary of the readers.
#include <gtest/gtest.h>

#include "commands/reader_support.h"
#include "support/scripted_unit.h"

namespace amp {
namespace {

TEST(ReaderSupport, LocatesDataByEtxAndBlank) {
  const std::string rx = test::ScriptedUnit::Frame('\x06', ".P66 123");
  std::string v;
  ASSERT_TRUE(rd::BlankValue(rx, 6, &v));
  EXPECT_EQ(v, "123");
  EXPECT_FALSE(rd::BlankValue(rx, 7, &v));  // the blank stands at 7
  // A blank right before ETX is an empty value that still passes.
  ASSERT_TRUE(rd::BlankValue(test::ScriptedUnit::Frame('\x06', ".P66 "), 6, &v));
  EXPECT_EQ(v, "");
  EXPECT_FALSE(
      rd::BlankValue("\x06"
                     "A.P66",
                     1, &v));  // no blank at all
  // A TCP reply keeps the CR that ended its line: the value still ends at
  // the ETX, so both links read the same text.
  ASSERT_TRUE(rd::BlankValue(rx + "\r", 6, &v));
  EXPECT_EQ(v, "123");
  ASSERT_TRUE(rd::BlankValue(test::ScriptedUnit::Frame('\x06', ".P66 ") + "\r", 6, &v));
  EXPECT_EQ(v, "");

  EXPECT_EQ(rd::ToEtx(rx, 3), ".P66 123");
  EXPECT_EQ(rd::ToEtx(rx, 8, 1), "123");
  EXPECT_EQ(rd::ToEtx("no end byte", 4), "end byte");
  EXPECT_EQ(rd::OpenEnd(rx, 9), "23" + rx.substr(rx.size() - 2));

  EXPECT_EQ(rd::Split("a;b;", ';'), (std::vector<std::string>{"a", "b", ""}));
  EXPECT_EQ(rd::Split("", ';'), (std::vector<std::string>{""}));
}

TEST(ReaderSupport, GuardedStatementsKeepEarlierValues) {
  int16_t value = 7;
  Guarded([&] { value = ToInt16(40000.0); });
  EXPECT_EQ(value, 7);
  Guarded([&] { value = TextToInt16("12a"); });
  EXPECT_EQ(value, 7);
  Guarded([&] { value = TextToInt16(" 12 "); });
  EXPECT_EQ(value, 12);
  Guarded([&] { value = ToInt16(2.5); });
  EXPECT_EQ(value, 2);
  EXPECT_THROW(ToInt16(-32768.6), ConversionFailure);
  EXPECT_EQ(ToInt32(-32768.6), -32769);
}

TEST(ReaderSupport, ScriptedUnitAnswersInOrder) {
  test::ScriptedUnit u;
  u.Answer("YT", "YT first");
  u.Answer("YT", "YT second");
  u.Refuse("PX?");
  ASSERT_TRUE(rd::Send(u.comms, "YT"));
  EXPECT_EQ(u.comms.Link.RxMessage, test::ScriptedUnit::Frame('\x06', "YT first"));
  ASSERT_TRUE(rd::Send(u.comms, "YT"));
  ASSERT_TRUE(rd::Send(u.comms, "YT"));
  EXPECT_EQ(u.comms.Link.RxMessage, test::ScriptedUnit::Frame('\x06', "YT second"));
  EXPECT_FALSE(rd::Send(u.comms, "PX?"));
  EXPECT_FALSE(rd::Send(u.comms, "unscripted"));
  EXPECT_TRUE(u.comms.Link.RxMessage.empty());
  EXPECT_EQ(u.sent.size(), 5u);
}

}  // namespace
}  // namespace amp
