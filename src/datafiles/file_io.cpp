#include "datafiles/file_io.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace amp {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kCrLf = "\r\n";

std::string LocalNow() {
  std::time_t t = std::time(nullptr);
  std::tm tm{};
  localtime_r(&t, &tm);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &tm);
  return text;
}

bool IsFile(const std::string& name) {
  std::error_code ec;
  return fs::is_regular_file(fs::path(name), ec);
}

// The log name in a parameter log's title line.
std::string ParamLogTitle(FileKind kind) {
  switch (kind) {
    case FileKind::PLog:
      return "10-Minute";
    case FileKind::HLog:
      return "Hourly";
    case FileKind::DLog:
      return "Daily";
    case FileKind::MLog:
      return "Monthly";
    case FileKind::CmLog:
      return "Cathode Current";
    default:
      return "";
  }
}

}  // namespace

std::string SaveNameTemplate(int kind) {
  switch (static_cast<SaveNameKind>(kind)) {
    case SaveNameKind::AtnCal:
      return "AtnCal";
    case SaveNameKind::PwrCal:
      return "PwrCal";
    case SaveNameKind::TltAtnCal:
      return "TLTAtnCal";
    case SaveNameKind::RPwrCal:
      return "RPwrCal";
    case SaveNameKind::CfgErr:
      return "CfgErr";
    case SaveNameKind::IPwrCal:
      return "IPwrCal";
  }
  return "";
}

std::string BaseFileName(std::string_view name) {
  size_t cut = name.find_last_of("/\\");
  return std::string(cut == std::string_view::npos ? name : name.substr(cut + 1));
}

FileKind ParamLogKind(std::string_view name) {
  std::string base = BaseFileName(name);
  if (base == "plog.txt") return FileKind::PLog;
  if (base == "hlog.txt") return FileKind::HLog;
  if (base == "dlog.txt") return FileKind::DLog;
  if (base == "mlog.txt") return FileKind::MLog;
  if (base == "cmlog.txt") return FileKind::CmLog;
  return FileKind::Generic;
}

std::string UnitFolderName(std::string_view partNumber, std::string_view serialNumber) {
  if (partNumber.empty() || serialNumber.empty()) return "";
  if (partNumber.size() == 12) partNumber.remove_prefix(4);
  return std::string(partNumber) + "_" + std::string(serialNumber);
}

std::string UniqueTxtName(std::string_view path) {
  std::string name = std::string(path) + ".txt";
  std::error_code ec;
  // Bounded: a folder never holds this many, and a name is always returned.
  for (int n = 1; n < 1000000 && fs::exists(fs::path(name), ec); ++n) {
    name = std::string(path) + std::to_string(n) + ".txt";
  }
  return name;
}

FileIO::FileIO() : Now(LocalNow) {}

FileIO::~FileIO() { CloseFile(); }

bool FileIO::OpenAtnCalFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::AtnCal, forRead, false);
}
bool FileIO::OpenCmdFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::Cmd, forRead, false);
}
bool FileIO::OpenDumpFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::Dump, forRead, false);
}
bool FileIO::OpenFltLogFile(const std::string& name, bool forRead, bool noColumns) {
  return OpenFile(name, FileKind::FltLog, forRead, noColumns);
}
bool FileIO::OpenParamLogFile(const std::string& name, bool forRead) {
  return OpenFile(name, ParamLogKind(name), forRead, false);
}
bool FileIO::OpenRfCalFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::RfCal, forRead, false);
}
bool FileIO::OpenIRfCalFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::IRfCal, forRead, false);
}
bool FileIO::OpenCSVFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::Csv, forRead, false);
}
bool FileIO::OpenCfgErrFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::CfgErr, forRead, false);
}
bool FileIO::OpenGenericFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::Generic, forRead, false);
}
bool FileIO::OpenCalFactorFile(const std::string& name, bool forRead) {
  return OpenFile(name, FileKind::CalFactor, forRead, false);
}
bool FileIO::OpenTrendLogFile(const std::string& name, bool forRead) {
  return OpenFile(name, TWTAUnit ? FileKind::TrendTwta : FileKind::TrendOther, forRead, false);
}

