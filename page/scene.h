// What a page shows, collected step by step: of every part the faces, where its points are and the values
// there, each only when it differs from the step before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "nlohmann/json.hpp"
#include "page/encoding.h"
#include "page/rigid_motion.h"
#include "page/surface.h"

namespace page {

class Scene {
 public:
  // Without parts.
  Scene(std::size_t variables, Precision precision);

  // From the next step on there are so many parts, never fewer than before.
  void set_part_count(std::size_t count);

  // Begins a step. Until something else is set, its parts are what they were at the step before, and no
  // variable has values. `about` goes into the page with the step.
  void begin_step(nlohmann::json about);

  // A part's surface at this step. A surface without faces is none.
  void set_surface(std::size_t part, Surface surface);
  // The part is not there at this step.
  void remove_surface(std::size_t part);

  // A variable's values on a part at this step, as many as its surface has points or faces.
  void set_values(std::size_t variable, std::size_t part, const SurfaceValues& values);

  void end_step();

  std::size_t step_count() const { return steps_.size(); }
  // The bytes that these steps (numbers from 0, in the order they were begun) take in a page.
  std::size_t size_of(const std::vector<std::size_t>& steps) const;

  // For the page's script: the chosen steps, and what of the data each step uses.
  nlohmann::json describe(const std::vector<std::size_t>& steps) const;
  // The data itself, packed, in the order of the numbers that describe() uses.
  void each_packed(const std::vector<std::size_t>& steps,
                   const std::function<void(const std::string& packed)>& use) const;

 private:
  // Where an array stands: the chunk, and the first byte there once it is unpacked.
  struct Block {
    std::size_t chunk = 0;
    std::size_t offset = 0;
    std::size_t count = 0;      // points, or values of a component
    std::vector<Range> ranges;  // of each component, and behind those of a vector that of the magnitude
    bool per_face = false;
  };
  struct FaceBlock {
    std::size_t chunk = 0;
    std::size_t offset = 0;
    std::size_t faces = 0;
    std::size_t points = 0;
    bool has_nodes = false;
  };
  struct Geometry {
    FaceBlock faces;
    Block points;
    std::optional<Matrix> matrix;
  };
  // NOLINTNEXTLINE(bugprone-exception-escape): moving a value of nlohmann::json does not throw
  struct Step {
    nlohmann::json about;
    std::vector<std::optional<Geometry>> geometry;          // per part
    std::vector<std::vector<std::optional<Block>>> values;  // per variable and part
  };
  // What was written of a part last, to compare with.
  struct Written {
    Faces faces;
    std::vector<float> points;
    FaceBlock face_block;
    Block point_block;
  };
  struct WrittenValues {
    SurfaceValues values;
    Block block;
  };
  // Bytes that become one chunk at the end of the step.
  struct Pending {
    std::size_t chunk = 0;
    Bytes bytes;
  };

  FaceBlock add_faces(const Faces& faces, std::size_t points);
  Block add_points(const std::vector<float>& points);
  std::vector<std::size_t> chunks_of(const std::vector<std::size_t>& steps) const;

  Precision precision_;
  std::vector<std::string> chunks_;  // packed
  Pending geometry_;
  std::vector<Pending> values_;  // per variable
  std::vector<Step> steps_;
  std::vector<std::optional<Written>> written_;                            // per part
  std::vector<std::vector<std::optional<WrittenValues>>> written_values_;  // per variable and part
};

}  // namespace page
