// Port and network readers against scripted replies, the LLDP field
// parsers, and the set texts.
#include <gtest/gtest.h>

#include <memory>

#include "command_rig.h"
#include "commands/port_network_cmds.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

using namespace test;

TEST(PortNetworkCmds, SerialPortFieldsStandAtFixedPlaces) {
  Unit u = Answering("X1?", "X1009600N81");
  ASSERT_TRUE(ReadSerialPortCfg(u->comms, 1));
  EXPECT_EQ(u->comms.gRespFields[0], "009600");
  EXPECT_EQ(u->comms.gRespFields[1], "N");
  EXPECT_EQ(u->comms.gRespFields[2], "8");
  EXPECT_EQ(u->comms.gRespFields[3], "1");
  EXPECT_EQ(u->sent, (std::vector<std::string>{"X1?"}));

  u = Answering("X2?", "X2115200E72");
  ASSERT_TRUE(ReadSerialPortCfg(u->comms, 2));
  EXPECT_EQ(u->comms.gRespFields[0], "115200");
  EXPECT_EQ(u->comms.gRespFields[1], "E");

  // The third character must be "X", else the position is 0.
  EXPECT_FALSE(ReadSerialPortCfg(Answering("X1?", "Y1009600N81")->comms, 1));
  EXPECT_TRUE(ReadSerialPortCfg(Answering("X1?", "X100960")->comms, 1));  // Len 11
  EXPECT_FALSE(ReadSerialPortCfg(Answering("X1?", "X10096")->comms, 1));  // Len 10
  EXPECT_FALSE(ReadSerialPortCfg(Refusing("X1?")->comms, 1));
  u = std::make_unique<ScriptedUnit>();
  EXPECT_FALSE(ReadSerialPortCfg(u->comms, 3));
  EXPECT_TRUE(u->sent.empty());

  u = Answering("XR?", "XR4TB");
  ASSERT_TRUE(ReadRS485Cfg(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "4");
  EXPECT_EQ(u->comms.gRespFields[1], "T");
  EXPECT_EQ(u->comms.gRespFields[2], "B");
  // Without the "XR" echo the three characters are taken from 4.
  u = Answering("XR?", "R2UC");
  ASSERT_TRUE(ReadRS485Cfg(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "2");
  EXPECT_EQ(u->comms.gRespFields[1], "U");
  EXPECT_EQ(u->comms.gRespFields[2], "C");
  EXPECT_TRUE(ReadRS485Cfg(Answering("XR?", "X")->comms));  // Len 5
  EXPECT_FALSE(ReadRS485Cfg(Answering("XR?", "")->comms));  // Len 4
  u = Refusing("XR?");
  u->comms.gRespFields = {"w", "t", "a", "keep"};
  EXPECT_FALSE(ReadRS485Cfg(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "");  // cleared before the send
  EXPECT_EQ(u->comms.gRespFields[2], "");
  EXPECT_EQ(u->comms.gRespFields[3], "keep");
}

TEST(PortNetworkCmds, DottedAddressesLoseTheirPadding) {
  EXPECT_EQ(ReadIPAddress(Answering("PEI?", "PEI192.168.001.010")->comms), "192.168.1.10");
  EXPECT_EQ(ReadIPAddress(Answering("PEI?", "PEI10..1.2")->comms), "10.0.1.2");
  EXPECT_EQ(ReadIPAddress(Answering("PEI?", "PEI10.1.2.3.4")->comms), "10.1.2.3");
  EXPECT_EQ(ReadIPAddress(Answering("PEI?", "PEI10.1.2")->comms), "");  // three parts
  EXPECT_EQ(ReadIPAddress(Answering("PEI?", "PEI")->comms), "");
  EXPECT_EQ(ReadIPAddress(Refusing("PEI?")->comms), "");
  EXPECT_EQ(ReadNetMask(Answering("PEN?", "PEN255.255.255.000")->comms), "255.255.255.0");
  EXPECT_EQ(ReadRouterAddress(Answering("PER?", "PER10.0.0.1")->comms), "10.0.0.1");
  EXPECT_EQ(ReadRouterAddress(Answering("PER?", "PEN10.0.0.1")->comms), "");  // wrong echo

  // "EM" must stand beyond 3 and the reply exceed 17 characters.
  EXPECT_EQ(ReadMACAddress(Answering("PEM?", "PEM00-11-22-33-44-55")->comms), "00-11-22-33-44-55");
  EXPECT_EQ(ReadMACAddress(Answering("PEM?", "PEM00112233445")->comms), "00112233445");  // Len 18
  EXPECT_EQ(ReadMACAddress(Answering("PEM?", "PEM0011223344")->comms), "");              // Len 17
  EXPECT_EQ(ReadMACAddress(Answering("PEM?", "EM00-11-22-33-44-55")->comms), "");        // at 3
}

TEST(PortNetworkCmds, PortAndDhcpMode) {
  EXPECT_EQ(ReadEnetPort(Answering("PEP?", "PEP2001")->comms), 2001);
  EXPECT_EQ(ReadEnetPort(Answering("PEP?", "PEP65535")->comms), 65535);
  EXPECT_EQ(ReadEnetPort(Answering("PEP?", "PEP70000")->comms), 2000);
  EXPECT_EQ(ReadEnetPort(Answering("PEP?", "PEP0")->comms), 2000);
  EXPECT_EQ(ReadEnetPort(Answering("PEP?", "EP2001")->comms), 0);          // "EP" at 3
  EXPECT_EQ(ReadEnetPort(Answering("PEP?", "PEP99999999999")->comms), 0);  // guarded
  EXPECT_EQ(ReadEnetPort(Refusing("PEP?")->comms), 0);

  EXPECT_TRUE(ReadDHCPMode(Answering("PEO?", "PEO1")->comms));
  EXPECT_TRUE(ReadDHCPMode(Answering("PEO?", "PEO2")->comms));
  EXPECT_FALSE(ReadDHCPMode(Answering("PEO?", "PEO0")->comms));
  EXPECT_FALSE(ReadDHCPMode(Answering("PEO?", "PEOx")->comms));  // strict
  EXPECT_FALSE(ReadDHCPMode(Answering("PEO?", "1")->comms));     // no echo
  EXPECT_FALSE(ReadDHCPMode(Refusing("PEO?")->comms));
}

TEST(PortNetworkCmds, LldpTextsAndTheirParsers) {
  const std::string uuid = "00000000-0000-0000-0000-000000000000";
  EXPECT_EQ(
      ReadLldpFactory(Answering("QlldpFactorySetup?", "QlldpFactorySetup 80008;A;" + uuid)->comms),
      "80008;A;" + uuid);
  // Echo and blank are 18 characters: three more make Len 25.
  EXPECT_EQ(ReadLldpFactory(Answering("QlldpFactorySetup?", "QlldpFactorySetup 1;A")->comms),
            "1;A");
  EXPECT_EQ(ReadLldpFactory(Answering("QlldpFactorySetup?", "QlldpFactorySetup 1;")->comms), "");
  EXPECT_EQ(ReadLldpFactory(Refusing("QlldpFactorySetup?")->comms), "");
  // Echo and blank are 17 characters: ten more make Len 31.
  EXPECT_EQ(
      ReadLldpUser(Answering("QlldpSetupConfig?", "QlldpSetupConfig 1;30;120;2;amp01")->comms),
      "1;30;120;2;amp01");
  EXPECT_EQ(ReadLldpUser(Answering("QlldpSetupConfig?", "QlldpSetupConfig 1;30;120;2")->comms),
            "1;30;120;2");
  EXPECT_EQ(ReadLldpUser(Answering("QlldpSetupConfig?", "QlldpSetupConfig 1;30;12;2")->comms), "");

  LldpFactoryParams f;
  ParseLldpFactory("80008;B;" + uuid, f);
  EXPECT_EQ(f.gLldpMED, 80008);
  EXPECT_EQ(f.gLldpHWRev, "B");
  EXPECT_EQ(f.gLldpUUID, uuid);
  ParseLldpFactory("1;C", f);  // two fields: nothing changes
  ParseLldpFactory("", f);
  ParseLldpFactory("1;C;u;x", f);
  EXPECT_EQ(f.gLldpMED, 80008);
  EXPECT_EQ(f.gLldpHWRev, "B");

  LldpUserParams p;
  ParseLldpUser("1;30;120;2;amp01", p);
  EXPECT_TRUE(p.gLldpEnabled);
  EXPECT_EQ(p.gLldpTxTimer, 30);
  EXPECT_EQ(p.gLldpHoldtime, 120);
  EXPECT_EQ(p.gLldpReinitDelay, 2);
  EXPECT_EQ(p.gLldpHostname, "amp01");
  // Out of range keeps the old number; the host name is taken as it is.
  ParseLldpUser("0;4;65536;6;", p);
  EXPECT_FALSE(p.gLldpEnabled);
  EXPECT_EQ(p.gLldpTxTimer, 30);
  EXPECT_EQ(p.gLldpHoldtime, 120);
  EXPECT_EQ(p.gLldpReinitDelay, 2);
  EXPECT_EQ(p.gLldpHostname, "");
  ParseLldpUser("1;65535;0;1;h", p);
  EXPECT_EQ(p.gLldpTxTimer, 30);  // 65535 is not below 65535
  EXPECT_EQ(p.gLldpHoldtime, 0);
  EXPECT_EQ(p.gLldpReinitDelay, 2);
  ParseLldpUser("2;5;65535;5;h", p);
  EXPECT_TRUE(p.gLldpEnabled);  // neither 1 nor 0: unchanged
  EXPECT_EQ(p.gLldpTxTimer, 5);
  EXPECT_EQ(p.gLldpHoldtime, 65535);
  EXPECT_EQ(p.gLldpReinitDelay, 5);
  ParseLldpUser("0;30;120;2", p);  // four fields: nothing changes
  EXPECT_TRUE(p.gLldpEnabled);
  EXPECT_EQ(p.gLldpHostname, "h");
}

TEST(PortNetworkCmds, PowerSaveDigits) {
  EXPECT_EQ(ReadPowerSaveMode(Answering("N?", "N1")->comms), 1);
  EXPECT_EQ(ReadPowerSaveMode(Answering("N?", "xN1")->comms), -1);  // "N" at 4
  // An "N" in the address byte is found first and fails the test.
  EXPECT_EQ(ReadPowerSaveMode(RawReply("N?", "N1", 'N')->comms), -1);
  EXPECT_EQ(ReadPowerSaveMode(Refusing("N?")->comms), -1);
  EXPECT_EQ(ReadPowerSaveDelay(Answering("NP?", "NP5")->comms), 5);
  EXPECT_EQ(ReadPowerSaveDelay(Answering("NP?", "NP15")->comms), 1);  // one character only
  EXPECT_EQ(ReadPowerSaveDelay(Answering("NP?", "N5")->comms), -1);
}

TEST(PortNetworkCmds, SetTexts) {
  EXPECT_EQ(CmdSerialPort(1, 9600, "None", 8, 1), "X1009600N81");
  EXPECT_EQ(CmdSerialPort(2, 115200, "Even", 7, 2), "X2115200E72");
  EXPECT_EQ(CmdSerialPort(1, 4800, "O", 7, 1), "X1004800O71");
  EXPECT_EQ(CmdSerialPort(3, 9600, "N", 8, 1), "");
  EXPECT_EQ(DottedOctets({192, 168, 1, 10}), "192.168.1.10");
  EXPECT_EQ(CmdIPAddress(DottedOctets({10, 0, 0, 5})), "PEI10.0.0.5");
  EXPECT_EQ(CmdLldpUser(true, 30, 120, 2, "amp01"), "QlldpSetupConfig 1;30;120;2;amp01");
  EXPECT_EQ(CmdLldpUser(false, 65534, 0, 5, "x"), "QlldpSetupConfig 0;65534;0;5;x");
  EXPECT_EQ(CmdLldpFactory(80008, "A", "u-1"), "QlldpFactorySetup 80008;A;u-1");
}

}  // namespace
}  // namespace amp
