// UdpSocket over QUdpSocket. Each pending datagram is taken in turn and
// handed to DataArrival while it is the current one, so that however many
// arrive, at most one is held here.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/udp_socket.h"

class QUdpSocket;

namespace amp {

class QtUdpSocket final : public UdpSocket {
 public:
  QtUdpSocket();
  ~QtUdpSocket() override;
  QtUdpSocket(const QtUdpSocket&) = delete;
  QtUdpSocket& operator=(const QtUdpSocket&) = delete;

  bool Bind(const std::string& localHost, int localPort) override;
  void Close() override;
  void SetRemoteHost(std::string host) override { host_ = std::move(host); }
  void SetRemotePort(int port) override { port_ = port; }
  void SendData(std::string_view bytes) override;
  std::string GetData() override { return current_; }
  std::string RemoteHostIP() const override { return sender_; }

 private:
  void TakePending();
  void RaiseError(int number, const std::string& description);

  std::unique_ptr<QUdpSocket> sock_;
  std::string host_;
  int port_ = 0;
  std::string current_;
  std::string sender_;
};

}  // namespace amp
