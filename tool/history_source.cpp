#include "tool/history_source.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <utility>

#include "fmt/format.h"
#include "host/display_names.h"
#include "host/text_encoding.h"
#include "tool/interrupt.h"
#include "tool/part_statistics.h"
#include "tool/read_error.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// The components of a quantity that have statistics and integrals, in their order: "" of a scalar.
std::vector<std::string> component_names(const Quantity& quantity) {
  if (quantity.variable.kind != host::VariableKind::vector) return {""};
  if (quantity.component) return {kComponents.at(static_cast<std::size_t>(*quantity.component))};
  return {kComponents.begin(), kComponents.end()};
}

std::string with_component_name(const std::string& name, const std::string& component) {
  return component.empty() ? name : name + "." + component;
}

// Goes through the parts of a step that have the identities.
class PartSource : public HistorySource {
 public:
  PartSource(host::Session& session, std::vector<Quantity> quantities, HistoryParts parts)
      : session_(session), quantities_(std::move(quantities)), parts_(std::move(parts)) {}

  const std::vector<HistoryColumn>& columns() const override { return columns_; }

  void add_row(std::vector<double>& row, Problems& problems) override {
    const std::map<PartIdentity, int> numbers = part_numbers(session_);
    for (const PartIdentity& identity : parts_.identities) {
      stop_if_interrupted();
      const auto found = numbers.find(identity);
      if (found == numbers.end()) {
        row.insert(row.end(), columns_.size() / parts_.identities.size(), kNoNumber);
      } else {
        add_part(found->second, row, problems);
      }
    }
  }

 protected:
  // Adds the numbers of one part, as many for each.
  virtual void add_part(int part, std::vector<double>& row, Problems& problems) = 0;

  void note_failure(const host::PartValues& failed, const host::Variable& variable,
                    Problems& problems) const {
    if (failed.availability != host::Availability::failed || session_.is_lost()) return;
    problems.add(read_problem(failed, session_, "variable " + host::to_utf8(variable.name)).text());
  }

  host::Session& session_;
  std::vector<Quantity> quantities_;
  HistoryParts parts_;
  std::vector<HistoryColumn> columns_;
};

class StatisticsSource : public PartSource {
 public:
  StatisticsSource(host::Session& session, std::vector<Quantity> quantities, HistoryParts parts,
                   std::vector<std::string> words)
      : PartSource(session, std::move(quantities), std::move(parts)),
        words_(std::move(words)),
        values_(session) {
    for (const std::string& part : parts_.names) {
      for (const Quantity& quantity : quantities_) {
        const std::string name = host::printable(quantity.variable.name);
        for (const std::string& component : component_names(quantity)) {
          for (const std::string& word : words_)
            columns_.push_back(
                {fmt::format("{} of {} on {}", word, with_component_name(name, component), part),
                 host::printable(quantity.variable.label)});
        }
      }
    }
  }

 private:
  void add_part(int part, std::vector<double>& row, Problems& problems) override {
    for (const Quantity& quantity : quantities_) {
      const PartStatistics found = part_statistics(values_, quantity, session_.part(part), 0);
      note_failure(found.failed, quantity.variable, problems);
      const std::size_t count = component_names(quantity).size();
      for (std::size_t i = 0; i < count; ++i) {
        for (const std::string& word : words_)
          row.push_back(i < found.components.size() ? number_of(found.components[i], word) : kNoNumber);
      }
    }
  }

  static double number_of(const ComponentStatistics& found, const std::string& word) {
    if (word == "undefined") return static_cast<double>(found.statistics.undefined);
    if (!found.statistics.has_numbers()) return kNoNumber;
    if (word == "minimum") return static_cast<double>(found.statistics.minimum);
    if (word == "maximum") return static_cast<double>(found.statistics.maximum);
    return word == "mean" ? found.statistics.mean() : found.deviation;
  }

  std::vector<std::string> words_;
  QuantityValues values_;
};

class IntegralSource : public PartSource {
 public:
  IntegralSource(host::Session& session, std::vector<Quantity> quantities, HistoryParts parts,
                 std::vector<std::string> words, PressureOptions pressure)
      : PartSource(session, std::move(quantities), std::move(parts)),
        words_(std::move(words)),
        integrator_(session, std::move(pressure)) {
    for (const std::string& part : parts_.names) add_columns(part);
  }