bool FileIO::OpenFile(const std::string& name, FileKind kind, bool forRead, bool noColumns) {
  if (name.empty()) return false;
  CloseFile();
  error_.clear();
  failed_ = false;
  buf_.clear();
  pos_ = 0;
  if (forRead) {
    if (!IsFile(name)) return false;
    stream_ = std::fopen(name.c_str(), "rb");
    reading_ = true;
    return stream_ != nullptr;
  }
  // The temporary file sits beside the final one so that the rename stays
  // within one file system.
  std::string base = BaseFileName(name);
  std::string dir = name.substr(0, name.size() - base.size());
  tempName_ = dir + "." + base + ".part";
  stream_ = std::fopen(tempName_.c_str(), "wb");
  if (stream_ == nullptr) {
    error_ = std::strerror(errno);
    tempName_.clear();
    return false;
  }
  reading_ = false;
  finalName_ = name;
  WriteHeader(base, kind, noColumns);
  return true;
}

void FileIO::WriteHeader(const std::string& base, FileKind kind, bool noColumns) {
  auto framed = [&](std::string_view title, std::initializer_list<std::string> extra) {
    AddToFile(kRule);
    AddToFile("#");
    AddToFile(title);
    AddToFile("#");
    AddToFile("#  File: " + base);
    AddToFile("#  Created: " + Now());
    for (const std::string& line : extra) AddToFile(line);
  };
  auto close = [&] {
    AddToFile(kRule);
    AddToFile("");
  };
  switch (kind) {
    case FileKind::AtnCal:
    case FileKind::TltAtnCal:
      framed("#                  Attenuator Cal File", {"#"});
      break;
    case FileKind::RfCal:
      framed("#                  RF Power Cal File (" + CurrentRFBand + ")", {"#"});
      break;
    case FileKind::IRfCal:
      framed("#      Input RF Drive Power Cal File (" + CurrentRFBand + ")", {"#"});
      break;
    case FileKind::CfgErr:
      framed("#                  Configuration Error File",
             {"#  ModelCfg: " + ModelCfgPartNumber, "#"});
      break;
    case FileKind::Dump:
      framed("#              Non-Volitile Memory Dump ", {"#"});
      break;
    case FileKind::Cmd:
      AddToFile(kRule);
      AddToFile("#               Amplifier Configuration File");
      AddToFile("#");
      AddToFile("#  Command File: " + base);
      AddToFile("#  Created: " + Now());
      AddToFile("#  Firmware: " + FWPartNumber);
      AddToFile("#  ModelCfg: " + ModelCfgPartNumber);
      AddToFile("#");
      break;
    case FileKind::FltLog:
      framed("#              Fault Log File ", {"#  SN: " + UnitSerialNumber});
      if (!noColumns) AddToFile(ColumnsLine(kind));
      break;
    case FileKind::PLog:
    case FileKind::HLog:
    case FileKind::DLog:
    case FileKind::MLog:
    case FileKind::CmLog:
      framed("#      " + ParamLogTitle(kind) + " Parameter Log File ",
             {"#  SN: " + UnitSerialNumber, ColumnsLine(kind)});
      break;
    case FileKind::TrendTwta:
    case FileKind::TrendOther:
      framed("#       Trend Log File ", {"#  SN: " + UnitSerialNumber, ColumnsLine(kind)});
      break;
    case FileKind::CalFactor:
      framed("#              Cal-Factor Table File ",
             {"#  SN: " + UnitSerialNumber, "#GHz   dB    "});
      break;
    case FileKind::Csv:
    case FileKind::Generic:
      return;
  }
  close();
}

