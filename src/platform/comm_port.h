// The serial port as the link layer drives it: the operations of a classic
// serial control, plus a wait for input with a time limit so that a receive
// loop need not spin. Implementations: QtCommPort (host), FakeCommPort (tests).
#pragma once

#include <string>
#include <string_view>

namespace amp {

class CommPort {
 public:
  virtual ~CommPort() = default;

  // Setters return "" on success, else the description of the error the
  // control raises ("Port already open", "Invalid Port Number", the host's
  // text for a device that cannot be opened, ...).
  virtual std::string SetCommPort(int port) = 0;                   // 1..10
  virtual std::string SetSettings(std::string_view settings) = 0;  // "9600,N,8,1"
  virtual std::string SetRTSEnable(bool on) = 0;
  virtual std::string SetPortOpen(bool open) = 0;
  virtual bool PortOpen() const = 0;

  // How many bytes one Input read returns; 0 means the whole buffer.
  virtual void SetInputLen(int n) = 0;
  virtual int InBufferCount() = 0;
  // Setting the count to 0 drops every byte received and not yet read.
  virtual void SetInBufferCount(int n) = 0;
  virtual std::string Input() = 0;
  virtual std::string Output(std::string_view bytes) = 0;  // "" or error text

  // Blocks for at most `ms` milliseconds until at least one byte can be read.
  // Returns true when a byte is waiting.
  virtual bool WaitForInput(int ms) = 0;
};

}  // namespace amp
