// AmpLink: the serial frame layer. Wraps a command text into a frame with a
// one-character unit address and a checksum, writes it to the serial port,
// and assembles the reply one byte at a time through a small state machine
// that checks the checksum and the address. It knows nothing of commands.
//
// Over TCP the frame is built by Comms; AmpLink then only holds RxMessage,
// DeviceAddress, MsgTimeout and the settings.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/comm_port.h"
#include "platform/event_pump.h"

namespace amp {

class AmpLink {
 public:
  // Error numbers, the index into the error table.
  enum Error : int16_t {
    NoError = 0,
    BadAddress = 1,
    ChecksumError = 2,
    BadStartByte = 3,  // kept in the table, never set
    HugeResponse = 4,
    BufferOverflow = 5,  // kept in the table, never set
    NotAcknowledged = 6,
    IncompleteResponse = 7,
    NoResponse = 8,
    PortError = 9,
  };
  static constexpr int kMaxFrame = 0x4000;  // 16384 characters

  // What PortNumber set raises for a number outside 1..10.
  static constexpr uint32_t kInvalidPortCode = 0x80040001u;

  AmpLink(Clock& clock, EventPump& pump);

  std::string RxMessage;  // the frame last received (or the TCP reply)
  std::string TxMessage;  // the frame last sent

  // Frame `message` with `startByte` (every caller passes 2) and send it. A
  // non-empty `newAddress` becomes the DeviceAddress first.
  void send(int16_t startByte, std::string_view message, std::string_view newAddress);
  // Runs the receive state machine until a whole frame, an error or the
  // time-out; returns the error number.
  int16_t Receive();
  // Drops every byte received and not yet read.
  void Clear();

  void SetCheckAddress(bool on) { checkAddress_ = on; }
  bool CheckAddress() const { return checkAddress_; }

  // Seconds. A value of 32767 or more is ignored and the old time-out stays.
  float MsgTimeout() const { return static_cast<float>(timeoutMs_) / 1000.0f; }
  void SetMsgTimeout(float seconds);

  // One character; a longer value keeps its first, an empty one is a blank.
  void SetDeviceAddress(std::string_view address);
  std::string DeviceAddress() const { return std::string(1, deviceAddress_); }

  int16_t ErrNumber() const { return errNumber_; }
  std::string ErrString() const;

  void SetPrintable(bool on) { printable_ = on; }
  bool Printable() const { return printable_; }

  // Forces the port closed, then opens it afresh.
  bool IsPortValid();
  void SetCommControl(CommPort* port) { port_ = port; }
  CommPort* CommControl() const { return port_; }
  void OpenPort(bool open);

  // Stores the text and, when the port is open, applies it at once.
  void SetCommSettings(std::string settings);
  const std::string& CommSettings() const { return commSettings_; }

  // Accepts 1..10: stores it, closes an open port and opens the new one.
  // Outside that range the old number stays, error 9 reads "Invalid Port
  // Number", and the call returns false (the error the caller must see).
  bool SetPortNumber(int16_t port);
  int16_t PortNumber() const { return portNumber_; }

  // Every frame both ways, for the --trace switch: direction 't' or 'r'.
  std::function<void(char direction, std::string_view bytes)> trace;

 private:
  bool EnsurePortOpen();

  Clock& clock_;
  EventPump& pump_;
  CommPort* port_ = nullptr;
  int16_t errNumber_ = 0;
  std::array<std::string, 11> errTable_;
  int16_t portNumber_ = 1;
  std::string commSettings_;
  char deviceAddress_ = '@';
  bool printable_ = false;
  int32_t timeoutMs_ = 5000;
  bool checkAddress_ = true;
};

}  // namespace amp
