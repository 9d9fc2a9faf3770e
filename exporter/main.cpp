// ampdesk-exporter: watches a fleet of amplifiers with the panel's own poll
// and serves what it sees to Prometheus, read-only.
#include <CivetServer.h>
#include <civetweb.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <future>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <prometheus/exposer.h>
#include <CLI/CLI.hpp>

#include "basic/json.h"
#include "exporter/loop.h"
#include "exporter/metrics.h"
#include "exporter/unit_monitor.h"
#include "fleet/fleet_file.h"

namespace {

using amp::exporter::Loop;
using amp::exporter::UnitMonitor;

std::atomic_bool gStop{false};

// A JSON state built on the loop's thread is waited for this long by the
// HTTP thread that asked; a loop that does not answer is not healthy.
constexpr auto kStateWait = std::chrono::seconds(5);
constexpr int64_t kHealthyTurnMs = 5000;

struct Served {
  Loop* loop = nullptr;
  std::vector<std::unique_ptr<UnitMonitor>>* units = nullptr;
};
// The HTTP server's callback has no slot for our data; this is set once
// before the server starts and read by its threads.
std::atomic<Served*> gServed{nullptr};

std::string UnitsJson(const std::vector<std::unique_ptr<UnitMonitor>>& units) {
  amp::JsonWriter w;
  w.BeginObject();
  w.Key("units").BeginArray();
  for (const auto& u : units) {
    w.BeginObject();
    w.Key("name").String(u->entry().name);
    w.Key("up").Bool(u->readings().up);
    w.Key("labels").BeginObject();
    for (const auto& l : u->entry().labels) w.Key(l.name).String(l.value);
    w.EndObject();
    w.Key("state").Raw(u->StateJson());
    w.EndObject();
  }
  w.EndArray();
  w.EndObject();
  return w.str();
}

void Reply(mg_connection* conn, int status, const char* type, const std::string& body) {
  mg_printf(
      conn,
      "HTTP/1.1 %d %s\r\nContent-Type: %s\r\nContent-Length: %zu\r\nConnection: close\r\n\r\n",
      status, status == 200 ? "OK" : "Service Unavailable", type, body.size());
  mg_write(conn, body.data(), body.size());
}

// /units and /healthz beside the metrics on the one server; anything else
// goes on to the metrics handler (or its 404).
int BeginRequest(mg_connection* conn) {
  Served* s = gServed.load();
  const mg_request_info* info = mg_get_request_info(conn);
  if (!s || !info || !info->local_uri) return 0;
  const std::string uri = info->local_uri;
  if (uri == "/healthz") {
    const bool ok = Loop::NowMs() - s->loop->LastTurnMs() < kHealthyTurnMs;
    Reply(conn, ok ? 200 : 503, "text/plain", ok ? "ok\n" : "polling loop stalled\n");
    return ok ? 200 : 503;
  }
  if (uri == "/units") {
    auto done = std::make_shared<std::promise<std::string>>();
    auto answer = done->get_future();
    s->loop->Post([done, units = s->units] { done->set_value(UnitsJson(*units)); });
    if (answer.wait_for(kStateWait) != std::future_status::ready) {
      Reply(conn, 503, "text/plain", "polling loop busy\n");
      return 503;
    }
    Reply(conn, 200, "application/json", answer.get() + "\n");
    return 200;
  }
  return 0;
}

// logfmt: one line per change, for the journal.
std::string Quoted(const std::string& v) {
  if (!v.empty() && v.find_first_of(" \"=\\") == std::string::npos) return v;
  std::string out = "\"";
  for (char c : v) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + "\"";
}

void LogLine(const std::string& fields) {
  const auto now = std::chrono::system_clock::now();
  const std::time_t t = std::chrono::system_clock::to_time_t(now);
  const auto ms =
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()) % 1000;
  std::tm tm{};
  gmtime_r(&t, &tm);
  char stamp[32];
  std::strftime(stamp, sizeof stamp, "%Y-%m-%dT%H:%M:%S", &tm);
  std::printf("time=%s.%03dZ %s\n", stamp, static_cast<int>(ms.count()), fields.c_str());
  std::fflush(stdout);
}

