// The shared helpers: parts of a settings text, the waits and the pattern
// test of the address menus.
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

TEST(Module1, PatternTest) {
  const char* kDotted = "**#.**#.**#.**#";
  for (const char* ok :
       {"10.0.0.254", "127.0.0.1", "192.168.100.1", "1.2.3.4", "host1.2.3.4", "1.2.3.4.5"})
    EXPECT_TRUE(Like(ok, kDotted)) << ok;
  for (const char* bad : {"10.0.0", "10.0.0.x", "a.b.c.d", "10..0.1", "", "10.0.0.1 "})
    EXPECT_FALSE(Like(bad, kDotted)) << bad;
  EXPECT_TRUE(Like("abc", "a?c"));
  EXPECT_FALSE(Like("ac", "a?c"));
  EXPECT_TRUE(Like("", "*"));
  EXPECT_FALSE(Like("x", ""));
  EXPECT_TRUE(Like("a*b", "a*b"));
  EXPECT_TRUE(Like("x#9", "x*#"));
}

}  // namespace
}  // namespace amp
