#include "tool/probe_printer.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "tool/json_values.h"
#include "tool/npy_header.h"
#include "tool/value_writer.h"

namespace tool {
namespace {

// Values are as exact as single precision.
float as_single(double value) {
  return static_cast<float>(value);
}

class ProbeCsv : public ProbePrinter {
 public:
  explicit ProbeCsv(const ProbeTable& table) : table_(table) {}

  std::string beginning() const override {
    std::string header = "step,time,point,x,y,z,";
    if (table_.points.line_from) header += "distance,";
    header += "found,region_set,element";
    for (const ProbeColumn& column : table_.columns) header += "," + csv_field(column.name);
    return header + "\n";
  }

  std::string step(int step, float time, const ProbedStep& found) override {
    fmt::memory_buffer text;
    const auto to = std::back_inserter(text);
    for (std::size_t i = 0; i < table_.points.points.size(); ++i) {
      const analysis::Vec3& at = table_.points.points[i];
      fmt::format_to(to, "{},{},{},{},{},{},", step, time, i + 1, at[0], at[1], at[2]);
      if (table_.points.line_from) {
        if (const auto distance = table_.points.distance(i)) fmt::format_to(to, "{}", *distance);
        text.push_back(',');
      }
      fmt::format_to(to, "{},", found_word(found.found[i]));
      if (found.region_set[i] >= 0) fmt::format_to(to, "{}", found.region_set[i]);
      text.push_back(',');
      if (found.element[i] > 0) fmt::format_to(to, "{}", found.element[i]);
      for (std::size_t c = 0; c < table_.columns.size(); ++c) {
        const double value = found.values[i * table_.columns.size() + c];
        text.push_back(',');
        if (!std::isnan(value)) fmt::format_to(to, "{}", as_single(value));
      }
      text.push_back('\n');
    }
    return fmt::to_string(text);
  }

 private:
  const ProbeTable& table_;
};

class ProbeJson : public ProbePrinter {
 public:
  explicit ProbeJson(const ProbeTable& table) : table_(table) {}

  std::string beginning() const override {
    Json points = Json::array();
    for (std::size_t i = 0; i < table_.points.points.size(); ++i) {
      const analysis::Vec3& at = table_.points.points[i];
      Json point{{"at", {at[0], at[1], at[2]}}};
      if (const auto distance = table_.points.distance(i)) point["distance"] = *distance;
      points.push_back(std::move(point));
    }
    Json columns = Json::array();
    for (const ProbeColumn& column : table_.columns) {
      const host::Variable& variable = table_.quantities[column.quantity].variable;
      columns.push_back({{"name", column.name}, {"label", host::to_utf8(variable.label)}});
    }
    return fmt::format("{{\n\"file\": {},\n\"columns\": {},\n\"points\": {},\n\"steps\": [\n",
                       json_text(table_.file), json_text(columns, -1), json_text(points, -1));
  }

  std::string step(int step, float time, const ProbedStep& found) override {
    Json answers = Json::array();
    for (std::size_t i = 0; i < found.found.size(); ++i) {
      Json values = Json::array();
      for (std::size_t c = 0; c < table_.columns.size(); ++c)
        values.push_back(json_number(as_single(found.values[i * table_.columns.size() + c])));
      answers.push_back({{"found", found_word(found.found[i])},
                         {"region_set", found.region_set[i] >= 0 ? Json(found.region_set[i]) : Json(nullptr)},
                         {"element", found.element[i] > 0 ? Json(found.element[i]) : Json(nullptr)},
                         {"values", std::move(values)}});
    }
    const Json json{{"step", step}, {"time", json_number(time)}, {"answers", std::move(answers)}};
    return (std::exchange(is_first_, false) ? "" : ",\n") + json_text(json, -1);
  }

  std::string end(const std::vector<std::string>& problems) const override {
    return fmt::format("\n],\n\"problems\": {}\n}}\n", json_text(problems, -1));
  }

 private:
  const ProbeTable& table_;
  bool is_first_ = true;
};

void add_little_endian(std::string& bytes, double value) {
  auto bits = std::bit_cast<std::uint64_t>(value);
  for (std::size_t i = 0; i < sizeof bits; ++i) {
    bytes.push_back(static_cast<char>(bits & 0xffU));
    bits >>= 8U;
  }
}

class ProbeNpy : public ProbePrinter {
 public:
  explicit ProbeNpy(const ProbeTable& table) : table_(table) {}

  // The header tells the number of rows, so everything is kept until the end.
  std::string step(int step, float time, const ProbedStep& found) override {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t i = 0; i < table_.points.points.size(); ++i, ++rows_) {
      const analysis::Vec3& at = table_.points.points[i];
      for (const double value : {static_cast<double>(step), static_cast<double>(time),
                                 static_cast<double>(i + 1), at[0], at[1], at[2]})
        add_little_endian(rows_bytes_, value);
      if (table_.points.line_from) add_little_endian(rows_bytes_, table_.points.distance(i).value_or(kNone));
      add_little_endian(rows_bytes_, found.region_set[i] >= 0 ? found.region_set[i] : kNone);
      for (std::size_t c = 0; c < table_.columns.size(); ++c)
        add_little_endian(rows_bytes_, found.values[i * table_.columns.size() + c]);
    }
    return {};
  }

  std::string end(const std::vector<std::string>& /*problems*/) const override {
    const std::size_t columns = 7 + (table_.points.line_from ? 1U : 0U) + table_.columns.size();
    return npy_header("<f8", rows_, columns) + rows_bytes_;
  }

 private:
  const ProbeTable& table_;
  std::size_t rows_ = 0;
  std::string rows_bytes_;
};

}  // namespace

std::unique_ptr<ProbePrinter> make_probe_csv(const ProbeTable& table) {
  return std::make_unique<ProbeCsv>(table);
}

std::unique_ptr<ProbePrinter> make_probe_json(const ProbeTable& table) {
  return std::make_unique<ProbeJson>(table);
}

std::unique_ptr<ProbePrinter> make_probe_npy(const ProbeTable& table) {
  return std::make_unique<ProbeNpy>(table);
}

}  // namespace tool
