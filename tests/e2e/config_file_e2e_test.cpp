// Saving a unit's configuration and replaying it into a fresh unit with
// ampdesk-cli against ampsim, over loopback TCP and over the pseudo-terminal.
#include "cli_runner.h"

namespace amp::e2e {
namespace {

// The command texts of ampsim's frame log, in the order received.
std::vector<std::string> Received(const std::string& log) {
  std::vector<std::string> out;
  for (const std::string& line : Lines(ReadAll(log))) {
    const size_t b = line.find("<STX>"), e = line.rfind("<ETX>");
    if (b != std::string::npos && e != std::string::npos && e > b + 6)
      out.push_back(line.substr(b + 6, e - b - 6));
  }
  return out;
}

// A unit logging its frames to `log`, and the CLI's arguments that reach it.
std::vector<std::string> UnitArgs(bool tcp, const std::string& log, bool local) {
  std::vector<std::string> a = {"--frame-log", log, tcp ? "--tcp=127.0.0.1:0" : "--serial"};
  if (!tcp) a.push_back("--no-tcp");
  if (local) a.push_back("--local");
  return a;
}
struct LoggedUnit : Unit {
  LoggedUnit(bool tcp, const std::string& log, bool local = false)
      : Unit(UnitArgs(tcp, log, local)) {}
  CliRun Run(std::vector<std::string> args) {
    args.insert(args.begin(),
                {serial.empty() ? "--tcp" : "--serial", serial.empty() ? Tcp() : serial});
    return Cli(args);
  }
};

TEST(ConfigFileEndToEnd, SaveThenReplayIntoAFreshUnit) {
  for (bool tcp : {true, false}) {
    SCOPED_TRACE(tcp ? "tcp" : "pty");
    const std::string file = FreshFile("e2e_cfg.txt"), log = FreshFile("e2e_cfg.log");
    {
      LoggedUnit u(tcp, FreshFile("e2e_save.log"));
      CliRun r = u.Run({"save-config", file});
      ASSERT_EQ(r.code, 0) << r.err;
      EXPECT_EQ(r.out, file + "\n");
      EXPECT_NE(r.err.find("open: " + file), std::string::npos) << r.err;
    }
    EXPECT_EQ(ReadAll(file).rfind(
                  std::string(60, '#') + "\r\n#               Amplifier Configuration File\r\n", 0),
              0u);
    // The operator's own lines: a command, a blank-led "#" that is one too.
    std::ofstream(file, std::ios::binary | std::ios::app) << "K7.5\r\n #YL9\r\n#K9\r\nA\n";
    LoggedUnit fresh(tcp, log);
    CliRun r = fresh.Run({"--json", "load-config", file});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(Str(Control(Json(Lines(r.out).back()), "txtAtnDB"), "text"), "7.5");
    const auto got = Received(log);
    const auto at = std::find(got.begin(), got.end(), "K7.5");
    ASSERT_GE(got.end() - at, 3);
    EXPECT_EQ(std::vector<std::string>(at, at + 3),
              (std::vector<std::string>{"K7.5", " #YL9", "A"}));
    EXPECT_EQ(std::count(at + 3, got.end(), "YT"), 1);  // then the reconnect's first read
  }
}

TEST(ConfigFileEndToEnd, RefusalsSendNothing) {
  const std::string comments = FreshFile("e2e_comments.txt"), log = FreshFile("e2e_refuse.log");
  std::ofstream(comments, std::ios::binary) << "#K1\r\n\r\n#A\r\n";
  LoggedUnit local(true, FreshFile("e2e_local.log"), true);
  CliRun r = local.Run({"load-config", comments});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("Communication Error: Not in Remote Mode"), std::string::npos) << r.err;
  r = local.Run({"load-config", FreshFile("e2e_missing.txt")});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("no file"), std::string::npos) << r.err;

  LoggedUnit remote(true, log);
  r = remote.Run({"load-config", comments});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_NE(r.out.find("0 commands sent"), std::string::npos);
  const auto got = Received(log);
  EXPECT_EQ(std::count(got.begin(), got.end(), "YT"), 1);  // no reconnect
  EXPECT_EQ(std::count_if(got.begin(), got.end(), [](auto& c) { return c == "K1" || c == "A"; }),
            0);
}

}  // namespace
}  // namespace amp::e2e
