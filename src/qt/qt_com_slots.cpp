#include "qt/qt_com_slots.h"

#include <QByteArray>
#include <QSerialPortInfo>
#include <QString>
#include <algorithm>
#include <cctype>
#include <tuple>

#include "basic/numbers.h"

namespace amp {
namespace {

std::string BaseName(const std::string& path) {
  const auto slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

int Rank(const std::string& path) {
  const std::string base = BaseName(path);
  if (base.rfind("ttyUSB", 0) == 0) return 0;
  if (base.rfind("ttyACM", 0) == 0) return 1;
  if (base.rfind("ttyS", 0) == 0) return 3;
  return 2;
}

// "ttyS2" sorts before "ttyS10": the text without its trailing number, then
// the number.
std::tuple<int, std::string, long, std::string> SortKey(const std::string& path) {
  size_t digits = path.size();
  while (digits > 0 && std::isdigit(static_cast<unsigned char>(path[digits - 1]))) --digits;
  long number = -1;
  if (digits < path.size() && path.size() - digits < 10) number = std::stol(path.substr(digits));
  return {Rank(path), path.substr(0, digits), number, path};
}

}  // namespace

std::vector<std::string> RankDevices(std::vector<std::string> available) {
  std::sort(available.begin(), available.end(),
            [](const std::string& a, const std::string& b) { return SortKey(a) < SortKey(b); });
  available.erase(std::unique(available.begin(), available.end()), available.end());
  return available;
}

ComSlots BuildComSlots(const std::function<std::optional<std::string>(int)>& env,
                       std::vector<std::string> available) {
  ComSlots table;
  for (int n = 1; n <= ComSlots::kCount; ++n) {
    if (auto value = env(n)) {
      table.Pin(n);
      table.Bind(n, *value);
    }
  }
  table.AddDevices(RankDevices(std::move(available)));
  return table;
}

namespace {

std::vector<std::string> HostDevices() {
  std::vector<std::string> available;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
    available.push_back(info.systemLocation().toStdString());
  return RankDevices(std::move(available));
}

}  // namespace

ComSlots DefaultComSlots() {
  ComSlots table = BuildComSlots(
      [](int n) -> std::optional<std::string> {
        const QByteArray name = "AMPDESK_COM" + QByteArray::number(n);
        if (!qEnvironmentVariableIsSet(name.constData())) return std::nullopt;
        return qEnvironmentVariable(name.constData()).toStdString();
      },
      HostDevices());
  // The host is asked again at each scan: adapters come and go.
  table.listDevices = HostDevices;
  return table;
}

int SlotForDevice(ComSlots& slots, const std::string& device) {
  if (device.size() > 3 && (device[0] == 'C' || device[0] == 'c') &&
      (device[1] == 'O' || device[1] == 'o') && (device[2] == 'M' || device[2] == 'm')) {
    const auto n = CLngText(device.substr(3));
    if (n && *n >= 1 && *n <= ComSlots::kCount) return *n;
    return 0;
  }
  if (device.empty()) return 0;
  if (int slot = slots.SlotOf(device)) return slot;
  for (int n = 1; n <= ComSlots::kCount; ++n) {
    if (slots.Path(n).empty()) {
      slots.Bind(n, device);
      return n;
    }
  }
  slots.Bind(ComSlots::kCount, device);
  return ComSlots::kCount;
}

}  // namespace amp
