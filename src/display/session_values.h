// What the first read learns about the unit beyond its identity: option
// words, limits, texts and small records that later handlers, dialogs and the
// configuration writer consult. FirstTimeRead fills them; ClearForm empties
// the band globals and resets the power limit texts, and every other value is
// written afresh by the next first read. A value that a failed read could not
// fill keeps the default given here, which always means "absent".
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "commands/identity_cmds.h"
#include "commands/port_network_cmds.h"

namespace amp {

struct SessionValues {
  // ---- Host side, kept across sessions --------------------------------
  // Folder for the fault log and other downloads; the application sets it
  // at start. Empty: InitDataDirectory has nothing to create.
  std::string gDataDirectory;
  // Root of the per-unit calibration folders, also where configuration files
  // are proposed; the application sets it at start.
  std::string gCalRoot;

  // ---- Fields of the main panel that its handlers share ---------------
  // Set by Enter in one of the value fields; while set, leaving a field does
  // not resend it. Only DisableForm resets it.
  bool mEnterHandled = false;
  // A trip line whose field or combo has the focus is left alone by
  // InitRFTripLevels, so a poll never overwrites what the operator types.
  bool mFhiHasFocus = false;
  bool mFloHasFocus = false;
  bool mRhiHasFocus = false;

  // ---- Unit kind and count commands -----------------------------------
  bool gIsFBDCUnit = false;  // firmware 715-2295-001
  int16_t gMinAtnCount = 0;  // RF count base: lowest count SetAtnCount accepts
  std::string gFwdRFCountCommand = ".?A1";
  std::string gRevRFCountCommand = ".?A2";
  std::array<int16_t, 11> gAdcScalers{-1, -1, -1, -1, -1, -1,
                                      -1, -1, -1, -1, -1};  // "YO0?".."YO10?", project 127
  int16_t gUpcAvailability = -1;                            // "PBUH?", project 127; 1 available

  // ---- Unit configuration word (InitUnitCfg) --------------------------
  bool gRfBandSelectable = false;  // multi-band bit: the band can be chosen
  bool gRevPwrTempOption = false;  // SSPA: temperature for reverse power fault
  bool gDCVMonitorOption = false;  // SSPA: DC input monitored
  bool gLinSlopeOption = false;    // linearizer slope in use
  bool gBucEnabled = false;        // programmable upconverter in use

  // ---- Limits and options ---------------------------------------------
  float gReturnLoss = -1.0f;  // "PS?"; below 0 the unit lacks the feature
  // Maximum power limit: texts in dBm, "-1" while unknown.
  std::string gMaxPowerLevel = "-1";
  std::string gMaxPowerLevel2;  // second level of the two-level form
  std::string gMaxPowerFault = "-1";
  bool gMaxPowerOn = false;
  // Factory trip levels; the margin has no reader of its own.
  std::string gFactoryFwdTrip = "0.0";
  std::string gFactoryRevTrip = "0.0";
  std::string gFactoryTripMargin = "0";
  // ".?P334": attenuator range, and with it the calibration temperature span.
  bool gHasAttenRange = false;
  float gAttenRange = 20.0f;       // dB
  std::string gMaxCalTemp;         // ".?P332"
  std::string gMinCalTemp;         // ".?P333"
  int16_t gStartupMode = -1;       // "PX?": 0 normal, 1 off, 2 on
  bool gUsedBmTripLevels = false;  // levels may be sent in dBm ("M" forms)
  std::string gOemName;            // ".?P131", kept only when exactly 20 characters
  float gMaxAttendB = 30.0f;       // ".?P203" / 10, 30.0 when absent
  int32_t gFaultMask = 0;          // "YIF?", 0 when not read
  int32_t gFaultMaskHigh = 0;      // second fault word, when the unit has one
  bool gExtendedFaults = false;    // the unit reported a second fault word
  int32_t gAlarmMask = 0;          // "YIA?", 0 when not read
  int16_t gLowLineLatch = -1;      // ".?P151": above 0 latched
  int16_t gExtIlokLatch = -1;      // ".?P212": above 0 latched
  float gRevRFOffset = -100.0f;    // "PR?"; -100 when the unit has none

  // ---- DC input (only with the DC input option) ------------------------
  bool gHasDCVInput = false;
  std::array<std::string, 4> gDCVLimits;  // alarm low, alarm high, fault low, fault high (V)
  std::string gDCVRatio;
  std::string gDCVInput;

  // ---- Unit gain, gain balance ------------------------------------------
  bool gHasUnitGain = false;
  bool gUnitGainOn = false;
  std::string gUnitGain;           // dB
  int16_t gGainBalanceState = -1;  // "PG?": below 0 absent
  bool gGainBalanceOn = false;
  std::string gGainBalance;  // "#0.0" dB

  // ---- Float supply ("YC" family) ----------------------------------------
  bool gHasFloatSupply = false;
  int16_t gAmcStatus = -1;  // "YCI?"
  std::array<std::string, 11> gAmcAnalogs;
  std::array<std::string, 11> gAmcSettings;  // heater V, focus off kV, focus on kV, heater A
  bool gHasPSVset = false;
  int32_t gPSVset = 0;  // "YC?" supply set value

