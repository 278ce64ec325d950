// The integrals of variables over a part, with what the command line says about pressure and directions.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "analysis/face_directions.h"
#include "analysis/integrals.h"
#include "host/session.h"
#include "tool/coordinate_names.h"
#include "tool/quantity.h"

namespace tool {

struct ComponentIntegral {
  // Empty for a scalar; "x", "y", "z" or "magnitude"; "normal": of a vector dot normal, the flow rate.
  std::string component;
  analysis::Integral integral;
};

struct QuantityIntegrals {
  host::Variable variable;
  host::Availability availability = host::Availability::given;
  host::PartValues failed;  // the reason and the file, if the values could not be read
  std::vector<ComponentIntegral> components;
};

struct PartIntegrals {
  int part = 0;
  bool is_surface = false;  // it has faces; else it has solid elements, or nothing
  std::size_t elements = 0;
  double measure = 0;  // area or volume
  std::vector<QuantityIntegrals> quantities;
  // Of surfaces alone: the sum of area times normal, how many faces had which direction, and the force of the
  // pressure where it has values.
  analysis::Vec3 vector_area{};
  analysis::FaceDirections directions;  // without the signs
  std::optional<analysis::PressureForce> force;
};

// What forces are computed of.
struct PressureOptions {
  std::optional<Quantity> pressure;  // a scalar per node or element
  double reference = 0;
  analysis::Vec3 about{};  // of moments
};

class PartIntegrator {
 public:
  PartIntegrator(host::Session& session, PressureOptions pressure);
  PartIntegrator(const PartIntegrator&) = delete;
  PartIntegrator& operator=(const PartIntegrator&) = delete;

  const PressureOptions& pressure() const { return pressure_; }

  // Finds the directions of those of the parts that are surfaces, at the session's step; the whole meshes are
  // read once for all. They are kept for later steps as long as only coordinates change. Throws host::Error.
  void find_directions(const std::vector<int>& parts);

  // Of the part at the session's step. Values that cannot be read have failed. Throws host::Error when the
  // mesh cannot be read.
  PartIntegrals integrate(const std::vector<Quantity>& quantities, int part);

 private:
  const analysis::FaceDirections& directions_of(int part, std::size_t faces);
  bool is_cylindrical(const host::Part& part);

  host::Session& session_;
  PressureOptions pressure_;
  QuantityValues values_;
  CoordinateNames names_;
  std::optional<int> directed_at_;  // geometry step
  std::map<int, analysis::FaceDirections> directions_;
};

// The pressure that is meant unless one is named: the only scalar called p, pres or pressure, in upper or
// lower case; none when there is none, or several.
std::optional<Quantity> usual_pressure(host::Session& session);

}  // namespace tool
