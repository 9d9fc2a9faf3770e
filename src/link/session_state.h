// The state of the session with the unit, by name. The panel shows it on the
// Connect button ("Connect", "Terminate", "Disconnect"), but that caption is
// only its picture: logic asks these fields, never the caption.
#pragma once

#include <cstdint>

namespace amp {

enum class SessionPhase {
  Idle,       // no session: the button offers Connect
  Searching,  // a serial search or the first read after it runs: Terminate
  Up,         // a unit answers and the poll runs: Disconnect
};

enum class LinkHealth {
  Down,     // no session
  Good,     // the last poll was answered
  Missing,  // polls went unanswered, fewer than the limit
};

struct SessionState {
  // The poll that fails for the third time in a row ends the session.
  static constexpr int16_t kMissedPollLimit = 3;

  SessionPhase phase = SessionPhase::Idle;
  // Failed polls still tolerated: the limit less one at session start and
  // after each good poll, down to 0 before the failure that ends it.
  int16_t gMissedPolls = kMissedPollLimit - 1;

  bool Connected() const { return phase == SessionPhase::Up; }
  // Polls missed in a row so far in this session.
  int PollsMissed() const { return Connected() ? kMissedPollLimit - 1 - gMissedPolls : 0; }
  LinkHealth Health() const {
    if (!Connected()) return LinkHealth::Down;
    return PollsMissed() == 0 ? LinkHealth::Good : LinkHealth::Missing;
  }
  // A good poll, or a session that starts.
  void PollAnswered() { gMissedPolls = kMissedPollLimit - 1; }
};

}  // namespace amp
