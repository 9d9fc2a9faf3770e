#include "qt/desk_host.h"

namespace amp {

void DeskHost::MakeDesk(Timer& timer, Dialogs& dialogs, SettingsStore& settings) {
  AmpDeskHost host{port, slots, sock, timer, pump, clock, dialogs, settings};
  host.udp = &udp;
  desk = std::make_unique<AmpDesk>(host);
  desk->AttachDialogTimer(dialogTimer);
}

bool DeskHost::OpenTrace(const std::string& path, std::string* error) {
  if (!trace.Open(path, error)) return false;
  desk->comms.Link.trace = [this](char d, std::string_view bytes) { trace.Write(d, bytes); };
  return true;
}

}  // namespace amp
