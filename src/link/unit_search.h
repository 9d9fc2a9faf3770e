// Finding a unit: the search over serial settings and addresses, and the
// TCP connect and close with their short waits. Nothing here touches the
// panel; the caller passes the unit probe and a status line.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "link/comms.h"
#include "link/waits.h"

namespace amp {

// The settings texts a search tries, in order; the first empty entry ends the
// list. Twelve are used, the rest stay empty.
using SearchSettingsList = std::array<std::string, 21>;

// Fills `gSearchSettings` with the twelve texts a search tries, commonest
// first: no parity at 9600, 19200, 38400, 4800, then even and odd parity
// with seven data bits at the same speeds.
void BuildSearchSettings(SearchSettingsList& gSearchSettings);

// Character codes of the first and last address a search tries: A..F for an
// extended search, A..Z for an advanced one, else A..C. Both flags are
// cleared, so they apply to one search only.
std::pair<int, int> SearchAddressRange(bool& gExtendedSearch, bool& gAdvancedSearch);

// What a search needs besides the link.
struct SearchContext {
  Comms& comms;
  // Asks the unit at Link.DeviceAddress for its id word; negative when no
  // unit answered.
  std::function<int16_t()> ReadUnitIDWord;
  // Shows "Searching: A, 9600,N,8,1" while it runs and "" at the end.
  std::function<void(const std::string&)> DisplayStatusMsg;
  // Set (from an event handled while the search yields) to stop it.
  bool& gTerminateSearch;
};

// Each failed probe waits this long; the link's own time-out comes back
// afterwards.
inline constexpr float kSearchTimeoutSeconds = 0.6f;

// Tries the addresses with codes a..b (either order) on `settings`. Returns
// the address as the unit gave it, which is then the link's DeviceAddress
// and the link stays on `settings`; "" when none answered, and the link's
// address and settings are as before. Nothing is tried unless `settings` has
// text and both codes are in 64..90 ('@'..'Z').
std::string SearchAddresses(SearchContext& s, const std::string& settings, int a, int b);

// Runs SearchAddresses for each settings text in turn until a unit answers,
// the list ends or the search is terminated. Builds the list first, and
// clears gTerminateSearch and releases the list at the end.
bool UnitFoundOnSerialPort(SearchContext& s, SearchSettingsList& gSearchSettings, int first,
                           int last);

// Connects sckTcp to its remote host and port, giving it about a second.
// True when the socket is connected; a slower connection reports false even
// though it may still complete afterwards.
bool OpenConnection(Comms& c);

// Closes sckTcp and looks at its state a few times for it to reach closed.
// Always true: the caller goes on regardless.
bool CloseConnection(Comms& c);

}  // namespace amp
