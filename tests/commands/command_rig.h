// Scripted units for the reader tests, one per reply: a scripted unit keeps
// repeating its last answer, so reusing one would replay the previous reply.
#pragma once

#include <memory>
#include <string>

#include "support/scripted_unit.h"

namespace amp::test {

using Unit = std::unique_ptr<ScriptedUnit>;

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
inline Unit RawReply(const std::string& command, const std::string& body, char address) {
  return Replying(command, Ack(body, address));
}

}  // namespace amp::test
