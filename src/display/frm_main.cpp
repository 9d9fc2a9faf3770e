#include "display/frm_main.h"

#include <stdexcept>

namespace amp::ui {

namespace {

void Menu(MenuItem& m, const char* caption, const char* parent) {
  m.SetCaption(caption);
  m.SetParentMenu(parent);
}

}  // namespace

FrmMain::FrmMain() : Form("frmMain") {
  SetCaption(kTitle);
  btnConnect.SetCaption("Connect");

  // Group captions: the frames of the console.
  fraSummary.SetCaption("Status");
  fraFaults.SetCaption("Fault Status");
  fraAlarms.SetCaption("Alarm Status");
  fraUnit.SetCaption("Unit");
  fraRF.SetCaption("RF Power");
  fraTrips.SetCaption("RF Power Alarms");
  Frame20.SetCaption("Constant Pwr");
  fraAtten.SetCaption("Attenuation");
  Frame27.SetCaption("Current RF Band");
  fraWaveguide.SetCaption("Waveguide Switches");
  fraTemp.SetCaption("Temperature");
  Frame30.SetCaption("TWT");
  Frame14.SetCaption("Power Supply");

  Label31.SetCaption("");
  Label32.SetCaption("Standby");
  Label33.SetCaption("Remote");
  Label34.SetCaption("Const Power");
  Label35.SetCaption("RF Inhibited");
  Label36.SetCaption("Summary Fault");
  Label13.SetCaption("Htr Standby");
  lblSBUCWarmup.SetCaption("BUC Warmup");
  lbllcBucDrive.SetCaption("IF Drive High");
  NoFaults.SetCaption("No Faults");
  NoAlarms.SetCaption("No Alarms");
  btnFaultReset.SetCaption("Fault Reset");

  chkPS.SetCaption("Transmitter ON");
  chkRFI.SetCaption("RF Inhibit");
  Command7.SetCaption("Now");
  lblUnitTempType.SetCaption("SSPA");

  for (Label* l : {&Label64, &Label5, &Label8, &Label67, &Label69, &Label71}) l->SetCaption("dBm");
  for (ComboBox* c : {&cmbFhiTripType, &cmbFloTripType, &cmbRhiTripType})
    for (const char* item : {"Disabled", "Fault", "Alarm"}) c->AddItem(item);

  chkConstPwr.SetCaption("Enabled");
  btnGoToPwr.SetCaption("GoTo Power");
  Label2.SetCaption("DAC");
  // The count field and its arrows exist only on frequency block units.
  UpDown2.SetVisible(false);
  lblSband.SetCaption("SBand:");
  lblRFFrq.SetCaption("RF Frq:");

  for (const char* item : {"0 - None", "1 - 1-For-1", "2 - 1-Plus-1", "3 - 1-For-1 w/load",
                           "4 - 1-For-2", "6 - Standalone w/load"})
    cmbWgCfg.AddItem(item);
  for (ComboBox* c : {&cmbWgSw1, &cmbWgSw2}) {
    c->AddItem("A");
    c->AddItem("B");
  }
  chkAutoMode.SetCaption("Automatic Mode");

  Label12.SetCaption("Temp 2");
  Label14.SetCaption("C");
  Label19.SetCaption("Htr:");
  Label20.SetCaption("Beam:");
  lblTWTSrvc.SetCaption("TWT Life:");

  Timer1.SetInterval(2500);

  Menu(mnuFile, "&File", "");
  Menu(mnuConnect, "Connect", "mnuFile");
  Menu(mnuExtSrch, "Extended Search", "mnuFile");
  Menu(mnuAdvSrch, "Advanced Search", "mnuFile");
  Menu(mnuPollEn, "Poll Single Address", "mnuFile");
  Menu(mnuPollAdrs, "Poll Address A", "mnuFile");
  Menu(mnuLocateIP, "Locate IP", "mnuFile");
  Menu(mnuLoadFile, "Load Cfg File...", "mnuFile");
  Menu(mnuSaveAs, "Save Unit Cfg...", "mnuFile");
  Menu(mnuFaultLog, "Download Fault Log", "mnuFile");
  Menu(mnuDnldFltLog, "Short Fault Log", "mnuFaultLog");
  Menu(mnuFullFaultLog, "Full Fault Log", "mnuFaultLog");
  Menu(mnuPLog, "Download Parameter Logs", "mnuFile");
  Menu(mnuTrendLogs, "Download Trend Logs", "mnuFile");
  Menu(mnuCalFactor, "Cal-Factor Table", "mnuFile");
  static const char* kCalTables[8] = {"Get RF Cal From Amp",
                                      "Send RF Cal Table To Amp",
                                      "Get Rev RF Cal Table From Amp",
                                      "Send Rev RF RF Cal Table To Amp",
                                      "Get Atten Cal Table From Amp",
                                      "Send Atten Cal Table To Amp",
                                      "Get Input Drive Cal Table From Amp",
                                      "Send Input Drive Cal Table To Amp"};
  for (int i = 0; i < 8; ++i) Menu(mnuCalTables[i], kCalTables[i], "mnuFile");
  Menu(mnuCmdLine, "Commandline", "mnuFile");
  Menu(mnuFileExit, "E&xit", "mnuFile");

  Menu(mnuOptions, "Configuration", "");
  Menu(mnuOemName, "OEM Name...", "mnuOptions");
  Menu(mnuPowerSave, "Power Save...", "mnuOptions");
  Menu(mnuAutoHVDisable, "Auto-Xmit Restore Disabled", "mnuOptions");
  Menu(mnuAmpCom, "Serial Com", "mnuOptions");
  Menu(mnuRack, "Rack Unit", "mnuOptions");
  Menu(mnuStartupCfg, "Amplifier Startup...", "mnuOptions");
  Menu(mnuTempTripLevels, "Temperature Trip Levels...", "mnuOptions");
  Menu(mnu2ndUmbilical, "Dual Umbilical Brd", "mnuOptions");
  Menu(mnuMaxPwrLvl, "Maximum Power Level...", "mnuOptions");
  Menu(mnuRRfOffset, "Reverse RF Offset...", "mnuOptions");
  Menu(mnuReturnLoss, "Return Loss...", "mnuOptions");
  Menu(mnuPsVset, "Power Supply Voltage...", "mnuOptions");
  Menu(mnuLLDPCfg, "LLDP COnfiguration", "mnuOptions");
  Menu(mnuRfBandCfg, "RF Band Cfg...", "mnuOptions");
  Menu(mnuHeaterState, "Heater Enabled", "mnuOptions");
  Menu(mnuHtrStby, "Heater Standby", "mnuOptions");
  Menu(mnuEnetCfg, "Ethernet Cfg", "mnuOptions");
  Menu(mnuWatts, "Display Watts", "mnuOptions");
  Menu(mnuISense, "Current Sense...", "mnuOptions");
  Menu(mnuMfgInfo, "Manufacturing Info...", "mnuOptions");
  Menu(mnuClrHrs, "Clear Hours", "mnuOptions");
  Menu(mnuRfiInvert, "RF Inhibit Invert", "mnuOptions");
  Menu(mnuAutoClrBUC, "Auto Clear UpConverter Fault", "mnuOptions");
  Menu(mnuGainBal, "Gain Balance...", "mnuOptions");
  Menu(mnuSubBands, "Sub-Bands", "mnuOptions");
  for (int i = 1; i <= 8; ++i)
    Menu(mnuSubB(i), ("#" + std::to_string(i) + "   ").c_str(), "mnuSubBands");
  Menu(mnuLEDMode, "Status LED Disabled", "mnuOptions");
  Menu(mnuSumFltTest, "Summary Fault Test...", "mnuOptions");
  Menu(mnuWgArcTest, "Waveguide Arc Test", "mnuOptions");
  Menu(mnulcBucSetup, "Block UpConverter", "mnuOptions");
  Menu(mnuFltAlm, "Fault/Alarm Enables...", "mnuOptions");
  Menu(mnuModelCfgPN, "Model Config", "mnuOptions");
  Menu(mnuAtnCal, "Calibrate Attenuator...", "mnuOptions");

  Menu(mnuComm, "Communication", "");
  Menu(mnuUseEnet, "Use Ethernet", "mnuComm");
  Menu(mnuEnterIP, "IP Address:    10.0.0.254", "mnuComm");
  Menu(mnuEthPort, "Ethernet Port: 2000", "mnuComm");
  Menu(mnuOpenWebpage, "Open Webpage", "mnuComm");
  Menu(mnuPortScan, "Scan Ports", "mnuComm");
  Menu(mnuCom, "Serial Port:   COM1", "mnuComm");
  for (int i = 0; i < 10; ++i)
    Menu(mnuComPort[i], ("Com" + std::to_string(i + 1)).c_str(), "mnuCom");

  Menu(mnuHelp, "&Help", "");
  Menu(mnuHelpAbout, "&About", "mnuHelp");
}

MenuItem& FrmMain::mnuSubB(int n) {
  MenuItem* items[8] = {&mnuSubB1, &mnuSubB2, &mnuSubB3, &mnuSubB4,
                        &mnuSubB5, &mnuSubB6, &mnuSubB7, &mnuSubB8};
  if (n < 1 || n > 8) throw std::out_of_range("sub-band menu entries are 1 to 8");
  return *items[n - 1];
}

ControlArray<Label, 6>& FrmMain::FaultWord(int w) {
  ControlArray<Label, 6>* words[4] = {&FaultAbit, &FaultBbit, &FaultCbit, &FaultDbit};
  if (w < 0 || w > 3) throw std::out_of_range("fault words are A to D");
  return *words[w];
}

ControlArray<Label, 6>& FrmMain::AlarmWord(int w) {
  ControlArray<Label, 6>* words[4] = {&AlarmAbit, &AlarmBbit, &AlarmCbit, &AlarmDbit};
  if (w < 0 || w > 3) throw std::out_of_range("alarm words are A to D");
  return *words[w];
}

}  // namespace amp::ui
