// The unit's command set: a table from mnemonic to handler.
//
// A request's command text is matched against the mnemonics by prefix, the
// longest mnemonic first, so "?!#9" wins over a shorter "?" and whatever
// follows the mnemonic is handed to the handler as its arguments.
//
// The standard language (sim/language.cpp) is a list of rows, one per
// command form: a pattern ("PBS{d}?"), the family it belongs to (what a
// profile's `lacks` names), and either a reply template over the unit's
// values ("PBS{n}{subband.{n}.freq}"), a value rule and key for a set
// command, or a small handler for actions and special cases. Rows that share
// a literal prefix are served by one entry of this table.
//
// Adding a command:
//   1. Most commands are one row in Rows() of sim/language.cpp: Get (query
//      with a template), Put (set: key and value rule), Act / Ask / Set (a
//      handler `Reply(UnitState&, const Row&, const Match&)`). Set commands
//      and actions are refused in local mode by the row's kind.
//   2. Give the values it reads and writes to the profiles that have it
//      (sim/profiles/*.profile) and list its family in the README there.
//   3. Add it to the index probes of tests/sim/language_test.cpp with the
//      pattern its host reader needs.
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
  };

  // Adds a command, replacing one with the same mnemonic. An empty mnemonic
  // is ignored: it would swallow every request.
  void Add(std::string mnemonic, Handler handler);

  // The entry whose mnemonic is the longest prefix of `text`, or nullptr.
  const Entry* Find(std::string_view text) const;

  // Runs the matching handler. Unknown commands get a NAK echoing the text.
  Reply Dispatch(UnitState& unit, std::string_view text) const;

 private:
  std::vector<Entry> entries_;  // longest mnemonic first
};

// Unit identification: "1" + the id word as two 6-bit characters.
inline constexpr std::string_view kUnitIdQuery = "1";

// Registers the unit's whole command language (sim/language.cpp): every
// mnemonic of the host's index, answered from the UnitState. A command whose
// family the unit lacks, or whose value the profile does not define, is
// refused with a NAK.
void AddStandardCommands(CommandTable& table);
CommandTable StandardCommands();

// True when the command text would change the unit (a set command or an
// action), false for a query or a text the language does not know. What a
// read-only host sends can be checked against this.
bool ChangesUnit(std::string_view text);

// True for a name that may stand in a profile's `lacks` list: a family of the
// command language ("buc", "lldp", "alarm_words" ...) or "param.N".
bool IsCommandFamily(std::string_view name);

}  // namespace amp::sim
