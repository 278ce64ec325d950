#include "tool/stats_printer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "tool/json_values.h"
#include "tool/summary.h"
#include "tool/value_writer.h"

namespace tool {
namespace {

float time_of(const host::Session& session) {
  return session.variable_times().times[static_cast<std::size_t>(session.step())];
}

std::string reason_of(const PartStatistics& part) {
  return host::without_controls(host::message_to_utf8(part.failed.reason));
}

class TextPrinter : public StatsPrinter {
 public:
  std::string step(const host::Session& session, const std::vector<VariableStatistics>& found) override {
    std::string text = fmt::format("step {} (time {})\n", session.step(), time_of(session));
    for (const VariableStatistics& variable : found) text += variable_text(session, variable);
    return text;
  }

 private:
  std::string variable_text(const host::Session& session, const VariableStatistics& found) {
    const std::string label = host::printable(found.variable.label);
    std::string text = fmt::format("  {}{}{}, per {}\n", host::printable(found.variable.name),
                                   label.empty() ? "" : ", ", label, location_word(found.variable.location));
    text += fmt::format("    {:>4}  {:<20}  {:<9}{:>10}{:>11}{:>8}{:>13}{:>13}{:>13}{:>13}\n", "part", "name",
                        "of", "values", "undefined", "NaN", "minimum", "maximum", "mean", "deviation");
    for (const PartStatistics& part : found.parts) {
      const host::Part& described = session.part(part.part);
      const std::string beginning =
          fmt::format("    {:>4}  {:<20}  ", part.part, host::printable(described.name));
      if (part.availability != host::Availability::given) {
        const std::string reason = reason_of(part);
        text += fmt::format("{}{}{}{}\n", beginning, availability_word(part.availability),
                            reason.empty() ? "" : ": ", reason);
      }
      for (std::size_t i = 0; i < part.components.size(); ++i) {
        text += i == 0 ? beginning : fmt::format("    {:>4}  {:<20}  ", "", "");
        text += component_text(part.components[i], location_word(found.variable.location),
                               names_.of(session, described));
      }
    }
    return text;
  }

  static std::string component_text(const ComponentStatistics& component, const std::string& row,
                                    const AxisNames& axes) {
    const host::ValueStatistics& statistics = component.statistics;
    std::string text = fmt::format("{:<9}{:>10}{:>11}{:>8}", component.component, component.values,
                                   statistics.undefined, statistics.not_numbers);
    if (!statistics.has_numbers()) return text + fmt::format("{0:>13}{0:>13}{0:>13}{0:>13}\n", "-");
    text += fmt::format("{:>13.6g}{:>13.6g}{:>13.6g}{:>13.6g}\n", statistics.minimum, statistics.maximum,
                        statistics.mean(), component.deviation);
    text += fmt::format("{:>10}minimum at {}, maximum at {}\n", "", place_text(component.minimum, row, axes),
                        place_text(component.maximum, row, axes));
    return text + histogram_text(component.histogram);
  }

  static std::string place_text(const ValuePlace& place, const std::string& row, const AxisNames& axes) {
    std::string text = fmt::format("{} {}", row, place.index + 1);
    if (!place.coordinates) return text;
    const auto& [x, y, z] = *place.coordinates;
    const bool is_cartesian = axes == kAxes;
    return text + (is_cartesian ? fmt::format(" ({:.6g}, {:.6g}, {:.6g})", x, y, z)
                                : fmt::format(" ({} {:.6g}, {} {:.6g}, {} {:.6g})", axes[0], x, axes[1], y,
                                              axes[2], z));
  }

  static std::string histogram_text(const Histogram& histogram) {
    constexpr double kWidest = 40;
    std::size_t most = 1;
    for (const std::size_t count : histogram.counts) most = std::max(most, count);
    std::string text;
    for (std::size_t i = 0; i < histogram.counts.size(); ++i) {
      const double share = static_cast<double>(histogram.counts[i]) / static_cast<double>(most);
      text += fmt::format("{:>10}{:>12.5g} to {:<12.5g}{:>11}  {:#<{}}\n", "", histogram.edge(i),
                          histogram.edge(i + 1), histogram.counts[i], "",
                          static_cast<int>(std::ceil(share * kWidest)));
    }
    return text;
  }

  CoordinateNames names_;
};

class JsonPrinter : public StatsPrinter {
 public:
  explicit JsonPrinter(std::string file) : file_(std::move(file)) {}

  std::string beginning() const override {
    return fmt::format("{{\n\"file\": {},\n\"steps\": [\n", json_text(file_));
  }

  std::string step(const host::Session& session, const std::vector<VariableStatistics>& found) override {
    Json json{
        {"step", session.step()}, {"time", json_number(time_of(session))}, {"variables", Json::array()}};
    for (const VariableStatistics& variable : found)
      json["variables"].push_back(variable_json(session, variable));
    return json_text(json);
  }

