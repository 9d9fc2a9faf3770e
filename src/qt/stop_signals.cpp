#include "qt/stop_signals.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <csignal>

namespace amp {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

// The write end is all the handler touches: only async-signal-safe calls.
int gWriteFd = -1;
int gReadFd = -1;
volatile std::sig_atomic_t gPending = 0;

void OnSignal(int sig) {
  if (gPending) {
    // The loop did not get to the first one: this one is not asked twice.
    std::signal(sig, SIG_DFL);
    std::raise(sig);
    return;
  }
  gPending = 1;
  const unsigned char byte = static_cast<unsigned char>(sig);
  [[maybe_unused]] const ssize_t n = ::write(gWriteFd, &byte, 1);
}

}  // namespace

StopSignals::StopSignals(std::function<void(int)> onStop) : onStop_(std::move(onStop)) {
  int fds[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, fds) != 0) return;
  gWriteFd = fds[0];
  gReadFd = fds[1];
  gPending = 0;
  notifier_ = std::make_unique<QSocketNotifier>(gReadFd, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
    unsigned char byte = 0;
    if (::read(gReadFd, &byte, 1) != 1) return;
    if (onStop_) onStop_(byte);
  });
  struct sigaction sa {};
  sa.sa_handler = OnSignal;
  sigemptyset(&sa.sa_mask);
  sa.sa_flags = SA_RESTART;
  for (int sig : kSignals) sigaction(sig, &sa, nullptr);
}

bool StopSignals::Requested() { return gPending != 0; }

StopSignals::~StopSignals() {
  for (int sig : kSignals) std::signal(sig, SIG_DFL);
  notifier_.reset();
  if (gWriteFd >= 0) ::close(gWriteFd);
  if (gReadFd >= 0) ::close(gReadFd);
  gWriteFd = gReadFd = -1;
}

}  // namespace amp
