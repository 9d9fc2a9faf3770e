// Fakes of the platform interfaces for unit tests: a manual clock, an event
// pump that runs scheduled callbacks as time advances, a scripted serial port
// and socket, a recording dialog service. End-to-end tests use the real host
// parts against ampsim instead.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "display/modal.h"
#include "platform/comm_port.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/shell.h"
#include "platform/tcp_socket.h"

// The fuzz targets use these fakes without a test framework; they never state
// the boxes they expect, so a broken expectation cannot arise there.
#ifndef AMP_FAKES_WITHOUT_GTEST
#include <gtest/gtest.h>
#define AMP_FAKE_FAILURE(message) ADD_FAILURE() << (message)
#else
#define AMP_FAKE_FAILURE(message) (static_cast<void>(message), std::abort())
#endif

namespace amp::test {

class FakeClock : public Clock {
 public:
  int64_t NowMs() override { return now; }
  int64_t now = 1000;
};

// Callbacks scheduled at absolute times run when the pump's waits reach them.
class FakeEventPump : public EventPump {
 public:
  explicit FakeEventPump(FakeClock& clock) : clock_(clock) {}

  void At(int64_t timeMs, std::function<void()> fn) { queue_.emplace(timeMs, std::move(fn)); }
  void After(int64_t delayMs, std::function<void()> fn) { At(clock_.now + delayMs, std::move(fn)); }

  void DoEvents() override {
    ++doEventsCalls;
    RunDue();
  }
  void WaitForEvents(int ms) override {
    ++waitCalls;
    if (RunDue()) return;
    const int64_t until = clock_.now + ms;
    if (!queue_.empty() && queue_.begin()->first <= until) {
      clock_.now = std::max(clock_.now, queue_.begin()->first);
      RunDue();
      return;
    }
    clock_.now = until;
  }
  void Sleep(int ms) override { clock_.now += ms; }
  // Nothing scheduled runs: a refresh acts on no event.
  void Refresh() override { ++refreshCalls; }

  int doEventsCalls = 0;
  int refreshCalls = 0;
  int waitCalls = 0;

 private:
  bool RunDue() {
    bool ran = false;
    while (!queue_.empty() && queue_.begin()->first <= clock_.now) {
      auto fn = std::move(queue_.begin()->second);
      queue_.erase(queue_.begin());
      fn();
      ran = true;
    }
    return ran;
  }
  FakeClock& clock_;
  std::multimap<int64_t, std::function<void()>> queue_;
};

// A serial port whose incoming bytes arrive at scripted times.
class FakeCommPort : public CommPort {
 public:
  explicit FakeCommPort(FakeClock& clock) : clock_(clock) {}

  // Bytes that arrive `delayMs` after now (all at once).
  void Arrive(const std::string& bytes, int64_t delayMs = 0) {
    // Kept in order of arrival time, as a wire delivers them.
    for (char c : bytes) {
      const int64_t t = clock_.now + delayMs;
      auto at = std::upper_bound(incoming_.begin(), incoming_.end(), t,
                                 [](int64_t v, const auto& e) { return v < e.first; });
      incoming_.insert(at, {t, c});
    }
  }

