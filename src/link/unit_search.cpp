#include "link/unit_search.h"

#include <algorithm>

namespace amp {

void BuildSearchSettings(SearchSettingsList& gSearchSettings) {
  static constexpr const char* kTexts[] = {
      "9600,N,8,1",  "19200,N,8,1", "38400,N,8,1", "4800,N,8,1",  "9600,E,7,1",  "19200,E,7,1",
      "38400,E,7,1", "4800,E,7,1",  "9600,O,7,1",  "19200,O,7,1", "38400,O,7,1", "4800,O,7,1"};
  gSearchSettings = {};
  std::copy(std::begin(kTexts), std::end(kTexts), gSearchSettings.begin());
}

std::pair<int, int> SearchAddressRange(bool& gExtendedSearch, bool& gAdvancedSearch) {
  std::pair<int, int> range{'A', 'C'};
  if (gExtendedSearch) range = {'A', 'F'};
  if (gAdvancedSearch) range = {'A', 'Z'};
  gExtendedSearch = false;
  gAdvancedSearch = false;
  return range;
}

std::string SearchAddresses(SearchContext& s, const std::string& settings, int a, int b) {
  auto inRange = [](int code) { return code >= '@' && code <= 'Z'; };
  if (settings.empty() || !inRange(a) || !inRange(b)) return {};

  AmpLink& link = s.comms.Link;
  const std::string keptAddress = link.DeviceAddress();
  const std::string keptSettings = link.CommSettings();
  const float keptTimeout = link.MsgTimeout();
  link.SetMsgTimeout(kSearchTimeoutSeconds);

  if (a > b) std::swap(a, b);
  link.SetCommSettings(settings);

  std::string found;
  for (int code = a; code <= b; ++code) {
    const std::string address(1, static_cast<char>(code));
    if (s.DisplayStatusMsg) {
      std::string status = "Searching: ";
      s.DisplayStatusMsg(status.append(address).append(", ").append(settings));
    }
    link.SetDeviceAddress(address);
    if (s.ReadUnitIDWord() >= 0) {
      // The unit's own spelling of its address is what later frames carry.
      found = link.RxMessage.substr(1, 1);
      link.SetDeviceAddress(found);
      break;
    }
    s.comms.host().pump.DoEvents();
    if (s.gTerminateSearch) break;
  }

  if (found.empty()) {
    link.SetDeviceAddress(keptAddress);
    link.SetCommSettings(keptSettings);
  }
  if (s.DisplayStatusMsg) s.DisplayStatusMsg("");
  link.SetMsgTimeout(keptTimeout);
  return found;
}

bool UnitFoundOnSerialPort(SearchContext& s, SearchSettingsList& gSearchSettings, int first,
                           int last) {
  BuildSearchSettings(gSearchSettings);
  bool found = false;
  for (const std::string& settings : gSearchSettings) {
    if (settings.empty() || s.gTerminateSearch) break;
    if (!SearchAddresses(s, settings, first, last).empty()) {
      found = true;
      break;
    }
    s.comms.host().pump.DoEvents();
  }
  s.gTerminateSearch = false;
  gSearchSettings = {};
  return found;
}

bool OpenConnection(Comms& c) {
  TcpSocket& sock = c.host().sckTcp;
  CloseConnection(c);
  sock.Connect();
  for (int i = 0; i < 20 && sock.State() != TcpSocket::sckConnected; ++i) Delay(c.host().pump, 50);
  return sock.State() == TcpSocket::sckConnected;
}

bool CloseConnection(Comms& c) {
  TcpSocket& sock = c.host().sckTcp;
  sock.Close();
  for (int i = 0; i < 10; ++i)
    if (sock.State() == TcpSocket::sckClosed) break;
  return true;
}

}  // namespace amp
