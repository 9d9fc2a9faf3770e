#include "exporter/loop.h"

#include <sys/eventfd.h>
#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#define AMP_ASAN_FIBERS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define AMP_ASAN_FIBERS 1
#endif
#endif
#ifdef AMP_ASAN_FIBERS
#include <sanitizer/common_interface_defs.h>
#endif

namespace amp::exporter {

namespace {

// The deepest call a unit makes is the first read under a socket event;
// a quarter of a megabyte leaves ample room, and only touched pages cost.
#ifdef AMP_ASAN_FIBERS
constexpr size_t kStackBytes = 1024 * 1024;
#else
constexpr size_t kStackBytes = 256 * 1024;
#endif
constexpr size_t kGuardBytes = 4096;
constexpr int kMaxStopCheckMs = 100;

}  // namespace

struct Loop::Fiber {
  ucontext_t context{};
  void* stack = nullptr;  // the mapping, guard page first
  std::function<void()> body;
  bool done = false;
  bool queued = false;
  uint64_t waitSeq = 0;  // a wake-up for an older wait is ignored
  int waitFd = -1;
  uint32_t readyEvents = 0;
  ~Fiber() {
    if (stack) munmap(stack, kStackBytes + kGuardBytes);
  }
};

int64_t Loop::NowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

Loop::Loop() {
  epoll_ = epoll_create1(EPOLL_CLOEXEC);
  wake_ = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
  if (epoll_ < 0 || wake_ < 0) {
    std::perror("ampdesk-exporter: event loop");
    std::exit(1);
  }
  epoll_event ev{};
  ev.events = EPOLLIN;
  ev.data.ptr = nullptr;  // the wake-up fd is the one entry with no fiber
  epoll_ctl(epoll_, EPOLL_CTL_ADD, wake_, &ev);
  lastTurn_ = NowMs();
}

Loop::~Loop() {
  close(epoll_);
  close(wake_);
  delete static_cast<ucontext_t*>(loopContext_);
}

void Loop::Trampoline(unsigned lo, unsigned hi) {
  auto* loop = reinterpret_cast<Loop*>((static_cast<uintptr_t>(hi) << 32) | lo);
#ifdef AMP_ASAN_FIBERS
  __sanitizer_finish_switch_fiber(nullptr, nullptr, nullptr);
#endif
  Fiber* f = loop->current_;
  f->body();
  f->done = true;
  // Back to the loop for good.
#ifdef AMP_ASAN_FIBERS
  __sanitizer_start_switch_fiber(nullptr, nullptr, 0);
#endif
  setcontext(static_cast<ucontext_t*>(loop->loopContext_));
}

void Loop::Spawn(std::function<void()> body) {
  auto f = std::make_unique<Fiber>();
  f->body = std::move(body);
  f->stack = mmap(nullptr, kStackBytes + kGuardBytes, PROT_READ | PROT_WRITE,
                  MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (f->stack == MAP_FAILED) {
    std::perror("ampdesk-exporter: fiber stack");
    std::exit(1);
  }
  mprotect(f->stack, kGuardBytes, PROT_NONE);  // an overflow faults, never corrupts
  getcontext(&f->context);
  f->context.uc_stack.ss_sp = static_cast<char*>(f->stack) + kGuardBytes;
  f->context.uc_stack.ss_size = kStackBytes;
  f->context.uc_link = nullptr;
  const auto self = reinterpret_cast<uintptr_t>(this);
  makecontext(&f->context, reinterpret_cast<void (*)()>(&Loop::Trampoline), 2,
              static_cast<unsigned>(self & 0xffffffffu), static_cast<unsigned>(self >> 32));
  f->queued = true;
  ready_.push_back(f.get());
  fibers_.push_back(std::move(f));
  ++alive_;
}

void Loop::Resume(Fiber* f) {
  current_ = f;
  if (!loopContext_) loopContext_ = new ucontext_t{};
#ifdef AMP_ASAN_FIBERS
  void* fake = nullptr;
  __sanitizer_start_switch_fiber(&fake, static_cast<char*>(f->stack) + kGuardBytes, kStackBytes);
  swapcontext(static_cast<ucontext_t*>(loopContext_), &f->context);
  __sanitizer_finish_switch_fiber(fake, nullptr, nullptr);
#else
  swapcontext(static_cast<ucontext_t*>(loopContext_), &f->context);
#endif
  current_ = nullptr;
}

uint32_t Loop::Wait(int fd, uint32_t events, int64_t ms) {
  Fiber* f = current_;
  if (!f) std::abort();  // only a fiber can wait
  const uint64_t seq = ++f->waitSeq;
  f->readyEvents = 0;
  if (fd >= 0) {
    epoll_event ev{};
    ev.events = events;
    ev.data.ptr = f;
    if (epoll_ctl(epoll_, EPOLL_CTL_ADD, fd, &ev) != 0) return events;  // let the caller find out
    f->waitFd = fd;
  }
  deadlines_.push({NowMs() + std::max<int64_t>(ms, 0), seq, f});
  {
#ifdef AMP_ASAN_FIBERS
    void* fake = nullptr;
    __sanitizer_start_switch_fiber(&fake, nullptr, 0);
#endif
    swapcontext(&f->context, static_cast<ucontext_t*>(loopContext_));
#ifdef AMP_ASAN_FIBERS
    __sanitizer_finish_switch_fiber(fake, nullptr, nullptr);
#endif
  }
  if (f->waitFd >= 0) {
    epoll_ctl(epoll_, EPOLL_CTL_DEL, f->waitFd, nullptr);
    f->waitFd = -1;
  }
  return f->readyEvents;
}

void Loop::Post(std::function<void()> task) {
  {
    std::lock_guard<std::mutex> lock(tasksMu_);
    tasks_.push_back(std::move(task));
  }
  const uint64_t one = 1;
  [[maybe_unused]] auto n = write(wake_, &one, sizeof one);
}

void Loop::RunTasks() {
  std::vector<std::function<void()>> tasks;
  {
    std::lock_guard<std::mutex> lock(tasksMu_);
    tasks.swap(tasks_);
  }
  for (auto& t : tasks) t();
}

int64_t Loop::LastTurnMs() const { return lastTurn_; }

void Loop::Run(const std::function<bool()>& stop) {
  epoll_event events[64];
  while (!stop()) {
    while (!ready_.empty()) {
      Fiber* f = ready_.front();
      ready_.pop_front();
      f->queued = false;
      Resume(f);
      if (f->done) --alive_;
    }
    // Ended fibers are kept until the loop goes: stale deadlines may still
    // name them.
    if (alive_ == 0) break;
    const int64_t now = NowMs();
    lastTurn_ = now;
    int timeout = kMaxStopCheckMs;
    while (!deadlines_.empty() && deadlines_.top().seq != deadlines_.top().fiber->waitSeq)
      deadlines_.pop();  // the fiber woke by its fd meanwhile
    if (!deadlines_.empty())
      timeout = static_cast<int>(std::clamp<int64_t>(deadlines_.top().at - now, 0, timeout));
    const int n = epoll_wait(epoll_, events, 64, timeout);
    for (int i = 0; i < n; ++i) {
      auto* f = static_cast<Fiber*>(events[i].data.ptr);
      if (!f) {
        uint64_t count = 0;
        [[maybe_unused]] auto r = read(wake_, &count, sizeof count);
        continue;
      }
      if (f->queued) continue;
      f->readyEvents = events[i].events;
      ++f->waitSeq;  // its deadline no longer counts
      f->queued = true;
      ready_.push_back(f);
    }
    RunTasks();
    const int64_t after = NowMs();
    while (!deadlines_.empty() && deadlines_.top().at <= after) {
      const Deadline d = deadlines_.top();
      deadlines_.pop();
      if (d.seq != d.fiber->waitSeq || d.fiber->queued) continue;
      ++d.fiber->waitSeq;
      d.fiber->queued = true;
      ready_.push_back(d.fiber);
    }
  }
}

}  // namespace amp::exporter
