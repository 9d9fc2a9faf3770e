#include "qt/qt_udp_socket.h"

#include <QHostAddress>
#include <QNetworkDatagram>
#include <QUdpSocket>

namespace amp {

namespace {

// The classic control's numbers for the failures the search can meet.
constexpr int kAddressInUse = 10048;
constexpr int kSendFailed = 10065;

}  // namespace

QtUdpSocket::QtUdpSocket() = default;
QtUdpSocket::~QtUdpSocket() = default;

bool QtUdpSocket::Bind(const std::string& localHost, int localPort) {
  Close();
  sock_ = std::make_unique<QUdpSocket>();
  QObject::connect(sock_.get(), &QUdpSocket::readyRead, sock_.get(), [this] { TakePending(); });
  const QHostAddress address(QString::fromStdString(localHost));
  if (!sock_->bind(address, static_cast<quint16>(localPort))) {
    const std::string why = sock_->errorString().toStdString();
    sock_.reset();
    RaiseError(kAddressInUse, why);
    return false;
  }
  return true;
}

void QtUdpSocket::Close() {
  if (!sock_) return;
  sock_->disconnect();
  sock_->close();
  // Deleting from inside its own readyRead is not safe; the socket goes at
  // the next turn of the event loop instead.
  sock_.release()->deleteLater();
}

void QtUdpSocket::SendData(std::string_view bytes) {
  if (!sock_) return;
  const QByteArray data(bytes.data(), static_cast<qsizetype>(bytes.size()));
  const qint64 n = sock_->writeDatagram(data, QHostAddress(QString::fromStdString(host_)),
                                        static_cast<quint16>(port_));
  if (n != data.size()) RaiseError(kSendFailed, sock_->errorString().toStdString());
}

void QtUdpSocket::TakePending() {
  // A handler may close the socket: check it before every datagram.
  while (sock_ && sock_->hasPendingDatagrams()) {
    const QNetworkDatagram d = sock_->receiveDatagram();
    const QByteArray data = d.data();
    current_.assign(data.constData(), static_cast<size_t>(data.size()));
    QHostAddress from = d.senderAddress();
    bool mapped = false;
    const quint32 v4 = from.toIPv4Address(&mapped);
    if (mapped) from = QHostAddress(v4);
    sender_ = from.toString().toStdString();
    if (events_.DataArrival) events_.DataArrival(static_cast<long>(current_.size()));
  }
}

void QtUdpSocket::RaiseError(int number, const std::string& description) {
  if (events_.Error) events_.Error(number, description);
}

}  // namespace amp
