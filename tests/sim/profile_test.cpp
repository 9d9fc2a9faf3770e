// The unit profiles in sim/profiles: each loads, each is the unit it claims
// to be, and the loader refuses what the unit could not send.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "sim/commands.h"
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

std::string Ask(UnitState& unit, std::string_view text) {
  static const CommandTable table = StandardCommands();
  Reply r = table.Dispatch(unit, text);
  return r.ack ? r.body : "<NAK>";
}

// The project number a host takes from a part number's second group.
int ProjectOf(const std::string& identity) {
  std::smatch m;
  if (!std::regex_search(identity, m, std::regex(R"(715-(\d{4})-\d{3})"))) return -1;
  static const std::map<std::string, int> kFamilies = {{"2243", 107}, {"2251", 108}, {"2268", 126},
                                                       {"2274", 129}, {"2287", 135}, {"2295", 139}};
  auto it = kFamilies.find(m[1]);
  return it != kFamilies.end() ? it->second : std::stoi(m[1]);
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

TEST(Profiles, EachIsTheUnitItClaimsToBe) {
  UnitState twta = Load("twta127");
  std::string yt = Ask(twta, "YT");
  EXPECT_TRUE(yt.starts_with("YTT")) << yt;  // a tube amplifier's identity starts with "T"
  EXPECT_EQ(ProjectOf(yt), 127);

  UnitState dual = Load("dualtwt108");
  yt = Ask(dual, "YT");
  EXPECT_NE(yt.find("715-2251-004"), std::string::npos) << yt;
  EXPECT_EQ(ProjectOf(yt), 108);
  EXPECT_TRUE(yt.starts_with("YTT"));
  EXPECT_EQ(Ask(dual, "?VIvi").size(), 17u);

  UnitState sspa = Load("sspa102");
  yt = Ask(sspa, "YT");
  EXPECT_EQ(ProjectOf(yt), 102);
  EXPECT_FALSE(yt.starts_with("YTT"));

  UnitState fbdc = Load("fbdc2295");
  yt = Ask(fbdc, "YT");
  EXPECT_NE(yt.find("715-2295-001"), std::string::npos) << yt;
  EXPECT_EQ(ProjectOf(yt), 139);

  UnitState buc = Load("bucsspa");
  EXPECT_TRUE(Ask(buc, "PBCA?").starts_with("PBCA"));
  EXPECT_TRUE(Ask(buc, "PBS1?").starts_with("PBS1"));
  EXPECT_NE(Ask(buc, "PBS2?"), "<NAK>");

  UnitState def = Load(std::string(kDefaultProfile));
  EXPECT_FALSE(Ask(def, "YT").starts_with("YTT")) << "the default unit is solid state";

  // The old unit: no identity text, no four-word alarm status (so the
  // host polls with "?!#9"), no "PBKF?"; the temperature trips are numbered.
  UnitState old = Load("oldunit");
  EXPECT_EQ(Ask(old, "YT"), "<NAK>");
  EXPECT_EQ(Ask(old, "?("), "<NAK>");
  EXPECT_EQ(Ask(old, "?!#("), "<NAK>");
  EXPECT_EQ(Ask(old, "PBKF?"), "<NAK>");
  EXPECT_EQ(Ask(old, "?!#9").size(), 10u);
  EXPECT_TRUE(Ask(old, ".?P136").starts_with(".P136 "));
  EXPECT_TRUE(Ask(old, ".?P179").starts_with(".P179 "));
}

TEST(Profiles, NamesResolveAndTheReadmeKnowsEveryFamily) {
  std::string path = ResolveProfile("twta127");
  EXPECT_TRUE(path.ends_with("/twta127.profile")) << path;
  EXPECT_EQ(ResolveProfile(path), path);  // a path stays a path
  EXPECT_EQ(ResolveProfile("no-such-unit"), "");
  EXPECT_EQ(ResolveProfile("./no-such-unit.profile"), "./no-such-unit.profile");

  std::ifstream in(BuiltInProfileDir() + "/README.md");
  ASSERT_TRUE(in) << BuiltInProfileDir();
  std::stringstream readme;
  readme << in.rdbuf();
  for (const std::string& family : CommandFamilies()) {
    if (family == "param") continue;  // documented as param.N
    EXPECT_NE(readme.str().find("`" + family + "`"), std::string::npos)
        << family << " is not in README.md";
  }
}

TEST(Profiles, SectionsBuildListsTablesAndWander) {
  UnitState u;
  std::string error;
  ASSERT_TRUE(
      ApplyProfile("name = bench\n"
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
  };
  for (const auto& [text, why] : bad) {
    EXPECT_FALSE(ApplyProfile(text, u, &error)) << text;
    EXPECT_NE(error.find(why), std::string::npos) << text << " -> " << error;
  }
  EXPECT_EQ(u.values, before.values);
  EXPECT_EQ(u.lacks, before.lacks);
}