  void prepare() override {
    std::vector<int> parts;
    const std::map<PartIdentity, int> numbers = part_numbers(session_);
    for (const PartIdentity& identity : parts_.identities) {
      if (const auto found = numbers.find(identity); found != numbers.end()) parts.push_back(found->second);
    }
    integrator_.find_directions(parts);
  }

 private:
  bool has(const char* word) const { return std::find(words_.begin(), words_.end(), word) != words_.end(); }

  // In the order of add_part.
  void add_columns(const std::string& part) {
    if (has("measure")) columns_.push_back({fmt::format("measure of {}", part), ""});
    for (const Quantity& quantity : quantities_) {
      const std::string name = host::printable(quantity.variable.name);
      const std::string label = host::printable(quantity.variable.label);
      for (const std::string& component : component_names(quantity)) {
        for (const char* word : {"integral", "mean"}) {
          if (has(word))
            columns_.push_back(
                {fmt::format("{} of {} over {}", word, with_component_name(name, component), part), label});
        }
      }
      if (has("flow") && has_flow(quantity))
        columns_.push_back({fmt::format("flow of {} through {}", name, part), label});
    }
    if (!integrator_.pressure().pressure) return;
    for (const char* word : {"force", "moment"}) {
      if (!has(word)) continue;
      for (const char* axis : kAxes) columns_.push_back({fmt::format("{}_{} on {}", word, axis, part), ""});
    }
  }

  static bool has_flow(const Quantity& quantity) {
    return quantity.variable.kind == host::VariableKind::vector && !quantity.component;
  }

  void add_part(int part, std::vector<double>& row, Problems& problems) override {
    const PartIntegrals found = integrator_.integrate(quantities_, part);
    if (has("measure")) row.push_back(found.measure);
    for (std::size_t q = 0; q < quantities_.size(); ++q) {
      const QuantityIntegrals& of_one = found.quantities[q];
      note_failure(of_one.failed, of_one.variable, problems);
      const std::size_t count = component_names(quantities_[q]).size();
      for (std::size_t i = 0; i < count; ++i) {
        const bool is_there = i < of_one.components.size() && of_one.components[i].integral.over.measure != 0;
        if (has("integral")) row.push_back(is_there ? of_one.components[i].integral.value : kNoNumber);
        if (has("mean")) row.push_back(is_there ? of_one.components[i].integral.mean() : kNoNumber);
      }
      if (has("flow") && has_flow(quantities_[q])) {
        const bool is_there = !of_one.components.empty() && of_one.components.back().component == "normal";
        row.push_back(is_there ? of_one.components.back().integral.value : kNoNumber);
      }
    }
    if (!integrator_.pressure().pressure) return;
    const auto add = [&](const char* word, const analysis::Vec3 analysis::PressureForce::*vector) {
      if (!has(word)) return;
      for (std::size_t axis = 0; axis < kAxes.size(); ++axis)
        row.push_back(found.force ? ((*found.force).*vector)[axis] : kNoNumber);
    };
    add("force", &analysis::PressureForce::force);
    add("moment", &analysis::PressureForce::moment);
  }

  std::vector<std::string> words_;
  PartIntegrator integrator_;
};

}  // namespace

HistoryParts::HistoryParts(const host::Session& session, const ChosenParts& chosen) {
  const std::vector<PartIdentity> all = part_identities(session);
  const std::vector<std::string> all_names = host::part_names(session);
  for (const int part : chosen.at(session)) {
    identities.push_back(all[static_cast<std::size_t>(part) - 1]);
    names.push_back(all_names[static_cast<std::size_t>(part) - 1]);
  }
}

std::unique_ptr<HistorySource> make_statistics_source(host::Session& session,
                                                      std::vector<Quantity> quantities, HistoryParts parts,
                                                      std::vector<std::string> words) {
  return std::make_unique<StatisticsSource>(session, std::move(quantities), std::move(parts),
                                            std::move(words));
}

std::unique_ptr<HistorySource> make_integral_source(host::Session& session, std::vector<Quantity> quantities,
                                                    HistoryParts parts, std::vector<std::string> words,
                                                    PressureOptions pressure) {
  return std::make_unique<IntegralSource>(session, std::move(quantities), std::move(parts), std::move(words),
                                          std::move(pressure));
}

}  // namespace tool
