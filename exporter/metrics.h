// The fleet's metrics on prometheus-cpp, named as Prometheus names things:
// base units in the names (_dbm, _celsius, _volts, _amperes, _seconds),
// counters ending in _total, one label set per unit (unit, and the site,
// rack and chain the fleet file gives). A reading the unit has not given,
// or a unit that is down, has no series rather than a made-up value.
#pragma once

#include <map>
#include <memory>
#include <string>

#include <prometheus/counter.h>
#include <prometheus/family.h>
#include <prometheus/gauge.h>
#include <prometheus/histogram.h>
#include <prometheus/registry.h>

#include "exporter/unit_monitor.h"
#include "fleet/fleet_file.h"

namespace amp::exporter {

class FleetMetrics;

// The series of one unit. Used on the loop's thread only; the registry
// itself may be collected from any thread.
class UnitSeries {
 public:
  UnitSeries(FleetMetrics& m, const fleet::UnitEntry& entry);
  void Apply(const UnitReadings& r);
  void CountPoll(bool ok, double sinceLastS);
  void ObserveExchange(double seconds);

 private:
  void Want(prometheus::Family<prometheus::Gauge>& family, const prometheus::Labels& extra,
            double value);

  FleetMetrics& m_;
  prometheus::Labels labels_;
  prometheus::Gauge& up_;
  prometheus::Counter& polls_;
  prometheus::Counter& missed_;
  prometheus::Histogram& exchange_;
  struct Present {
    prometheus::Family<prometheus::Gauge>* family;
    prometheus::Gauge* gauge;
    bool wanted;
  };
  std::map<std::string, Present> present_;  // by family name and extra labels
};

class FleetMetrics {
 public:
  FleetMetrics();
  std::shared_ptr<prometheus::Registry> registry() const { return registry_; }

 private:
  friend class UnitSeries;
  std::shared_ptr<prometheus::Registry> registry_;

 public:
  prometheus::Family<prometheus::Gauge>& up;
  prometheus::Family<prometheus::Gauge>& forward;
  prometheus::Family<prometheus::Gauge>& reflected;
  prometheus::Family<prometheus::Gauge>& temperature;
  prometheus::Family<prometheus::Gauge>& helixVolts;
  prometheus::Family<prometheus::Gauge>& helixAmperes;
  prometheus::Family<prometheus::Gauge>& heaterVolts;
  prometheus::Family<prometheus::Gauge>& heaterAmperes;
  prometheus::Family<prometheus::Gauge>& transmitterOn;
  prometheus::Family<prometheus::Gauge>& rfInhibited;
  prometheus::Family<prometheus::Gauge>& remote;
  prometheus::Family<prometheus::Gauge>& summaryFault;
  prometheus::Family<prometheus::Gauge>& fault;
  prometheus::Family<prometheus::Gauge>& alarm;
  prometheus::Family<prometheus::Counter>& polls;
  prometheus::Family<prometheus::Counter>& missed;
  prometheus::Family<prometheus::Histogram>& exchange;
  prometheus::Histogram& pollInterval;  // the whole fleet's, for the poll's timeliness
};

}  // namespace amp::exporter
