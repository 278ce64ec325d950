// Numbers per step: what `fldtool history` has columns of.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/chosen_parts.h"
#include "tool/part_integrals.h"
#include "tool/problems.h"
#include "tool/quantity.h"

namespace tool {

struct HistoryColumn {
  std::string name;   // UTF-8 without control characters: "mean of Pressure on inlet"
  std::string label;  // of the variable, UTF-8; may be empty
};

// Columns of numbers of one kind.
class HistorySource {
 public:
  virtual ~HistorySource() = default;

  virtual const std::vector<HistoryColumn>& columns() const = 0;

  // Adds the numbers at the session's step, one per column; NaN where there is none. What cannot be read is a
  // problem. Throws host::Error when the mesh cannot be read.
  virtual void add_row(std::vector<double>& row, Problems& problems) = 0;

  // Does what would be done again in each of several processes. Throws host::Error.
  virtual void prepare() {}
};

// What is chosen of statistics and of integrals.
inline constexpr const char* kStatisticWords[] = {"minimum", "maximum", "mean", "deviation", "undefined"};
inline constexpr const char* kIntegralWords[] = {"measure", "integral", "mean", "flow", "force", "moment"};

// The parts of the session's step that are chosen, to be found again at other steps.
struct HistoryParts {
  std::vector<PartIdentity> identities;
  std::vector<std::string> names;  // UTF-8

  HistoryParts() = default;
  HistoryParts(const host::Session& session, const ChosenParts& chosen);
};

// Statistics of quantities on parts, as `fldtool stats` prints them.
std::unique_ptr<HistorySource> make_statistics_source(host::Session& session,
                                                      std::vector<Quantity> quantities, HistoryParts parts,
                                                      std::vector<std::string> words);

// Integrals of quantities over parts, as `fldtool integrate` prints them. Scalars have no flow.
std::unique_ptr<HistorySource> make_integral_source(host::Session& session, std::vector<Quantity> quantities,
                                                    HistoryParts parts, std::vector<std::string> words,
                                                    PressureOptions pressure);

}  // namespace tool
