// Upconverter and float supply readers against scripted replies.
#include <gtest/gtest.h>

#include "command_rig.h"
#include "commands/upconverter_cmds.h"

namespace amp {
namespace {

using namespace test;

std::string Supply(Comms& c) {
  const PSVsetRecord r = ReadPSVset(c, 2);
  return Text(r.status) + "|" + Text(r.value);
}

TEST(UpconverterReaders, PositionsListsAndDefaults) {
  ExpectReads({
      // Only the tail's place is tested: an echo without data reads 0 dB,
      // and a tail starting in the address byte still counts.
      {R(ReadBucAtten), "PBCA?", "PBCA", "0"},
      {R(ReadBucAtten), "PBCA?", Ack("A3", 'C'), "3"},
      {R(ReadBucAtten), "PBCA?", "12.5", "-1"},
      {R(ReadBucSetPoint), "PBCS?", kRefused, "-60"},
      {R(ReadBucMaxAtten), "PBCN?", kRefused, "31.5"},
      {R(ReadBucOffset), "PBCO?", "PBCO-1.5", "-1.5"},
      {R(ReadBucIdeal), "PBCI?", "PBCI-18", "-18"},
      {R(ReadBucMode), "PBCM?", "PBCM99999", "-1"},  // guarded
      {RF(10, ReadAmcAnalogs), "YCA?", "YCA1;2;3;4;5;6;7;8", "true|1|2|3|4|5|6|7|8||old"},
      {RF(1, ReadAmcAnalogs), "YCA?", "YCA1;2;3;4;5;6;7", "false|old"},  // 7: refused
      {RF(11, ReadAmcAnalogs), "YCA?", "YCA1;2;3;4;5;6;7;8;9;10;11;12",
       "true|1|2|3|4|5|6|7|8|9|10|11"},
      {RF(1, ReadAmcAnalogs), "YCA?", "YCA1;2;3;4;5;6;7;8;9;10;11;12;13", "false|old"},
      {R(ReadAmcAnalogs), "YCA?", "YCA", "false"},
      {RF(6, ReadAmcSettings), "YCD?", "YCD6.3;1.5;2.5;0.9", "true|6.3|1.5|2.5|0.9||old"},
      {R(ReadAmcSettings), "YCD?", "YCD6.3;1.5;2.5", "false"},
      {RF(11, ReadAmcSettings), "YCD?", "YCD0;1;2;3;4;5;6;7;8;9;10;11",
       "true|0|1|2|3|4|5|6|7|8|9|10"},
      {R(ReadAmcStatus), "YCI?", "YCI70000", "-1"},
      {R(Supply), "YC?:2", "YC70000:2", "0|70000"},  // 32 bits; the index is not read back
      {R(Supply), "YC?:2", "70000", "-1|0"},
      {R(Supply), "YC?:2", "YC99999999999", "-1|0"},
      {R(ReadModelCfgPN), "YJ?", "YJ300123-01 B", "300123-01 B"},
      {R(ReadModelCfgPN), "YJ?", "YJ", ""},
  });
  auto u = Answering("YC?", "YC1234");
  EXPECT_EQ(ReadPSVset(u->comms).value, 1234);
  u->Answer("YC?:0", "YC5");  // 0 is a sub-band too
  EXPECT_EQ(ReadPSVset(u->comms, 0).value, 5);
  EXPECT_EQ(u->sent, (Sent{"YC?", "YC?:0"}));
}

}  // namespace
}  // namespace amp
