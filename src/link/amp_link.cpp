#include "link/amp_link.h"

#include <algorithm>
#include <cmath>

#include "basic/checksum.h"

namespace amp {

AmpLink::AmpLink(Clock& clock, EventPump& pump) : clock_(clock), pump_(pump) {
  errTable_ = {"No Error",
               "Bad Address",
               "Checksum Error",
               "Bad Start Byte",
               "Huge Response",
               "Buffer Overflow Error",
               "Command Not Acknowledged",
               "Incomplete Response",
               "No Response",
               "",
               ""};
}

void AmpLink::SetMsgTimeout(float seconds) {
  if (!(seconds < 32767.0f)) return;
  // The classic conversion rounds ties to even; 0.6 s is 600 ms.
  timeoutMs_ = static_cast<int32_t>(std::nearbyint(static_cast<double>(seconds) * 1000.0));
}

void AmpLink::SetDeviceAddress(std::string_view address) {
  deviceAddress_ = address.empty() ? ' ' : address[0];
}

std::string AmpLink::ErrString() const {
  if (errNumber_ < 0 || errNumber_ >= static_cast<int16_t>(errTable_.size())) return {};
  return errTable_[errNumber_];
}

void AmpLink::Clear() {
  if (port_) port_->SetInBufferCount(0);
}

void AmpLink::OpenPort(bool open) {
  if (port_) port_->SetPortOpen(open);
}

bool AmpLink::IsPortValid() {
  OpenPort(false);
  return EnsurePortOpen();
}

void AmpLink::SetCommSettings(std::string settings) {
  commSettings_ = std::move(settings);
  if (port_ && port_->PortOpen()) port_->SetSettings(commSettings_);
}

bool AmpLink::SetPortNumber(int16_t port) {
  if (port < 1 || port > 10) {
    errNumber_ = PortError;
    errTable_[PortError] = "Invalid Port Number";
    return false;
  }
  portNumber_ = port;
  if (port_ && port_->PortOpen()) port_->SetPortOpen(false);
  EnsurePortOpen();
  return true;
}

bool AmpLink::EnsurePortOpen() {
  errNumber_ = NoError;
  bool result = false;
  if (port_ == nullptr) {
    // Reading the state of a port that was never given raises; so does every
    // write below, and the text the operator sees is the same.
    errNumber_ = PortError;
    errTable_[PortError] = "Com Port Not Set";
    return false;
  }
  if (port_->PortOpen()) return true;

  // Each write goes on past an error in the one before; the last error that
  // stands decides.
  std::string lastError;
  auto note = [&lastError](std::string e) {
    if (!e.empty()) lastError = std::move(e);
  };
  note(port_->SetCommPort(portNumber_));
  note(port_->SetSettings(commSettings_));
  note(port_->SetRTSEnable(true));
  note(port_->SetPortOpen(true));
  if (!lastError.empty()) {
    errNumber_ = PortError;
    errTable_[PortError] = lastError;
    return false;
  }

  // The priming pair wakes a unit whose receiver saw line noise while the
  // port was closed; it goes out on every opening and at no other time.
  port_->Output("\r\n");
  if (trace) trace('t', "\r\n");
  pump_.Sleep(50);

  if (port_->PortOpen()) result = true;
  port_->SetInputLen(0);
  return result;
}

void AmpLink::send(int16_t startByte, std::string_view message, std::string_view newAddress) {
  if (!EnsurePortOpen()) return;
  if (!newAddress.empty()) SetDeviceAddress(newAddress);

  std::string frame;
  frame.reserve(message.size() + 4);
  if (printable_) {
    frame += PSTART;
  } else {
    frame += static_cast<char>(startByte);
  }
  frame += deviceAddress_;
  frame.append(message);
  frame += printable_ ? PEND : ETX;
  frame += static_cast<char>(printable_ ? PrintableChecksum(frame) : XorChecksum(frame));
  TxMessage = frame;
  port_->Output(frame);
  if (trace) trace('t', frame);
  errNumber_ = NoError;
}

int16_t AmpLink::Receive() {
  if (!EnsurePortOpen()) return 0;  // callers that test only the result see success

  port_->SetInputLen(1);
  bool startFlag = false;
  bool endFlag = false;
  bool done = false;
  RxMessage.clear();
  const int64_t deadline = clock_.NowMs() + timeoutMs_;

  while (!done) {
    const int64_t now = clock_.NowMs();
    if (now > deadline) {
      errNumber_ = RxMessage.empty() ? NoResponse : IncompleteResponse;
      done = true;
      // The byte check below still runs once in this pass.
    }
    std::string in;
    if (port_->InBufferCount() > 0) in = port_->Input();
    if (!in.empty()) {
      const char b = in[0];
      if (endFlag) {
        done = true;
        const uint8_t expected = (!RxMessage.empty() && RxMessage[0] == PSTART)
                                     ? PrintableChecksum(RxMessage)
                                     : XorChecksum(RxMessage);
        errNumber_ = (static_cast<uint8_t>(b) == expected) ? NoError : ChecksumError;
        RxMessage += b;
      } else {
        if ((b == ETX || b == PEND) && startFlag) {
          endFlag = true;
          RxMessage += b;
        } else if (b == STX || b == ACK || b == NAK ||
                   (b == PSTART && (RxMessage.empty() || RxMessage[0] != STX))) {
          // A start byte inside a frame restarts it, except that `{` inside
          // an STX frame is plain text.
          endFlag = false;
          startFlag = true;
          RxMessage.assign(1, b);
        } else if (startFlag) {
          RxMessage += b;
        }
        if (static_cast<int>(RxMessage.size()) > kMaxFrame) {
          errNumber_ = HugeResponse;
          done = true;
        }
      }
    } else if (!done) {
      // Block in the port until a byte comes or the time is up, rather than
      // spinning; what the loop does with the bytes is unchanged.
      const int64_t left = deadline - clock_.NowMs();
      port_->WaitForInput(static_cast<int>(std::clamp<int64_t>(left + 1, 1, 1000)));
    }
  }

  if (trace && !RxMessage.empty()) trace('r', RxMessage);
  if (errNumber_ == NoError) {
    if (!RxMessage.empty() && RxMessage[0] == NAK) {
      errNumber_ = NotAcknowledged;
    } else if (checkAddress_ && (RxMessage.size() < 2 || RxMessage[1] != deviceAddress_)) {
      errNumber_ = BadAddress;
    }
  }
  return errNumber_;
}

}  // namespace amp
