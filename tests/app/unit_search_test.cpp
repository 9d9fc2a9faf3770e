// The search over serial settings and addresses, and the TCP connect and
// close, on fake parts with fake time: a whole search of 36 probes of 0.6 s
// runs in no time, and each probe can be seen.
#include "link/unit_search.h"

#include <gtest/gtest.h>

#include "app/fake_unit.h"
#include "commands/identity_cmds.h"
#include "support/link_parts.h"

namespace amp {
namespace {

using namespace amp::test;

struct SearchFixture : ::testing::Test, LinkParts {
  bool terminate = false;
  std::vector<std::string> status;
  SearchContext search{comms, [this] { return ReadUnitIDWord(comms); },
                       [this](const std::string& s) { status.push_back(s); }, terminate};
  SearchSettingsList list{};

  void SetUp() override {
    comms.Link.SetCommSettings("9600,N,8,1");
    port.isOpen = true;
  }
};

TEST(SearchSettings, TwelveTextsInOrderAndRanges) {
  SearchSettingsList list;
  list.fill("stale");
  BuildSearchSettings(list);
  const std::vector<std::string> expected = {
      "9600,N,8,1",  "19200,N,8,1", "38400,N,8,1", "4800,N,8,1",  "9600,E,7,1",  "19200,E,7,1",
      "38400,E,7,1", "4800,E,7,1",  "9600,O,7,1",  "19200,O,7,1", "38400,O,7,1", "4800,O,7,1"};
  EXPECT_EQ(std::vector<std::string>(list.begin(), list.begin() + 12), expected);
  for (size_t i = 12; i < list.size(); ++i) EXPECT_TRUE(list[i].empty()) << i;

  bool ext = false, adv = false;
  EXPECT_EQ(SearchAddressRange(ext, adv), std::make_pair(int{'A'}, int{'C'}));
  ext = true;
  EXPECT_EQ(SearchAddressRange(ext, adv), std::make_pair(int{'A'}, int{'F'}));
  EXPECT_FALSE(ext);
  adv = true;
  EXPECT_EQ(SearchAddressRange(ext, adv), std::make_pair(int{'A'}, int{'Z'}));
  EXPECT_FALSE(adv);
  // Both set: the wider range wins, and both are spent.
  ext = adv = true;
  EXPECT_EQ(SearchAddressRange(ext, adv).second, 'Z');
  EXPECT_FALSE(ext || adv);
}

TEST_F(SearchFixture, UnitsOwnSpellingOfItsAddressIsKept) {
  FakeLineUnit unit(port, 'B', "9600,N,8,1");
  unit.spelledAs = 'b';
  EXPECT_EQ(SearchAddresses(search, "9600,N,8,1", 'A', 'C'), "b");
  EXPECT_EQ(comms.Link.DeviceAddress(), "b");
}

TEST_F(SearchFixture, FailedSearchRestoresTheLink) {
  FakeLineUnit unit(port, 'Q', "9600,N,8,1");  // outside A..C
  comms.Link.SetDeviceAddress("K");
  comms.Link.SetCommSettings("1200,N,8,2");
  const int64_t start = clock.now;
  EXPECT_FALSE(UnitFoundOnSerialPort(search, list, 'A', 'C'));
  EXPECT_EQ(unit.probes.size(), 36u);  // three addresses on twelve texts
  EXPECT_EQ(unit.probes.back(), "C 4800,O,7,1");
  EXPECT_GE(clock.now - start, 36 * 600);
  EXPECT_EQ(comms.Link.DeviceAddress(), "K");
  EXPECT_EQ(comms.Link.CommSettings(), "1200,N,8,2");
  EXPECT_EQ(port.settings, "1200,N,8,2");  // the open port went back too
  EXPECT_FLOAT_EQ(comms.Link.MsgTimeout(), 2.0f);
}

TEST_F(SearchFixture, GuardsAndRangeOrder) {
  FakeLineUnit unit(port, 'A', "9600,N,8,1");
  EXPECT_EQ(SearchAddresses(search, "", 'A', 'C'), "");
  EXPECT_EQ(SearchAddresses(search, "9600,N,8,1", '?', 'C'), "");
  EXPECT_EQ(SearchAddresses(search, "9600,N,8,1", 'A', '['), "");
  EXPECT_TRUE(unit.probes.empty());
  EXPECT_TRUE(status.empty());

  // '@' passes the check; a reversed range runs low to high.
  unit.address = 'Z';
  EXPECT_EQ(SearchAddresses(search, "9600,N,8,1", 'Z', '@'), "Z");
  ASSERT_EQ(unit.probes.size(), 27u);
  EXPECT_EQ(unit.probes.front(), "@ 9600,N,8,1");
  EXPECT_EQ(unit.probes[1], "A 9600,N,8,1");
}

TEST_F(SearchFixture, TerminateStopsAtTheNextAddress) {
  FakeLineUnit unit(port, 'Z', "9600,N,8,1");
  // The operator's click arrives while the second probe waits.
  pump.After(900, [this] { terminate = true; });
  EXPECT_FALSE(UnitFoundOnSerialPort(search, list, 'A', 'Z'));
  ASSERT_EQ(unit.probes.size(), 2u);
  EXPECT_EQ(unit.probes.back(), "B 9600,N,8,1");
  EXPECT_FALSE(terminate);  // spent by the search
  EXPECT_EQ(comms.Link.CommSettings(), "9600,N,8,1");

  // A flag already set ends the search before the first text.
  terminate = true;
  EXPECT_FALSE(UnitFoundOnSerialPort(search, list, 'A', 'C'));
  EXPECT_EQ(unit.probes.size(), 2u);
  EXPECT_FALSE(terminate);
}

TEST_F(SearchFixture, DelayWaitsInTwentyMillisecondTurns) {
  int64_t start = clock.now;
  Delay(pump, 10);  // raised to 50: two turns
  EXPECT_EQ(clock.now - start, 40);
  EXPECT_EQ(pump.doEventsCalls, 2);
  start = clock.now;
  Delay(pump, 200);
  EXPECT_EQ(clock.now - start, 200);
  EXPECT_EQ(pump.doEventsCalls, 12);
}

TEST_F(SearchFixture, OpenConnectionWaitsAboutOneSecond) {
  sock.host = "127.0.0.1";
  sock.port = 2000;
  // A connection that completes in 300 ms is taken.
  pump.After(300, [this] { sock.state = TcpSocket::sckConnected; });
  int64_t start = clock.now;
  EXPECT_TRUE(OpenConnection(comms));
  EXPECT_EQ(sock.closes, 1);  // closed first
  EXPECT_EQ(sock.connects, 1);
  EXPECT_LT(clock.now - start, 400);

  // One that takes longer is reported as failed, even though it completes
  // afterwards.
  pump.After(1500, [this] { sock.state = TcpSocket::sckConnected; });
  start = clock.now;
  EXPECT_FALSE(OpenConnection(comms));
  EXPECT_GE(clock.now - start, 800);
  EXPECT_LE(clock.now - start, 1000);
  EXPECT_EQ(sock.state, TcpSocket::sckConnecting);
}

TEST_F(SearchFixture, CloseConnectionReturnsWhateverTheState) {
  sock.state = TcpSocket::sckConnected;
  EXPECT_TRUE(CloseConnection(comms));
  EXPECT_EQ(sock.state, TcpSocket::sckClosed);
  sock.closeLeavesClosing = true;  // a socket that lingers does not hold the caller
  sock.state = TcpSocket::sckConnected;
  EXPECT_TRUE(CloseConnection(comms));
  EXPECT_EQ(sock.state, TcpSocket::sckClosing);
}

}  // namespace
}  // namespace amp
