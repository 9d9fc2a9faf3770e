// The shared helpers: parts of a settings text, character classes, stored
// booleans, the waits and the pattern test of the address menus.
#include "app/module1.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/fakes.h"

namespace amp {
namespace {

struct SettingsParts {
  const char* text;
  const char* baud;
  const char* parity;
  const char* data;
  const char* stop;
};

TEST(Module1, SettingsTextPartsByPosition) {
  const SettingsParts cases[] = {
      {"9600,N,8,1", "9600", "N", "8", "1"},
      {"38400,O,7,1", "38400", "O", "7", "1"},
      {"1200,E,7,2", "1200", "E", "7", "2"},
      // Only the characters each part may be.
      {"9600,M,8,1", "9600", "", "8", "1"},
      {"9600,N,6,1.5", "9600", "N", "", "1"},
      {"9600,n,8,3", "9600", "", "8", ""},
      // By position only: blanks move every part.
      {"9600, N,8,1", "9600", "", "", ""},
      // No comma: no parts; a comma first: no baud, the rest by position.
      {"9600", "", "", "", ""},
      {",N,8,1", "", "N", "8", "1"},
      {"", "", "", "", ""},
      // Short texts end early without reading past the end.
      {"9600,N", "9600", "N", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(ParseBaud(c.text), c.baud);
    EXPECT_EQ(ParseParity(c.text), c.parity);
    EXPECT_EQ(ParseDataBits(c.text), c.data);
    EXPECT_EQ(ParseStopBits(c.text), c.stop);
  }
}

TEST(Module1, CharacterClassesAtTheirEdges) {
  EXPECT_FALSE(IsPrintable(31));
  EXPECT_TRUE(IsPrintable(32));
  EXPECT_TRUE(IsPrintable(126));
  EXPECT_FALSE(IsPrintable(127));
  EXPECT_FALSE(IsPrintable(-1));
  for (int c : {'A', 'Z', 'a', 'z', 'm'}) EXPECT_TRUE(IsLetter(c)) << c;
  for (int c : {int{'@'}, int{'['}, int{'`'}, int{'{'}, int{'0'}, int{' '}, 200})
    EXPECT_FALSE(IsLetter(c)) << c;
}

TEST(Module1, StoredBooleans) {
  EXPECT_EQ(CBoolText("True"), true);
  EXPECT_EQ(CBoolText(" false "), false);
  EXPECT_EQ(CBoolText("TRUE"), true);
  EXPECT_EQ(CBoolText("-1"), true);
  EXPECT_EQ(CBoolText("0"), false);
  EXPECT_EQ(CBoolText("yes"), std::nullopt);
  EXPECT_EQ(CBoolText(""), std::nullopt);
}

TEST(Module1, Log10KeepsWhatHasNoLogarithm) {
  EXPECT_DOUBLE_EQ(Log10(1000.0), 3.0);
  EXPECT_DOUBLE_EQ(Log10(0.01), -2.0);
  EXPECT_DOUBLE_EQ(Log10(0.0), 0.0);
  EXPECT_DOUBLE_EQ(Log10(-5.0), -5.0);
}

TEST(Module1, WaitsHandleEventsAndEnd) {
  test::FakeClock clock;
  test::FakeEventPump pump(clock);
  int64_t start = clock.now;
  PauseMs(pump, 200);  // four turns of 20 ms
  EXPECT_EQ(clock.now - start, 80);
  EXPECT_EQ(pump.doEventsCalls, 4);
  start = clock.now;
  PauseMs(pump, 10);  // raised to 50: one turn
  EXPECT_EQ(clock.now - start, 20);
  start = clock.now;
  PauseMs(pump, 149);  // whole fifties only
  EXPECT_EQ(clock.now - start, 40);

  // An event that falls due during the wait runs in it, and the wait still
  // lasts its full time.
  bool ran = false;
  pump.After(700, [&] { ran = true; });
  start = clock.now;
  DelaySeconds(pump, clock, 1.5);
  EXPECT_TRUE(ran);
  EXPECT_EQ(clock.now - start, 1500);
  start = clock.now;
  DelaySeconds(pump, clock, 0);
  EXPECT_EQ(clock.now, start);
}

}  // namespace
}  // namespace amp
