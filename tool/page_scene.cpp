#include "tool/page_scene.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <string_view>
#include <utility>
#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkPointData.h>

#include "page/surface.h"
#include "vtk/part_grid.h"
#include "vtk/points.h"

namespace tool {
namespace {

bool are_faces(const std::vector<host::ElementBlock>& blocks) {
  constexpr int kFaceDimension = 2;
  return std::all_of(blocks.begin(), blocks.end(),
                     [](const host::ElementBlock& block) { return block.shape.dimension == kFaceDimension; });
}

// The elements of a surface are its faces.
page::Faces faces_of(const std::vector<host::ElementBlock>& blocks, std::size_t nodes) {
  page::Faces faces;
  for (const host::ElementBlock& block : blocks) {
    faces.sizes.insert(faces.sizes.end(), block.size(), static_cast<std::uint8_t>(block.shape.nodes));
    std::transform(block.nodes.begin(), block.nodes.end(), std::back_inserter(faces.corners),
                   [](int node) { return node - 1; });
  }
  faces.elements.resize(faces.sizes.size());
  faces.nodes.resize(nodes);
  for (std::size_t i = 0; i < faces.elements.size(); ++i) faces.elements[i] = static_cast<int>(i) + 1;
  for (std::size_t i = 0; i < nodes; ++i) faces.nodes[i] = static_cast<int>(i) + 1;
  return faces;
}

std::vector<float> points_at(const host::Coordinates& coordinates, const std::vector<int>& nodes) {
  std::vector<float> points(nodes.size() * 3);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto node = static_cast<std::size_t>(nodes[i] - 1);
    points[3 * i] = coordinates.x()[node];
    points[3 * i + 1] = coordinates.y()[node];
    points[3 * i + 2] = coordinates.z()[node];
  }
  return points;
}

std::size_t fingerprint(const std::vector<host::ElementBlock>& blocks) {
  std::size_t sum = 0;
  for (const host::ElementBlock& block : blocks) {
    const std::string_view bytes(reinterpret_cast<const char*>(block.nodes.data()),
                                 block.nodes.size() * sizeof(int));
    sum = sum * 31 + std::hash<std::string_view>()(bytes) + static_cast<std::size_t>(block.shape.slot);
  }
  return sum;
}

// Goes through the steps with what it has to remember from one to the next.
class SceneMaker {
 public:
  SceneMaker(host::Session& session, const PageChoice& choice, PageEntries& entries, PageData& data)
      : session_(session),
        values_(session),
        choice_(choice),
        entries_(entries),
        scene_(data.scene),
        range_(data.range) {}

  void add_step(int step, const std::function<void(bool is_first)>& after_part) {
    session_.select_step(step);
    entries_.add_step();
    scene_.set_part_count(entries_.all().size());
    outside_.resize(entries_.all().size());
    const auto time = session_.variable_times().times[static_cast<std::size_t>(step)];
    scene_.begin_step({{"step", step}, {"time", time}});
    const int geometry_step = session_.geometry_step_of(step);
    is_new_geometry_ = geometry_step != geometry_step_;
    geometry_step_ = geometry_step;
    const std::map<PartIdentity, int> numbers = part_numbers(session_);
    for (std::size_t i = 0; i < entries_.all().size(); ++i) {
      const PageEntry& entry = entries_.all()[i];
      const auto found = numbers.find(entry.part);
      if (found == numbers.end()) {
        scene_.remove_surface(i);
        outside_[i].is_known = false;
      } else if (entry.cut) {
        add_cut(i, found->second, *entry.cut);
      } else {
        add_outside(i, found->second);
      }
      after_part(i == 0);
    }
    scene_.end_step();
  }

 private:
  // A part's outer faces, with the connectivity that they were found in.
  struct Outside {
    std::size_t elements = 0;
    page::Faces faces;
    bool is_known = false;
  };

