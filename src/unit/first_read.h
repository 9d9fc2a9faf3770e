// The first read of a unit and the panel's states with and without one.
//
// FirstTimeRead runs once per session, before polling starts: it determines
// the unit, reads everything once and fits the panel to the unit. It is
// order-sensitive (each step may rest on an earlier one), it never stops
// early and it shows no message; a read that fails leaves its default.
// ClearForm, DisableForm and EnableForm move the panel between the state with
// no unit and the state with one.
#pragma once

#include "display/frm_main.h"
#include "display/panel_setup.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "display/status_display.h"
#include "link/comms.h"
#include "model/unit_descriptor.h"

namespace amp {

class FirstRead {
 public:
  FirstRead(Comms& comms, UnitDescriptor& unit, ui::FrmMain& frm, PanelState& state,
            StatusDisplay& status, SessionValues& values)
      : c_(comms),
        u_(unit),
        f_(frm),
        s_(state),
        d_(status),
        v_(values),
        setup_(comms, unit, frm, state, values) {}

  void FirstTimeRead();
  void InitDisplay();
  void InitDisplayForTWTAUnit();
  void InitDisplayForSSPAUnit();
  void InitUnitCfg();

  // Panel states (panel_forms.cpp).
  void ClearForm();
  void DisableForm();
  void EnableForm();

  PanelSetup& setup() { return setup_; }

 private:
  // The steps of FirstTimeRead, in groups between which events are pumped.
  void IdentifyUnit();          // data directory, display unit, unit type, LLDP
  void ReadCountsAndConfig();   // RF count base, timeout, sub-bands, counts, config word
  void ReadLimits();            // return loss, power limit, factory trips, attenuator range
  void ReadStartupAndNames();   // start-up word, dBm trips, OEM name, attenuation limit
  void ReadEnableWords();       // fault and alarm enables, latches
  void ReadOptionsAndStatus();  // options, clock, gain, float supply, status words
  void ReadPortsAndBands();     // hours, power save, ports, address, bands
  void ReadTemperatures();      // temperature trips, inlet, latch, unit type label
  void ReadPowerAndTube();      // constant level, trips, offset, supply, tube
  void ReadFinalOptions();      // network, cathode, LED mode, product id

  void ReadProject127Block();
  void ReadAttenRange();
  void ReadOemName();
  void ReadConstantPowerLevel();
  void ReadInletTemperature();
  void ReadPSVset();
  void ShowIdentityFields();
  void ReadHeaterMenus();
  void SetParamLog(bool ownLog);
  void SetFaultLogSize();
  void RefreshPanel();

  Comms& c_;
  UnitDescriptor& u_;
  ui::FrmMain& f_;
  PanelState& s_;
  StatusDisplay& d_;
  SessionValues& v_;
  PanelSetup setup_;
};

}  // namespace amp
