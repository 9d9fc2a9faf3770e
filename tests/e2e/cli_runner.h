// Running ampsim and ampdesk-cli as separate programs from a test: the
// command line with its own data directory, the simulated unit with its
// process handle, and readers for what both leave behind.
#pragma once

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "qt/sim_process.h"
#include "sim/profile.h"

namespace amp::e2e {

namespace fs = std::filesystem;

struct CliRun {
  int code = -1;
  std::string out, err;
};

// The command line with COM1..COM10 unbound, so the one device it is given
// becomes COM1 whatever serial ports the machine has.
inline QProcessEnvironment CliEnvironment() {
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  for (int n = 1; n <= 10; ++n) env.insert(QString("AMPDESK_COM%1").arg(n), "");
  // A unit search from a test stays on this machine whatever the test forgets.
  env.insert("AMPDESK_UDP_TARGET", "127.0.0.1");
  return env;
}

inline std::string DataDir() { return ::testing::TempDir() + "/ampdesk-cli-data"; }

// Runs a program to its end with `input` on its standard input.
inline CliRun RunProgram(const char* exe, const QStringList& args, int timeoutMs = 60000,
                         const std::string& input = {}) {
  QProcess p;
  p.setProcessEnvironment(CliEnvironment());
  p.start(exe, args);
  CliRun r;
  if (!p.waitForStarted(10000)) return r;
  if (!input.empty()) p.write(input.data(), static_cast<qint64>(input.size()));
  p.closeWriteChannel();
  if (!p.waitForFinished(timeoutMs)) {
    p.kill();
    p.waitForFinished(2000);
    r.err = "timed out";
    return r;
  }
  r.code = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
  r.out = p.readAllStandardOutput().toStdString();
  r.err = p.readAllStandardError().toStdString();
  return r;
}

inline QStringList Args(const std::vector<std::string>& args) {
  QStringList q;
  for (const auto& a : args) q << QString::fromStdString(a);
  return q;
}

inline CliRun Cli(const std::vector<std::string>& args, int timeoutMs = 60000,
                  const std::string& input = {}) {
  return RunProgram(AMPDESK_CLI_EXE,
                    QStringList{"--data-dir", QString::fromStdString(DataDir())} + Args(args),
                    timeoutMs, input);
}

inline std::vector<std::string> Lines(const std::string& s) {
  std::vector<std::string> out;
  size_t b = 0;
  for (size_t e; (e = s.find('\n', b)) != std::string::npos; b = e + 1)
    out.push_back(s.substr(b, e - b));
  return out;
}

inline QJsonObject Json(const std::string& line) {
  QJsonParseError e;
  const auto doc = QJsonDocument::fromJson(QByteArray::fromStdString(line), &e);
  EXPECT_EQ(e.error, QJsonParseError::NoError) << line.substr(0, 300);
  return doc.object();
}

inline QJsonObject Control(const QJsonObject& state, const char* name, const char* where = "form") {
  return state[where].toObject()["controls"].toObject()[name].toObject();
}

inline std::string Str(const QJsonObject& o, const char* key) {
  return o[key].toString().toStdString();
}

// A unit run with its own process handle, so a test can signal it.
struct Unit {
  explicit Unit(std::vector<std::string> args) {
    proc.start(AMPSIM_EXE, Args(args));
    QElapsedTimer t;
    t.start();
    std::string line;
    while (t.elapsed() < 10000 && line.find('\n') == std::string::npos) {
      proc.waitForReadyRead(200);
      line += proc.readAllStandardOutput().toStdString();
    }
    ready = line.substr(0, line.find('\n'));
    ok = SimProcess::ParseReadyLine(ready, &host, &port, &serial);
    EXPECT_TRUE(ok) << line;
  }
  ~Unit() {
    proc.terminate();
    if (!proc.waitForFinished(3000)) proc.kill();
    proc.waitForFinished(2000);
  }
  std::string Tcp() const { return host + ":" + std::to_string(port); }
  void Signal(int sig) { ::kill(static_cast<pid_t>(proc.processId()), sig); }