  void add_outside(std::size_t entry, int part) {
    Outside& outside = outside_[entry];
    if (is_new_geometry_ || !outside.is_known) {
      page::Surface surface;
      const host::Coordinates coordinates = session_.coordinates(part);
      std::vector<host::ElementBlock> blocks = session_.elements(part);
      const std::size_t elements = fingerprint(blocks);
      if (outside.is_known && elements == outside.elements) {
        surface = {outside.faces, points_at(coordinates, outside.faces.nodes)};
      } else if (are_faces(blocks)) {
        surface.faces = faces_of(blocks, coordinates.size());
        surface.points = points_at(coordinates, surface.faces.nodes);
      } else {
        const vtkSmartPointer<vtkPoints> points = vtkdata::make_points(coordinates);
        surface = page::outer_surface(vtkdata::make_grid(points, vtkdata::make_cells(std::move(blocks))));
      }
      outside = {elements, surface.faces, true};
      scene_.set_surface(entry, std::move(surface));
    }
    for (std::size_t i = 0; i < choice_.variables.size(); ++i) {
      const Quantity& variable = choice_.variables[i];
      const vtkSmartPointer<vtkDataArray> array = values_.of(variable, part);
      auto* values = vtkFloatArray::SafeDownCast(array);
      if (colours(entry, variable))
        range_.add(as_scalars(array, choice_.scalar->quantity.component), session_.part(part).nodes);
      if (values == nullptr || values->GetNumberOfTuples() == 0) continue;
      page::SurfaceValues on_faces;
      on_faces.per_face = variable.is_per_element();
      const int components = values->GetNumberOfComponents();
      for (int c = 0; c < components; ++c) {
        on_faces.components.push_back(
            page::pick_values(on_faces.per_face ? outside.faces.elements : outside.faces.nodes,
                              values->GetPointer(0), components, c));
      }
      scene_.set_values(i, entry, on_faces);
    }
  }

  void add_cut(std::size_t entry, int part, const CutPlane& plane) {
    const vtkSmartPointer<vtkUnstructuredGrid> grid = vtkdata::make_part_grid(session_, part);
    // The cut's values come in the order of the grid's arrays, first those of the points.
    std::vector<std::size_t> of_points;
    std::vector<std::size_t> of_cells;
    for (std::size_t i = 0; i < choice_.variables.size(); ++i) {
      const Quantity& variable = choice_.variables[i];
      const vtkSmartPointer<vtkDataArray> values = values_.of(variable, part);
      if (values == nullptr) continue;
      values->SetName(std::to_string(i).c_str());
      if (variable.is_per_element()) {
        grid->GetCellData()->AddArray(values);
        of_cells.push_back(i);
      } else {
        grid->GetPointData()->AddArray(values);
        of_points.push_back(i);
      }
    }
    page::CutSurface made = page::cut(grid, plane.axis, plane.position);
    scene_.set_surface(entry, std::move(made.surface));
    of_points.insert(of_points.end(), of_cells.begin(), of_cells.end());
    for (std::size_t i = 0; i < std::min(of_points.size(), made.values.size()); ++i) {
      const page::SurfaceValues& values = made.values[i];
      if (colours(entry, choice_.variables[of_points[i]]))
        range_.add(page::component_of(values, choice_.scalar->quantity.component));
      scene_.set_values(of_points[i], entry, values);
    }
  }

  // Whether the variable's values on an entry have colours at first.
  bool colours(std::size_t entry, const Quantity& variable) const {
    const PageEntry& of = entries_.all()[entry];
    return choice_.scalar && is_same_variable(choice_.scalar->quantity, variable) && of.is_shown &&
           !of.is_faint;
  }

  host::Session& session_;
  PictureValues values_;
  const PageChoice& choice_;
  PageEntries& entries_;
  page::Scene& scene_;
  ValueRange& range_;
  std::vector<Outside> outside_;  // per entry
  std::optional<int> geometry_step_;
  bool is_new_geometry_ = true;
};

}  // namespace

PageData read_page_data(host::Session& session, const PageChoice& choice, PageEntries& entries,
                        page::Precision precision, const std::function<void(bool is_first)>& after_part,
                        const std::function<void(std::size_t)>& after_step) {
  PageData data{page::Scene(choice.variables.size(), precision), {}};
  SceneMaker maker(session, choice, entries, data);
  for (const int step : choice.steps) {
    maker.add_step(step, after_part);
    after_step(data.scene.step_count());
  }
  return data;
}

}  // namespace tool
