// The command console's reply as the operator reads it, and its lines.
#include <gtest/gtest.h>

#include "cli/send_console.h"

namespace amp::cli {
namespace {

TEST(ReadableReply, NamesTheControlBytesAndDropsTheChecksum) {
  EXPECT_EQ(ReadableReply("\x06"
                          "A1AB\x03"
                          "Z"),
            "[ACK]A1AB[ETX]");
  EXPECT_EQ(ReadableReply("\x15"
                          "AN\x03"
                          "q"),
            "[NAK]AN[ETX]");
  EXPECT_EQ(ReadableReply("\x02"
                          "A?P55.2\x03"
                          "\r\n"),
            "[STX]A?P55.2[ETX]");
  // Any other first byte has no readable form, but its text stays.
  EXPECT_EQ(ReadableReply("xAB\x03"), "AB[ETX]");
}

TEST(ReadableReply, NothingWithoutAnEndByteAfterTheFirstCharacter) {
  EXPECT_EQ(ReadableReply(""), "");
  EXPECT_EQ(ReadableReply("\x06"
                          "A1AB"),
            "");
  // An ETX in first place does not end the frame.
  EXPECT_EQ(ReadableReply("\x03"
                          "AB"),
            "");
  EXPECT_EQ(ReadableReply("\x06\x03"), "[ACK][ETX]");
}

TEST(ConsoleLines, LongRepliesSplitAfterOneHundredCharacters) {
  EXPECT_TRUE(ConsoleLines("").empty());
  const std::string exact(100, 'x');
  EXPECT_EQ(ConsoleLines(exact), std::vector<std::string>{exact});
  std::string reply(130, 'a');
  reply[100] = 'b';
  const auto lines = ConsoleLines(reply);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], std::string(100, 'a'));
  EXPECT_EQ(lines[1].size(), 30u);
  EXPECT_EQ(lines[1][0], 'b');
}

TEST(FormatSendLines, ShowsFailuresAndKeepsContinuationsInLine) {
  SendResult ok;
  ok.sent = ok.ok = true;
  ok.readable = std::string(100, 'r') + "tail";
  ok.lines = ConsoleLines(ok.readable);
  const auto lines = FormatSendLines("?X", ok);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], "?X -> " + std::string(100, 'r'));
  EXPECT_EQ(lines[1], "      tail");

  SendResult nak;
  nak.sent = true;
  nak.readable = "[NAK]AN[ETX]";
  EXPECT_EQ(FormatSendLines("K99", nak), std::vector<std::string>{"K99 -> FAILED [NAK]AN[ETX]"});
  SendResult silent;
  silent.sent = true;
  EXPECT_EQ(FormatSendLines("?A", silent), std::vector<std::string>{"?A -> FAILED (no reply)"});
  EXPECT_EQ(FormatSendLines("", SendResult{}),
            std::vector<std::string>{"(empty command: nothing sent)"});
}

}  // namespace
}  // namespace amp::cli
