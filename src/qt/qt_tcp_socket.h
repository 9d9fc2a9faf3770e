// TcpSocket over QTcpSocket, a client socket with the states, events and
// error numbers of a classic socket control.
//
// Events are never run from inside a call into this object: every Qt signal
// only updates the socket's state and posts the event to the event loop. A
// handler may therefore call Close(), Connect() or even destroy the socket.
// Close() and Connect() drop the events still queued for the connection they
// end.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/tcp_socket.h"

class QObject;
class QTcpSocket;

namespace amp {

class QtTcpSocket final : public TcpSocket {
 public:
  QtTcpSocket();
  ~QtTcpSocket() override;
  QtTcpSocket(const QtTcpSocket&) = delete;
  QtTcpSocket& operator=(const QtTcpSocket&) = delete;

  int State() const override;
  void SetRemoteHost(std::string host) override { host_ = std::move(host); }
  std::string RemoteHost() const override { return host_; }
  void SetRemotePort(int port) override { port_ = port; }
  int RemotePort() const override { return port_; }

  void Connect() override;
  void SendData(std::string_view bytes) override;
  std::string GetData() override;
  void Close() override;
  void Accept(intptr_t requestId) override;

  // Number and description of the classic control for a QAbstractSocket
  // error; `qtText` is Qt's text, used to tell apart the causes Qt folds into
  // one code and as the description of errors without a classic number.
  static int ErrorNumber(int qtError, const std::string& qtText);
  static std::string ErrorDescription(int number, const std::string& qtText);

 private:
  void Reset();
  void TakeIncoming();
  void PeerClosed();
  void PostError(int number, const std::string& description);
  template <typename F>
  void Post(F&& deliver);

  std::unique_ptr<QTcpSocket> sock_;
  QObject* queue_ = nullptr;  // receives the posted events; see the destructor
  std::string host_;
  int port_ = 0;
  std::string rx_;           // received and not yet taken by GetData
  bool failed_ = false;      // an error ended the connection: state 9
  bool peerClosed_ = false;  // the peer closed: state 8
  bool quiet_ = false;       // our own abort: Qt's signals are not events
  uint64_t generation_ = 0;  // bumped by Connect/Close to drop stale events
  // Shared with the queued events, which outlive this object.
  struct Life {
    bool alive = true;
    int delivering = 0;  // events on the stack
  };
  std::shared_ptr<Life> life_ = std::make_shared<Life>();
};

}  // namespace amp