void OnSignal(int) { gStop = true; }

}  // namespace

int main(int argc, char** argv) {
  std::string fleetPath, listen = "127.0.0.1:9464";
  CLI::App app(
      "Watches a fleet of amplifiers with the panel's status poll and serves Prometheus "
      "metrics (/metrics), the units' state (/units) and /healthz. Read-only: it sends "
      "no set command.",
      "ampdesk-exporter");
  app.add_option("FLEET", fleetPath, "the fleet file (TOML, one [[unit]] table per unit)")
      ->required();
  app.add_option("--listen", listen, "HOST:PORT to serve on (loopback unless told otherwise)")
      ->capture_default_str();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? 0 : 2;
  }

  amp::fleet::Fleet fleet;
  std::string error;
  if (!amp::fleet::LoadFleetFile(fleetPath, &fleet, &error)) {
    std::fprintf(stderr, "ampdesk-exporter: %s\n", error.c_str());
    return 2;
  }

  std::signal(SIGINT, OnSignal);
  std::signal(SIGTERM, OnSignal);
  std::signal(SIGPIPE, SIG_IGN);

  Loop loop;
  amp::exporter::FleetMetrics metrics;
  std::map<std::string, std::unique_ptr<amp::exporter::SerialBus>> buses;  // by device
  std::vector<std::unique_ptr<UnitMonitor>> units;
  std::vector<std::unique_ptr<amp::exporter::UnitSeries>> series;
  for (const auto& entry : fleet.units) {
    series.push_back(std::make_unique<amp::exporter::UnitSeries>(metrics, entry));
    auto* s = series.back().get();
    amp::exporter::UnitObserver o;
    o.readings = [s](const amp::exporter::UnitReadings& r) { s->Apply(r); };
    o.poll = [s](bool ok, double since) { s->CountPoll(ok, since); };
    o.exchange = [s](double seconds) { s->ObserveExchange(seconds); };
    o.change = [name = entry.name](const std::string& event, const std::string& detail) {
      LogLine("unit=" + Quoted(name) + " event=" + event +
              (detail.empty() ? "" : " name=" + Quoted(detail)));
    };
    amp::exporter::SerialBus* bus = nullptr;
    if (!entry.Tcp()) {
      auto& b = buses[entry.serialDevice];
      if (!b) b = std::make_unique<amp::exporter::SerialBus>(loop, entry.serialDevice);
      bus = b.get();
    }
    units.push_back(std::make_unique<UnitMonitor>(loop, entry, bus, std::move(o)));
  }

  Served served{&loop, &units};
  gServed = &served;
  CivetCallbacks callbacks{};
  callbacks.begin_request = BeginRequest;
  std::unique_ptr<prometheus::Exposer> exposer;
  try {
    exposer = std::make_unique<prometheus::Exposer>(
        std::vector<std::string>{"listening_ports", listen, "num_threads", "4"}, &callbacks);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "ampdesk-exporter: cannot listen on %s: %s\n", listen.c_str(), e.what());
    return 1;
  }
  exposer->RegisterCollectable(metrics.registry());
  const auto ports = exposer->GetListeningPorts();
  LogLine("event=listening address=" + listen.substr(0, listen.rfind(':') + 1) +
          std::to_string(ports.empty() ? 0 : ports.front()) +
          " units=" + std::to_string(units.size()));

  const auto stopping = [] { return gStop.load(); };
  for (auto& u : units) loop.Spawn([&u, &stopping] { u->Run(stopping); });
  loop.Run(stopping);
  exposer.reset();
  gServed = nullptr;
  LogLine("event=stopped");
  return 0;
}
