// The sections of a saved unit configuration, in the order the file holds
// them. Each section is told twice: a "#" label line for the reader, then
// the command that sets it, which the loader replays as it stands. Commands
// that must not be replayed blindly are written behind a "#".
//
// A section reads the panel as shown, the unit descriptor and the first
// read's values; a few make fresh reads of the unit through Comms. A read
// that fails leaves its section out.
#pragma once

#include <vector>

#include "datafiles/file_io.h"
#include "display/frm_main.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "link/comms.h"
#include "model/unit_descriptor.h"

namespace amp {

struct ConfigContext {
  Comms& comms;
  UnitDescriptor& unit;
  ui::FrmMain& frm;
  SessionValues& values;
  PanelState& panel;
};

struct ConfigSection {
  int order;         // place in the file, from 1
  const char* name;  // the writer's name, for tests and traces
  // Whether the unit has the section at all; null for always.
  bool (*when)(ConfigContext&);
  void (*write)(ConfigContext&, FileIO&);
};

// Every section in file order.
const std::vector<ConfigSection>& ConfigSections();

// Writes each section whose condition holds, in order.
void WriteConfigSections(ConfigContext& c, FileIO& file);

// The part number as the "YK" command takes it: the panel text without
// surrounding blanks.
std::string NormalizePartNumber(const std::string& text);

}  // namespace amp
