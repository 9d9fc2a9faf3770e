// The unit profiles in sim/profiles: each loads (what each unit is shows in
// the end-to-end identity and first-read tests), and the loader refuses what
// the unit could not send.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "sim/profile.h"

using namespace amp::sim;

namespace {

UnitState Load(const std::string& name) {
  UnitState unit;
  std::string error;
  std::string path = ResolveProfile(name);
  EXPECT_FALSE(path.empty()) << name;
  EXPECT_TRUE(LoadProfile(path, unit, &error)) << name << ": " << error;
  return unit;
}

}  // namespace

TEST(Profiles, EveryProfileLoadsAndTheRequiredUnitsAreThere) {
  std::vector<std::string> names = ProfileNames();
  for (const char* wanted :
       {"twta127", "dualtwt108", "sspa102", "fbdc2295", "bucsspa", "oldunit", "sspa120"})
    EXPECT_NE(std::find(names.begin(), names.end(), wanted), names.end()) << wanted;
  EXPECT_NE(std::find(names.begin(), names.end(), std::string(kDefaultProfile)), names.end());
  for (const std::string& name : names) {
    UnitState u = Load(name);
    EXPECT_EQ(u.profileName, name);
    EXPECT_TRUE(u.remote) << name;
    EXPECT_TRUE(u.summary[0] & summary::kRemote) << name << ": the remote bit follows the mode";
    EXPECT_FALSE(u.lists.empty()) << name << " has no logs";
    EXPECT_FALSE(u.calTables.empty()) << name << " has no calibration tables";
    // Every reply text can travel inside a frame.
    for (const auto& [key, value] : u.values)
      EXPECT_EQ(value.find_first_of("{}\r\n\x02\x03\x06\x15"), std::string::npos)
          << name << " " << key;
  }
}

TEST(Profiles, NamesResolveToFilesAndPathsStayPaths) {
  std::string path = ResolveProfile("twta127");
  EXPECT_TRUE(path.ends_with("/twta127.profile")) << path;
  EXPECT_EQ(ResolveProfile(path), path);
  EXPECT_EQ(ResolveProfile("no-such-unit"), "");
  EXPECT_EQ(ResolveProfile("./no-such-unit.profile"), "./no-such-unit.profile");
}

TEST(Profiles, SectionsBuildListsTablesAndWander) {
  UnitState u;
  std::string error;
  ASSERT_TRUE(
      ApplyProfile("name = bench\n"
                   "address = B\n"
                   "unit_id = 0x0203   # second build\n"
                   "summary = P@@@   # local unless the mode says so\n"
                   "mode = local\n"
                   "lacks = buc, lldp\n"
                   "lacks = param.131\n"
                   "[values]\n"
                   "fwd_power = 47.0\n"
                   "oem = \"  padded  \"\n"
                   "part#2 = x#y\n"
                   "[wander]\n"
                   "fwd_power = 0.5\n"
                   "[faultlog]\n"
                   "# a comment, not a record\n"
                   "Ovr Temp  47.0  30.1 10.0  80 E 240301 101010\n"
                   "\n"
                   "[log.cathode]\n"
                   "[cal.atten]\n"
                   "first = -1.0\n"
                   "last = 1.0\n"
                   "counts = 4000 .. 3000\n",
                   u, &error))
      << error;
  EXPECT_FALSE(u.remote);
  EXPECT_EQ(u.address, 'B');
  EXPECT_EQ(u.unitId, 0x0203);
  EXPECT_EQ(u.summary[0], 0x10);
  EXPECT_EQ(u.lacks, (std::set<std::string, std::less<>>{"buc", "lldp", "param.131"}));
  EXPECT_EQ(u.values.at("oem"), "  padded  ");
  EXPECT_EQ(u.values.at("part#2"), "x#y");  // '#' inside a word is no comment
  EXPECT_EQ(u.wander.at("fwd_power"), 0.5);
  ASSERT_EQ(u.lists.at("faultlog").size(), 1u);
  EXPECT_EQ(u.lists.at("faultlog")[0], "Ovr Temp  47.0  30.1 10.0  80 E 240301 101010");
  EXPECT_TRUE(u.lists.at("log.cathode").empty());
  const auto& atten = u.calTables.at("atten").entries;
  ASSERT_EQ(atten.size(), 21u);
  EXPECT_EQ(atten.at(-10), 4000);
  EXPECT_EQ(atten.at(0), 3500);
  EXPECT_EQ(atten.at(10), 3000);

  const UnitState before = u;
  const std::vector<std::pair<const char*, const char*>> bad = {
      {"[colours]\n", "unknown section"},
      {"lacks = bucket\n", "not a command family"},
      {"[wander]\nnothing = 1\n", "wander.nothing"},
      {"[values]\nword = text\n[wander]\nword = 1\n", "must be a number"},
      {"[wander]\nfwd_power = -1\n", "0 or more"},
      {"[faultlog]\nOvr Temp!\n", "'!'"},
      {"[values]\nbad = a{b\n", "cannot be sent"},
      {"[cal.forward]\nfirst = 1\nlast = 2\ncounts = 5 - 7\n", "counts"},
      {"[cal.forward]\nfirst = 2\nlast = 1\ncounts = 5 .. 7\n", "needs first"},
      {"[cal.forward]\nslope = 2\n", "unknown key"},
      {"[values\n", "']'"},
      {"address = C\nalarm = @@\n", "line 2"},
      {"mode = sideways\n", "mode"},
  };
  for (const auto& [text, why] : bad) {
    EXPECT_FALSE(ApplyProfile(text, u, &error)) << text;
    EXPECT_NE(error.find(why), std::string::npos) << text << " -> " << error;
  }
  EXPECT_EQ(u.values, before.values);
  EXPECT_EQ(u.lacks, before.lacks);
  EXPECT_EQ(u.address, 'B');
  EXPECT_FALSE(LoadProfile("/nonexistent/unit.profile", u, &error));
  EXPECT_NE(error.find("/nonexistent/unit.profile"), std::string::npos);
}
