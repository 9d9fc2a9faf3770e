// The unit's building blocks on their own: deframing, the command table,
// line settings and status encoding.
#include <gtest/gtest.h>
#include <termios.h>

#include "host_side.h"
#include "sim/commands.h"
#include "sim/framing.h"
#include "sim/line_settings.h"
#include "sim/profile.h"

using namespace amp::sim;
using simtest::Bytes;

namespace {

std::vector<RxFrame> FeedAll(FrameParser& p, std::string_view bytes) {
  std::vector<RxFrame> out;
  RxFrame f;
  while (p.Next(bytes, &f)) out.push_back(f);
  return out;
}

}  // namespace

TEST(FrameParser, FindsFramesAmongNoiseAndChecksTheirSums) {
  FrameParser serial(false, true);
  // Priming CR LF, then the status poll to A exactly as a host sends it.
  auto frames = FeedAll(serial, "\r\n" + Bytes({0x02, 0x41, 0x3F, 0x21, 0x23, 0x28, 0x03, 0x55}));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0].address, 'A');
  EXPECT_EQ(frames[0].text, "?!#(");
  EXPECT_TRUE(frames[0].checksumOk);
  EXPECT_EQ(frames[0].raw.size(), 8u);

  // Wrong checksum byte: still a frame, flagged.
  frames = FeedAll(serial, Bytes({0x02, 0x41, 0x31, 0x03, 0x70}));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_FALSE(frames[0].checksumOk);

  // A start byte inside a frame abandons the broken one.
  frames = FeedAll(serial,
                   "\x02"
                   "B12" +
                       simtest::SerialFrame('A', "1"));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0].text, "1");
  EXPECT_TRUE(frames[0].checksumOk);

  // Split at every byte boundary, including between ETX and checksum.
  std::string whole = simtest::SerialFrame('A', "?!#9");
  size_t got = 0;
  for (char c : whole) got += FeedAll(serial, std::string(1, c)).size();
  EXPECT_EQ(got, 1u);

  // An endless frame is dropped; the next good one still comes through.
  std::string flood =
      "\x02"
      "A" +
      std::string(FrameParser::kMaxText + 10, 'x');
  frames = FeedAll(serial, flood +
                               "\x03"
                               "Z" +
                               simtest::SerialFrame('A', "1"));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(frames[0].text, "1");

  // TCP: the checksum position holds 'M' and is not checked; CR LF is skipped.
  FrameParser tcp(false, false);
  frames = FeedAll(tcp, simtest::TcpFrame('Q', "?!#(") + simtest::TcpFrame('A', "1"));
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_EQ(frames[0].address, 'Q');
  EXPECT_TRUE(frames[0].checksumOk);
  EXPECT_EQ(frames[1].text, "1");

  // Printable framing ignores STX frames and checks the folded sum.
  FrameParser braces(true, true);
  EXPECT_TRUE(FeedAll(braces, simtest::SerialFrame('A', "1")).empty());
  frames = FeedAll(braces, simtest::PrintableFrame('A', "?!#("));
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_TRUE(frames[0].checksumOk);
  frames = FeedAll(braces, "{A1}!");
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_FALSE(frames[0].checksumOk);
}

TEST(CommandTable, LongestMnemonicWinsAndUnknownTextIsRefused) {
  CommandTable table;
  auto echo = [](std::string tag) {
    return [tag](UnitState&, std::string_view args) {
      return Reply::Ack(tag + "|" + std::string(args));
    };
  };
  table.Add("P", echo("short"));
  table.Add("PW", echo("long"));
  table.Add("", echo("never"));

  UnitState unit;
  EXPECT_EQ(table.Dispatch(unit, "PW12").body, "long|12");
  EXPECT_EQ(table.Dispatch(unit, "PX").body, "short|X");
  Reply unknown = table.Dispatch(unit, "Q7");
  EXPECT_FALSE(unknown.ack);
  EXPECT_EQ(unknown.body, "Q7");
  table.Add("P", echo("replaced"));
  EXPECT_EQ(table.Dispatch(unit, "P1").body, "replaced|1");

  // The standard set refuses trailing bytes after its argument-less polls.
  CommandTable standard = StandardCommands();
  EXPECT_TRUE(standard.Dispatch(unit, "?!#(").ack);
  EXPECT_FALSE(standard.Dispatch(unit, "?!#(x").ack);
  EXPECT_FALSE(standard.Dispatch(unit, "12").ack);
}

