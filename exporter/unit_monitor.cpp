#include "exporter/unit_monitor.h"

#include <algorithm>

#include "basic/numbers.h"
#include "commands/identity_cmds.h"
#include "frontend/state_json.h"

namespace amp::exporter {

namespace {

// A readout field's number, or nothing when the field is empty. "< 10.0"
// (below what the detector measures) reads as its number.
std::optional<double> Number(const std::string& text) {
  std::string t = text;
  t.erase(std::remove(t.begin(), t.end(), '<'), t.end());
  if (t.find_first_of("0123456789") == std::string::npos) return std::nullopt;
  return Val(t);
}

}  // namespace

UnitMonitor::UnitMonitor(Loop& loop, fleet::UnitEntry entry, SerialBus* bus, UnitObserver observer)
    : loop_(loop),
      entry_(std::move(entry)),
      observer_(std::move(observer)),
      sock_(loop),
      pump_(loop, sock_),
      port_(bus ? std::make_unique<BusPort>(*bus) : nullptr),
      comms_(LinkHost{sock_, timer_, pump_, clock_, dialogs_}, *this),
      display_(comms_, unit_, frm_, panel_),
      firstRead_(comms_, unit_, frm_, panel_, display_, values_) {
  frm_.SetLoaded(true);
  display_.InitFaultsAlarms();
  firstRead_.ClearForm();
  firstRead_.DisableForm();
  comms_.Link.SetDeviceAddress(std::string(1, entry_.address));
  comms_.gUseEnet = entry_.Tcp();
  if (port_) {
    comms_.Link.SetCommControl(port_.get());
    comms_.Link.SetCommSettings(entry_.settings);
    pump_.letGo = [this] { port_->LetGo(); };
  } else {
    sock_.SetRemoteHost(entry_.tcpHost);
    sock_.SetRemotePort(entry_.tcpPort);
  }
  // Each frame out starts an exchange's clock; the first piece of the reply
  // that ends it (a CR over TCP, a whole frame on a line) stops it.
  comms_.Link.trace = [this](char direction, std::string_view bytes) {
    const int64_t now = Loop::NowMs();
    if (direction == 't') {
      exchangeStartMs_ = now;
    } else if (exchangeStartMs_ >= 0 &&
               (!comms_.gUseEnet || bytes.find('\r') != std::string_view::npos)) {
      if (observer_.exchange) observer_.exchange(static_cast<double>(now - exchangeStartMs_) / 1e3);
      exchangeStartMs_ = -1;
    }
  };
}

std::string UnitMonitor::StateJson() const {
  frontend::StateView v;
  v.connected = comms_.session.Connected();
  v.form = &frm_;
  return frontend::StateJson(v);
}

void UnitMonitor::Run(const std::function<bool()>& stopping) {
  int64_t backoff = kFirstBackoffMs;
  Publish();
  while (!stopping()) {
    if (port_ ? StartSerialSession() : StartSession()) {
      backoff = kFirstBackoffMs;
      PollSession(stopping);
    }
    sock_.Close();
    if (port_) {
      port_->LetGo();
      comms_.Link.OpenPort(false);
    }
    if (stopping()) break;
    loop_.Sleep(backoff);
    backoff = std::min(backoff * 2, kMaxBackoffMs);
  }
}

// Connects as the panel does over TCP: the socket's connect event runs the
// first read and starts the poll timer.
bool UnitMonitor::StartSession() {
  comms_.gFirstReadDone = false;
  comms_.gFirstReadPending = false;
  sock_.Connect();
  const int64_t end = Loop::NowMs() + kConnectWaitMs;
  while (sock_.State() == TcpSocket::sckConnecting && Loop::NowMs() < end)
    pump_.WaitForEvents(static_cast<int>(std::max<int64_t>(end - Loop::NowMs(), 1)));
  if (!comms_.session.Connected() || !timer_.Enabled()) return false;
  lastPollMs_ = Loop::NowMs();
  Publish();
  return true;
}

// On a serial line the panel connects to one address: the unit must give
// its id word, then the first read runs and the poll timer starts.
bool UnitMonitor::StartSerialSession() {
  comms_.gFirstReadDone = false;
  if (ReadUnitIDWord(comms_) < 0) return false;
  FirstTimeRead();
  comms_.session.phase = SessionPhase::Up;
  SetConnectCaption("Disconnect");
  comms_.session.PollAnswered();
  EnableForm();
  timer_.SetEnabled(true);
  lastPollMs_ = Loop::NowMs();
  Publish();
  return true;
}

void UnitMonitor::PollSession(const std::function<bool()>& stopping) {
  int64_t next = Loop::NowMs() + timer_.Interval();
  while (comms_.session.Connected() && timer_.Enabled() && !stopping()) {
    // Between polls the socket still delivers: a peer that closes is seen
    // at the next poll, as the panel sees it.
    for (int64_t left = next - Loop::NowMs(); left > 0; left = next - Loop::NowMs())
      pump_.WaitForEvents(static_cast<int>(left));
    const int64_t start = Loop::NowMs();
    timer_.Tick();
    const bool ok = comms_.session.Connected() && comms_.session.Health() == LinkHealth::Good;
    if (observer_.poll) observer_.poll(ok, static_cast<double>(start - lastPollMs_) / 1e3);
    lastPollMs_ = start;
    Publish();
    // A tick that falls due while the previous one still ran is dropped.
    next += timer_.Interval();
    if (next <= Loop::NowMs()) next = Loop::NowMs() + timer_.Interval();
  }
}

UnitReadings UnitMonitor::Read() {
  UnitReadings r;
  r.up = comms_.session.Connected();
  if (!r.up) return r;
  r.forwardDbm = Number(frm_.txtFdBm.Text());
  r.reflectedDbm = Number(frm_.txtRdBm.Text());
  // "45" or, with a second sensor on the same field, "45, 38".
  const std::string& t = frm_.txtTemp.Text();
  if (auto first = Number(t.substr(0, t.find(','))))
    r.temperaturesCelsius.emplace_back("1", *first);
  if (t.find(',') != std::string::npos)
    if (auto second = Number(t.substr(t.find(',') + 1)))
      r.temperaturesCelsius.emplace_back("2", *second);
  if (panel_.gInletTemp)
    if (auto inlet = Number(frm_.txtTemp2.Text()))
      r.temperaturesCelsius.emplace_back("inlet", *inlet);
  if (unit_.gIsTWTA) {
    // Helix in kV and mA; a second tube's pair stands where a single tube's
    // heater volts and amperes do.
    if (auto v = Number(frm_.txtHelixV.Text())) r.helixVolts.emplace_back("1", *v * 1000);
    if (auto i = Number(frm_.txtHelixI.Text())) r.helixAmperes.emplace_back("1", *i / 1000);
    const auto third = Number(frm_.txtHeaterV.Text());
    const auto fourth = Number(frm_.txtHelix2I.Text());
    if (unit_.gIsDualTWT) {
      if (third) r.helixVolts.emplace_back("2", *third * 1000);
      if (fourth) r.helixAmperes.emplace_back("2", *fourth / 1000);
    } else {
      r.heaterVolts = third;
      r.heaterAmperes = fourth;
    }
  }
  r.transmitterOn = frm_.chkPS.Value() == 1;
  r.rfInhibited = frm_.Label35.Visible();
  r.remote = panel_.gRemoteMode;
  r.summaryFault = frm_.Label36.Visible();
  for (int w = 0; w < 4; ++w) {
    for (int bit = 0; bit < 6; ++bit) {
      auto& fault = frm_.FaultWord(w)[bit];
      auto& alarm = frm_.AlarmWord(w)[bit];
      const std::string where = std::string(1, static_cast<char>('A' + w)) + std::to_string(bit);
      if (fault.Visible()) r.faults.insert(fault.Caption().empty() ? where : fault.Caption());
      if (alarm.Visible()) r.alarms.insert(alarm.Caption().empty() ? where : alarm.Caption());
    }
  }
  return r;
}

void UnitMonitor::Publish() {
  UnitReadings next = Read();
  Report(next);
  readings_ = std::move(next);
  if (observer_.readings) observer_.readings(readings_);
}

// One line per change, against what the last poll left.
void UnitMonitor::Report(const UnitReadings& next) {
  if (!observer_.change) return;
  const UnitReadings& was = readings_;
  if (next.up != was.up) {
    if (next.up) {
      observer_.change(everUp_ ? "unit_back" : "unit_up", "");
      everUp_ = true;
    } else if (everUp_) {
      observer_.change("unit_lost", "");
    }
  }
  if (!next.up) return;  // a lost unit's faults are unknown, not cleared
  if (was.up && next.transmitterOn != was.transmitterOn)
    observer_.change(next.transmitterOn ? "transmitter_on" : "transmitter_off", "");
  const auto diff = [this](const std::set<std::string>& now, const std::set<std::string>& before,
                           const char* raised, const char* cleared) {
    for (const auto& n : now)
      if (!before.count(n)) observer_.change(raised, n);
    for (const auto& n : before)
      if (!now.count(n)) observer_.change(cleared, n);
  };
  diff(next.faults, was.up ? was.faults : std::set<std::string>{}, "fault_raised", "fault_cleared");
  diff(next.alarms, was.up ? was.alarms : std::set<std::string>{}, "alarm_raised", "alarm_cleared");
}

}  // namespace amp::exporter
