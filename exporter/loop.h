// One thread, many units. Each unit's session runs on its own fiber, a small
// stack of its own, so the panel's link and unit layers run unchanged: their
// exchanges wait as they always do, and a wait here parks the fiber and lets
// the loop run the others. The loop sleeps in epoll until a socket is ready
// or the next deadline falls due. Five hundred units cost five hundred
// stacks (touched pages only) and no threads; polling stays one thread's
// work whatever the fleet's size.
#pragma once

#include <sys/epoll.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <queue>
#include <vector>

namespace amp::exporter {

class Loop {
 public:
  Loop();
  ~Loop();
  Loop(const Loop&) = delete;
  Loop& operator=(const Loop&) = delete;

  static int64_t NowMs();

  // Starts `body` on a fiber of its own at the loop's next turn.
  void Spawn(std::function<void()> body);

  // From a fiber: park until `fd` is ready for `events` (EPOLLIN, EPOLLOUT)
  // or `ms` have passed. Returns the ready events, 0 on time-out. A negative
  // fd waits for the time alone.
  uint32_t Wait(int fd, uint32_t events, int64_t ms);
  void Sleep(int64_t ms) { Wait(-1, 0, ms); }
  // True on a fiber, false on the loop's own stack.
  bool InFiber() const { return current_ != nullptr; }

  // Runs fibers until `stop` says so (asked at least every 100 ms) or every
  // fiber has ended.
  void Run(const std::function<bool()>& stop);

  // Runs `task` on the loop's thread between two fibers; safe from any
  // thread. Tasks must not wait.
  void Post(std::function<void()> task);

  // When the loop last went round, for a health check from another thread.
  int64_t LastTurnMs() const;

 private:
  struct Fiber;
  static void Trampoline(unsigned lo, unsigned hi);
  void Resume(Fiber* f);
  void RunTasks();

  int epoll_ = -1;
  int wake_ = -1;  // eventfd that Post writes
  std::vector<std::unique_ptr<Fiber>> fibers_;
  size_t alive_ = 0;
  std::deque<Fiber*> ready_;
  struct Deadline {
    int64_t at;
    uint64_t seq;
    Fiber* fiber;
    bool operator>(const Deadline& o) const { return at > o.at; }
  };
  std::priority_queue<Deadline, std::vector<Deadline>, std::greater<>> deadlines_;
  Fiber* current_ = nullptr;
  void* loopContext_ = nullptr;
  mutable std::mutex tasksMu_;
  std::vector<std::function<void()>> tasks_;
  std::atomic_int64_t lastTurn_{0};
};

}  // namespace amp::exporter
