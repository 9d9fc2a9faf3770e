// Port and network readers against scripted replies, and the LLDP field
// parsers.
#include <gtest/gtest.h>

#include "command_rig.h"
#include "commands/port_network_cmds.h"

namespace amp {
namespace {

using namespace test;

std::string Port1(Comms& c) { return Text(ReadSerialPortCfg(c, 1)); }

TEST(PortNetworkReaders, PositionsLengthsAndRanges) {
  ExpectReads({
      {RF(4, [](Comms& c) { return ReadSerialPortCfg(c, 2); }), "X2?", "X2115200E72",
       "true|115200|E|7|2"},
      {R(Port1), "X1?", "Y1009600N81", "false"},               // third character must be "X"
      {R(Port1), "X1?", "X100960", "true"},                    // Len 11
      {R(Port1), "X1?", "X10096", "false"},                    // Len 10
      {RF(3, ReadRS485Cfg), "XR?", "R2UC", "true|2|U|C"},      // without the echo: from 4
      {R(ReadRS485Cfg), "XR?", "X", "true"},                   // Len 5
      {R(ReadRS485Cfg), "XR?", "", "false"},                   // Len 4
      {RF(4, ReadRS485Cfg), "XR?", kRefused, "false||||old"},  // cleared before the send
      {R(ReadIPAddress), "PEI?", "PEI192.168.001.010", "192.168.1.10"},
      {R(ReadIPAddress), "PEI?", "PEI10..1.2", "10.0.1.2"},
      {R(ReadIPAddress), "PEI?", "PEI10.1.2.3.4", "10.1.2.3"},
      {R(ReadIPAddress), "PEI?", "PEI10.1.2", ""},
      {R(ReadRouterAddress), "PER?", "PEN10.0.0.1", ""},
      {R(ReadMACAddress), "PEM?", "PEM00112233445", "00112233445"},  // Len 18
      {R(ReadMACAddress), "PEM?", "PEM0011223344", ""},              // Len 17
      {R(ReadMACAddress), "PEM?", "EM00-11-22-33-44-55", ""},        // "EM" at 3
      {R(ReadEnetPort), "PEP?", "PEP65535", "65535"},
      {R(ReadEnetPort), "PEP?", "PEP70000", "2000"},
      {R(ReadEnetPort), "PEP?", "PEP0", "2000"},
      {R(ReadEnetPort), "PEP?", "EP2001", "0"},
      {R(ReadEnetPort), "PEP?", "PEP99999999999", "0"},  // guarded
      {R(ReadDHCPMode), "PEO?", "PEO2", "true"},
      {R(ReadDHCPMode), "PEO?", "PEO0", "false"},
      {R(ReadDHCPMode), "PEO?", "PEOx", "false"},
      {R(ReadDHCPMode), "PEO?", "1", "false"},
      {R(ReadLldpFactory), "QlldpFactorySetup?", "QlldpFactorySetup 1;A", "1;A"},  // Len 25
      {R(ReadLldpFactory), "QlldpFactorySetup?", "QlldpFactorySetup 1;", ""},
      {R(ReadLldpUser), "QlldpSetupConfig?", "QlldpSetupConfig 1;30;120;2",
       "1;30;120;2"},  // Len 31
      {R(ReadLldpUser), "QlldpSetupConfig?", "QlldpSetupConfig 1;30;12;2", ""},
      {R(ReadPowerSaveMode), "N?", "xN1", "-1"},           // "N" at 4
      {R(ReadPowerSaveMode), "N?", Ack("N1", 'N'), "-1"},  // "N" in the address found first
      {R(ReadPowerSaveDelay), "NP?", "NP15", "1"},         // one character only
      {R(ReadPowerSaveDelay), "NP?", "N5", "-1"},
  });
  auto u = std::make_unique<ScriptedUnit>();
  EXPECT_FALSE(ReadSerialPortCfg(u->comms, 3));
  EXPECT_TRUE(u->sent.empty());
}

TEST(PortNetworkReaders, LldpFieldsKeepOldValuesOutOfRange) {
  const std::string uuid = "00000000-0000-0000-0000-000000000000";
  LldpFactoryParams f;
  ParseLldpFactory("80008;B;" + uuid, f);
  for (const char* bad : {"1;C", "", "1;C;u;x"}) ParseLldpFactory(bad, f);  // not three fields
  EXPECT_EQ(f.gLldpMED, 80008);
  EXPECT_EQ(f.gLldpHWRev, "B");
  EXPECT_EQ(f.gLldpUUID, uuid);

  LldpUserParams p;
  auto fields = [&] {
    return std::to_string(p.gLldpEnabled) + ";" + std::to_string(p.gLldpTxTimer) + ";" +
           std::to_string(p.gLldpHoldtime) + ";" + std::to_string(p.gLldpReinitDelay) + ";" +
           p.gLldpHostname;
  };
  ParseLldpUser("1;30;120;2;amp01", p);
  EXPECT_EQ(fields(), "1;30;120;2;amp01");
  ParseLldpUser("0;4;65536;6;", p);  // out of range keeps the old number
  EXPECT_EQ(fields(), "0;30;120;2;");
  ParseLldpUser("2;65535;0;1;h", p);  // 65535 is not below 65535; 2 keeps the switch
  EXPECT_EQ(fields(), "0;30;0;2;h");
  ParseLldpUser("1;5;65535;5;x", p);
  EXPECT_EQ(fields(), "1;5;65535;5;x");
  ParseLldpUser("0;30;120;2", p);  // four fields: nothing changes
  EXPECT_EQ(fields(), "1;5;65535;5;x");
}

}  // namespace
}  // namespace amp