  std::string separator() const override { return ",\n"; }

  std::string end(const std::vector<std::string>& problems) const override {
    return fmt::format("\n],\n\"problems\": {}\n}}\n", json_text(problems, -1));
  }

 private:
  Json variable_json(const host::Session& session, const VariableStatistics& found) {
    Json parts = Json::array();
    for (const PartStatistics& part : found.parts) {
      const host::Part& described = session.part(part.part);
      Json entry{{"part", part.part},
                 {"name", host::to_utf8(described.name)},
                 {"availability", availability_word(part.availability)}};
      if (!part.failed.reason.empty()) entry["reason"] = host::message_to_utf8(part.failed.reason);
      entry["axes"] = names_.of(session, described);
      entry["components"] = Json::array();
      for (const ComponentStatistics& component : part.components)
        entry["components"].push_back(component_json(component));
      parts.push_back(std::move(entry));
    }
    return {{"number", found.variable.number > 0 ? Json(found.variable.number) : Json(nullptr)},
            {"name", host::to_utf8(found.variable.name)},
            {"label", host::to_utf8(found.variable.label)},
            {"type", kind_word(found.variable.kind)},
            {"per", location_word(found.variable.location)},
            {"parts", std::move(parts)}};
  }

  static Json component_json(const ComponentStatistics& component) {
    Json json{{"component", component.component.empty() ? Json(nullptr) : Json(component.component)},
              {"values", component.values}};
    json.update(statistics_json(component.statistics));
    const bool any = component.statistics.has_numbers();
    json["deviation"] = any ? json_number(component.deviation) : Json(nullptr);
    json["minimum_at"] = any ? place_json(component.minimum) : Json(nullptr);
    json["maximum_at"] = any ? place_json(component.maximum) : Json(nullptr);
    if (!component.histogram.counts.empty()) {
      json["histogram"] = {{"low", json_number(component.histogram.low)},
                           {"high", json_number(component.histogram.high)},
                           {"counts", component.histogram.counts}};
    }
    return json;
  }

  static Json place_json(const ValuePlace& place) {
    Json coordinates = nullptr;
    if (place.coordinates) {
      coordinates = Json::array();
      for (const float coordinate : *place.coordinates) coordinates.push_back(json_number(coordinate));
    }
    return {{"row", place.index + 1}, {"coordinates", coordinates}};
  }

  std::string file_;
  CoordinateNames names_;
};

class CsvPrinter : public StatsPrinter {
 public:
  std::string beginning() const override {
    return "step,time,part,kind,name,variable,component,per,availability,values,undefined,nan,minimum,"
           "maximum,"
           "mean,deviation,axes,minimum_at,minimum_x,minimum_y,minimum_z,maximum_at,maximum_x,maximum_y,"
           "maximum_z\n";
  }

  std::string step(const host::Session& session, const std::vector<VariableStatistics>& found) override {
    std::string text;
    for (const VariableStatistics& variable : found) {
      for (const PartStatistics& part : variable.parts) {
        const host::Part& described = session.part(part.part);
        const std::string before = fmt::format(
            "{},{},{},{},{},{},", session.step(), time_of(session), part.part, kind_word(described.kind),
            csv_field(host::printable(described.name)), csv_field(host::printable(variable.variable.name)));
        const std::string after = fmt::format(",{},{}", location_word(variable.variable.location),
                                              availability_word(part.availability));
        if (part.components.empty()) text += before + after + std::string(16, ',') + "\n";
        for (const ComponentStatistics& component : part.components) {
          text += before + component.component + after +
                  component_text(component, names_.of(session, described)) + "\n";
        }
      }
    }
    return text;
  }

 private:
  static std::string component_text(const ComponentStatistics& component, const AxisNames& axes) {
    const host::ValueStatistics& statistics = component.statistics;
    std::string text =
        fmt::format(",{},{},{}", component.values, statistics.undefined, statistics.not_numbers);
    if (!statistics.has_numbers()) return text + std::string(13, ',');
    text += fmt::format(",{},{},{},{},{}", statistics.minimum, statistics.maximum, statistics.mean(),
                        component.deviation, fmt::join(axes, " "));
    for (const ValuePlace* place : {&component.minimum, &component.maximum}) {
      text += fmt::format(",{},", place->index + 1);
      text += place->coordinates ? fmt::format("{}", fmt::join(*place->coordinates, ",")) : ",,";
    }
    return text;
  }

  CoordinateNames names_;
};

}  // namespace

std::unique_ptr<StatsPrinter> make_stats_text() {
  return std::make_unique<TextPrinter>();
}

std::unique_ptr<StatsPrinter> make_stats_json(const std::string& file) {
  return std::make_unique<JsonPrinter>(file);
}

std::unique_ptr<StatsPrinter> make_stats_csv() {
  return std::make_unique<CsvPrinter>();
}

}  // namespace tool