TEST(LineSettings, ParsesTimesAndComparesWithTermios) {
  LineSettings s;
  std::string error;
  ASSERT_TRUE(ParseLineSettings("9600,N,8,1", &s, &error)) << error;
  EXPECT_DOUBLE_EQ(s.BitsPerChar(), 10.0);
  EXPECT_EQ(s.CharNanos(), 1041667);
  ASSERT_TRUE(ParseLineSettings(" 19200 , e , 7 , 2 ", &s, &error)) << error;
  EXPECT_EQ(s.parity, 'E');
  EXPECT_DOUBLE_EQ(s.BitsPerChar(), 11.0);
  EXPECT_EQ(s.ToString(), "19200,E,7,2");
  ASSERT_TRUE(ParseLineSettings("1200,O,5,1.5", &s, &error));
  EXPECT_DOUBLE_EQ(s.BitsPerChar(), 8.5);

  for (const char* bad : {"9600,N,8", "9601,N,8,1", "9600,X,8,1", "9600,N,9,1", "9600,N,8,3", ""}) {
    EXPECT_FALSE(ParseLineSettings(bad, &s, &error)) << bad;
    EXPECT_NE(error.find("line settings"), std::string::npos);
  }

  LineSettings unit;
  ASSERT_TRUE(ParseLineSettings("9600,N,8,1", &unit, &error));
  termios t{};
  cfmakeraw(&t);
  ASSERT_TRUE(unit.ApplyTo(t));
  EXPECT_TRUE(unit.Matches(t));
  termios other = t;
  cfsetospeed(&other, B19200);
  cfsetispeed(&other, B19200);
  EXPECT_FALSE(unit.Matches(other));
  other = t;
  other.c_cflag |= PARENB;
  EXPECT_FALSE(unit.Matches(other));
  EXPECT_TRUE(unit.Matches(other, /*checkCharFormat=*/false));
  other = t;
  other.c_cflag |= CSTOPB;
  EXPECT_FALSE(unit.Matches(other));
  EXPECT_FALSE(unit.Matches(other, false));
  other = t;
  other.c_cflag = (other.c_cflag & ~CSIZE) | CS7;
  EXPECT_FALSE(unit.Matches(other));
  other = t;
  other.c_cflag |= PARODD;  // meaningless without parity enabled
  EXPECT_TRUE(unit.Matches(other));

  LineSettings even;
  ASSERT_TRUE(ParseLineSettings("9600,E,8,1", &even, &error));
  EXPECT_FALSE(even.Matches(t));
  ASSERT_TRUE(even.ApplyTo(t));
  EXPECT_TRUE(even.Matches(t));
  EXPECT_FALSE(unit.Matches(t));
}

TEST(UnitState, StatusWordsAndUnitIdTravelAsSixBitCharacters) {
  StatusWords w{};
  std::string error;
  ASSERT_TRUE(DecodeWords("P@A\x7F", &w, &error));
  EXPECT_EQ(w, (StatusWords{0x10, 0x00, 0x01, 0x3F}));
  EXPECT_EQ(EncodeWords(w), "P@A\x7F");
  EXPECT_FALSE(DecodeWords("P@@", &w, &error));
  EXPECT_FALSE(DecodeWords("P@@?", &w, &error));  // '?' is below 0x40
  EXPECT_NE(error.find("character 4"), std::string::npos);

  // Unit ids as written on the command line or in a profile.
  uint16_t id = 0;
  EXPECT_TRUE(ParseUnitId("0x0203", &id, &error));
  EXPECT_EQ(id, 0x0203);
  EXPECT_TRUE(ParseUnitId("257", &id, &error));
  EXPECT_EQ(id, 0x0101);
  EXPECT_FALSE(ParseUnitId("0x0140", &id, &error));
  EXPECT_NE(error.find("below 64"), std::string::npos);
  EXPECT_FALSE(ParseUnitId("12ab", &id, &error));
  EXPECT_FALSE(ParseUnitId("", &id, &error));
}
