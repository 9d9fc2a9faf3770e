// The host parts one unit's session runs on inside the exporter: a TCP
// socket, an event pump, a clock and a timer on the fiber loop, and message
// boxes that nobody sees. The link layer drives them exactly as it drives
// the desktop's; a wait parks the unit's fiber instead of a thread.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "exporter/loop.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/tcp_socket.h"

namespace amp::exporter {

class LoopClock final : public Clock {
 public:
  int64_t NowMs() override { return Loop::NowMs(); }
};

// A non-blocking client socket. Its events are delivered on the unit's own
// fiber from inside Pump, as a classic socket control delivers them from
// inside the event loop.
class LoopTcpSocket final : public TcpSocket {
 public:
  explicit LoopTcpSocket(Loop& loop) : loop_(loop) {}
  ~LoopTcpSocket() override { Close(); }

  int State() const override { return state_; }
  void SetRemoteHost(std::string host) override { host_ = std::move(host); }
  std::string RemoteHost() const override { return host_; }
  void SetRemotePort(int port) override { port_ = port; }
  int RemotePort() const override { return port_; }
  void Connect() override;
  void SendData(std::string_view bytes) override;
  std::string GetData() override;
  void Close() override;
  void Accept(intptr_t) override {}  // a client never accepts

  // Waits up to `ms` for the socket and delivers what happened: the
  // connect's outcome, data, the peer closing, an error. Returns at the
  // first event.
  void Pump(int ms);

 private:
  void Fail(int error);

  Loop& loop_;
  int fd_ = -1;
  int state_ = sckClosed;
  std::string host_;
  int port_ = 0;
  std::string rx_;
};

class LoopPump final : public EventPump {
 public:
  LoopPump(Loop& loop, LoopTcpSocket& sock) : loop_(loop), sock_(sock) {}
  void DoEvents() override { sock_.Pump(0); }
  // Between the steps of a first read: give the other units their turn.
  void Refresh() override {
    if (letGo) letGo();
    loop_.Sleep(0);
  }
  void WaitForEvents(int ms) override {
    if (letGo) letGo();
    sock_.Pump(ms);
  }
  // A pause inside an exchange (the port's opening) keeps the line.
  void Sleep(int ms) override { loop_.Sleep(ms); }
  // Told before the unit waits for events: a shared line is free meanwhile.
  std::function<void()> letGo;

 private:
  Loop& loop_;
  LoopTcpSocket& sock_;
};

// The poll timer as the session driver runs it: it keeps the interval and
// whether the session has it enabled, and Tick runs the handler.
class LoopTimer final : public Timer {
 public:
  void SetInterval(int ms) override { interval_ = ms; }
  int Interval() const override { return interval_; }
  void SetEnabled(bool on) override { enabled_ = on; }
  bool Enabled() const override { return enabled_; }
  void Tick() {
    if (handler_) handler_();
  }

 private:
  int interval_ = 2500;
  bool enabled_ = false;
};

// Nobody answers a box in a monitoring process: each is kept as the last
// message and answered with the harmless button.
class QuietDialogs final : public Dialogs {
 public:
  MsgResult MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                   const std::string& title, MsgDefault def) override;
  std::optional<std::string> InputBox(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  void ShowModal(ui::Form& form) override;
  // No file is chosen in a monitoring process.
  std::optional<std::string> ShowOpen(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowSave(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  std::string last;  // "title: text" of the last box
};

}  // namespace amp::exporter
