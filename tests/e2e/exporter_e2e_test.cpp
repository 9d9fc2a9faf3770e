// The exporter in front of three simulated units, all separate programs on
// loopback, then the real Prometheus scraping it: what an operator who
// monitors a fleet relies on.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <regex>

#include "e2e/cli_runner.h"
#include "sim/commands.h"

namespace amp::e2e {
namespace {

// One HTTP GET on loopback; "" when nothing answered.
std::string HttpGet(int port, const std::string& path) {
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  timeval tv{5, 0};
  setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &tv, sizeof tv);
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_port = htons(static_cast<uint16_t>(port));
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  std::string out;
  if (connect(fd, reinterpret_cast<sockaddr*>(&a), sizeof a) == 0) {
    const std::string req = "GET " + path + " HTTP/1.0\r\nHost: 127.0.0.1\r\n\r\n";
    if (write(fd, req.data(), req.size()) == static_cast<ssize_t>(req.size())) {
      char buf[65536];
      for (ssize_t n; (n = read(fd, buf, sizeof buf)) > 0;) out.append(buf, static_cast<size_t>(n));
    }
  }
  close(fd);
  const auto body = out.find("\r\n\r\n");
  return body == std::string::npos ? "" : out.substr(body + 4);
}

int FreePort() {
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t len = sizeof a;
  bind(fd, reinterpret_cast<sockaddr*>(&a), sizeof a);
  getsockname(fd, reinterpret_cast<sockaddr*>(&a), &len);
  close(fd);
  return ntohs(a.sin_port);
}

// Asks `probe` every 250 ms for up to `ms`; true as soon as it holds.
bool Within(int ms, const std::function<bool()>& probe) {
  for (int waited = 0; waited <= ms; waited += 250) {
    if (probe()) return true;
    QThread::msleep(250);
  }
  return false;
}

// The value of the one series of `metric` whose labels hold `unit`, or -1.
double Sample(const std::string& metrics, const std::string& metric, const std::string& unit) {
  const std::regex line("^" + metric + "\\{[^}]*unit=\"" + unit + "\"[^}]*\\} ([-0-9.e+]+)$",
                        std::regex::multiline);
  std::smatch m;
  return std::regex_search(metrics, m, line) ? std::stod(m[1]) : -1;
}

struct Exporter {
  explicit Exporter(const std::string& fleetFile) {
    proc.start(AMPDESK_EXPORTER_EXE,
               {QString::fromStdString(fleetFile), "--listen", "127.0.0.1:0"});
    Within(10000, [this] {
      proc.waitForReadyRead(100);
      out += proc.readAllStandardOutput().toStdString();
      std::smatch m;
      if (std::regex_search(out, m, std::regex("event=listening address=127.0.0.1:(\\d+)")))
        port = std::stoi(m[1]);
      return port > 0;
    });
  }
  ~Exporter() {
    proc.terminate();
    if (!proc.waitForFinished(5000)) proc.kill();
    proc.waitForFinished(2000);
  }
  std::string Log() {
    proc.waitForReadyRead(50);
    return out += proc.readAllStandardOutput().toStdString();
  }
  QProcess proc;
  std::string out;
  int port = 0;
};

TEST(ExporterE2E, WatchesThreeUnitsReadOnlyAndPrometheusScrapesIt) {
  QTemporaryDir dir;
  const std::string fleet = dir.filePath("fleet.toml").toStdString();
  const std::string frames = dir.filePath("frames.log").toStdString();
  Unit sims({"--units", "3", "--tcp", "127.0.0.1:0", "--profile", "sspa120,twta127,sspa102",
             "--fleet-file", fleet, "--frame-log", frames});
  ASSERT_TRUE(sims.ok);
  Exporter exporter(fleet);
  ASSERT_GT(exporter.port, 0) << exporter.out;
  std::string metrics;
  auto scrape = [&] { return metrics = HttpGet(exporter.port, "/metrics"); };
  ASSERT_TRUE(Within(20000, [&] {
    scrape();
    for (const char* u : {"sim001", "sim002", "sim003"})
      if (Sample(metrics, "ampdesk_forward_power_dbm", u) < 0) return false;
    return true;
  })) << metrics;
  EXPECT_EQ(Sample(metrics, "ampdesk_unit_up", "sim002"), 1);
  EXPECT_GT(Sample(metrics, "ampdesk_helix_voltage_volts", "sim002"), 0);  // the tube unit
  const CliRun check = RunProgram("promtool", {"check", "metrics"}, 20000, metrics);
  EXPECT_EQ(check.code, 0) << check.out << check.err;
  EXPECT_EQ(HttpGet(exporter.port, "/healthz"), "ok\n");
  const QJsonObject units = Json(HttpGet(exporter.port, "/units"));
  ASSERT_EQ(units["units"].toArray().size(), 3);
  EXPECT_TRUE(units["units"].toArray()[1].toObject()["state"].toObject()["connected"].toBool());

  // The real server scrapes the exporter every second.
  const int promPort = FreePort();
  const std::string config = dir.filePath("prometheus.yml").toStdString();
  std::ofstream(config)
      << "global:\n  scrape_interval: 1s\nscrape_configs:\n  - job_name: ampdesk\n"
      << "    static_configs:\n      - targets: ['127.0.0.1:" << exporter.port << "']\n";
  QProcess prometheus;
  prometheus.start(
      "prometheus",
      Args({"--config.file=" + config, "--storage.tsdb.path=" + dir.filePath("tsdb").toStdString(),
            "--web.listen-address=127.0.0.1:" + std::to_string(promPort)}));
  std::string answer;
  auto query = [&](const std::string& q) {
    answer = HttpGet(promPort, "/api/v1/query?query=" + q);
    // Until it is ready the server answers with plain text.
    if (!answer.starts_with("{")) return QJsonArray();
    return Json(answer)["data"].toObject()["result"].toArray();
  };
  EXPECT_TRUE(Within(30000, [&] { return query("ampdesk_forward_power_dbm").size() == 3; }))
      << answer;

  // A fault raised on one unit becomes its own series, in the exporter and
  // in Prometheus, and one log line.
  sims.proc.write("2 --status P@@@,@A@@,@@@@\n");
  sims.proc.waitForBytesWritten(2000);
  EXPECT_TRUE(Within(10000, [&] {
    return scrape().find("ampdesk_fault_active{fault=\"Waveguide Arc\"") != std::string::npos;
  })) << metrics;
  EXPECT_NE(exporter.Log().find("unit=sim002 event=fault_raised name=\"Waveguide Arc\""),
            std::string::npos);
  EXPECT_TRUE(Within(15000, [&] {
    const QJsonArray r = query("ampdesk_fault_active%7Bfault%3D%22Waveguide%20Arc%22%7D");
    return r.size() == 1 && Str(r[0].toObject()["metric"].toObject(), "unit") == "sim002";
  })) << answer;
  prometheus.terminate();
  prometheus.waitForFinished(5000);

  // A unit switched off goes down; the others keep being polled.
  sims.proc.write("3 --stop\n");
  sims.proc.waitForBytesWritten(2000);
  EXPECT_TRUE(Within(15000, [&] { return Sample(scrape(), "ampdesk_unit_up", "sim003") == 0; }));
  EXPECT_NE(exporter.Log().find("unit=sim003 event=unit_lost"), std::string::npos);
  const double before = Sample(metrics, "ampdesk_polls_total", "sim001");
  EXPECT_TRUE(
      Within(6000, [&] { return Sample(scrape(), "ampdesk_polls_total", "sim001") > before; }));
  EXPECT_EQ(Sample(metrics, "ampdesk_unit_up", "sim001"), 1);

  // Read-only: every frame the units heard was a query.
  int heard = 0;
  for (const std::string& line : Lines(ReadAll(frames))) {
    const std::string readable = line.substr(line.find("  ") + 2);
    const auto etx = readable.find("<ETX>");
    if (!readable.starts_with("<STX>") || etx == std::string::npos) continue;
    const std::string text = readable.substr(6, etx - 6);
    ++heard;
    EXPECT_FALSE(sim::ChangesUnit(text)) << line;
  }
  EXPECT_GT(heard, 100);
}

}  // namespace
}  // namespace amp::e2e

