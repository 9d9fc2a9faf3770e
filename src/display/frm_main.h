// The main panel. Every control and menu entry of the panel is a member,
// named as the panel logic names it; the constructor gives each its design
// caption and state. Handlers are wired by the application.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmMain : Form {
  FrmMain();

  static constexpr const char* kTitle = "AmpDesk Control Utility";

  // ---- connection
  CommandButton btnConnect{this, "btnConnect"};

  // ---- summary status list (top to bottom)
  Frame fraSummary{this, "fraSummary"};
  Label Label31{this, "Label31"};
  Label Label32{this, "Label32"};
  Label Label33{this, "Label33"};
  Label Label34{this, "Label34"};
  Label Label35{this, "Label35"};
  Label Label36{this, "Label36"};
  Label Label13{this, "Label13"};
  Label lblSBUCWarmup{this, "lblSBUCWarmup"};
  Label lbllcBucDrive{this, "lbllcBucDrive"};

  // ---- fault and alarm lists
  Frame fraFaults{this, "fraFaults"};
  Label NoFaults{this, "NoFaults"};
  ControlArray<Label, 6> FaultAbit{this, "FaultAbit"};
  ControlArray<Label, 6> FaultBbit{this, "FaultBbit"};
  ControlArray<Label, 6> FaultCbit{this, "FaultCbit"};
  ControlArray<Label, 6> FaultDbit{this, "FaultDbit"};
  Frame fraAlarms{this, "fraAlarms"};
  Label NoAlarms{this, "NoAlarms"};
  ControlArray<Label, 6> AlarmAbit{this, "AlarmAbit"};
  ControlArray<Label, 6> AlarmBbit{this, "AlarmBbit"};
  ControlArray<Label, 6> AlarmCbit{this, "AlarmCbit"};
  ControlArray<Label, 6> AlarmDbit{this, "AlarmDbit"};
  CommandButton btnFaultReset{this, "btnFaultReset"};

  // ---- transmitter
  CheckBox chkPS{this, "chkPS"};
  CheckBox chkRFI{this, "chkRFI"};
  CommandButton Command7{this, "Command7"};

  // ---- unit identity
  Frame fraUnit{this, "fraUnit"};
  Label lblUnitTempType{this, "lblUnitTempType"};
  TextBox txtPN{this, "txtPN"};
  TextBox txtSN{this, "txtSN"};
  TextBox txtFrmRev{this, "txtFrmRev"};
  TextBox txtCplDate{this, "txtCplDate"};
  TextBox txtAdr{this, "txtAdr"};
  TextBox txtDateTime{this, "txtDateTime"};
  TextBox txtPSHours{this, "txtPSHours"};
  TextBox txtXmtHours{this, "txtXmtHours"};

  // ---- RF power readouts (Label64/Label5/Label8: units of the readouts)
  Frame fraRF{this, "fraRF"};
  TextBox txtFdBm{this, "txtFdBm"};
  Label Label64{this, "Label64"};
  TextBox txtFCnt{this, "txtFCnt"};
  TextBox txtRdBm{this, "txtRdBm"};
  Label Label5{this, "Label5"};
  TextBox txtRCnt{this, "txtRCnt"};

  // ---- RF trip levels (Label8/Label67/Label69: their units)
  Frame fraTrips{this, "fraTrips"};
  TextBox txtFhiLvl{this, "txtFhiLvl"};
  ComboBox cmbFhiTripType{this, "cmbFhiTripType"};
  Label Label8{this, "Label8"};
  TextBox txtFloLvl{this, "txtFloLvl"};
  ComboBox cmbFloTripType{this, "cmbFloTripType"};
  Label Label67{this, "Label67"};
  TextBox txtRhiLvl{this, "txtRhiLvl"};
  ComboBox cmbRhiTripType{this, "cmbRhiTripType"};
  Label Label69{this, "Label69"};

  // ---- constant power
  Frame Frame20{this, "Frame20"};
  CheckBox chkConstPwr{this, "chkConstPwr"};
  TextBox txtConstLvl{this, "txtConstLvl"};
  Label Label71{this, "Label71"};
  CommandButton btnGoToPwr{this, "btnGoToPwr"};

  // ---- attenuation and linearizer
  Frame fraAtten{this, "fraAtten"};
  TextBox txtAtnDB{this, "txtAtnDB"};
  UpDown UpDown1{this, "UpDown1"};
  Label Label2{this, "Label2"};
  TextBox txtAtnCnt{this, "txtAtnCnt"};
  UpDown UpDown2{this, "UpDown2"};
  TextBox txtLinAmp{this, "txtLinAmp"};
  UpDown UpDown3{this, "UpDown3"};
  TextBox txtLinPhase{this, "txtLinPhase"};
  UpDown UpDown4{this, "UpDown4"};

  // ---- RF band and frequency
  Frame Frame27{this, "Frame27"};
  ComboBox cmbRfBand{this, "cmbRfBand"};
  Label lblSband{this, "lblSband"};
  Label lblSBandFrq{this, "lblSBandFrq"};
  Label lblRFFrq{this, "lblRFFrq"};
  Label lblRFFrqVal{this, "lblRFFrqVal"};

  // ---- waveguide switches
  Frame fraWaveguide{this, "fraWaveguide"};
  ComboBox cmbWgCfg{this, "cmbWgCfg"};
  ComboBox cmbWgSw1{this, "cmbWgSw1"};
  ComboBox cmbWgSw2{this, "cmbWgSw2"};
  CheckBox chkAutoMode{this, "chkAutoMode"};

  // ---- temperature
  Frame fraTemp{this, "fraTemp"};
  TextBox txtTemp{this, "txtTemp"};
  Label Label12{this, "Label12"};
  TextBox txtTemp2{this, "txtTemp2"};
  Label Label14{this, "Label14"};

  // ---- tube amplifier: helix, heater, cathode, tube life
  Frame Frame30{this, "Frame30"};
  Label Label19{this, "Label19"};
  Label Label20{this, "Label20"};
  TextBox txtHelixV{this, "txtHelixV"};
  TextBox txtHelixI{this, "txtHelixI"};
  TextBox txtHeaterV{this, "txtHeaterV"};
  TextBox txtHelix2I{this, "txtHelix2I"};
  TextBox txtCathI{this, "txtCathI"};
  TextBox txtAnodeV{this, "txtAnodeV"};
  Label lblTWTSrvc{this, "lblTWTSrvc"};
  Label lblTWTLife{this, "lblTWTLife"};

  // ---- solid state: supply current sense and DC input
  Frame Frame14{this, "Frame14"};
  TextBox txtCS1{this, "txtCS1"};
  TextBox txtCS2{this, "txtCS2"};
  TextBox txtCS3{this, "txtCS3"};
  TextBox txtCS4{this, "txtCS4"};

  // ---- status bar and poll timer
  StatusBar sbStatusBar{this, "sbStatusBar", 2};
  TimerControl Timer1{this, "Timer1"};

  // ---- menu File
  MenuItem mnuFile{this, "mnuFile"};
  MenuItem mnuConnect{this, "mnuConnect"};
  MenuItem mnuExtSrch{this, "mnuExtSrch"};
  MenuItem mnuAdvSrch{this, "mnuAdvSrch"};
  MenuItem mnuPollEn{this, "mnuPollEn"};
  MenuItem mnuPollAdrs{this, "mnuPollAdrs"};
  MenuItem mnuLocateIP{this, "mnuLocateIP"};
  MenuItem mnuLoadFile{this, "mnuLoadFile"};
  MenuItem mnuSaveAs{this, "mnuSaveAs"};
  MenuItem mnuFaultLog{this, "mnuFaultLog"};
  MenuItem mnuDnldFltLog{this, "mnuDnldFltLog"};
  MenuItem mnuFullFaultLog{this, "mnuFullFaultLog"};
  MenuItem mnuPLog{this, "mnuPLog"};
  MenuItem mnuTrendLogs{this, "mnuTrendLogs"};
  MenuItem mnuCalFactor{this, "mnuCalFactor"};
  ControlArray<MenuItem, 8> mnuCalTables{this, "mnuCalTables"};
  MenuItem mnuCmdLine{this, "mnuCmdLine"};
  MenuItem mnuFileExit{this, "mnuFileExit"};

  // ---- menu Configuration
  MenuItem mnuOptions{this, "mnuOptions"};
  MenuItem mnuOemName{this, "mnuOemName"};
  MenuItem mnuPowerSave{this, "mnuPowerSave"};
  MenuItem mnuAutoHVDisable{this, "mnuAutoHVDisable"};
  MenuItem mnuAmpCom{this, "mnuAmpCom"};
  MenuItem mnuRack{this, "mnuRack"};
  MenuItem mnuStartupCfg{this, "mnuStartupCfg"};
  MenuItem mnuTempTripLevels{this, "mnuTempTripLevels"};
  MenuItem mnu2ndUmbilical{this, "mnu2ndUmbilical"};
  MenuItem mnuMaxPwrLvl{this, "mnuMaxPwrLvl"};
  MenuItem mnuRRfOffset{this, "mnuRRfOffset"};
  MenuItem mnuReturnLoss{this, "mnuReturnLoss"};
  MenuItem mnuPsVset{this, "mnuPsVset"};
  MenuItem mnuLLDPCfg{this, "mnuLLDPCfg"};
  MenuItem mnuRfBandCfg{this, "mnuRfBandCfg"};
  MenuItem mnuHeaterState{this, "mnuHeaterState"};
  MenuItem mnuHtrStby{this, "mnuHtrStby"};
  MenuItem mnuEnetCfg{this, "mnuEnetCfg"};
  MenuItem mnuWatts{this, "mnuWatts"};
  MenuItem mnuISense{this, "mnuISense"};
  MenuItem mnuMfgInfo{this, "mnuMfgInfo"};
  MenuItem mnuClrHrs{this, "mnuClrHrs"};
  MenuItem mnuRfiInvert{this, "mnuRfiInvert"};
  MenuItem mnuAutoClrBUC{this, "mnuAutoClrBUC"};
  MenuItem mnuGainBal{this, "mnuGainBal"};
  MenuItem mnuSubBands{this, "mnuSubBands"};
  MenuItem mnuSubB1{this, "mnuSubB1"};
  MenuItem mnuSubB2{this, "mnuSubB2"};
  MenuItem mnuSubB3{this, "mnuSubB3"};
  MenuItem mnuSubB4{this, "mnuSubB4"};
  MenuItem mnuSubB5{this, "mnuSubB5"};
  MenuItem mnuSubB6{this, "mnuSubB6"};
  MenuItem mnuSubB7{this, "mnuSubB7"};
  MenuItem mnuSubB8{this, "mnuSubB8"};
  MenuItem mnuLEDMode{this, "mnuLEDMode"};
  MenuItem mnuSumFltTest{this, "mnuSumFltTest"};
  MenuItem mnuWgArcTest{this, "mnuWgArcTest"};
  MenuItem mnulcBucSetup{this, "mnulcBucSetup"};
  MenuItem mnuFltAlm{this, "mnuFltAlm"};
  MenuItem mnuModelCfgPN{this, "mnuModelCfgPN"};
  MenuItem mnuAtnCal{this, "mnuAtnCal"};

  // ---- menu Communication
  MenuItem mnuComm{this, "mnuComm"};
  MenuItem mnuUseEnet{this, "mnuUseEnet"};
  MenuItem mnuEnterIP{this, "mnuEnterIP"};
  MenuItem mnuEthPort{this, "mnuEthPort"};
  MenuItem mnuOpenWebpage{this, "mnuOpenWebpage"};
  MenuItem mnuPortScan{this, "mnuPortScan"};
  MenuItem mnuCom{this, "mnuCom"};
  ControlArray<MenuItem, 10> mnuComPort{this, "mnuComPort"};

  // ---- menu Help
  MenuItem mnuHelp{this, "mnuHelp"};
  MenuItem mnuHelpAbout{this, "mnuHelpAbout"};

  // mnuSubB1..mnuSubB8 by number (1-based).
  MenuItem& mnuSubB(int n);
  // The fault and alarm label arrays by word (0 = A .. 3 = D).
  ControlArray<Label, 6>& FaultWord(int w);
  ControlArray<Label, 6>& AlarmWord(int w);
};

}  // namespace amp::ui
