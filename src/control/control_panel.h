// Every group of the main panel's handlers, built over one panel context.
// Wire() installs them on the panel model's controls; the groups must live
// as long as the panel, since the handlers capture them.
#pragma once

#include <vector>

#include "control/attenuation_controls.h"
#include "control/band_controls.h"
#include "control/command_console.h"
#include "control/config_switches.h"
#include "control/constant_power_controls.h"
#include "control/identity_controls.h"
#include "control/limit_dialogs.h"
#include "control/panel_context.h"
#include "control/transmit_controls.h"
#include "control/trip_level_controls.h"
#include "control/upconverter_dialog.h"
#include "control/waveguide_controls.h"

namespace amp {

struct ControlPanel {
  explicit ControlPanel(PanelContext& p)
      : transmit(p),
        attenuation(p),
        constantPower(p),
        tripLevels(p),
        bands(p),
        waveguide(p),
        identity(p),
        upconverter(p),
        limits(p),
        switches(p),
        console(p) {}

  void Wire() {
    transmit.Wire();
    attenuation.Wire();
    constantPower.Wire();
    tripLevels.Wire();
    bands.Wire();
    waveguide.Wire();
    identity.Wire();
    upconverter.Wire();
    limits.Wire();
    switches.Wire();
    console.Wire();
  }

  // The configuration dialogs and the console, for the application to
  // register with its forms.
  std::vector<ui::Form*> DialogForms() {
    return {&upconverter.frmlcBucSetup, &limits.frmPwrLimit, &limits.frmTempLimits,
            &limits.frmPowerSave,       &limits.frmGainBal,  &limits.frmStartup,
            &console.frmCmdLine};
  }

  TransmitControls transmit;
  AttenuationControls attenuation;
  ConstantPowerControls constantPower;
  TripLevelControls tripLevels;
  BandControls bands;
  WaveguideControls waveguide;
  IdentityControls identity;
  UpconverterDialog upconverter;
  LimitDialogs limits;
  ConfigSwitches switches;
  CommandConsole console;
};

}  // namespace amp