namespace amp::e2e {
namespace {

TEST(ExporterE2E, ThreeUnitsTakeTurnsOnOneSerialBus) {
  QTemporaryDir dir;
  const std::string fleet = dir.filePath("bus.toml").toStdString();
  const std::string frames = dir.filePath("frames.log").toStdString();
  Unit bus({"--serial", "--units", "3", "--profile", "sspa120,twta127", "--fleet-file", fleet,
            "--frame-log", frames});
  ASSERT_TRUE(bus.ok);
  Exporter exporter(fleet);
  ASSERT_GT(exporter.port, 0) << exporter.out;
  std::string metrics;
  EXPECT_TRUE(Within(30000,
                     [&] {
                       metrics = HttpGet(exporter.port, "/metrics");
                       for (const char* u : {"sim001", "sim002", "sim003"})
                         if (Sample(metrics, "ampdesk_forward_power_dbm", u) < 0) return false;
                       return true;
                     }))
      << metrics << exporter.Log();
  // A silent unit on the bus goes down alone.
  bus.proc.write("2 --silent\n");
  bus.proc.waitForBytesWritten(2000);
  EXPECT_TRUE(Within(30000, [&] {
    metrics = HttpGet(exporter.port, "/metrics");
    return Sample(metrics, "ampdesk_unit_up", "sim002") == 0;
  })) << metrics;
  const double before = Sample(metrics, "ampdesk_polls_total", "sim003");
  EXPECT_TRUE(Within(8000, [&] {
    return Sample(HttpGet(exporter.port, "/metrics"), "ampdesk_polls_total", "sim003") > before;
  }));
  // Each frame on the line went out whole, addressed to one of the three.
  std::string addresses;
  for (const std::string& line : Lines(ReadAll(frames))) {
    const std::string readable = line.substr(line.find("  ") + 2);
    if (readable.starts_with("<STX>") && addresses.find(readable[5]) == std::string::npos)
      addresses += readable[5];
  }
  std::sort(addresses.begin(), addresses.end());
  EXPECT_EQ(addresses, "ABC");
}

}  // namespace
}  // namespace amp::e2e