  // ---- Power save, unit serial ports ----------------------------------
  int16_t gPowerSaveOn = -1;     // "N?": below 0 absent
  int16_t gPowerSaveLevel = -1;  // "NP?"
  int32_t gCom1Baud = 0;
  std::string gCom1Parity;  // "N", "O", "E"; "*" when not read
  int16_t gCom1Data = 0;
  int16_t gCom1Stop = 0;
  int32_t gCom2Baud = 0;
  std::string gCom2Parity;
  int16_t gCom2Data = 0;
  int16_t gCom2Stop = 0;
  int16_t gCom2Wire = 0;
  std::string gCom2Term;  // "T" or "U"
  std::string gCom2Address;

  // ---- Ethernet and LLDP ----------------------------------------------
  std::string gIPAddress;
  std::string gNetMask;
  std::string gGateway;
  std::string gMACAddress;
  int32_t gEthPort = 2000;
  bool gDhcpOn = false;
  std::array<int16_t, 4> gIPOctets{};
  std::array<int16_t, 4> gMaskOctets{};
  std::array<int16_t, 4> gGatewayOctets{};
  LldpFactoryParams gLldpFactory;
  LldpUserParams gLldpUser;

  // ---- RF bands and sub-bands (index 1 to 4, 1 to 8) -------------------
  std::array<std::string, 5> gBandNames;
  std::array<std::string, 5> gBandFrequencies;  // GHz, "#0.00"
  bool gRfBandSupported = false;
  std::string gCurrentRFBand;
  float gFwdMaxdBm = 50.0f;  // limits of the current band
  float gFwdMindBm = 0.1f;
  std::array<std::string, 10> gSubBandFreqs;  // GHz, slots 1 to 8 used
  int16_t gSubBandCount = 0;
  int16_t gCurrentSubBand = 0;  // 0 none
  std::string gRfFrequency;     // MHz, "####0", as last set from the panel

  // ---- Temperature compensation and trips -------------------------------
  std::string gTempCoefficient = "0.075";
  bool gTempCoefAttnRatio = false;  // the coefficient is an attenuation-to-temperature table
  bool gBandTempCoef = false;       // the sub-bands carry their own coefficients
  std::array<std::string, 9> gSubBandTempCoefs;  // slots 1 to 8
  std::string gTempFaultLevel;                   // degrees C
  std::string gTempAlarmLevel;
  std::string gInletDiffAlarmLevel;
  bool gTempFaultsLatched = false;  // "PBKL?" 1
  int16_t gFanTemperature = -1;     // "PBG?"
  bool gHasFanTemp = false;

  // ---- Panel initialisation ----------------------------------------------
  std::string gModelCfgPN = "NOT SET";
  int16_t gAutoXmitRestore = -1;   // "PBA?"
  bool gAutoXmitDisabled = false;  // "PBA?" 0: the restore is off
  int16_t gRFPolarity = -1;        // "PTI?"
  int16_t gLEDMode = -1;           // "PBW?"
  ProductID gProductID;            // "PBO?"
  bool gHasTrendLog = false;       // the unit answers the trend log query
  bool gParamLogCfg = false;       // column-style parameter logs (".?P349" 1)
  bool gTouchScreenLog = false;    // the touch-screen units' own parameter log
  int16_t gFaultLogSize = 100;     // entries of the full fault log

  // ---- Tube units ---------------------------------------------------------
  bool gDualHeater = false;
  int16_t gHeaterStandby = -1;      // ":?"
  int16_t gHeaterState = -1;        // "PBH?"
  int16_t gHelixCurrentRatio = -1;  // "YGHI?"
  std::string gHelixCurrentTrip;    // "YFTH?", mA
  bool gNegAnodeEnabled = false;    // cathode monitor settings ("PBF" family)
  int16_t gNegAnodeStart = 0;
  int16_t gAnodeVoltage = -1;
  int16_t gAnodeScale = 0;
  int16_t gCathodeMode = -1;
  int16_t gCathodeSense = -1;
  int16_t gCathodeScalar = 0;  // 0 to 4095
  int16_t gIdealCathodeCurrent = -1;
  bool gHasTwtEol = false;  // end-of-life figures ("QEP?")
  std::array<std::string, 3> gTwtEolParams;
  std::string gTwtEolEstimate;  // as shown in lblTWTLife

  // ---- Current sense -------------------------------------------------------
  bool gHasCurrentSense = false;
  std::string gCurrentSenseGain;       // ".?P92"
  float gCurrentSenseResistor = 0.0f;  // ".?P93", Ohms

  // ---- Block upconverter -----------------------------------------------------
  float gBucAttenuation = -1.0f;  // below 0: no upconverter
  float gBucMaxAtten = 31.5f;
  int16_t gBucMode = -1;
  float gBucSetPoint = -60.0f;
  float gBucOffset = 0.0f;
  float gBucIdeal = 0.0f;
};

}  // namespace amp
