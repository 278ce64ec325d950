#include "tool/integrals_printer.h"

#include <cmath>
#include <utility>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "tool/json_values.h"
#include "tool/summary.h"
#include "tool/value_writer.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

float time_at(const host::Session& session) {
  return session.variable_times().times[static_cast<std::size_t>(session.step())];
}

std::string failure_of(const QuantityIntegrals& found) {
  return host::without_controls(host::message_to_utf8(found.failed.reason));
}

// The direction of a surface's normals in the mean; all zero of a closed one.
analysis::Vec3 mean_normal(const PartIntegrals& part) {
  return part.measure > 0 ? (1 / part.measure) * part.vector_area : analysis::Vec3{};
}

const char* measure_word(const PartIntegrals& part) {
  return part.is_surface ? "area" : "volume";
}

// Zero where only the last digits of cancelling sums are left.
std::string vector_text(const analysis::Vec3& vector, double scale) {
  constexpr double kNothing = 1e-12;
  const auto shown = [&](double value) { return std::abs(value) < kNothing * scale ? 0 : value; };
  return fmt::format("({:.6g}, {:.6g}, {:.6g})", shown(vector[0]), shown(vector[1]), shown(vector[2]));
}

class IntegralsText : public IntegralsPrinter {
 public:
  explicit IntegralsText(const PressureOptions& pressure) : pressure_(pressure) {}

  std::string step(const host::Session& session, const std::vector<PartIntegrals>& found) override {
    std::string text = fmt::format("step {} (time {})\n", session.step(), time_at(session));
    for (const PartIntegrals& part : found) text += part_text(session, part);
    return text;
  }

 private:
  std::string part_text(const host::Session& session, const PartIntegrals& found) const {
    const host::Part& part = session.part(found.part);
    std::string text =
        fmt::format("  part {}, {} {}: {} {:.9g}, {} elements", found.part, kind_word(part.kind),
                    host::printable(part.name), measure_word(found), found.measure, found.elements);
    if (found.is_surface) {
      text += fmt::format("; mean normal {}", vector_text(mean_normal(found), 1));
      const auto add = [&](std::int64_t count, const char* what) {
        if (count > 0) text += fmt::format(", {} {}", count, what);
      };
      add(found.directions.turned, "faces turned");
      add(found.directions.inside, "faces inside the volume");
      add(found.directions.without_element, "faces of no element");
    }
    text += "\n";
    if (!found.quantities.empty()) {
      text += fmt::format("    {:<22}{:<10}{:>15}{:>15}{:>15}{:>11}{:>10}\n", "variable", "of", "integral",
                          "mean", measure_word(found), "undefined", "left out");
    }
    for (const QuantityIntegrals& quantity : found.quantities) text += quantity_text(quantity);
    if (found.force) text += force_text(*found.force);
    return text;
  }

  static std::string quantity_text(const QuantityIntegrals& found) {
    std::string name = host::printable(found.variable.name);
    if (found.availability != host::Availability::given) {
      const std::string reason = failure_of(found);
      return fmt::format("    {:<22}{}{}{}\n", name, availability_word(found.availability),
                         reason.empty() ? "" : ": ", reason);
    }
    std::string text;
    for (const ComponentIntegral& component : found.components) {
      const analysis::Integral& integral = component.integral;
      const std::string mean = integral.over.measure == 0 ? "-" : fmt::format("{:.6g}", integral.mean());
      text += fmt::format("    {:<22}{:<10}{:>15.6g}{:>15}{:>15.6g}{:>11}{:>10}\n", std::exchange(name, ""),
                          component.component, integral.value, mean, integral.over.measure,
                          integral.over.undefined, integral.over.left_out);
    }
    return text;
  }

  std::string force_text(const analysis::PressureForce& found) const {
    const double scale = analysis::length(found.force) + analysis::length(found.moment);
    std::string text = fmt::format(
        "    force of {}{}: {}, moment about {}: {}", host::printable(pressure_.pressure->variable.name),
        pressure_.reference == 0 ? "" : fmt::format(" - {}", pressure_.reference),
        vector_text(found.force, scale), vector_text(pressure_.about, 0), vector_text(found.moment, scale));
    if (found.over.left_out > 0) text += fmt::format("; {} elements left out", found.over.left_out);
    return text + "\n";
  }

  const PressureOptions& pressure_;
};

class IntegralsJson : public IntegralsPrinter {
 public:
  IntegralsJson(const PressureOptions& pressure, std::string file)
      : pressure_(pressure), file_(std::move(file)) {}

  std::string beginning() const override {
    return fmt::format("{{\n\"file\": {},\n\"steps\": [\n", json_text(file_));
  }

  std::string step(const host::Session& session, const std::vector<PartIntegrals>& found) override {
    Json json{{"step", session.step()}, {"time", json_number(time_at(session))}, {"parts", Json::array()}};
    for (const PartIntegrals& part : found) json["parts"].push_back(part_json(session, part));
    return json_text(json);
  }

  std::string separator() const override { return ",\n"; }

  std::string end(const std::vector<std::string>& problems) const override {
    return fmt::format("\n],\n\"problems\": {}\n}}\n", json_text(problems, -1));
  }

