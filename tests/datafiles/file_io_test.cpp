#include "datafiles/file_io.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace amp {
namespace {

namespace fs = std::filesystem;

class FileIOTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("fileio_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "_" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(dir_);
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }
  std::string Path(const std::string& name) const { return (dir_ / name).string(); }
  static std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
  }
  static void Put(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  fs::path dir_;
};

// Lines joined with CR LF, each one ended.
std::string Lines(std::initializer_list<std::string> lines) {
  std::string out;
  for (const auto& l : lines) out += l + "\r\n";
  return out;
}

const std::string R(60, '#');

TEST_F(FileIOTest, EveryKindWritesItsHeaderByteForByte) {
  struct Case {
    const char* name;
    bool (*open)(FileIO&, const std::string&);
    bool useParamLog, twta;
    std::string header;
  };
  const std::string C = "#  Created: NOW";
  const std::string ev = "# Event  Fpr  Rpr  Atn  HlV   HlI  HtV Tmp I YYMMDD HHMMSS";
  const Case cases[] = {
      {"a.txt", [](FileIO& f, const std::string& n) { return f.OpenAtnCalFile(n, false); }, false,
       true,
       Lines({R, "#", "#                  Attenuator Cal File", "#", "#  File: a.txt", C, "#", R,
              ""})},
      {"r.txt", [](FileIO& f, const std::string& n) { return f.OpenRfCalFile(n, false); }, false,
       true,
       Lines({R, "#", "#                  RF Power Cal File (Ku)", "#", "#  File: r.txt", C, "#", R,
              ""})},
      {"i.txt", [](FileIO& f, const std::string& n) { return f.OpenIRfCalFile(n, false); }, false,
       true,
       Lines({R, "#", "#      Input RF Drive Power Cal File (Ku)", "#", "#  File: i.txt", C, "#", R,
              ""})},
      {"e.txt", [](FileIO& f, const std::string& n) { return f.OpenCfgErrFile(n, false); }, false,
       true,
       Lines({R, "#", "#                  Configuration Error File", "#", "#  File: e.txt", C,
              "#  ModelCfg: MC-9", "#", R, ""})},
      {"d.txt", [](FileIO& f, const std::string& n) { return f.OpenDumpFile(n, false); }, false,
       true,
       Lines({R, "#", "#              Non-Volitile Memory Dump ", "#", "#  File: d.txt", C, "#", R,
              ""})},
      {"c.txt", [](FileIO& f, const std::string& n) { return f.OpenCmdFile(n, false); }, false,
       true,
       Lines({R, "#               Amplifier Configuration File", "#", "#  Command File: c.txt", C,
              "#  Firmware: FW-1", "#  ModelCfg: MC-9", "#", R, ""})},
      {"f.txt", [](FileIO& f, const std::string& n) { return f.OpenFltLogFile(n, false, false); },
       false, true,
       Lines({R, "#", "#              Fault Log File ", "#", "#  File: f.txt", C, "#  SN: 77", "#",
              R, ""})},
      {"g.txt", [](FileIO& f, const std::string& n) { return f.OpenFltLogFile(n, false, true); },
       false, true,
       Lines({R, "#", "#              Fault Log File ", "#", "#  File: g.txt", C, "#  SN: 77", R,
              ""})},
      {"hlog.txt", [](FileIO& f, const std::string& n) { return f.OpenParamLogFile(n, false); },
       true, true,
       Lines({R, "#", "#      Hourly Parameter Log File ", "#", "#  File: hlog.txt", C, "#  SN: 77",
              "#  Columns: ", ev, R, ""})},
      {"cmlog.txt", [](FileIO& f, const std::string& n) { return f.OpenParamLogFile(n, false); },
       true, false,
       Lines({R, "#", "#      Cathode Current Parameter Log File ", "#", "#  File: cmlog.txt", C,
              "#  SN: 77", "#  Columns: ", "# Ic Va BmHrs HtHrs YYMMDDHHMM", R, ""})},
      {"plog.txt", [](FileIO& f, const std::string& n) { return f.OpenParamLogFile(n, false); },
       false, true,
       Lines({R, "#", "#      10-Minute Parameter Log File ", "#", "#  File: plog.txt", C,
              "#  SN: 77", "#", R, ""})},
      {"PLOG.txt", [](FileIO& f, const std::string& n) { return f.OpenParamLogFile(n, false); },
       true, true, ""},
      {"t.txt", [](FileIO& f, const std::string& n) { return f.OpenTrendLogFile(n, false); }, false,
       true,
       Lines({R, "#", "#       Trend Log File ", "#", "#  File: t.txt", C, "#  SN: 77",
              "#  Columns: ",
              "#    Date    Time     Sum/Flt/Alm   Fpr        Tmp       HxI       HxV       HtV    "
              "   Atn       UPC       CaI       AnV ",
              R, ""})},
      {"u.txt", [](FileIO& f, const std::string& n) { return f.OpenTrendLogFile(n, false); }, true,
       false,
       Lines({R, "#", "#       Trend Log File ", "#", "#  File: u.txt", C, "#  SN: 77",
              "#  Columns: ", "# Event  Fpr  Rpr  Atn  Tmp I YYMMDD HHMMSS", R, ""})},
      {"k.txt", [](FileIO& f, const std::string& n) { return f.OpenCalFactorFile(n, false); },
       false, true,
       Lines({R, "#", "#              Cal-Factor Table File ", "#", "#  File: k.txt", C,
              "#  SN: 77", "#GHz   dB    ", R, ""})},
      {"v.csv", [](FileIO& f, const std::string& n) { return f.OpenCSVFile(n, false); }, false,
       true, ""},
      {"x.txt", [](FileIO& f, const std::string& n) { return f.OpenGenericFile(n, false); }, false,
       true, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    FileIO f;
    f.Now = [] { return std::string("NOW"); };
    f.FWPartNumber = "FW-1";
    f.ModelCfgPartNumber = "MC-9";
    f.UnitSerialNumber = "77";
    f.CurrentRFBand = "Ku";
    f.UseParamLog = c.useParamLog;
    f.TWTAUnit = c.twta;
    ASSERT_TRUE(c.open(f, Path(c.name)));
    f.AddToFile("body \xB5");
    f.CloseFile();
    EXPECT_EQ(Slurp(Path(c.name)), c.header + "body \xB5\r\n");
  }
  // Projects 38 and 60 have the battery column; 52 does not.
  FileIO f;
  f.UseParamLog = true;
  for (int16_t p : {38, 60, 52}) {
    f.ProjectID = p;
    EXPECT_EQ(f.ColumnsLine(FileKind::DLog).find(" Bt ") != std::string::npos, p != 52) << p;
  }
}

TEST_F(FileIOTest, ReadsCrLfAndLfLinesAndEndsOnEveryFault) {
  Put(Path("in.txt"), std::string("#c\r\nA1\n\r\n K\0x\r\nlast", 19));
  FileIO f;
  ASSERT_TRUE(f.OpenCmdFile(Path("in.txt"), true));
  std::vector<std::string> got;
  for (int i = 0; i < 10 && !f.AtEndOfFile(); ++i) got.push_back(f.ReadNextLine());
  EXPECT_EQ(got, (std::vector<std::string>{"#c", "A1", "", std::string(" K\0x", 4), "last"}));
  f.CloseFile();
  EXPECT_TRUE(f.AtEndOfFile());
  EXPECT_EQ(f.ReadNextLine(), "");

  Put(Path("long.txt"), "A\r\n" + std::string(FileIO::kMaxLineBytes + 10, 'x'));
  ASSERT_TRUE(f.OpenCmdFile(Path("long.txt"), true));
  EXPECT_EQ(f.ReadNextLine(), "A");
  EXPECT_EQ(f.ReadNextLine(), "");
  EXPECT_TRUE(f.AtEndOfFile());
  EXPECT_NE(f.LastError(), "");

  EXPECT_FALSE(f.OpenCmdFile("", true));
  EXPECT_FALSE(f.OpenCmdFile("", false));
  EXPECT_FALSE(f.OpenCmdFile(Path("missing.txt"), true));
  EXPECT_FALSE(f.OpenCmdFile(Path("nodir/x.txt"), false));
}

TEST_F(FileIOTest, AnUnfinishedSaveLeavesTheOlderFileAlone) {
  Put(Path("cfg.txt"), "old\r\n");
  {
    FileIO f;
    ASSERT_TRUE(f.OpenCmdFile(Path("cfg.txt"), false));
    f.AddToFile("new");
    EXPECT_EQ(Slurp(Path("cfg.txt")), "old\r\n");
    fs::remove_all(dir_);  // the folder vanishes before the close
  }
  EXPECT_FALSE(fs::exists(Path("cfg.txt")));
  fs::create_directories(dir_);
  FileIO f;
  ASSERT_TRUE(f.OpenGenericFile(Path("cfg.txt"), false));
  f.AddToFile("new");
  f.CloseFile();
  EXPECT_EQ(Slurp(Path("cfg.txt")), "new\r\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1);
}

TEST_F(FileIOTest, NamesAndFolders) {
  EXPECT_EQ(ParamLogKind("/a/b\\plog.txt"), FileKind::PLog);
  EXPECT_EQ(ParamLogKind("mlog.txt"), FileKind::MLog);
  EXPECT_EQ(ParamLogKind("dir/dlog.txt"), FileKind::DLog);
  EXPECT_EQ(ParamLogKind("HLOG.txt"), FileKind::Generic);
  EXPECT_EQ(UnitFolderName("715-2243-004", "77"), "2243-004_77");
  EXPECT_EQ(UnitFolderName("15-2243-004", "77"), "15-2243-004_77");
  EXPECT_EQ(UnitFolderName("715-2243-004", ""), "");
  EXPECT_EQ(SaveNameTemplate(3), "TLTAtnCal");
  EXPECT_EQ(SaveNameTemplate(5), "");

  std::string stem = Path("1234Cfg");
  EXPECT_EQ(UniqueTxtName(stem), stem + ".txt");
  Put(stem + ".txt", "");
  Put(stem + "1.txt", "");
  EXPECT_EQ(UniqueTxtName(stem), stem + "2.txt");
}

}  // namespace
}  // namespace amp
