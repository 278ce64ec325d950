// What writes a dataset for other programs, step by step.
#pragma once

#include <functional>
#include <optional>

#include "tool/chosen_parts.h"
#include "tool/json_values.h"
#include "tool/point_text.h"
#include "tool/quantity.h"
#include "vtk/compression.h"
#include "vtk/precision.h"

class vtkUnstructuredGrid;

namespace tool {

struct SeriesOptions {
  ChosenParts parts;
  WholeQuantities quantities;
  std::optional<PointPair> box{};  // opposite corners: only elements with a node in it
  vtkdata::Precision precision = vtkdata::Precision::single_width;
  vtkdata::Compression compression = vtkdata::Compression::none;
  std::function<void(vtkUnstructuredGrid* grid, int part)>
      more_values{};  // adds arrays to a part; may be empty
};

// Its members throw CommandError when a file cannot be written.
class SeriesWriter {
 public:
  SeriesWriter() = default;
  SeriesWriter(const SeriesWriter&) = delete;
  SeriesWriter& operator=(const SeriesWriter&) = delete;
  virtual ~SeriesWriter() = default;

  // Writes the session's step, part by part, and returns what add_step needs to know of it. `after_part` is
  // called after every part; when an exception leaves it, the steps before stay. Also throws host::Error when
  // the dataset cannot be read.
  virtual Json write_step(const std::function<void()>& after_part) = 0;

  // Adds a step that was written, maybe by another process, to the series, which is complete with it.
  virtual void add_step(const Json& step) = 0;

  // Called after the last step.
  virtual void finish() {}

  // Whether a part was added at any step: with a box there may be none.
  virtual bool has_parts() const { return true; }
};

}  // namespace tool
