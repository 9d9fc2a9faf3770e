// The ampsim program as a host's test rig runs it: a child process, its
// ready line, frames over TCP and the pseudo-terminal, and signals.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "host_side.h"

using namespace simtest;

namespace {

constexpr int kWaitMs = 3000;

struct Child {
  pid_t pid = -1;
  Fd out;
  Fd err;
};

Child Spawn(const std::vector<std::string>& args) {
  int outPipe[2], errPipe[2];
  Child child;
  if (pipe2(outPipe, O_CLOEXEC) != 0) return child;
  if (pipe2(errPipe, O_CLOEXEC) != 0) {
    close(outPipe[0]);
    close(outPipe[1]);
    return child;
  }
  std::vector<char*> argv;
  std::string exe = AMPSIM_EXE;
  argv.push_back(exe.data());
  for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  pid_t pid = fork();
  if (pid == 0) {
    dup2(outPipe[1], 1);
    dup2(errPipe[1], 2);
    execv(exe.c_str(), argv.data());
    _exit(127);
  }
  close(outPipe[1]);
  close(errPipe[1]);
  child.pid = pid;
  child.out = Fd(outPipe[0]);
  child.err = Fd(errPipe[0]);
  return child;
}

// Exit code, or -1 when the child had to be killed after `timeoutMs`.
int WaitExit(pid_t pid, int timeoutMs) {
  auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
  int status = 0;
  while (Clock::now() < deadline) {
    pid_t r = waitpid(pid, &status, WNOHANG);
    if (r == pid) return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  kill(pid, SIGKILL);
  waitpid(pid, &status, 0);
  return -1;
}

struct Outcome {
  int code;
  std::string out;
  std::string err;
};

Outcome RunToEnd(const std::vector<std::string>& args) {
  Child c = Spawn(args);
  if (c.pid < 0) return {-2, "", ""};
  Outcome o;
  o.out = ReadFor(c.out.get(), kWaitMs);  // ends early when the child closes it
  o.err = ReadFor(c.err.get(), 200);
  o.code = WaitExit(c.pid, kWaitMs);
  return o;
}

// The ready line, both links and the plug pulled by SIGUSR1 are what the
// end-to-end tests run ampsim by; here the clean stop on SIGTERM.
TEST(AmpsimProgram, StopsCleanlyOnSigterm) {
  Child c = Spawn({"--tcp", "127.0.0.1:0", "--serial"});
  ASSERT_GT(c.pid, 0);
  std::smatch m;
  std::string ready = ReadUntil(c.out.get(), "\n", kWaitMs);
  ASSERT_TRUE(std::regex_search(ready, m, std::regex(R"(tcp=127\.0\.0\.1:(\d+) serial=/dev/)")))
      << ready;
  Fd conn = ConnectTcp(std::stoi(m[1]));
  ASSERT_TRUE(conn.valid());
  ASSERT_EQ(kill(c.pid, SIGTERM), 0);
  EXPECT_EQ(WaitExit(c.pid, kWaitMs), 0);
  EXPECT_TRUE(PeerClosed(conn.get(), kWaitMs));
}

TEST(AmpsimProgram, RejectsBadCommandLinesWithUsage) {
  const std::vector<std::vector<std::string>> bad = {
      {"--bogus"},
      {"--drop-every", "x"},
      {"--delay", "-5"},
      {"--tcp", "127.0.0.1"},
      {"--tcp", "127.0.0.1:70000"},
      {"--status", "P@@@"},
      {"--status", "P@@@,@@@@,@@?@"},
      {"--line", "9600,N,8"},
      {"--unit-id", "0x4000"},
      {"--address", "AB"},
      {"--address"},
      {"--babble=yes"},
      {"--prefix", "\\q"},
      {"--no-tcp"},
      {"stray"},
  };
  for (const auto& args : bad) {
    Outcome o = RunToEnd(args);
    std::string shown = args[0] + (args.size() > 1 ? " " + args[1] : "");
    EXPECT_EQ(o.code, 2) << shown;
    EXPECT_TRUE(o.err.starts_with("ampsim: ")) << shown << ": " << o.err;
    EXPECT_NE(o.err.find("Usage: ampsim"), std::string::npos) << shown;
    EXPECT_EQ(o.out, "") << shown;
  }

  Outcome missing = RunToEnd({"--tcp", "127.0.0.1:0", "--profile", "/nonexistent/unit.profile"});
  EXPECT_EQ(missing.code, 2);
  EXPECT_NE(missing.err.find("/nonexistent/unit.profile"), std::string::npos);

  Outcome help = RunToEnd({"--help"});
  EXPECT_EQ(help.code, 0);
  // The usage names the options, the fault switches among them.
  for (const char* option : {"  --profile ", "  --drop-every ", "  --silent-after ", "  --local "})
    EXPECT_NE(help.out.find(option), std::string::npos) << option;
}

// Named profiles, the default unit and --local are run by the end-to-end
// tests through ampdesk-cli.
TEST(AmpsimProgram, ListsProfilesAndRejectsUnknownNames) {
  Outcome list = RunToEnd({"--list-profiles"});
  EXPECT_EQ(list.code, 0);
  for (const char* name :
       {"twta127\n", "dualtwt108\n", "sspa102\n", "fbdc2295\n", "bucsspa\n", "oldunit\n"})
    EXPECT_NE(list.out.find(name), std::string::npos) << name;

  Outcome unknown = RunToEnd({"--tcp", "127.0.0.1:0", "--profile", "no-such-unit"});
  EXPECT_EQ(unknown.code, 2);
  EXPECT_NE(unknown.err.find("no profile named 'no-such-unit'"), std::string::npos) << unknown.err;
  EXPECT_NE(unknown.err.find("twta127"), std::string::npos) << "the known names are listed";
}

}  // namespace
