// The fleet file as an operator writes it: what it takes, and for each kind
// of mistake the line and the words of the message.
#include <gtest/gtest.h>

#include "fleet/fleet_file.h"

namespace amp::fleet {
namespace {

TEST(FleetFile, ReadsTcpAndSerialUnitsWithTheirLabels) {
  Fleet f;
  std::string error;
  ASSERT_TRUE(ParseFleet(R"([[unit]]
name = "hpa-1"
tcp = "127.0.0.1:2001"
chain = "up1"
site = "north"

[[unit]]
name = "hpa-2"
serial = "/dev/ttyUSB0"
settings = "19200,E,7,1"
address = "C"
)",
                         "f.toml", &f, &error))
      << error;
  ASSERT_EQ(f.units.size(), 2u);
  const UnitEntry& a = f.units[0];
  EXPECT_EQ(a.tcpHost, "127.0.0.1");
  EXPECT_EQ(a.tcpPort, 2001);
  EXPECT_EQ(a.address, 'A');
  ASSERT_EQ(a.labels.size(), 2u);  // in the order site, rack, chain
  EXPECT_EQ(a.labels[0].name + "=" + a.labels[0].value, "site=north");
  EXPECT_EQ(a.labels[1].name + "=" + a.labels[1].value, "chain=up1");
  const UnitEntry& b = f.units[1];
  EXPECT_FALSE(b.Tcp());
  EXPECT_EQ(b.serialDevice + " " + b.settings + " " + b.address, "/dev/ttyUSB0 19200,E,7,1 C");
  EXPECT_EQ(b.line, 7);
}

TEST(FleetFile, EachMistakeNamesItsLine) {
  const std::string a = "[[unit]]\nname = \"a\"\ntcp = \"127.0.0.1:1\"\n";  // lines 1-3
  const std::string busA =
      "[[unit]]\nname = \"a\"\nserial = \"/dev/x\"\nsettings = \"9600,N,8,1\"\naddress = \"A\"\n";
  struct Case {
    std::string text, message;
  } cases[] = {
      {"[[unit]\n", "f.toml:1:"},
      {"# r\xc3\xa9sum\xc3\xa9\n[[unit]]\nname\xd0\x8e = \"a\"\n", "f.toml:3: a character other"},
      {"", "f.toml:1: no units"},
      {"title = \"x\"\n" + a, "f.toml:1: unknown key 'title'"},
      {a + "colour = \"red\"\n", "f.toml:4: unknown key 'colour'"},
      {"[unit]\nname = \"a\"\n", "f.toml:1: 'unit' must be written as [[unit]]"},
      {a + a, "f.toml:5: name 'a' is taken by the unit on line 1"},
      {"[[unit]]\ntcp = \"h:1\"\n", "f.toml:1: the unit has no name"},
      {"[[unit]]\nname = \"a b\"\ntcp = \"h:1\"\n", "f.toml:2: name 'a b' may hold only"},
      {"[[unit]]\nname = 5\n", "f.toml:2: 'name' must be a text"},
      {"[[unit]]\nname = \"a\"\n", "f.toml:1: unit 'a' needs either tcp"},
      {a + "serial = \"/dev/x\"\n", "f.toml:1: unit 'a' needs either tcp"},
      {"[[unit]]\nname = \"a\"\ntcp = \"h:70000\"\n", "f.toml:3: tcp = \"h:70000\" is not"},
      {a + "settings = \"9600,N,8,1\"\n", "f.toml:4: settings apply to serial units only"},
      {"[[unit]]\nname = \"a\"\nserial = \"/dev/x\"\naddress = \"A\"\n",
       "f.toml:1: serial unit 'a' needs settings"},
      {"[[unit]]\nname = \"a\"\nserial = \"/dev/x\"\nsettings = \"9600,N,8,1\"\n",
       "f.toml:1: serial unit 'a' needs its address"},
      {"[[unit]]\nname = \"a\"\nserial = \"/dev/x\"\nsettings = \"9600,X,8,1\"\naddress = \"A\"\n",
       "f.toml:4: settings = \"9600,X,8,1\" is not"},
      {a + "address = \"AB\"\n", "f.toml:4: address = \"AB\" must be one printable"},
      {busA + "[[unit]]\nname = \"b\"\nserial = \"/dev/x\"\nsettings = \"9600,N,8,1\"\n"
              "address = \"A\"\n",
       "f.toml:10: address 'A' on /dev/x is taken by unit 'a' (line 1)"},
      {busA + "[[unit]]\nname = \"b\"\nserial = \"/dev/x\"\nsettings = \"4800,N,8,1\"\n"
              "address = \"B\"\n",
       "f.toml:9: settings \"4800,N,8,1\" differ"},
  };
  for (const Case& c : cases) {
    Fleet f;
    std::string error;
    EXPECT_FALSE(ParseFleet(c.text, "f.toml", &f, &error)) << c.text;
    EXPECT_EQ(error.substr(0, c.message.size()), c.message) << c.text;
  }
}

}  // namespace
}  // namespace amp::fleet
