#include "qt/qt_tcp_socket.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QObject>
#include <QTcpSocket>
#include <algorithm>

namespace amp {
namespace {

constexpr const char* kSource = "TcpSocket";
constexpr int kBadState = 40006;
constexpr int kInvalidOp = 40020;

bool Has(const std::string& text, const char* word) {
  return QString::fromStdString(text).contains(QLatin1String(word), Qt::CaseInsensitive);
}

long Scode(int number) {
  // The control reports errors as a 32-bit HRESULT in the control facility.
  return static_cast<long>(
      static_cast<int32_t>(0x800A0000u | static_cast<uint32_t>(number & 0xFFFF)));
}

}  // namespace

int QtTcpSocket::ErrorNumber(int qtError, const std::string& qtText) {
  switch (static_cast<QAbstractSocket::SocketError>(qtError)) {
    case QAbstractSocket::ConnectionRefusedError:
      return 10061;
    case QAbstractSocket::HostNotFoundError:
      return 11001;
    case QAbstractSocket::SocketTimeoutError:
      return 10060;
    case QAbstractSocket::SocketAccessError:
      return 10013;
    case QAbstractSocket::SocketResourceError:
      return 10055;
    case QAbstractSocket::AddressInUseError:
      return 10048;
    case QAbstractSocket::SocketAddressNotAvailableError:
      return 10049;
    case QAbstractSocket::RemoteHostClosedError:
      return 10054;
    case QAbstractSocket::NetworkError:
      // Qt reports these causes as one code; its text names the cause.
      if (Has(qtText, "timed out")) return 10060;
      if (Has(qtText, "reset")) return 10054;
      if (Has(qtText, "network unreachable")) return 10051;
      if (Has(qtText, "unreachable")) return 10065;
      if (Has(qtText, "abort")) return 10053;
      return 10050;
    default:
      return 10000 + std::max(0, qtError);
  }
}

std::string QtTcpSocket::ErrorDescription(int number, const std::string& qtText) {
  switch (number) {
    case 10013:
      return "Permission denied";
    case 10048:
      return "Address in use";
    case 10049:
      return "Address not available from the local machine";
    case 10050:
      return "Network subsystem failed" + (qtText.empty() ? std::string() : ": " + qtText);
    case 10051:
      return "The network cannot be reached from this host at this time";
    case 10053:
      return "Connection is aborted due to timeout or other failure";
    case 10054:
      return "Connection is reset by remote side";
    case 10055:
      return "No buffer space is available";
    case 10060:
      return "Connection timed out";
    case 10061:
      return "Connection is forcefully rejected";
    case 10065:
      return "Host is unreachable";
    case 11001:
      return "Authoritative answer: Host not found";
    default:
      return qtText.empty() ? "Socket error " + std::to_string(number) : qtText;
  }
}

QtTcpSocket::QtTcpSocket() : sock_(std::make_unique<QTcpSocket>()), queue_(new QObject) {
  QTcpSocket* s = sock_.get();
  QObject::connect(s, &QTcpSocket::connected, s, [this] {
    if (quiet_) return;
    Post([this] {
      if (events_.Connect) events_.Connect();
    });
  });
  QObject::connect(s, &QTcpSocket::readyRead, s, [this] {
    if (quiet_) return;
    TakeIncoming();
    // readyRead comes from the event loop and never nests, so the data event
    // is delivered here at once: a reply waiting loop sees it in the same
    // pass. (A handler must not destroy the socket from inside this event.)
    if (rx_.empty() || !events_.DataArrival) return;
    auto life = life_;
    ++life->delivering;
    events_.DataArrival(static_cast<long>(rx_.size()));
    --life->delivering;
  });
  QObject::connect(s, &QTcpSocket::errorOccurred, s, [this](QAbstractSocket::SocketError error) {
    if (quiet_ || failed_) return;
    TakeIncoming();
    if (error == QAbstractSocket::RemoteHostClosedError) {
      PeerClosed();
      return;
    }
    failed_ = true;
    const std::string text = sock_->errorString().toStdString();
    const int number = ErrorNumber(static_cast<int>(error), text);
    PostError(number, ErrorDescription(number, text));
  });
  QObject::connect(s, &QTcpSocket::disconnected, s, [this] {
    if (quiet_ || failed_) return;
    TakeIncoming();
    PeerClosed();
  });
}

QtTcpSocket::~QtTcpSocket() {
  life_->alive = false;
  QObject::disconnect(sock_.get(), nullptr, nullptr, nullptr);
  sock_->abort();
  if (life_->delivering == 0) {
    delete queue_;  // its queued events go with it
    return;
  }
  // A handler destroys the socket from inside an event of queue_, and an
  // object may not be deleted while it handles an event. Another object
  // deletes it from the next pass of the loop (deleteLater would wait for a
  // loop run by exec(), which a command-line run may never start); the
  // events still queued see alive false and do nothing.
  if (QCoreApplication* app = QCoreApplication::instance())
    QMetaObject::invokeMethod(
        app, [queue = queue_] { delete queue; }, Qt::QueuedConnection);
}

template <typename F>
void QtTcpSocket::Post(F&& deliver) {
  // Nothing of this object may be touched after deliver(): the handler may
  // have destroyed it.
  QMetaObject::invokeMethod(
      queue_,
      [this, life = life_, generation = generation_, deliver = std::forward<F>(deliver)] {
        if (!life->alive || generation != generation_) return;
        ++life->delivering;
        deliver();
        --life->delivering;
      },
      Qt::QueuedConnection);
}

void QtTcpSocket::PostError(int number, const std::string& description) {
  Post([this, number, description] {
    if (events_.Error) events_.Error(number, description, Scode(number), kSource);
  });
}

void QtTcpSocket::TakeIncoming() {
  if (sock_->bytesAvailable() <= 0) return;
  const QByteArray data = sock_->readAll();
  rx_.append(data.constData(), static_cast<size_t>(data.size()));
}

void QtTcpSocket::PeerClosed() {
  if (peerClosed_) return;
  peerClosed_ = true;
  Post([this] {
    if (events_.Close) events_.Close();
  });
}

int QtTcpSocket::State() const {
  if (failed_) return sckError;
  if (peerClosed_) return sckClosing;
  switch (sock_->state()) {
    case QAbstractSocket::UnconnectedState:
      return sckClosed;
    case QAbstractSocket::HostLookupState:
      return sckResolvingHost;
    case QAbstractSocket::ConnectingState:
      return sckConnecting;
    case QAbstractSocket::ConnectedState:
      return sckConnected;
    case QAbstractSocket::BoundState:
      return sckOpen;
    case QAbstractSocket::ListeningState:
      return sckListening;
    case QAbstractSocket::ClosingState:
      return sckClosing;
  }
  return sckClosed;
}

void QtTcpSocket::Reset() {
  quiet_ = true;
  sock_->abort();
  quiet_ = false;
  ++generation_;
  rx_.clear();
  failed_ = false;
  peerClosed_ = false;
}

void QtTcpSocket::Connect() {
  Reset();
  if (host_.empty()) {
    failed_ = true;
    PostError(11001, ErrorDescription(11001, ""));
    return;
  }
  if (port_ < 1 || port_ > 65535) {
    failed_ = true;
    PostError(10049, ErrorDescription(10049, ""));
    return;
  }
  sock_->connectToHost(QString::fromStdString(host_), static_cast<quint16>(port_));
}

void QtTcpSocket::SendData(std::string_view bytes) {
  if (State() != sckConnected) {
    PostError(kBadState,
              "Wrong protocol or connection state for the requested transaction or request");
    return;
  }
  if (bytes.empty()) return;
  // Qt buffers everything written and sends from the event loop; flush()
  // pushes as much as the kernel takes right now.
  sock_->write(bytes.data(), static_cast<qint64>(bytes.size()));
  sock_->flush();
}

std::string QtTcpSocket::GetData() {
  TakeIncoming();
  std::string out;
  out.swap(rx_);
  return out;
}

void QtTcpSocket::Close() { Reset(); }

void QtTcpSocket::Accept(intptr_t requestId) {
  // A client socket never listens, so there is no request to accept.
  PostError(kInvalidOp, "Invalid operation at current state");
}

}  // namespace amp
