#include "exporter/metrics.h"

namespace amp::exporter {

namespace {

using prometheus::BuildCounter;
using prometheus::BuildGauge;
using prometheus::BuildHistogram;
using prometheus::Labels;

prometheus::Family<prometheus::Gauge>& Gauge(prometheus::Registry& r, const char* name,
                                             const char* help) {
  return BuildGauge().Name(name).Help(help).Register(r);
}

// An exchange over a healthy loopback or LAN takes milliseconds; the top
// buckets catch the 15 s reply wait running out.
const prometheus::Histogram::BucketBoundaries kExchangeBuckets = {
    0.002, 0.005, 0.01, 0.025, 0.05, 0.1, 0.25, 0.5, 1, 2.5, 5, 15};
// Polls are due every 2.5 s; the buckets show how late they come.
const prometheus::Histogram::BucketBoundaries kIntervalBuckets = {2.45, 2.5,  2.55, 2.6, 2.75,
                                                                  3,    3.75, 5,    10};

}  // namespace

FleetMetrics::FleetMetrics()
    : registry_(std::make_shared<prometheus::Registry>()),
      up(Gauge(*registry_, "ampdesk_unit_up", "1 while a session with the unit stands")),
      forward(Gauge(*registry_, "ampdesk_forward_power_dbm", "Forward RF power")),
      reflected(Gauge(*registry_, "ampdesk_reflected_power_dbm", "Reflected RF power")),
      temperature(Gauge(*registry_, "ampdesk_temperature_celsius", "Unit temperature by sensor")),
      helixVolts(Gauge(*registry_, "ampdesk_helix_voltage_volts", "Tube helix voltage")),
      helixAmperes(Gauge(*registry_, "ampdesk_helix_current_amperes", "Tube helix current")),
      heaterVolts(Gauge(*registry_, "ampdesk_heater_voltage_volts", "Tube heater voltage")),
      heaterAmperes(Gauge(*registry_, "ampdesk_heater_current_amperes", "Tube heater current")),
      transmitterOn(Gauge(*registry_, "ampdesk_transmitter_on", "1 while the transmitter is on")),
      rfInhibited(Gauge(*registry_, "ampdesk_rf_inhibited", "1 while RF is inhibited")),
      remote(Gauge(*registry_, "ampdesk_remote_mode", "1 in remote mode, 0 in local mode")),
      summaryFault(
          Gauge(*registry_, "ampdesk_unit_faulted", "1 while the unit reports its summary fault")),
      fault(Gauge(*registry_, "ampdesk_fault_active",
                  "One series per active fault, labelled with its display name")),
      alarm(Gauge(*registry_, "ampdesk_alarm_active",
                  "One series per active alarm, labelled with its display name")),
      polls(BuildCounter()
                .Name("ampdesk_polls_total")
                .Help("Status polls sent")
                .Register(*registry_)),
      missed(BuildCounter()
                 .Name("ampdesk_missed_polls_total")
                 .Help("Status polls that got no good answer")
                 .Register(*registry_)),
      exchange(BuildHistogram()
                   .Name("ampdesk_exchange_duration_seconds")
                   .Help("Time from a command sent to its answer")
                   .Register(*registry_)),
      pollInterval(BuildHistogram()
                       .Name("ampdesk_exporter_poll_interval_seconds")
                       .Help("Time between two polls of the same unit, over the whole fleet")
                       .Register(*registry_)
                       .Add({}, kIntervalBuckets)) {}

namespace {

Labels UnitLabels(const fleet::UnitEntry& e) {
  Labels l{{"unit", e.name}};
  for (const auto& label : e.labels) l[label.name] = label.value;
  return l;
}

}  // namespace

UnitSeries::UnitSeries(FleetMetrics& m, const fleet::UnitEntry& entry)
    : m_(m),
      labels_(UnitLabels(entry)),
      up_(m.up.Add(labels_)),
      polls_(m.polls.Add(labels_)),
      missed_(m.missed.Add(labels_)),
      exchange_(m.exchange.Add(labels_, kExchangeBuckets)) {}

void UnitSeries::Want(prometheus::Family<prometheus::Gauge>& family, const Labels& extra,
                      double value) {
  std::string key = std::to_string(reinterpret_cast<uintptr_t>(&family));
  for (const auto& [k, v] : extra) key += "\n" + k + "=" + v;
  auto it = present_.find(key);
  if (it == present_.end()) {
    Labels all = labels_;
    all.insert(extra.begin(), extra.end());
    it = present_.emplace(key, Present{&family, &family.Add(all), true}).first;
  }
  it->second.gauge->Set(value);
  it->second.wanted = true;
}

void UnitSeries::Apply(const UnitReadings& r) {
  up_.Set(r.up ? 1 : 0);
  for (auto& [key, p] : present_) p.wanted = false;
  if (r.up) {
    if (r.forwardDbm) Want(m_.forward, {}, *r.forwardDbm);
    if (r.reflectedDbm) Want(m_.reflected, {}, *r.reflectedDbm);
    for (const auto& [sensor, v] : r.temperaturesCelsius)
      Want(m_.temperature, {{"sensor", sensor}}, v);
    for (const auto& [tube, v] : r.helixVolts) Want(m_.helixVolts, {{"tube", tube}}, v);
    for (const auto& [tube, v] : r.helixAmperes) Want(m_.helixAmperes, {{"tube", tube}}, v);
    if (r.heaterVolts) Want(m_.heaterVolts, {}, *r.heaterVolts);
    if (r.heaterAmperes) Want(m_.heaterAmperes, {}, *r.heaterAmperes);
    Want(m_.transmitterOn, {}, r.transmitterOn ? 1 : 0);
    Want(m_.rfInhibited, {}, r.rfInhibited ? 1 : 0);
    Want(m_.remote, {}, r.remote ? 1 : 0);
    Want(m_.summaryFault, {}, r.summaryFault ? 1 : 0);
    for (const auto& name : r.faults) Want(m_.fault, {{"fault", name}}, 1);
    for (const auto& name : r.alarms) Want(m_.alarm, {{"alarm", name}}, 1);
  }
  for (auto it = present_.begin(); it != present_.end();) {
    if (it->second.wanted) {
      ++it;
      continue;
    }
    it->second.family->Remove(it->second.gauge);
    it = present_.erase(it);
  }
}

void UnitSeries::CountPoll(bool ok, double sinceLastS) {
  polls_.Increment();
  if (!ok) missed_.Increment();
  m_.pollInterval.Observe(sinceLastS);
}

void UnitSeries::ObserveExchange(double seconds) { exchange_.Observe(seconds); }

}  // namespace amp::exporter
