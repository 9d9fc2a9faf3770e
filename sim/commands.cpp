#include "sim/commands.h"

#include <algorithm>

namespace amp::sim {

void CommandTable::Add(std::string mnemonic, Handler handler, bool remoteOnly) {
  if (mnemonic.empty()) return;
  std::erase_if(entries_, [&](const Entry& e) { return e.mnemonic == mnemonic; });
  auto pos = std::find_if(entries_.begin(), entries_.end(),
                          [&](const Entry& e) { return e.mnemonic.size() < mnemonic.size(); });
  entries_.insert(pos, Entry{std::move(mnemonic), std::move(handler), remoteOnly});
}

const CommandTable::Entry* CommandTable::Find(std::string_view text) const {
  for (const auto& e : entries_) {
    if (text.starts_with(e.mnemonic)) return &e;
  }
  return nullptr;
}

Reply CommandTable::Dispatch(UnitState& unit, std::string_view text) const {
  const Entry* e = Find(text);
  if (!e) return Reply::Nak(std::string(text));
  if (e->remoteOnly && !unit.remote) return Reply::Nak(e->mnemonic);
  return e->handler(unit, text.substr(e->mnemonic.size()));
}

namespace {

// The poll commands take no arguments; trailing bytes mean the host and the
// unit disagree about the command, and a unit refuses what it cannot parse.
Reply Status(UnitState& unit, std::string_view args, bool shortAlarm) {
  if (!args.empty()) return Reply::Nak("?");
  std::string body = "?";
  body += EncodeWords(unit.summary);
  body += EncodeWords(unit.fault);
  if (shortAlarm) {
    body += EncodeWord(unit.alarm[0]);
  } else {
    body += EncodeWords(unit.alarm);
  }
  return Reply::Ack(std::move(body));
}

Reply UnitId(UnitState& unit, std::string_view args) {
  if (!args.empty()) return Reply::Nak(std::string(kUnitIdQuery));
  return Reply::Ack(std::string(kUnitIdQuery) + EncodeUnitId(unit.unitId));
}

}  // namespace

void AddStandardCommands(CommandTable& table) {
  table.Add(std::string(kStatusPoll),
            [](UnitState& u, std::string_view a) { return Status(u, a, false); });
  table.Add(std::string(kShortStatusPoll),
            [](UnitState& u, std::string_view a) { return Status(u, a, true); });
  table.Add(std::string(kUnitIdQuery), UnitId);
}

CommandTable StandardCommands() {
  CommandTable table;
  AddStandardCommands(table);
  return table;
}

}  // namespace amp::sim
