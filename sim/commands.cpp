#include "sim/commands.h"

#include <algorithm>

namespace amp::sim {

void CommandTable::Add(std::string mnemonic, Handler handler) {
  if (mnemonic.empty()) return;
  std::erase_if(entries_, [&](const Entry& e) { return e.mnemonic == mnemonic; });
  auto pos = std::find_if(entries_.begin(), entries_.end(),
                          [&](const Entry& e) { return e.mnemonic.size() < mnemonic.size(); });
  entries_.insert(pos, Entry{std::move(mnemonic), std::move(handler)});
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
  return e->handler(unit, text.substr(e->mnemonic.size()));
}

}  // namespace amp::sim
