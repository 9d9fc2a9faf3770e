// Units on a serial line, several of them when it is an RS-485 bus: one
// device, opened once, shared by the units that name it. Exchanges take
// turns on it, first come first served: a unit holds the line from the start
// of an exchange until its fiber next waits for something other than the
// line (the next poll, a pause in its first read), so a frame and its answer
// are never split by another unit's frame, and a unit that does not answer
// costs the others only its own time-outs.
#pragma once

#include <deque>
#include <string>

#include "exporter/loop.h"
#include "platform/comm_port.h"

namespace amp::exporter {

class SerialBus {
 public:
  SerialBus(Loop& loop, std::string device) : loop_(loop), device_(std::move(device)) {}
  ~SerialBus();
  SerialBus(const SerialBus&) = delete;
  SerialBus& operator=(const SerialBus&) = delete;

  const std::string& device() const { return device_; }

  // "" or why the device cannot be had.
  std::string Open(const std::string& settings);
  void Close();

  void Acquire(const void* who);
  void Release(const void* who);

  // What came in and no exchange has taken yet.
  std::string& rx() { return rx_; }
  void ReadAvailable();
  void Drain();
  bool WaitForInput(int ms);
  std::string Write(std::string_view bytes);

 private:
  Loop& loop_;
  std::string device_;
  int fd_ = -1;
  int users_ = 0;
  const void* holder_ = nullptr;
  std::deque<const void*> waiting_;
  std::string rx_;
};

// One unit's port on a bus: what AmpLink drives, as it drives a serial
// control.
class BusPort final : public CommPort {
 public:
  explicit BusPort(SerialBus& bus) : bus_(bus) {}
  std::string SetCommPort(int) override { return ""; }  // the device is the unit's own
  std::string SetSettings(std::string_view settings) override;
  std::string SetRTSEnable(bool) override { return ""; }
  std::string SetPortOpen(bool open) override;
  bool PortOpen() const override { return open_; }
  void SetInputLen(int n) override { inputLen_ = n; }
  int InBufferCount() override;
  void SetInBufferCount(int n) override;
  std::string Input() override;
  std::string Output(std::string_view bytes) override;
  bool WaitForInput(int ms) override;

  // The unit waits for something else: the line is free for the others.
  void LetGo() { bus_.Release(this); }

 private:
  SerialBus& bus_;
  std::string settings_;
  bool open_ = false;
  int inputLen_ = 0;
};

}  // namespace amp::exporter
