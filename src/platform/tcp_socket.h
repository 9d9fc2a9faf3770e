// The TCP client socket as the link layer drives it, with the states and the
// four events of a classic socket control. Events are delivered on the one
// thread, from inside the event pump.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace amp {

class TcpSocket {
 public:
  enum State : int {
    sckClosed = 0,
    sckOpen = 1,
    sckListening = 2,
    sckConnectionPending = 3,
    sckResolvingHost = 4,
    sckHostResolved = 5,
    sckConnecting = 6,
    sckConnected = 7,
    sckClosing = 8,  // the peer closed; Close() brings the socket to sckClosed
    sckError = 9,
  };

  struct Events {
    std::function<void()> Connect;
    std::function<void(long bytesTotal)> DataArrival;
    // Number, Description, Scode, Source: as the control reports a socket error.
    std::function<void(int number, const std::string& description, long scode,
                       const std::string& source)>
        Error;
    std::function<void(intptr_t requestId)> ConnectionRequest;
    std::function<void()> Close;  // the peer closed the connection
  };

  virtual ~TcpSocket() = default;

  virtual int State() const = 0;
  virtual void SetRemoteHost(std::string host) = 0;
  virtual std::string RemoteHost() const = 0;
  virtual void SetRemotePort(int port) = 0;
  virtual int RemotePort() const = 0;

  virtual void Connect() = 0;  // to RemoteHost:RemotePort; completes later
  virtual void SendData(std::string_view bytes) = 0;
  virtual std::string GetData() = 0;  // every byte received and not yet taken
  virtual void Close() = 0;
  virtual void Accept(intptr_t requestId) = 0;

  void SetEvents(Events events) { events_ = std::move(events); }

 protected:
  Events events_;
};

}  // namespace amp
