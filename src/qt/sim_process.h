// Runs the simulated amplifier (ampsim) as a child process on loopback, for
// the demo mode of both programs and for end-to-end tests.
#pragma once

#include <memory>
#include <string>
#include <vector>

class QProcess;

namespace amp {

class SimProcess {
 public:
  SimProcess();
  ~SimProcess();  // stops the child
  SimProcess(const SimProcess&) = delete;
  SimProcess& operator=(const SimProcess&) = delete;

  // Starts `program` with `args` and waits for its ready line. False with a
  // reason in `error` when it cannot start or does not get ready in time.
  bool Start(const std::string& program, const std::vector<std::string>& args, std::string* error,
             int timeoutMs = 10000);
  void Stop();

  int TcpPort() const { return tcpPort_; }
  const std::string& TcpHost() const { return tcpHost_; }
  const std::string& SerialPath() const { return serialPath_; }

  // ampsim next to `programDir`, or the AMPSIM environment variable when set.
  static std::string Locate(const std::string& programDir);
  // Reads "ampsim ready tcp=HOST:PORT serial=PATH" into its parts.
  static bool ParseReadyLine(const std::string& line, std::string* host, int* port,
                             std::string* serial);

 private:
  std::unique_ptr<QProcess> proc_;
  std::string tcpHost_;
  int tcpPort_ = 0;
  std::string serialPath_;
};

}  // namespace amp
