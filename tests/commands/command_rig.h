// Scripted units for the reader tests, one per reply: a scripted unit keeps
// repeating its last answer, so reusing one would replay the previous reply.
// Readers of every return type share one table form through Text().
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/scripted_unit.h"

namespace amp::test {

using Unit = std::unique_ptr<ScriptedUnit>;
using Sent = std::vector<std::string>;

// A whole acknowledging frame, e.g. with a chosen address byte.
inline std::string Ack(const std::string& body, char address = 'A') {
  return ScriptedUnit::Frame('\x06', body, address);
}
inline Unit Answering(const std::string& command, const std::string& body) {
  auto u = std::make_unique<ScriptedUnit>();
  u->Answer(command, body);
  return u;
}
inline Unit Refusing(const std::string& command) {
  auto u = std::make_unique<ScriptedUnit>();
  u->Refuse(command);
  return u;
}
// A unit that answers `command` with `frame` exactly as given.
inline Unit Replying(const std::string& command, const std::string& frame) {
  auto u = std::make_unique<ScriptedUnit>();
  u->Raw(command, frame);
  return u;
}

inline std::string Text(const std::string& s) { return s; }
inline std::string Text(bool b) { return b ? "true" : "false"; }
template <class T>
std::string Text(T v) {
  std::ostringstream o;
  o << +v;
  return o.str();
}

using Reader = std::function<std::string(Comms&)>;
template <class F>
Reader R(F f) {
  return [f](Comms& c) { return Text(f(c)); };
}
// The result followed by the first `n` shared reply fields, "|"-joined.
template <class F>
Reader RF(int n, F f) {
  return [f, n](Comms& c) {
    std::string s = Text(f(c));
    for (int i = 0; i < n; ++i) s += "|" + c.gRespFields[i];
    return s;
  };
}

inline const std::string kRefused = "\x15";

// One reply through one reader. `reply` is a body the unit acknowledges, a
// whole frame built with Ack(), or kRefused. Every shared field starts as
// "old", so a row shows what a reader leaves alone.
struct ReadCase {
  Reader read;
  std::string command, reply, want;
};

inline void ExpectReads(const std::vector<ReadCase>& cases) {
  for (const ReadCase& k : cases) {
    ScriptedUnit u;
    if (k.reply == kRefused)
      u.Refuse(k.command);
    else if (!k.reply.empty() && k.reply[0] == '\x06')
      u.Raw(k.command, k.reply);
    else
      u.Answer(k.command, k.reply);
    for (auto& f : u.comms.gRespFields) f = "old";
    EXPECT_EQ(k.read(u.comms), k.want) << k.command << " answered " << k.reply;
  }
}

}  // namespace amp::test