  std::string SetCommPort(int port) override {
    calls.push_back("CommPort=" + std::to_string(port));
    if (isOpen) return "Port already open";
    commPort = port;
    return {};
  }
  std::string SetSettings(std::string_view s) override {
    calls.push_back("Settings=" + std::string(s));
    settings = s;
    return settingsError;
  }
  std::string SetRTSEnable(bool on) override {
    calls.push_back(on ? "RTSEnable=1" : "RTSEnable=0");
    return {};
  }
  std::string SetPortOpen(bool open) override {
    calls.push_back(open ? "PortOpen=1" : "PortOpen=0");
    if (open && !openError.empty()) return openError;
    if (open && isOpen) return "Port already open";
    isOpen = open;
    return {};
  }
  bool PortOpen() const override { return isOpen; }
  void SetInputLen(int n) override { inputLen = n; }
  int InBufferCount() override {
    // The bytes are kept in order of arrival, so those due come first.
    return static_cast<int>(std::upper_bound(incoming_.begin(), incoming_.end(), clock_.now,
                                             [](int64_t v, const auto& e) { return v < e.first; }) -
                            incoming_.begin());
  }
  void SetInBufferCount(int n) override {
    if (n != 0) return;
    ++clears;
    std::erase_if(incoming_, [this](auto& e) { return e.first <= clock_.now; });
  }
  std::string Input() override {
    std::string out;
    while (!incoming_.empty() && incoming_.front().first <= clock_.now &&
           (inputLen == 0 || static_cast<int>(out.size()) < inputLen)) {
      out += incoming_.front().second;
      incoming_.pop_front();
    }
    return out;
  }
  std::string Output(std::string_view bytes) override {
    if (!isOpen) return "Operation valid only when the port is open";
    written += bytes;
    writes.emplace_back(bytes);
    if (onWrite) onWrite(std::string(bytes));
    return {};
  }
  bool WaitForInput(int ms) override {
    ++waits;
    if (InBufferCount() > 0) return true;
    const int64_t until = clock_.now + ms;
    for (auto& [t, c] : incoming_) {
      if (t <= until) {
        clock_.now = std::max(clock_.now, t);
        return true;
      }
      break;
    }
    clock_.now = until;
    return false;
  }

  bool isOpen = false;
  int commPort = 0;
  std::string settings;
  int inputLen = 0;
  int clears = 0;
  int waits = 0;
  std::string settingsError, openError;
  std::string written;
  std::vector<std::string> writes;
  std::vector<std::string> calls;
  std::function<void(const std::string&)> onWrite;

 private:
  FakeClock& clock_;
  std::deque<std::pair<int64_t, char>> incoming_;
};

// A client socket whose peer is scripted through the pump.
class FakeTcpSocket : public TcpSocket {
 public:
  explicit FakeTcpSocket(FakeEventPump& pump) : pump_(pump) {}

  int State() const override { return state; }
  void SetRemoteHost(std::string h) override { host = std::move(h); }
  std::string RemoteHost() const override { return host; }
  void SetRemotePort(int p) override { port = p; }
  int RemotePort() const override { return port; }
  void Connect() override {
    ++connects;
    state = sckConnecting;
  }
  void SendData(std::string_view bytes) override {
    sent.emplace_back(bytes);
    if (onSend) onSend(std::string(bytes));
  }
  std::string GetData() override { return std::exchange(rx_, {}); }
  void Close() override {
    ++closes;
    state = closeLeavesClosing ? sckClosing : sckClosed;
  }
  void Accept(intptr_t id) override {
    accepted = id;
    state = sckConnected;
  }

  // The peer's bytes arrive `delayMs` from now, as one DataArrival.
  void Deliver(const std::string& bytes, int64_t delayMs = 0) {
    pump_.After(delayMs, [this, bytes] {
      rx_ += bytes;
      if (events_.DataArrival) events_.DataArrival(static_cast<long>(rx_.size()));
    });
  }
  void FireConnect() {
    state = sckConnected;
    if (events_.Connect) events_.Connect();
  }
  void FireError(int number, const std::string& text) {
    state = sckError;
    if (events_.Error) events_.Error(number, text, 0, "TcpSocket");
  }
  void FireConnectionRequest(intptr_t id) {
    if (events_.ConnectionRequest) events_.ConnectionRequest(id);
  }

  int state = sckClosed;
  std::string host;
  int port = 0;
  int connects = 0, closes = 0;
  intptr_t accepted = 0;
  bool closeLeavesClosing = false;
  std::vector<std::string> sent;
  std::function<void(const std::string&)> onSend;

