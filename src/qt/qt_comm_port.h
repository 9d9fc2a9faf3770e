// CommPort over QSerialPort. Everything runs on the calling thread: the link's
// receive loop calls InBufferCount/Input/WaitForInput with no event loop
// running, so each of those also collects what the host has received since.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/com_slots.h"
#include "platform/comm_port.h"

class QSerialPort;

namespace amp {

class QtCommPort final : public CommPort {
 public:
  // The slot table is read at each open, so rebinding a slot takes effect the
  // next time the port opens; it must outlive the port.
  explicit QtCommPort(const ComSlots& table);
  explicit QtCommPort(ComSlots&&) = delete;
  ~QtCommPort() override;
  QtCommPort(const QtCommPort&) = delete;
  QtCommPort& operator=(const QtCommPort&) = delete;

  std::string SetCommPort(int port) override;
  std::string SetSettings(std::string_view settings) override;
  std::string SetRTSEnable(bool on) override;
  std::string SetPortOpen(bool open) override;
  bool PortOpen() const override;

  void SetInputLen(int n) override;
  int InBufferCount() override;
  void SetInBufferCount(int n) override;
  std::string Input() override;
  std::string Output(std::string_view bytes) override;
  bool WaitForInput(int ms) override;

  int PortNumber() const { return number_; }
  const std::string& Settings() const { return settings_; }

  // The line settings parsed from "baud,parity,data,stop"; false when the
  // text is not a valid setting.
  struct Line {
    int baud = 9600;
    char parity = 'N';   // N E O M S
    int dataBits = 8;    // 5..8
    int stopHalves = 2;  // stop bits times two: 2, 3 (1.5) or 4
  };
  static bool ParseSettings(std::string_view text, Line* line);

 private:
  std::string Name() const;  // "COM3 (/dev/ttyUSB0)"
  bool ApplyLine(const Line& line);
  void PullFromHost();  // take in what arrived, without blocking
  void HandleLoss();    // the device went away: keep its bytes, close

  const ComSlots& table_;
  std::unique_ptr<QSerialPort> port_;
  int number_ = 1;
  std::string settings_ = "9600,N,8,1";
  Line line_;
  bool rts_ = false;
  int inputLen_ = 0;
  std::string path_;   // device of the open port
  std::string stash_;  // bytes received before the device went away
  bool lost_ = false;  // set from the error signal; handled at the next call
  std::string lostError_;
};

}  // namespace amp
