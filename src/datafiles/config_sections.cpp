#include "datafiles/config_sections.h"

#include "basic/text.h"

namespace amp {

namespace {

// 1: the firmware the unit reported, and its CPLD when it has one.
void SaveFWPartNumber(ConfigContext& c, FileIO& f) {
  // The "#" rides in the same write as the firmware line, as the file format
  // has always had it.
  f.AddToFile("#Reported Firmware: " + c.unit.gFWPartNumber + ", v" + c.frm.txtFrmRev.Text() +
              "\r\n#");
  if (!c.unit.gBootVersion.empty()) f.AddToFile("#Reported CPLD: v" + c.unit.gBootVersion);
  f.AddToFile("#");
}

// 2: the unit's part number, commented: replaying it would re-label a unit.
void SavePartNumber(ConfigContext& c, FileIO& f) {
  f.AddToFile("#Part Number: " + c.frm.txtPN.Text());
  f.AddToFile("#YK" + NormalizePartNumber(c.frm.txtPN.Text()));
}

// 3: the serial number, commented for the same reason.
void SaveSerialNumber(ConfigContext& c, FileIO& f) {
  f.AddToFile("#Serial Number: " + c.frm.txtSN.Text());
  f.AddToFile("#YL" + c.frm.txtSN.Text());
}

// 4: the model configuration, a label only.
void SaveModelCfgPN(ConfigContext& c, FileIO& f) {
  f.AddToFile("#ModelCfg: " + c.values.gModelCfgPN);
}

bool HasPartNumber(ConfigContext& c) { return !c.frm.txtPN.Text().empty(); }

}  // namespace

std::string NormalizePartNumber(const std::string& text) { return Trim(text); }

const std::vector<ConfigSection>& ConfigSections() {
  static const std::vector<ConfigSection> sections = {
      {1, "SaveFWPartNumber", nullptr, SaveFWPartNumber},
      {2, "SavePartNumber", HasPartNumber, SavePartNumber},
      {3, "SaveSerialNumber", nullptr, SaveSerialNumber},
      {4, "SaveModelCfgPN", nullptr, SaveModelCfgPN},
  };
  return sections;
}

void WriteConfigSections(ConfigContext& c, FileIO& file) {
  for (const ConfigSection& s : ConfigSections())
    if (s.when == nullptr || s.when(c)) s.write(c, file);
}

}  // namespace amp
