#include "qt/qt_comm_port.h"

#include <poll.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSerialPort>
#include <QThread>
#include <algorithm>
#include <cctype>
#include <cstdint>

#include "basic/numbers.h"

namespace amp {
namespace {

constexpr const char* kInvalidValue = "Invalid property value";
constexpr const char* kAlreadyOpen = "Port already open";
constexpr const char* kNotOpen = "Operation valid only when the port is open";

std::string_view Trimmed(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

bool HungUp(int fd) {
  if (fd < 0) return true;
  pollfd pfd{fd, POLLIN, 0};
  return poll(&pfd, 1, 0) > 0 && (pfd.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

// A pseudo-terminal carries bytes only: the kernel keeps it at 8 data bits
// without parity and refuses other framing, which is of no consequence there.
bool IsPseudoTerminal(const std::string& path) {
  const QString real = QFileInfo(QString::fromStdString(path)).canonicalFilePath();
  return real.startsWith(QLatin1String("/dev/pts/")) || real == QLatin1String("/dev/ptmx");
}

QSerialPort::Parity ToQt(char parity) {
  switch (parity) {
    case 'E':
      return QSerialPort::EvenParity;
    case 'O':
      return QSerialPort::OddParity;
    case 'M':
      return QSerialPort::MarkParity;
    case 'S':
      return QSerialPort::SpaceParity;
    default:
      return QSerialPort::NoParity;
  }
}

QSerialPort::StopBits StopToQt(int halves) {
  if (halves == 3) return QSerialPort::OneAndHalfStop;
  return halves == 4 ? QSerialPort::TwoStop : QSerialPort::OneStop;
}

}  // namespace

QtCommPort::QtCommPort(const ComSlots& table)
    : table_(table), port_(std::make_unique<QSerialPort>()) {
  // The signal may come from inside a Qt call of ours (a read that hits a
  // vanished device); only note it here and close at a safe point, either the
  // next call into this port or the event loop.
  QObject::connect(
      port_.get(), &QSerialPort::errorOccurred, port_.get(),
      [this](QSerialPort::SerialPortError error) {
        if (lost_) return;
        // A pulled adapter shows as ResourceError; a hung-up
        // pseudo-terminal as a read or write error on a line
        // that reports the hang-up.
        const bool gone = error == QSerialPort::ResourceError ||
                          ((error == QSerialPort::ReadError || error == QSerialPort::WriteError) &&
                           HungUp(port_->handle()));
        if (!gone) return;
        lost_ = true;
        lostError_ = Name() + " is no longer available: the device was disconnected or hung up";
        if (error == QSerialPort::ResourceError)
          lostError_ += " (" + port_->errorString().toStdString() + ")";
        QMetaObject::invokeMethod(
            port_.get(), [this] { HandleLoss(); }, Qt::QueuedConnection);
      });
}

QtCommPort::~QtCommPort() {
  QObject::disconnect(port_.get(), nullptr, nullptr, nullptr);
  if (port_->isOpen()) port_->close();
}

std::string QtCommPort::Name() const {
  return "COM" + std::to_string(number_) + " (" + (path_.empty() ? table_.Path(number_) : path_) +
         ")";
}

bool QtCommPort::ParseSettings(std::string_view text, Line* line) {
  std::string_view fields[4];
  int count = 0;
  while (count < 4) {
    const auto comma = text.find(',');
    fields[count++] = Trimmed(text.substr(0, comma));
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
    if (count == 4) return false;  // a fifth field
  }
  if (count != 4) return false;

  Line parsed;
  if (!ParseInt(fields[0], &parsed.baud) || parsed.baud < 50 || parsed.baud > 4000000) return false;
  if (fields[1].size() != 1) return false;
  parsed.parity = static_cast<char>(std::toupper(static_cast<unsigned char>(fields[1][0])));
  if (std::string_view("NEOMS").find(parsed.parity) == std::string_view::npos) return false;
  if (!ParseInt(fields[2], &parsed.dataBits) || parsed.dataBits < 5 || parsed.dataBits > 8)
    return false;
  if (fields[3] == "1") {
    parsed.stopHalves = 2;
  } else if (fields[3] == "1.5") {
    parsed.stopHalves = 3;
  } else if (fields[3] == "2") {
    parsed.stopHalves = 4;
  } else {
    return false;
  }
  *line = parsed;
  return true;
}

bool QtCommPort::ApplyLine(const Line& line) {
  // Setters on a closed QSerialPort only store the values; open applies them.
  bool ok = port_->setBaudRate(line.baud);
  ok = port_->setParity(ToQt(line.parity)) && ok;
  ok = port_->setDataBits(static_cast<QSerialPort::DataBits>(line.dataBits)) && ok;
  ok = port_->setStopBits(StopToQt(line.stopHalves)) && ok;
  return ok;
}

std::string QtCommPort::SetCommPort(int port) {
  HandleLoss();
  if (port_->isOpen()) return kAlreadyOpen;
  if (port < 1 || port > ComSlots::kCount) return "Invalid Port Number";
  number_ = port;
  return "";
}

std::string QtCommPort::SetSettings(std::string_view settings) {
  HandleLoss();
  Line line;
  if (!ParseSettings(settings, &line)) return kInvalidValue;
  if (port_->isOpen() && !ApplyLine(line) && !IsPseudoTerminal(path_)) {
    const std::string why = port_->errorString().toStdString();
    ApplyLine(line_);
    port_->clearError();
    return "Cannot apply " + std::string(Trimmed(settings)) + " to " + Name() + ": " + why;
  }
  port_->clearError();
  line_ = line;
  settings_ = std::string(Trimmed(settings));
  return "";
}

std::string QtCommPort::SetRTSEnable(bool on) {
  HandleLoss();
  rts_ = on;
  // Pseudo-terminals and some adapters have no modem lines; the amplifiers
  // talk without them, so a refusal here is not an error.
  if (port_->isOpen() && !port_->setRequestToSend(on)) port_->clearError();
  return "";
}

std::string QtCommPort::SetPortOpen(bool open) {
  HandleLoss();
  if (!open) {
    if (port_->isOpen()) port_->close();
    path_.clear();
    stash_.clear();
    lostError_.clear();
    return "";
  }
  if (port_->isOpen()) return kAlreadyOpen;
  const std::string path = table_.Path(number_);
  if (path.empty()) return "COM" + std::to_string(number_) + " is not bound to a serial device";

  port_->setPortName(QString::fromStdString(path));
  port_->setFlowControl(QSerialPort::NoFlowControl);
  ApplyLine(line_);
  if (!port_->open(QIODevice::ReadWrite)) {
    std::string why = port_->errorString().toStdString();
    // Qt reports a device held by another program (its lock file, or the
    // exclusive flag on the line) as a permission error.
    if (port_->error() == QSerialPort::PermissionError &&
        (why.find("locking the device") != std::string::npos ||
         why.find("busy") != std::string::npos))
      why = "the device is in use by another program (" + why + ")";
    port_->clearError();
    return "Cannot open " + path + ": " + why;
  }
  // Open does not tell whether the device took the line settings; setting
  // them again on the open port does.
  if (!ApplyLine(line_) && !IsPseudoTerminal(path)) {
    const std::string why = port_->errorString().toStdString();
    port_->close();
    port_->clearError();
    return "Cannot open " + path + ": the device does not support " + settings_ + " (" + why + ")";
  }
  port_->clearError();
  path_ = path;
  stash_.clear();
  lostError_.clear();
  lost_ = false;
  if (!port_->setRequestToSend(rts_)) port_->clearError();
  return "";
}

bool QtCommPort::PortOpen() const { return port_->isOpen() && !lost_; }

void QtCommPort::SetInputLen(int n) { inputLen_ = std::max(0, n); }

void QtCommPort::HandleLoss() {
  if (!lost_) return;
  lost_ = false;
  if (!port_->isOpen()) return;
  const QByteArray rest = port_->readAll();
  stash_.append(rest.constData(), static_cast<size_t>(rest.size()));
  port_->close();
  port_->clearError();
}

void QtCommPort::PullFromHost() {
  if (!port_->isOpen()) return;
  // Each call moves one read's worth into Qt's buffer; the bound keeps a
  // device that never stops talking from holding us here.
  for (int i = 0; i < 64 && !lost_; ++i) {
    if (!port_->waitForReadyRead(0)) break;
  }
  HandleLoss();
}

int QtCommPort::InBufferCount() {
  HandleLoss();
  PullFromHost();
  const qint64 queued = port_->isOpen() ? port_->bytesAvailable() : 0;
  return static_cast<int>(std::min<qint64>(static_cast<qint64>(stash_.size()) + queued, INT32_MAX));
}

void QtCommPort::SetInBufferCount(int n) {
  HandleLoss();
  if (n != 0) return;  // only emptying the buffer is meaningful
  stash_.clear();
  if (!port_->isOpen()) return;
  // QSerialPort::clear empties its own buffer and the host's input queue.
  port_->clear(QSerialPort::Input);
  HandleLoss();
}

std::string QtCommPort::Input() {
  HandleLoss();
  PullFromHost();
  const size_t want = inputLen_ > 0 ? static_cast<size_t>(inputLen_) : SIZE_MAX;
  std::string out = stash_.substr(0, std::min(want, stash_.size()));
  stash_.erase(0, out.size());
  if (out.size() < want && port_->isOpen()) {
    const QByteArray more =
        want == SIZE_MAX ? port_->readAll() : port_->read(static_cast<qint64>(want - out.size()));
    out.append(more.constData(), static_cast<size_t>(more.size()));
  }
  return out;
}

std::string QtCommPort::Output(std::string_view bytes) {
  HandleLoss();
  if (!port_->isOpen()) return lostError_.empty() ? kNotOpen : lostError_;
  if (bytes.empty()) return "";
  if (port_->write(bytes.data(), static_cast<qint64>(bytes.size())) < 0) {
    const std::string why = port_->errorString().toStdString();
    port_->clearError();
    HandleLoss();
    return "Write to " + Name() + " failed: " + why;
  }
  // Time for the bytes on the wire at the current rate (10 bits a byte), plus
  // a second of slack; a line that takes longer is stuck.
  const qint64 limit = static_cast<qint64>(bytes.size()) * 10000 / std::max(line_.baud, 1) + 1000;
  QElapsedTimer clock;
  clock.start();
  while (port_->isOpen() && port_->bytesToWrite() > 0 && !lost_) {
    const qint64 left = limit - clock.elapsed();
    if (left <= 0) return "Timed out writing to " + Name();
    if (!port_->waitForBytesWritten(static_cast<int>(left)) &&
        port_->error() != QSerialPort::TimeoutError && port_->error() != QSerialPort::NoError &&
        !lost_) {
      const std::string why = port_->errorString().toStdString();
      port_->clearError();
      return "Write to " + Name() + " failed: " + why;
    }
  }
  HandleLoss();
  if (!port_->isOpen()) return lostError_.empty() ? kNotOpen : lostError_;
  return "";
}

bool QtCommPort::WaitForInput(int ms) {
  HandleLoss();
  if (!stash_.empty()) return true;
  if (!port_->isOpen()) {
    // Nothing can arrive; blocking the full time keeps a polling caller from
    // spinning.
    if (ms > 0) QThread::msleep(static_cast<unsigned long>(ms));
    return false;
  }
  if (port_->bytesAvailable() > 0) return true;
  QElapsedTimer clock;
  clock.start();
  int left = std::max(ms, 0);
  for (;;) {
    if (port_->waitForReadyRead(left)) break;
    if (lost_ || port_->bytesAvailable() > 0) break;
    const bool failed =
        port_->error() != QSerialPort::NoError && port_->error() != QSerialPort::TimeoutError;
    port_->clearError();
    left = ms - static_cast<int>(clock.elapsed());
    if (left <= 0) break;
    // A read error that returns at once must not turn this into a busy loop.
    if (failed) QThread::msleep(static_cast<unsigned long>(std::min(left, 20)));
  }
  HandleLoss();
  return !stash_.empty() || (port_->isOpen() && port_->bytesAvailable() > 0);
}

}  // namespace amp
