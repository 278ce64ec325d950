// The forms in which `fldtool probe` prints what it finds: comma-separated lines, JSON and NumPy files.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/probe_points.h"
#include "tool/prober.h"

namespace tool {

// What the rows are about.
struct ProbeTable {
  std::string file;  // of the dataset, as given
  ProbePoints points;
  std::vector<Quantity> quantities;
  std::vector<ProbeColumn> columns;
};

// Texts, or bytes, of the output, in the order in which they are written.
class ProbePrinter {
 public:
  virtual ~ProbePrinter() = default;

  virtual std::string beginning() const { return {}; }
  virtual std::string step(int step, float time, const ProbedStep& found) = 0;
  // With what could not be read.
  virtual std::string end(const std::vector<std::string>& /*problems*/) const { return {}; }
};

// The table must outlive the printer.
std::unique_ptr<ProbePrinter> make_probe_csv(const ProbeTable& table);
// The object of the manual in command_probe.cpp.
std::unique_ptr<ProbePrinter> make_probe_json(const ProbeTable& table);
// NumPy's format 1.0: a float64 array, a row per step and point.
std::unique_ptr<ProbePrinter> make_probe_npy(const ProbeTable& table);

}  // namespace tool
