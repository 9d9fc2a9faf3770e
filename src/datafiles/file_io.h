// FileIO: every text file the program writes or reads goes through one of
// these, created for one operation and dropped at its end. It opens a file by
// kind, writes the kind's comment header on creation, and reads and writes
// whole lines.
//
// On disk the files are what the units' own tools exchange: one record a line,
// lines ended by CR LF on every host, text as raw 8-bit bytes (never
// re-encoded). Reading accepts CR LF and LF-only line ends.
//
// A file opened for writing is built under a temporary name in the same
// folder and renamed over the final name by CloseFile, so a save that fails
// halfway (full disk, folder gone read-only) never leaves a half-written file
// under the name the operator chose, and an older file of that name survives.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace amp {

// The kinds that drive the header writer. The numbers are the file format's
// own and are kept as they are; 3 and 6 have no file.
enum class FileKind : int {
  AtnCal = 0,
  RfCal = 1,
  TltAtnCal = 2,  // no opener: shares the attenuator header
  IRfCal = 4,
  FltLog = 5,
  Cmd = 7,
  Dump = 8,
  PLog = 9,  // 10-minute parameter log
  HLog = 10,
  DLog = 11,
  MLog = 12,
  CmLog = 13,
  TrendTwta = 14,
  TrendOther = 15,
  Csv = 16,
  CfgErr = 17,
  CalFactor = 18,
  Generic = 19,
};

// The other numbering: which name template the save dialog proposes behind
// the serial number. It shares no meaning with FileKind.
enum class SaveNameKind : int {
  AtnCal = 1,
  PwrCal = 2,
  TltAtnCal = 3,
  RPwrCal = 4,
  CfgErr = 6,
  IPwrCal = 7,
};

// "AtnCal", "PwrCal", ...; empty for a number without a template.
std::string SaveNameTemplate(int kind);

// Text after the last "/" or "\"; the whole name when there is neither.
std::string BaseFileName(std::string_view name);
// The parameter log kind of a file name, from its base name, exact and
// case-sensitive; Generic for any other name.
FileKind ParamLogKind(std::string_view name);
// "<pn>_<sn>", dropping the first four characters of a 12-character part
// number; empty when either is empty.
std::string UnitFolderName(std::string_view partNumber, std::string_view serialNumber);
// `path` + ".txt" when no such file exists, else the first free
// `path` + N + ".txt" from N = 1.
std::string UniqueTxtName(std::string_view path);

class FileIO {
 public:
  static constexpr std::string_view kRule =
      "############################################################";
  // A longer line is not text anyone wrote by hand: reading stops there.
  static constexpr size_t kMaxLineBytes = 1 << 20;

  FileIO();
  ~FileIO();
  FileIO(const FileIO&) = delete;
  FileIO& operator=(const FileIO&) = delete;

  // Header properties, copied in by the caller before opening for writing.
  int16_t ProjectID = 0;
  std::string ModelCfgPartNumber;
  std::string FWPartNumber;
  std::string UnitSerialNumber;
  bool TWTAUnit = true;
  bool KPAUnit = false;
  bool UseParamLog = false;
  std::string CurrentRFBand;

  // The text of the header's creation time; replaceable for tests.
  std::function<std::string()> Now;

  bool OpenAtnCalFile(const std::string& name, bool forRead);
  bool OpenCmdFile(const std::string& name, bool forRead);
  bool OpenDumpFile(const std::string& name, bool forRead);
  bool OpenFltLogFile(const std::string& name, bool forRead, bool noColumns);
  bool OpenParamLogFile(const std::string& name, bool forRead);
  bool OpenRfCalFile(const std::string& name, bool forRead);
  bool OpenIRfCalFile(const std::string& name, bool forRead);
  bool OpenCSVFile(const std::string& name, bool forRead);
  bool OpenCfgErrFile(const std::string& name, bool forRead);
  bool OpenGenericFile(const std::string& name, bool forRead);
  bool OpenCalFactorFile(const std::string& name, bool forRead);
  bool OpenTrendLogFile(const std::string& name, bool forRead);

  // These do nothing without an open stream. ReadNextLine returns "" then.
  std::string ReadNextLine();
  // Ends the stream. A file written without fault takes its final name now;
  // after a fault its temporary file is removed and the final name untouched.
  void CloseFile();
  void DeleteFile(const std::string& name);
  void AddToFile(std::string_view text);
  // True at the end of the stream, after a read fault, and with no stream at
  // all: a reading loop always ends.
  bool AtEndOfFile();

  // The columns line of a log header; may hold a CR LF.
  std::string ColumnsLine(FileKind kind) const;

  // Why the last stream stopped early ("" when it did not): a read or write
  // fault, or a line longer than kMaxLineBytes. The class shows no messages;
  // callers that tell the operator read it here.
  const std::string& LastError() const { return error_; }

 private:
  bool OpenFile(const std::string& name, FileKind kind, bool forRead, bool noColumns);
  void WriteHeader(const std::string& base, FileKind kind, bool noColumns);
  bool Fill();

  std::FILE* stream_ = nullptr;
  bool reading_ = false;
  bool failed_ = false;
  std::string finalName_;
  std::string tempName_;
  std::string buf_;
  size_t pos_ = 0;
  std::string error_;
};

}  // namespace amp
