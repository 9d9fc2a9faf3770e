// Where the panel keeps its persisted settings, and the names of the ten it
// keeps. Every reader and writer of a setting names it from here, so a key
// cannot be spelled two ways.
#pragma once

#include <array>

namespace amp::setting_key {

// The application and the section the keys live under.
inline constexpr const char* kAppTitle = "AmpDesk";
inline constexpr const char* kSection = "Settings";

inline constexpr const char* kCurrentPort = "CurrentPort";    // serial port number
inline constexpr const char* kComSettings = "ComSettings";    // serial line settings
inline constexpr const char* kPollStatus = "PollStatus";      // 1: poll a single address
inline constexpr const char* kPollAddress = "PollAddress";    // its character code
inline constexpr const char* kUseIP = "UseIP";                // the TCP target's host
inline constexpr const char* kEthPort = "EthPort";            // and its port
inline constexpr const char* kUseEnet = "UseEnet";            // sessions go over TCP
inline constexpr const char* kRRFFloor = "RRFFloor";          // reverse RF display floor
inline constexpr const char* kUnitsSetting = "UnitsSetting";  // power shown in Watts
inline constexpr const char* kFilePath = "FilePath";          // last folder of a file dialog

// Kept by this host beside the ten, in a section of its own: the device path
// the stored port number stood for (serial slots are dealt per run).
inline constexpr const char* kHostSection = "Host";
inline constexpr const char* kCurrentPortDevice = "CurrentPortDevice";
// Where data files and logs go, and the root of the calibration folders;
// empty or absent: the host's per-user defaults.
inline constexpr const char* kDataDirectory = "DataDirectory";
inline constexpr const char* kCalibrationRoot = "CalibrationRoot";

// The keys that say which unit to reach and how: a target given for one run
// replaces them for that run only.
inline constexpr std::array<const char*, 7> kTargetKeys = {
    kCurrentPort, kComSettings, kPollStatus, kPollAddress, kUseIP, kEthPort, kUseEnet};

}  // namespace amp::setting_key