std::string FileIO::ColumnsLine(FileKind kind) const {
  const std::string head = "#  Columns: " + std::string(kCrLf);
  bool trend = kind == FileKind::TrendTwta || kind == FileKind::TrendOther;
  if (UseParamLog) {
    if (kind == FileKind::CmLog) return head + "# Ic Va BmHrs HtHrs YYMMDDHHMM";
    if (!TWTAUnit) return head + "# Event  Fpr  Rpr  Atn  Tmp I YYMMDD HHMMSS";
    // Project 52 is deliberately not here, although the CSV export groups it
    // with 38 and 60.
    if (ProjectID == 38 || ProjectID == 60) {
      return head + "# Event  Fpr  Rpr  Atn  HlV   HlI  HtV Tmp  Bt YYMMDD HHMMSS";
    }
    return head + "# Event  Fpr  Rpr  Atn  HlV   HlI  HtV Tmp I YYMMDD HHMMSS";
  }
  if (trend) {
    return head +
           "#    Date    Time     Sum/Flt/Alm   Fpr        Tmp       HxI       HxV       HtV    "
           "   Atn       UPC       CaI       AnV ";
  }
  return "#";
}

bool FileIO::Fill() {
  if (stream_ == nullptr || !reading_ || failed_) return false;
  if (pos_ > 0) {
    buf_.erase(0, pos_);
    pos_ = 0;
  }
  char chunk[65536];
  size_t got = std::fread(chunk, 1, sizeof chunk, stream_);
  if (got == 0) {
    if (std::ferror(stream_)) {
      error_ = std::strerror(errno);
      failed_ = true;
    }
    return false;
  }
  buf_.append(chunk, got);
  return true;
}

std::string FileIO::ReadNextLine() {
  if (stream_ == nullptr || !reading_ || failed_) return "";
  size_t end;
  // Bounded by kMaxLineBytes: each pass either finds a line end, grows the
  // buffer by a chunk, or stops.
  while ((end = buf_.find('\n', pos_)) == std::string::npos) {
    if (buf_.size() - pos_ > kMaxLineBytes) {
      error_ = "a line longer than " + std::to_string(kMaxLineBytes) + " bytes";
      failed_ = true;
      return "";
    }
    if (!Fill()) break;
  }
  if (failed_) return "";
  std::string line;
  if (end == std::string::npos) {
    line = buf_.substr(pos_);
    pos_ = buf_.size();
  } else {
    line = buf_.substr(pos_, end - pos_);
    pos_ = end + 1;
  }
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

bool FileIO::AtEndOfFile() {
  if (stream_ == nullptr || !reading_ || failed_) return true;
  if (pos_ < buf_.size()) return false;
  return !Fill();
}

void FileIO::AddToFile(std::string_view text) {
  if (stream_ == nullptr || reading_ || failed_) return;
  if (std::fwrite(text.data(), 1, text.size(), stream_) != text.size() ||
      std::fwrite(kCrLf.data(), 1, kCrLf.size(), stream_) != kCrLf.size()) {
    error_ = std::strerror(errno);
    failed_ = true;
  }
}

void FileIO::CloseFile() {
  if (stream_ == nullptr) return;
  std::FILE* stream = stream_;
  stream_ = nullptr;
  buf_.clear();
  pos_ = 0;
  if (reading_) {
    std::fclose(stream);
    return;
  }
  bool ok = !failed_ && std::fflush(stream) == 0 && ::fsync(fileno(stream)) == 0;
  if (!ok && error_.empty()) error_ = std::strerror(errno);
  if (std::fclose(stream) != 0 && ok) {
    ok = false;
    error_ = std::strerror(errno);
  }
  std::error_code ec;
  if (ok) {
    fs::rename(tempName_, finalName_, ec);
    if (ec) {
      ok = false;
      error_ = ec.message();
    }
  }
  if (!ok) fs::remove(tempName_, ec);
  failed_ = !ok;
  tempName_.clear();
  finalName_.clear();
}

void FileIO::DeleteFile(const std::string& name) {
  std::error_code ec;
  if (IsFile(name)) fs::remove(name, ec);
}

}  // namespace amp