 private:
  FakeEventPump& pump_;
  std::string rx_;
};

class FakeTimer : public Timer {
 public:
  void SetInterval(int ms) override { interval = ms; }
  int Interval() const override { return interval; }
  void SetEnabled(bool on) override { enabled = on; }
  bool Enabled() const override { return enabled; }
  void Tick() {
    if (handler_) handler_();
  }
  int interval = 0;
  bool enabled = false;
};

struct Box {
  std::string title, text;
  MsgIcon icon;
};

// The operator at the boxes. A test that states the boxes it expects, in
// order and with the button pressed, fails on any other box and on one that
// never came; a test that states none gets `answer` for every box.
class FakeDialogs : public Dialogs {
 public:
  ~FakeDialogs() override {
    for (const auto& e : expected_) AMP_FAKE_FAILURE("no box came for \"" + e.first + "\"");
    if (!files_.empty()) AMP_FAKE_FAILURE("a file dialog that never came");
  }
  // The next box holds `part` in its title or text and is answered `press`.
  FakeDialogs& Expect(std::string part, MsgResult press = MsgResult::OK) {
    strict_ = true;
    expected_.emplace_back(std::move(part), press);
    return *this;
  }
  void ExpectNoBox() { strict_ = true; }

  MsgResult MsgBox(const std::string& text, MsgButtons, MsgIcon icon, const std::string& title,
                   MsgDefault = MsgDefault::First) override {
    boxes.push_back({title, text, icon});
    if (strict_) return Expected(title + ": " + text);
    return answer;
  }
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& defaultText) override {
    prompts.push_back(title + "|" + prompt + "|" + defaultText);
    if (inputs.empty()) return std::nullopt;
    auto v = inputs.front();
    inputs.pop_front();
    return v;
  }
  // Plays the operator of a modal form: `onModal` runs once the form has
  // loaded and may set its controls and press its buttons. A form still open
  // afterwards, or any form when no script is set, is cancelled.
  void ShowModal(ui::Form& form) override {
    modals.push_back(form.Name());
    if (!onModal) {
      ui::CancelModal(form);
      return;
    }
    form.SetLoaded(true);
    if (form.Load) form.Load();
    if (form.Loaded()) onModal(form);
    if (form.Loaded()) {
      if (form.QueryUnload) form.QueryUnload();
      form.SetLoaded(false);
    }
  }
  // The next file dialog is answered `path` (nullopt: cancelled). A file
  // dialog nobody expected fails the test and is cancelled.
  FakeDialogs& ExpectFile(std::optional<std::string> path) {
    files_.push_back(std::move(path));
    return *this;
  }
  std::optional<std::string> ShowOpen(const std::string& name, const std::string&,
                                      const std::string& dir) override {
    return FileAnswer("open|" + dir + "|" + name);
  }
  std::optional<std::string> ShowSave(const std::string& name, const std::string&,
                                      const std::string& dir) override {
    return FileAnswer("save|" + dir + "|" + name);
  }
  std::vector<std::string> fileDialogs;  // "open|DIR|NAME" or "save|DIR|NAME"

  std::vector<Box> boxes;
  MsgResult answer = MsgResult::OK;
  std::deque<std::string> inputs;
  std::vector<std::string> prompts;  // every input box as "title|prompt|default", in order
  std::vector<std::string> modals;   // every modal form's name, in order
  std::function<void(ui::Form&)> onModal;

 private:
  std::optional<std::string> FileAnswer(const std::string& dialog) {
    fileDialogs.push_back(dialog);
    if (files_.empty()) {
      AMP_FAKE_FAILURE("unexpected file dialog " + dialog);
      return std::nullopt;
    }
    auto v = files_.front();
    files_.pop_front();
    return v;
  }
  std::deque<std::optional<std::string>> files_;

  MsgResult Expected(const std::string& box) {
    if (expected_.empty() || box.find(expected_.front().first) == std::string::npos) {
      AMP_FAKE_FAILURE("unexpected box \"" + box + "\"");
      return answer;
    }
    const MsgResult press = expected_.front().second;
    expected_.pop_front();
    return press;
  }
  bool strict_ = false;
  std::deque<std::pair<std::string, MsgResult>> expected_;
};

// The desktop's opener: remembers what it was asked to open.
class FakeShell : public Shell {
 public:
  void OpenDocument(const std::string& path) override { opened.push_back(path); }
  bool OpenUrl(const std::string& url) override {
    opened.push_back(url);
    return true;
  }
  std::vector<std::string> opened;
};

}  // namespace amp::test