  QProcess proc;
  std::string ready;  // the ready line as printed
  std::string host, serial;
  int port = 0;
  bool ok = false;
};

inline std::string FreshFile(const std::string& name) {
  const std::string path = ::testing::TempDir() + "/" + name;
  fs::remove(path);
  return path;
}

inline std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream all;
  all << in.rdbuf();
  return all.str();
}

// The values of a unit profile, as the simulator reads them.
inline std::map<std::string, std::string> ProfileValues(const std::string& name) {
  sim::UnitState unit;
  std::string error;
  EXPECT_TRUE(sim::LoadProfile(sim::ResolveProfile(name), unit, &error)) << name << ": " << error;
  return {unit.values.begin(), unit.values.end()};
}

// The text of each frame the unit received, address character first.
inline std::vector<std::string> FramesIn(const std::string& log) {
  std::vector<std::string> frames;
  for (const std::string& line : Lines(ReadAll(log))) {
    const auto b = line.find("<STX>"), e = line.rfind("<ETX>");
    if (b == std::string::npos || e == std::string::npos || e < b + 5) {
      ADD_FAILURE() << "unreadable frame log line: " << line;
      continue;
    }
    frames.push_back(line.substr(b + 5, e - b - 5));
  }
  return frames;
}

// Commands that only read: every query has a '?', except these few and the
// log reads.
inline bool IsRead(const std::string& command) {
  static const std::set<std::string> kPlainReads = {"1", "00", "0S", "0C", "YT", "8", "QEC"};
  return command.find('?') != std::string::npos || kPlainReads.count(command) > 0 ||
         command.empty() || command[0] == '4' || command.rfind("QF", 0) == 0;
}

// The commands that change something on the unit, in the order received,
// without the address.
inline std::vector<std::string> SetsIn(const std::string& log) {
  std::vector<std::string> sets;
  for (const std::string& f : FramesIn(log))
    if (!IsRead(f.substr(1))) sets.push_back(f.substr(1));
  return sets;
}

using Sets = std::vector<std::string>;

enum class Line { kTcp, kSerial };

// A simulated unit with its own frame log, on loopback TCP or on a
// pseudo-terminal, and the panel sessions run against it.
struct Bench {
  Bench(const std::string& name, std::vector<std::string> simArgs, Line line = Line::kTcp)
      : line(line),
        log(FreshFile("operator-" + name + ".frames")),
        unit(UnitArgs(line, log, std::move(simArgs))) {}

  static std::vector<std::string> UnitArgs(Line line, const std::string& log,
                                           std::vector<std::string> args) {
    if (line == Line::kTcp)
      args.insert(args.begin(), {"--tcp", "127.0.0.1:0", "--frame-log", log});
    else
      args.insert(args.begin(), {"--no-tcp", "--serial", "--frame-log", log});
    return args;
  }

  struct Run {
    int code = -1;
    std::string err;
    std::vector<QJsonObject> states;  // each dump, then the state at the end
  };

  Run Script(const std::string& script, std::vector<std::string> options = {}) {
    // On the serial line the unit's own settings and address, so no search runs.
    std::vector<std::string> args =
        line == Line::kTcp
            ? std::vector<std::string>{"--tcp", unit.Tcp(), "--json"}
            : std::vector<std::string>{"--serial",  unit.serial, "--settings", "9600,N,8,1",
                                       "--address", "A",         "--json"};
    args.insert(args.end(), options.begin(), options.end());
    args.insert(args.end(), {"script", "-"});
    const CliRun r = Cli(args, 60000, script);
    Run run{r.code, r.err, {}};
    for (const std::string& line : Lines(r.out)) run.states.push_back(Json(line));
    return run;
  }

  Sets SetsSent() const { return SetsIn(log); }

  Line line;
  std::string log;
  Unit unit;
};

// The message boxes of a state as "title: text".
inline std::vector<std::string> Boxes(const QJsonObject& state) {
  std::vector<std::string> boxes;
  for (const auto& m : state["messages"].toArray())
    boxes.push_back(Str(m.toObject(), "title") + ": " + Str(m.toObject(), "text"));
  return boxes;
}

}  // namespace amp::e2e
