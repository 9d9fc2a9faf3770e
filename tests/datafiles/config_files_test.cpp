#include "datafiles/config_files.h"

#include <filesystem>
#include <fstream>

#include "../control/panel_rig.h"

namespace amp::test {
namespace {

namespace fs = std::filesystem;

struct LoadRig : PanelRig {
  fs::path dir =
      fs::temp_directory_path() /
      ("cfgfiles_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
  std::string lastDir;
  FakeShell shell;
  ConfigFiles files{ctx, lastDir};
  LoadRig() {
    fs::remove_all(dir);
    fs::create_directories(dir);
    v.gDataDirectory = (dir / "data").string();
    files.shell = &shell;
  }
  ~LoadRig() { fs::remove_all(dir); }
  std::string Put(const std::string& name, const std::string& bytes) {
    std::ofstream((dir / name).string(), std::ios::binary) << bytes;
    return (dir / name).string();
  }
};

TEST(ConfigLoad, SendsEveryCommandLineAsItStandsOrNothingAtAll) {
  struct Case {
    const char* what;
    std::string bytes;  // "" : no such file
    std::vector<std::string> sent;
    std::vector<std::string> boxes;
  };
  // clang-format off
  const Case cases[] = {
      {"lines unchanged, CR LF and LF", "#h\r\nK12.5\r\n\r\n #YL9\nPBS1 12.50 \r\n#\r\n@", {"K12.5", " #YL9", "PBS1 12.50 ", "@"}, {}},
      {"missing file", "", {}, {}},
      {"NUL byte", std::string("K1\r\nK2\0\r\n", 8), {}, {"Load Cfg File"}},
      {"binary", "K1\r\n\x7f" "ELF\x02\x01\r\n", {}, {"Load Cfg File"}},
      {"a 10 MB line", "K1\r\n" + std::string(10 << 20, 'K'), {}, {"Load Cfg File"}},
      {"a 2 kB line", "K1\r\n" + std::string(2048, 'K'), {}, {"Load Cfg File"}},
  };
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    LoadRig r;
    const std::string name =
        c.bytes.empty() ? (r.dir / "none.txt").string() : r.Put("cfg.txt", c.bytes);
    EXPECT_EQ(r.files.LoadCmdFile(name), !c.sent.empty());
    EXPECT_EQ(r.s.sent, c.sent);
    EXPECT_EQ(r.BoxTitles(), c.boxes);
  }
}

TEST(ConfigLoad, PollTicksNeverRunInsideAnExchange) {
  LoadRig r;
  r.s.comms.gUseEnet = true;
  r.s.comms.gFirstReadDone = true;
  r.s.sock.state = TcpSocket::sckConnected;
  r.s.sock.onSend = [&r](const std::string& frame) {
    // The poll falls due in the middle of each exchange of the load.
    if (frame.find("?!#") == std::string::npos) r.s.pump.After(5, [&r] { r.s.timer.Tick(); });
    r.s.sock.Deliver(
        "\x06"
        "A\x03M\r",
        10);
  };
  ASSERT_TRUE(r.files.LoadCmdFile(r.Put("c.txt", "K1\r\nA\r\n")));
  std::vector<std::string> frames;
  for (const auto& s : r.s.sock.sent) frames.push_back(s.substr(2, s.size() - 6));
  EXPECT_EQ(frames, (std::vector<std::string>{"K1", "A"}));
}

TEST(ConfigSave, WritesTheHeaderAndSectionsUnderTheProposedName) {
  LoadRig r;
  r.u.gFWPartNumber = "715-2251-004";
  r.u.gBootVersion = "1.2";
  r.f.txtFrmRev.SetText("2.5");
  r.f.txtPN.SetText(" 418-1234-001 ");
  r.f.txtSN.SetText("77");
  r.v.gModelCfgPN = "MC-3";
  fs::create_directories(r.v.gDataDirectory);
  r.Put("data/77Cfg.txt", "");
  r.s.dialogs.ExpectFile((r.dir / "data" / "77Cfg1.txt").string());
  r.files.mnuSaveAs_Click();
  EXPECT_EQ(r.s.dialogs.fileDialogs,
            std::vector<std::string>{"save|" + r.v.gDataDirectory + "|77Cfg1.txt"});
  ASSERT_EQ(r.shell.opened, std::vector<std::string>{r.files.SavedFile()});
  std::ifstream in(r.files.SavedFile(), std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), {});
  const std::string body = text.substr(text.find(std::string(60, '#') + "\r\n\r\n") + 64);
  EXPECT_EQ(body,
            "#Reported Firmware: 715-2251-004, v2.5\r\n#\r\n#Reported CPLD: v1.2\r\n#\r\n"
            "#Part Number:  418-1234-001 \r\n#YK418-1234-001\r\n#Serial Number: 77\r\n#YL77\r\n"
            "#ModelCfg: MC-3\r\n");
  EXPECT_NE(text.find("#  Command File: 77Cfg1.txt\r\n"), std::string::npos);

  // A folder that cannot be made: the box, and no file.
  r.Put("blocker", "");
  EXPECT_FALSE(r.files.SaveCmdFile((r.dir / "blocker" / "x.txt").string()));
  EXPECT_EQ(r.BoxTitles(), std::vector<std::string>{"File I/O Error"});
}

}  // namespace
}  // namespace amp::test
