// Every group of the main panel's handlers, built over one panel context.
// Wire() installs them on the panel model's controls; the groups must live
// as long as the panel, since the handlers capture them.
#pragma once

#include "control/attenuation_controls.h"
#include "control/band_controls.h"
#include "control/constant_power_controls.h"
#include "control/identity_controls.h"
#include "control/panel_context.h"
#include "control/transmit_controls.h"
#include "control/trip_level_controls.h"
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
        identity(p) {}

  void Wire() {
    transmit.Wire();
    attenuation.Wire();
    constantPower.Wire();
    tripLevels.Wire();
    bands.Wire();
    waveguide.Wire();
    identity.Wire();
  }

  TransmitControls transmit;
  AttenuationControls attenuation;
  ConstantPowerControls constantPower;
  TripLevelControls tripLevels;
  BandControls bands;
  WaveguideControls waveguide;
  IdentityControls identity;
};

}  // namespace amp
