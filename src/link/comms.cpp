#include "link/comms.h"

#include <algorithm>

#include "basic/checksum.h"

namespace amp {

Comms::Comms(LinkHost host, LinkPanel& panel)
    : Link(host.clock, host.pump), host_(host), panel_(panel) {
  TcpSocket::Events ev;
  ev.Connect = [this] { sckTcp_Connect(); };
  ev.DataArrival = [this](long n) { sckTcp_DataArrival(n); };
  ev.Error = [this](int number, const std::string& d, long scode, const std::string& s) {
    sckTcp_Error(number, d, scode, s);
  };
  ev.ConnectionRequest = [this](intptr_t id) { sckTcp_ConnectionRequest(id); };
  host_.sckTcp.SetEvents(std::move(ev));
  host_.Timer1.SetInterval(kPollIntervalMs);
  host_.Timer1.SetEnabled(false);
  host_.Timer1.SetHandler([this] { Timer1_Timer(); });
}

bool Comms::ExchangeCommand(std::string_view command, bool ShowError) {
  struct Flight {
    bool& flag;
    bool outer;
    explicit Flight(bool& f) : flag(f), outer(!f) { flag = true; }
    ~Flight() {
      if (outer) flag = false;
    }
  } flight(inFlight_);
  Link.RxMessage.clear();
  if (command.empty()) return true;
  if (gUseEnet) return ExchangeCommandTcp(Link.DeviceAddress(), command);

  Link.Clear();
  Link.send(2, command, "");
  if (Link.Receive() == 0) return true;
  if (ShowError) {
    host_.dialogs.MsgBox(Link.ErrString(), MsgButtons::OK, MsgIcon::Exclamation,
                         "Communication Error");
  }
  return false;
}

bool Comms::ExchangeCommandTcp(std::string_view address, std::string_view command) {
  gTcpReplyReady = false;
  gTcpReply.clear();
  bool result = false;
  const int state = host_.sckTcp.State();
  if (state == TcpSocket::sckConnected) {
    const int64_t deadline = host_.clock.NowMs() + kTcpReplyWaitMs;
    std::string frame;
    frame.reserve(command.size() + 6);
    frame += STX;
    frame.append(address.substr(0, 1));
    frame.append(command);
    frame += ETX;
    frame += 'M';  // stands where the checksum would; the unit does not check it on TCP
    frame += "\r\n";
    Link.TxMessage = frame;
    if (Link.trace) Link.trace('t', frame);
    host_.sckTcp.SendData(frame);
    for (;;) {
      if (gTcpReplyReady) {
        Link.RxMessage = gTcpReply;
        result = !Link.RxMessage.empty() && Link.RxMessage[0] == ACK;
        break;
      }
      const int64_t left = deadline - host_.clock.NowMs();
      if (left < 0) break;
      // Let the socket deliver; returns as soon as an event ran.
      host_.pump.WaitForEvents(static_cast<int>(std::clamp<int64_t>(left + 1, 1, 100)));
    }
  } else if (state == TcpSocket::sckError || state == TcpSocket::sckClosing ||
             state == TcpSocket::sckClosed) {
    EndTcpSession();
  }
  gTcpReply.clear();
  return result;
}

void Comms::EndTcpSession() {
  host_.Timer1.SetEnabled(false);
  CloseSocket();
  panel_.ClearForm();
  panel_.DisableForm();
  session.phase = SessionPhase::Idle;
  panel_.SetConnectCaption("Connect");
}

bool Comms::CloseSocket() {
  const int64_t deadline = host_.clock.NowMs() + kSocketCloseWaitMs;
  host_.sckTcp.Close();
  while (host_.sckTcp.State() != TcpSocket::sckClosed) {
    const int64_t left = deadline - host_.clock.NowMs();
    if (left < 0) return false;
    host_.pump.WaitForEvents(static_cast<int>(std::clamp<int64_t>(left + 1, 1, 20)));
  }
  return true;
}

void Comms::sckTcp_DataArrival(long /*bytesTotal*/) {
  const std::string data = host_.sckTcp.GetData();
  if (Link.trace && !data.empty()) Link.trace('r', data);
  mTcpRxBuffer += data;
  const auto cr = mTcpRxBuffer.find('\r');
  if (cr != std::string::npos) {
    // What follows the CR in this piece is dropped, the LF of CR LF with it
    // when it came in the same piece. Replies that pile up while nobody
    // waits for them are kept only up to the size of one frame.
    if (gTcpReply.size() < static_cast<size_t>(AmpLink::kMaxFrame))
      gTcpReply +=
          mTcpRxBuffer.substr(0, std::min(cr + 1, static_cast<size_t>(AmpLink::kMaxFrame)));
    gTcpReplyReady = true;
    mTcpRxBuffer.clear();
  } else if (mTcpRxBuffer.size() > static_cast<size_t>(AmpLink::kMaxFrame)) {
    // A peer that never ends its text cannot fill memory: no reply is longer
    // than one frame, so only the latest frame's worth is kept.
    mTcpRxBuffer.erase(0, mTcpRxBuffer.size() - AmpLink::kMaxFrame);
  }
}

void Comms::sckTcp_Connect() {
  if (gUseEnet && host_.sckTcp.State() == TcpSocket::sckConnected) {
    gFirstReadPending = true;
    Timer1_Timer();  // the first read runs now, not one interval later
    host_.Timer1.SetEnabled(true);
  }
}

void Comms::sckTcp_Error(int number, const std::string& description, long scode,
                         const std::string& source) {
  const std::string text = "Error No.: " + std::to_string(number) + "\r\n" +
                           "Descr: " + description + "\r\n" + "Scode: " + std::to_string(scode) +
                           "\r\n" + "Source: " + source + "\r\n";
  host_.dialogs.MsgBox(text, MsgButtons::OK, MsgIcon::Exclamation, "TCP/IP Socket Error");
  host_.sckTcp.Close();
  host_.Timer1.SetEnabled(false);
  panel_.ClearForm();
  panel_.DisableForm();
  session.phase = SessionPhase::Idle;
  panel_.SetConnectCaption("Connect");
  panel_.SetControlEnabled("btnConnect", true);
  panel_.SetControlEnabled("mnuConnect", true);
  gFirstReadPending = false;
  gFirstReadDone = false;
}

void Comms::sckTcp_ConnectionRequest(intptr_t requestId) {
  host_.sckTcp.Close();
  host_.sckTcp.Accept(requestId);
}

bool Comms::ReadStatusBlock() {
  if (!ExchangeCommand(StatusQuery(), false)) return false;
  const std::string& msg = Link.RxMessage;
  const auto q = msg.find('?');
  if (q == std::string::npos) return false;
  // p is the 1-based position of the first data character; n is the whole
  // frame's length, end byte and checksum included.
  size_t p = q + 2;
  const size_t n = msg.size();
  if (p + 4 < n) gRespFields[0] = msg.substr(p - 1, 4);
  p += 4;
  if (p + 4 < n) gRespFields[1] = msg.substr(p - 1, 4);
  p += 4;
  if (p >= n) return false;
  gRespFields[2] = msg.substr(p - 1, gOneCharAlarm ? 1 : 4);
  return true;
}

bool Comms::UpdateStatus() {
  if (ReadStatusBlock()) {
    // gRespFields is shared scratch: take the three words before any other read.
    const std::string summary = gRespFields[0];
    const std::string fault = gRespFields[1];
    const std::string alarm = gRespFields[2];
    panel_.SetSummaryStatus(summary);
    panel_.SetFaultStatus(fault);
    panel_.SetAlarmStatus(alarm);
    panel_.UpdateFwdRF();
    panel_.UpdateRevRF();
    ++mSlowCycle;
    ++mFastCycle;
    if (mFastCycle > 3) {
      panel_.UpdateAtn();
      panel_.UpdateTemperature();
      if (panel_.IsTWTA()) {
        panel_.UpdateHelixHeater();
        panel_.UpdateCathodeCurrent();
      } else {
        panel_.UpdateCurrentSense();
        panel_.UpdateDCVIn();
      }
      panel_.InitRFTripLevels();
      panel_.UpdateCurrentSubBand();
      panel_.UpdateRFFrequency();
      mFastCycle = 0;
    } else if (mSlowCycle > 20) {
      panel_.UpdateDateTime();
      panel_.UpdateHours();
      panel_.InitRFTripLevels();
      mSlowCycle = 0;
    }
    session.PollAnswered();
    return true;
  }

  if (session.gMissedPolls > 0) {
    --session.gMissedPolls;
    return false;
  }
  // The failure that reaches the limit: the unit is gone.
  panel_.ClearForm();
  panel_.DisableForm();
  host_.Timer1.SetEnabled(false);
  mSlowCycle = 0;
  session.phase = SessionPhase::Idle;
  panel_.SetConnectCaption("Connect");
  panel_.SetControlEnabled("mnuConnect", true);
  gFirstReadPending = false;
  gFirstReadDone = false;
  if (!gUseEnet) panel_.SetControlEnabled("mnuAdvSrch", true);
  return false;
}

void Comms::Timer1_Timer() {
  if (inFlight_) return;
  if (!gUseEnet) {
    UpdateStatus();
    return;
  }
  if (gFirstReadPending && !gFirstReadDone) {
    panel_.FirstTimeRead();
    session.phase = SessionPhase::Up;
    panel_.SetConnectCaption("Disconnect");
    session.PollAnswered();
    panel_.SetControlEnabled("mnuConnect", false);
    panel_.SetControlEnabled("mnuAdvSrch", false);
    panel_.SetControlEnabled("mnuAtnCal", true);
    panel_.EnableForm();
    panel_.SetControlEnabled("btnConnect", true);
    gFirstReadPending = false;
    return;
  }
  if (gFirstReadDone) UpdateStatus();
}

}  // namespace amp
