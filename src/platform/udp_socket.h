// The UDP socket of the unit search, with the operations and the two events
// of a classic datagram control. Events are delivered on the one thread,
// from inside the event pump, one DataArrival per datagram.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace amp {

class UdpSocket {
 public:
  struct Events {
    // A datagram is waiting: GetData takes it, RemoteHostIP names its sender.
    std::function<void(long bytesTotal)> DataArrival;
    std::function<void(int number, const std::string& description)> Error;
  };

  virtual ~UdpSocket() = default;

  // Binds to `localPort` on `localHost` ("0.0.0.0" for every interface).
  // False, with the Error event raised, when the port cannot be had. A
  // socket bound already is closed first.
  virtual bool Bind(const std::string& localHost, int localPort) = 0;
  virtual void Close() = 0;

  virtual void SetRemoteHost(std::string host) = 0;
  virtual void SetRemotePort(int port) = 0;
  // One datagram to RemoteHost:RemotePort.
  virtual void SendData(std::string_view bytes) = 0;
  // The datagram of the DataArrival being handled, taken as text.
  virtual std::string GetData() = 0;
  virtual std::string RemoteHostIP() const = 0;

  void SetEvents(Events events) { events_ = std::move(events); }

 protected:
  Events events_;
};

}  // namespace amp
