// The reads that fit the panel to a unit: bands and sub-bands, trip levels,
// options, ports, network, tube monitors, and the frames that only some units
// show. FirstTimeRead calls them once per session; some run again after a
// setting changes (InitRFTripLevels after a trip set, InitBandParameters on a
// band change). Each one reads the unit through Comms, keeps what it learns in
// SessionValues and writes the panel model; a failed read leaves the default
// of its value, which means "absent", and never stops the caller.
#pragma once

#include <string>

#include "display/frm_main.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "link/comms.h"
#include "model/unit_descriptor.h"

namespace amp {

class PanelSetup {
 public:
  PanelSetup(Comms& comms, UnitDescriptor& unit, ui::FrmMain& frm, PanelState& state,
             SessionValues& values)
      : c_(comms), u_(unit), f_(frm), s_(state), v_(values) {}

  // ---- Bands and sub-bands (band_display.cpp) ----
  void InitcmbRfBand();
  void InitRFBand();
  // `band` 1 to 4; any other value is band 1.
  void InitBandParameters(int band);
  void UpdateSubBands();
  // Unchecks the eight sub-band entries; with `HideItems` also hides 2 to 8.
  void ClearSubBands(bool HideItems = false);
  void UpdateGainBalance();
  // The band group (band list, sub-band, RF frequency): the solid-state
  // builds of projects 30, 50, 93 and 102 go without it, all others show it.
  void SetupFrame27();

  // ---- RF trip levels and RF limits (trip_level_display.cpp) ----
  void InitRFTripLevels();
  bool CanUsedBmTripLevels() const;
  void InitFactoryTripLevels();
  void InitReverseRFOffset();
  void InitPowerLimit();
  void SetFwdRFCountCommand();
  void SetRevRFCountCommand();

  // ---- Unit options (unit_options_display.cpp) ----
  void InitTempComp();
  void InitDCVInParameters();
  void UpdateUnitGain();
  void UpdateAMCParameters();
  void InitCurrentSenseParams();
  void InitLCBuc();
  void InitDLAtten();
  void InitTrendLogOption();
  void InitDataDirectory();
  // True for units whose DC input voltage the panel reads.
  bool HasDCVInputOption() const;

  // ---- Ports, network and LLDP (network_display.cpp) ----
  void InitPowerSaveParameters();
  void InitCom1Settings();
  void InitCom2Settings();
  void InitEnetParams();
  void ParseEnetparams();
  void InitLLDP();

  // ---- Tube monitors and unit frames (frames_display.cpp) ----
  void InitCathodeCurrentDisplay();
  void InitTWTEOLParameters();
  void SetupFrame14();
  void SetupFrame20();
  // 0 puts the helix frame back to the one-tube layout; any other value
  // labels it for the two tubes of a dual unit.
  void SetupHelixHeaterForNewDualTWT(int tubes);

 private:
  Comms& c_;
  UnitDescriptor& u_;
  ui::FrmMain& f_;
  PanelState& s_;
  SessionValues& v_;
};

}  // namespace amp
