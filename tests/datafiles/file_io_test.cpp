#include "datafiles/file_io.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace amp {
namespace {

namespace fs = std::filesystem;

struct FileIOTest : ::testing::Test {
  fs::path dir =
      fs::temp_directory_path() /
      ("fileio_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
  FileIOTest() { fs::create_directories(dir); }
  ~FileIOTest() override { fs::remove_all(dir); }
  std::string Path(const std::string& name) const { return (dir / name).string(); }
  std::string Slurp(const std::string& name) const {
    std::stringstream s;
    s << std::ifstream(Path(name), std::ios::binary).rdbuf();
    return s.str();
  }
  void Put(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  }
};

// CR LF after each line.
std::string Lines(std::initializer_list<std::string> lines) {
  std::string out;
  for (const auto& l : lines) out += l + "\r\n";
  return out;
}

const std::string R(60, '#'), C = "#  Created: NOW";

// The framed shape most kinds share, with `title` and the lines after "Created".
std::string Framed(const std::string& title, const std::string& name,
                   std::initializer_list<std::string> more) {
  std::string out = Lines({R, "#", title, "#", "#  File: " + name, C});
  for (const auto& l : more) out += l + "\r\n";
  return out + Lines({R, ""});
}

TEST_F(FileIOTest, EveryKindWritesItsHeaderByteForByte) {
  using Open = bool (FileIO::*)(const std::string&, bool);
  struct Case {
    std::string name;
    Open open;  // null: the fault log without columns
    bool paramLog;
    std::string header;
  };
  const std::string cols = "#  Columns: ", sn = "#  SN: 77";
  // clang-format off
  const Case cases[] = {
      {"a.txt", &FileIO::OpenAtnCalFile, false, Framed("#                  Attenuator Cal File", "a.txt", {"#"})},
      {"r.txt", &FileIO::OpenRfCalFile, false, Framed("#                  RF Power Cal File (Ku)", "r.txt", {"#"})},
      {"i.txt", &FileIO::OpenIRfCalFile, false, Framed("#      Input RF Drive Power Cal File (Ku)", "i.txt", {"#"})},
      {"e.txt", &FileIO::OpenCfgErrFile, false, Framed("#                  Configuration Error File", "e.txt", {"#  ModelCfg: MC-9", "#"})},
      {"d.txt", &FileIO::OpenDumpFile, false, Framed("#              Non-Volitile Memory Dump ", "d.txt", {"#"})},
      {"c.txt", &FileIO::OpenCmdFile, false, Lines({R, "#               Amplifier Configuration File", "#", "#  Command File: c.txt", C, "#  Firmware: FW-1", "#  ModelCfg: MC-9", "#", R, ""})},
      {"f.txt", nullptr, false, Framed("#              Fault Log File ", "f.txt", {sn})},
      {"hlog.txt", &FileIO::OpenParamLogFile, true, Framed("#      Hourly Parameter Log File ", "hlog.txt", {sn, cols, "# Event  Fpr  Rpr  Atn  HlV   HlI  HtV Tmp I YYMMDD HHMMSS"})},
      {"cmlog.txt", &FileIO::OpenParamLogFile, true, Framed("#      Cathode Current Parameter Log File ", "cmlog.txt", {sn, cols, "# Ic Va BmHrs HtHrs YYMMDDHHMM"})},
      {"plog.txt", &FileIO::OpenParamLogFile, false, Framed("#      10-Minute Parameter Log File ", "plog.txt", {sn, "#"})},
      {"PLOG.txt", &FileIO::OpenParamLogFile, true, ""},
      {"t.txt", &FileIO::OpenTrendLogFile, false, Framed("#       Trend Log File ", "t.txt", {sn, cols, "#    Date    Time     Sum/Flt/Alm   Fpr        Tmp       HxI       HxV       HtV       Atn       UPC       CaI       AnV "})},
      {"u.txt", &FileIO::OpenTrendLogFile, true, Framed("#       Trend Log File ", "u.txt", {sn, cols, "# Event  Fpr  Rpr  Atn  HlV   HlI  HtV Tmp I YYMMDD HHMMSS"})},
      {"k.txt", &FileIO::OpenCalFactorFile, false, Framed("#              Cal-Factor Table File ", "k.txt", {sn, "#GHz   dB    "})},
      {"v.csv", &FileIO::OpenCSVFile, false, ""},
      {"x.txt", &FileIO::OpenGenericFile, false, ""},
  };
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    FileIO f;
    f.Now = [] { return std::string("NOW"); };
    f.FWPartNumber = "FW-1";
    f.ModelCfgPartNumber = "MC-9";
    f.UnitSerialNumber = "77";
    f.CurrentRFBand = "Ku";
    f.UseParamLog = c.paramLog;
    ASSERT_TRUE(c.open ? (f.*c.open)(Path(c.name), false)
                       : f.OpenFltLogFile(Path(c.name), false, true));
    f.AddToFile("body \xB5");
    f.CloseFile();
    EXPECT_EQ(Slurp(c.name), c.header + "body \xB5\r\n");
  }
  // Projects 38 and 60 have the battery column, 52 not; a solid-state unit has none.
  FileIO f;
  f.UseParamLog = true;
  for (int16_t p : {38, 60, 52}) {
    f.ProjectID = p;
    EXPECT_EQ(f.ColumnsLine(FileKind::DLog).find(" Bt ") != std::string::npos, p != 52) << p;
  }
  f.TWTAUnit = false;
  EXPECT_EQ(f.ColumnsLine(FileKind::FltLog),
            cols + "\r\n# Event  Fpr  Rpr  Atn  Tmp I YYMMDD HHMMSS");
}

TEST_F(FileIOTest, AnUnfinishedSaveLeavesTheOlderFileAlone) {
  Put("cfg.txt", "old\r\n");
  {
    FileIO f;
    ASSERT_TRUE(f.OpenGenericFile(Path("cfg.txt"), false));
    f.AddToFile("new");
    EXPECT_EQ(Slurp("cfg.txt"), "old\r\n");
    fs::remove_all(dir);  // the folder vanishes before the close
  }
  EXPECT_FALSE(fs::exists(dir));
}

TEST_F(FileIOTest, NamesAndFolders) {
  EXPECT_EQ(ParamLogKind("/a/b\\plog.txt"), FileKind::PLog);
  EXPECT_EQ(ParamLogKind("dir/mlog.txt"), FileKind::MLog);
  EXPECT_EQ(ParamLogKind("HLOG.txt"), FileKind::Generic);
  EXPECT_EQ(UnitFolderName("715-2243-004", "77"), "2243-004_77");
  EXPECT_EQ(UnitFolderName("15-2243-004", "77"), "15-2243-004_77");
  EXPECT_EQ(UnitFolderName("715-2243-004", ""), "");
  const std::string stem = Path("1234Cfg");
  EXPECT_EQ(UniqueTxtName(stem), stem + ".txt");
  Put("1234Cfg.txt", "");
  Put("1234Cfg1.txt", "");
  EXPECT_EQ(UniqueTxtName(stem), stem + "2.txt");
}

}  // namespace
}  // namespace amp
