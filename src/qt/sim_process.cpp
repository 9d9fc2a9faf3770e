#include "qt/sim_process.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>

#include <sys/prctl.h>
#include <unistd.h>
#include <csignal>
#include <cstdlib>
#include <sstream>

namespace amp {

SimProcess::SimProcess() = default;

SimProcess::~SimProcess() { Stop(); }

std::string SimProcess::Locate(const std::string& programDir) {
  if (const char* env = std::getenv("AMPSIM"); env && *env) return env;
  return programDir + "/ampsim";
}

bool SimProcess::ParseReadyLine(const std::string& line, std::string* host, int* port,
                                std::string* serial) {
  std::istringstream in(line);
  std::string word;
  if (!(in >> word) || word != "ampsim" || !(in >> word) || word != "ready") return false;
  while (in >> word) {
    if (word.rfind("tcp=", 0) == 0) {
      const std::string hp = word.substr(4);
      const auto colon = hp.rfind(':');
      if (colon == std::string::npos) return false;
      *host = hp.substr(0, colon);
      *port = std::atoi(hp.c_str() + colon + 1);
    } else if (word.rfind("serial=", 0) == 0) {
      *serial = word.substr(7);
    }
  }
  return true;
}

bool SimProcess::Start(const std::string& program, const std::vector<std::string>& args,
                       std::string* error, int timeoutMs) {
  Stop();
  if (!QFileInfo(QString::fromStdString(program)).isExecutable()) {
    *error = "cannot find the simulated amplifier at " + program +
             " (build it, or set AMPSIM to its path)";
    return false;
  }
  proc_ = std::make_unique<QProcess>();
  proc_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  QStringList qargs;
  for (const auto& a : args) qargs << QString::fromStdString(a);
  // The simulated unit goes with this program however it ends, a kill or a
  // crash included: the kernel sends it SIGTERM when its parent dies. A
  // parent gone before the request took hold is caught by its pid.
  const pid_t parent = ::getpid();
  proc_->setChildProcessModifier([parent] {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::_exit(1);
  });
  proc_->start(QString::fromStdString(program), qargs);
  if (!proc_->waitForStarted(timeoutMs)) {
    *error = "cannot start " + program + ": " + proc_->errorString().toStdString();
    proc_.reset();
    return false;
  }
  QDeadlineTimer deadline(timeoutMs);
  while (!deadline.hasExpired()) {
    if (!proc_->canReadLine() &&
        !proc_->waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
      if (proc_->state() == QProcess::NotRunning) break;
      continue;
    }
    while (proc_->canReadLine()) {
      const std::string line = proc_->readLine().trimmed().toStdString();
      if (ParseReadyLine(line, &tcpHost_, &tcpPort_, &serialPath_)) return true;
    }
  }
  *error = "the simulated amplifier did not start: " +
           (proc_->state() == QProcess::NotRunning
                ? "it exited with code " + std::to_string(proc_->exitCode())
                : std::string("no ready line within ") + std::to_string(timeoutMs) + " ms");
  Stop();
  return false;
}

void SimProcess::Stop() {
  if (!proc_) return;
  if (proc_->state() != QProcess::NotRunning) {
    proc_->terminate();
    if (!proc_->waitForFinished(3000)) {
      proc_->kill();
      proc_->waitForFinished(1000);
    }
  }
  proc_.reset();
}

}  // namespace amp