 private:
  Json part_json(const host::Session& session, const PartIntegrals& found) const {
    const host::Part& part = session.part(found.part);
    Json json{{"part", found.part},
              {"kind", kind_word(part.kind)},
              {"name", host::to_utf8(part.name)},
              {"elements", found.elements},
              {measure_word(found), json_number(found.measure)}};
    if (found.is_surface) {
      json["vector_area"] = vector_json(found.vector_area);
      json["faces"] = {{"turned", found.directions.turned},
                       {"inside", found.directions.inside},
                       {"without_element", found.directions.without_element}};
    }
    json["variables"] = Json::array();
    for (const QuantityIntegrals& quantity : found.quantities) {
      Json entry{{"number", quantity.variable.number > 0 ? Json(quantity.variable.number) : Json(nullptr)},
                 {"name", host::to_utf8(quantity.variable.name)},
                 {"label", host::to_utf8(quantity.variable.label)},
                 {"per", location_word(quantity.variable.location)},
                 {"availability", availability_word(quantity.availability)}};
      if (!quantity.failed.reason.empty()) entry["reason"] = host::message_to_utf8(quantity.failed.reason);
      entry["components"] = Json::array();
      for (const ComponentIntegral& component : quantity.components) {
        Json of_one{{"component", component.component.empty() ? Json(nullptr) : Json(component.component)},
                    {"integral", json_number(component.integral.value)},
                    {"mean", json_number(component.integral.mean())}};
        of_one.update(coverage_json(component.integral.over));
        entry["components"].push_back(std::move(of_one));
      }
      json["variables"].push_back(std::move(entry));
    }
    if (found.force) {
      Json force{{"pressure", host::to_utf8(pressure_.pressure->variable.name)},
                 {"reference_pressure", json_number(pressure_.reference)},
                 {"force", vector_json(found.force->force)},
                 {"about", vector_json(pressure_.about)},
                 {"moment", vector_json(found.force->moment)}};
      force.update(coverage_json(found.force->over));
      json["force"] = std::move(force);
    }
    return json;
  }

  static Json vector_json(const analysis::Vec3& vector) {
    return {json_number(vector[0]), json_number(vector[1]), json_number(vector[2])};
  }

  static Json coverage_json(const analysis::Coverage& over) {
    return {
        {"measure", json_number(over.measure)}, {"undefined", over.undefined}, {"left_out", over.left_out}};
  }

  const PressureOptions& pressure_;
  std::string file_;
};

class IntegralsCsv : public IntegralsPrinter {
 public:
  explicit IntegralsCsv(const PressureOptions& pressure) : pressure_(pressure) {}

  std::string beginning() const override {
    return "step,time,part,kind,name,elements,measure,variable,component,integral,mean,with_values,undefined,"
           "left_out\n";
  }

  std::string step(const host::Session& session, const std::vector<PartIntegrals>& found) override {
    std::string text;
    for (const PartIntegrals& part : found) text += part_lines(session, part);
    return text;
  }

 private:
  std::string part_lines(const host::Session& session, const PartIntegrals& found) const {
    const host::Part& part = session.part(found.part);
    const std::string before = fmt::format(
        "{},{},{},{},{},{},{},", session.step(), time_at(session), found.part, kind_word(part.kind),
        csv_field(host::printable(part.name)), found.elements, found.measure);
    std::string text;
    const auto add_vector = [&](const std::string& variable, const char* what, const analysis::Vec3& vector,
                                const std::string& coverage) {
      for (std::size_t axis = 0; axis < vector.size(); ++axis)
        text +=
            fmt::format("{}{},{}_{},{},,{}\n", before, variable, what, kAxes[axis], vector[axis], coverage);
    };
    if (found.is_surface) add_vector("", "area", found.vector_area, ",,");
    for (const QuantityIntegrals& quantity : found.quantities) {
      const std::string name = csv_field(host::printable(quantity.variable.name));
      for (const ComponentIntegral& component : quantity.components) {
        const analysis::Integral& integral = component.integral;
        const std::string mean = integral.over.measure == 0 ? "" : fmt::format("{}", integral.mean());
        text += fmt::format("{}{},{},{},{},{}\n", before, name, component.component, integral.value, mean,
                            coverage_text(integral.over));
      }
      if (quantity.components.empty()) text += fmt::format("{}{},,,,,,\n", before, name);
    }
    if (found.force) {
      const std::string name = csv_field(host::printable(pressure_.pressure->variable.name));
      const std::string coverage = coverage_text(found.force->over);
      add_vector(name, "force", found.force->force, coverage);
      add_vector(name, "moment", found.force->moment, coverage);
    }
    if (text.empty()) text = before + ",,,,,,\n";
    return text;
  }

  static std::string coverage_text(const analysis::Coverage& over) {
    return fmt::format("{},{},{}", over.measure, over.undefined, over.left_out);
  }

  const PressureOptions& pressure_;
};

}  // namespace

std::unique_ptr<IntegralsPrinter> make_integrals_text(const PressureOptions& pressure) {
  return std::make_unique<IntegralsText>(pressure);
}

std::unique_ptr<IntegralsPrinter> make_integrals_json(const PressureOptions& pressure,
                                                      const std::string& file) {
  return std::make_unique<IntegralsJson>(pressure, file);
}

std::unique_ptr<IntegralsPrinter> make_integrals_csv(const PressureOptions& pressure) {
  return std::make_unique<IntegralsCsv>(pressure);
}

}  // namespace tool
