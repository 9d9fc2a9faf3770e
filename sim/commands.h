// The unit's command set: a table from mnemonic to handler.
//
// A request's command text is matched against the mnemonics by prefix, the
// longest mnemonic first, so "?!#9" wins over a shorter "?" and whatever
// follows the mnemonic is handed to the handler as its arguments.
//
// Adding a command:
//   1. Write a handler `Reply Handler(UnitState& unit, std::string_view args)`.
//      Read or change `unit` (status words, id, the `values` map for named
//      quantities); return Reply::Ack(body) with the body the unit sends back
//      (its echo of the command followed by the data), or Reply::Nak(echo)
//      when the arguments are unacceptable.
//   2. Register it: `table.Add("MNEMONIC", Handler)` in AddStandardCommands
//      below, or at run time through Simulator::AddCommand. Pass
//      remoteOnly = true for commands that change the unit: the table refuses
//      them with a NAK while the unit is in local (front-panel) mode.
//   3. Test it from the host's side (tests/sim) with the bytes on the wire.
// Handlers run on the simulator's thread with its lock held: they must not
// block or call back into the Simulator.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/unit_state.h"

namespace amp::sim {

struct Reply {
  bool ack = true;
  std::string body;

  static Reply Ack(std::string body) { return {true, std::move(body)}; }
  static Reply Nak(std::string body = {}) { return {false, std::move(body)}; }
};

using Handler = std::function<Reply(UnitState& unit, std::string_view args)>;

class CommandTable {
 public:
  struct Entry {
    std::string mnemonic;
    Handler handler;
    bool remoteOnly = false;
  };

  // Adds a command, replacing one with the same mnemonic. An empty mnemonic
  // is ignored: it would swallow every request.
  void Add(std::string mnemonic, Handler handler, bool remoteOnly = false);

  // The entry whose mnemonic is the longest prefix of `text`, or nullptr.
  const Entry* Find(std::string_view text) const;

  // Runs the matching handler. Unknown commands get a NAK echoing the text;
  // remote-only commands in local mode get a NAK echoing the mnemonic.
  Reply Dispatch(UnitState& unit, std::string_view text) const;

  size_t size() const { return entries_.size(); }

 private:
  std::vector<Entry> entries_;  // longest mnemonic first
};

// Status poll: "?" + summary(4) + fault(4) + alarm(4).
inline constexpr std::string_view kStatusPoll = "?!#(";
// Short status poll: the alarm group shrinks to its first word.
inline constexpr std::string_view kShortStatusPoll = "?!#9";
// Unit identification: "1" + the id word as two 6-bit characters.
inline constexpr std::string_view kUnitIdQuery = "1";

// Registers the commands every unit answers.
void AddStandardCommands(CommandTable& table);
CommandTable StandardCommands();

}  // namespace amp::sim
