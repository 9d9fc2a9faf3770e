// Settings persistence in a temporary directory, and the COM slot binding.
#include <QTemporaryDir>
#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "qt/qt_com_slots.h"
#include "qt/qt_settings_store.h"

namespace amp {
namespace {

TEST(QtSettingsStore, RoundTripsPerApplicationAndSection) {
  QTemporaryDir dir;
  const std::string where = dir.path().toStdString();
  {
    QtSettingsStore store(where);
    EXPECT_EQ(store.GetSetting("AmpDesk", "Link", "Port", "COM1"), "COM1");
    store.SaveSetting("AmpDesk", "Link", "Port", "COM3");
    store.SaveSetting("AmpDesk", "Link", "Settings", "9600,N,8,1");  // commas stay one value
    store.SaveSetting("AmpDesk", "Names", "Port", "Uplink A = main; \"B\"");
    store.SaveSetting("Other", "Link", "Port", "COM9");
    store.SaveSetting("AmpDesk", "Link", "Empty", "");
    EXPECT_EQ(store.LastError(), "");
    EXPECT_EQ(store.FilePath("AmpDesk").rfind(where, 0), 0u);
  }
  QtSettingsStore store(where);  // a later run reads what was saved
  EXPECT_EQ(store.GetSetting("AmpDesk", "Link", "Port", "x"), "COM3");
  EXPECT_EQ(store.GetSetting("AmpDesk", "Link", "Settings", "x"), "9600,N,8,1");
  EXPECT_EQ(store.GetSetting("AmpDesk", "Names", "Port", "x"), "Uplink A = main; \"B\"");
  EXPECT_EQ(store.GetSetting("Other", "Link", "Port", "x"), "COM9");
  EXPECT_EQ(store.GetSetting("AmpDesk", "Link", "Empty", "x"), "");  // saved empty is not absent
  EXPECT_EQ(store.GetSetting("AmpDesk", "Names", "Settings", "fallback"), "fallback");
}

TEST(QtComSlots, EnvironmentFirstThenUsbAdaptersThenOnBoardPorts) {
  std::map<int, std::string> env{{2, "/dev/ttyAmp"}, {4, ""}};
  auto lookup = [&](int n) {
    return env.count(n) ? std::optional<std::string>(env[n]) : std::nullopt;
  };
  const ComSlots table =
      BuildComSlots(lookup, {"/dev/ttyS10", "/dev/ttyS2", "/dev/ttyACM0", "/dev/ttyUSB1",
                             "/dev/ttyAmp", "/dev/ttyUSB0", "/dev/rfcomm0", "/dev/ttyS0",
                             "/dev/ttyS1", "/dev/ttyS3", "/dev/ttyS4"});
  const char* expected[] = {"/dev/ttyUSB0", "/dev/ttyAmp",  "/dev/ttyUSB1", "",
                            "/dev/ttyACM0", "/dev/rfcomm0", "/dev/ttyS0",   "/dev/ttyS1",
                            "/dev/ttyS2",   "/dev/ttyS3"};
  for (int n = 1; n <= ComSlots::kCount; ++n)
    EXPECT_EQ(table.Path(n), expected[n - 1]) << "COM" << n;

  // Scan Ports: a device unplugged keeps its slot, new ones take free slots
  // and never the environment's.
  ComSlots live = BuildComSlots(lookup, {"/dev/ttyS0", "/dev/ttyUSB0"});
  std::vector<std::string> now = {"/dev/ttyS0", "/dev/ttyUSB3", "/dev/ttyACM0"};
  live.listDevices = [&] { return RankDevices(now); };
  live.Rescan();
  const char* rescanned[] = {"/dev/ttyUSB0", "/dev/ttyAmp", "/dev/ttyS0", "",
                             "/dev/ttyUSB3", "/dev/ttyACM0"};
  for (int n = 1; n <= 6; ++n) EXPECT_EQ(live.Path(n), rescanned[n - 1]) << "COM" << n;

  qputenv("AMPDESK_COM7", "/tmp/amp-test-device");
  const ComSlots host = DefaultComSlots();
  qunsetenv("AMPDESK_COM7");
  EXPECT_EQ(host.Path(7), "/tmp/amp-test-device");
  EXPECT_TRUE(host.listDevices) << "each scan asks the host again";
}

}  // namespace
}  // namespace amp
