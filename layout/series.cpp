#include "layout/series.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "dataset/volume_names.h"
#include "support/errors.h"

namespace layout {
namespace {

// Why FLDFile::checkSections refuses the file at `path`.
std::string reason_of(int status, const std::string& path) {
  std::error_code error;
  switch (status) {
    case -1:
      return std::filesystem::exists(path, error) ? "it cannot be opened" : "there is no such file";
    case -2:
      return "This is not FLD file.";
    default:
      return "its version is not 4, or it is two-dimensional";
  }
}

// The message of an error of the reader's modules, without the line end.
std::string text_of(const fld::FLDException& error) {
  std::string text = error.getMessage();
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

// The double that the shortest decimal of the float means.
double shortest(float value) {
  char text[64];
  const auto written = std::to_chars(text, text + sizeof text, value);
  double result = static_cast<double>(value);
  std::from_chars(text, written.ptr, result);
  return result;
}

// A time that fits single precision was mostly written in it.
double exact_time(double time) {
  const auto single = static_cast<float>(time);
  return static_cast<double>(single) == time ? shortest(single) : time;
}

FileArray at(int file, const fld::ArrayLayout& place) {
  return {.file = file, .place = place};
}

}  // namespace

Series::Series(const std::string& path, bool first_index_only) {
  std::vector<std::string> files;
  if (dataset_.searchFLD(path.c_str(), files) != 0)
    throw Error(path + ": the extension is not that of an FLD file");
  for (const std::string& name : files) check_file(name);
  if (dataset_.m_fld.empty()) {
    if (left_out_.empty()) throw Error(path + ": the file is not there");
    throw Error(left_out_.front().path + ": " + left_out_.front().reason);
  }
  const fld::FLDFile& first = file(0);
  set_count_ = static_cast<int>(first.m_overlap.size());
  if (set_count_ == 0) fail(0, "it has no region set");
  for (const fld::FLDSEEKOverlap& set : first.m_overlap) {
    if (!set.m_hasGeometry) fail(0, "the first file of a series has to have a mesh");
  }
  const bool moves = std::any_of(dataset_.m_fld.begin(), dataset_.m_fld.end(),
                                 [](const fld::FLDFile& file) { return file.hasALE(); });
  const bool index_all = moves || !first_index_only;
  for (std::size_t i = 0; !index_all && i < dataset_.m_fld.size(); ++i) {
    if (dataset_.m_fld[i].m_overlap.size() != first.m_overlap.size()) {
      fail(static_cast<int>(i),
           "it has other region sets than the first file, so every file has to be indexed");
    }
  }
  try {
    if (dataset_.seekFLD(index_all) != 0) throw Error(path + ": the quantities cannot be indexed");
  } catch (const fld::FLDException& error) {
    throw Error(path + ": " + text_of(error));
  }
  dataset_.m_transient = dataset_.isTransient_inner(dataset_.m_fld);
  for (const fld::FLDFile& each : dataset_.m_fld) {
    paths_.push_back(each.m_path);
    times_.push_back(dataset_.m_transient ? exact_time(each.m_time) : static_cast<double>(each.m_cycle));
  }
  const fld::Field& field = dataset_.m_field;
  const auto add = [this](const std::string& name, const std::string& label, int components,
                          bool is_material) {
    variables_.push_back({static_cast<int>(variables_.size()) + 1, name, label, components, is_material});
  };
  for (std::size_t i = 0; i < field.scalar_names().size(); ++i)
    add(field.scalar_names()[i], field.scalar_labels()[i], 1, false);
  for (std::size_t i = 0; i < field.vector_names().size(); ++i)
    add(field.vector_names()[i], field.vector_labels()[i], 3, false);
  add(kMaterialName, "", 1, true);
}

void Series::check_file(const std::string& path) {
  fld::FLDFile file(path);
  std::string reason;
  try {
    const int status = file.checkSections();
    if (status == 0) {
      dataset_.m_fld.push_back(std::move(file));
      return;
    }
    reason = reason_of(status, path);
  } catch (const fld::FLDException& error) {
    reason = text_of(error);
  }
  left_out_.push_back({path, reason});
}

void Series::fail(int index, const std::string& reason) const {
  throw Error(file(index).m_path + ": " + reason);
}

std::vector<int> Series::steps_with_mesh() const {
  std::vector<int> steps;
  for (int i = 0; i < static_cast<int>(dataset_.m_fld.size()); ++i) {
    if (file(i).hasGeometry()) steps.push_back(i);
  }
  return steps;
}

// The nearest file at or before the step's that has geometry or a motion.
int Series::geometry_file_of(int step) const {
  for (int i = step; i > 0; --i) {
    if (file(i).hasGeometry() || file(i).hasALE()) return i;
  }
  return 0;
}

int Series::nearest_geometry(int index, int set) const {
  const auto region = static_cast<std::size_t>(set);
  for (int i = index; i >= 0; --i) {
    if (region >= file(i).m_overlap.size()) fail(i, "it lacks region set " + std::to_string(set));
    if (file(i).m_overlap[region].m_hasGeometry) return i;
  }
  return 0;
}

Series::SetSources Series::sources(int step, int set) const {
  const auto region = static_cast<std::size_t>(set);
  const int current = geometry_file_of(step);
  if (region >= file(current).m_overlap.size()) fail(current, "it lacks region set " + std::to_string(set));
  const fld::FLDSEEKOverlap& overlap = file(current).m_overlap[region];
  SetSources sources{{0}, -1};
  int reference = 0;
  if (overlap.m_hasALE) {
    sources.motion_file = current;
    const int cycle = overlap.m_ale.base_cycle;
    const fld::FLDFile* base = dataset_.findFLDFileByCycle(cycle);
    if (base == nullptr) {
      fail(current, "its motion starts from cycle " + std::to_string(cycle) + ", which no file has");
    }
    reference = dataset_.index_of(base);
    if (region >= base->m_overlap.size()) fail(reference, "it lacks region set " + std::to_string(set));
    // A motion never starts from what an earlier step has moved.
    if (!base->m_overlap[region].m_hasGeometry) sources.files.push_back(nearest_geometry(reference, set));
  } else {
    reference = nearest_geometry(current, set);
  }
  sources.files.push_back(reference);
  sources.files.erase(std::unique(sources.files.begin(), sources.files.end()), sources.files.end());
  return sources;
}

Series::SetSections Series::combine(const SetSources& sources, int set) {
  SetSections all;
  all.motion_file = sources.motion_file;
  for (const int index : sources.files) {
    fld::RegionSetLayout of_file;
    try {
      of_file = file(index).locateGeometry(set);
    } catch (const fld::FLDException& error) {
      fail(index, text_of(error));
    }
    const auto take = [index](auto& section, auto& from, int& holder) {
      if (!from) return;
      section = std::move(from);
      holder = index;
    };
    all.layout.coordinateSystem = of_file.coordinateSystem;
    take(all.layout.surfaces, of_file.surfaces, all.surfaces_file);
    take(all.layout.volumes, of_file.volumes, all.volumes_file);
    take(all.layout.elements, of_file.elements, all.elements_file);
    take(all.layout.materials, of_file.materials, all.materials_file);
    take(all.layout.nodes, of_file.nodes, all.nodes_file);
  }
  return all;
}

const Series::SetSections& Series::sections(int step, int set) {
  const int current = geometry_file_of(step);
  if (located_step_ != current) {
    located_.clear();
    located_step_ = current;
  }
  const auto found = located_.find(set);
  if (found != located_.end()) return found->second;
  return located_.emplace(set, combine(sources(step, set), set)).first->second;
}

std::vector<Part> Series::parts(int step) {
  std::vector<Part> parts;
  const auto add = [&](const std::string& name, PartKind kind, int set, std::size_t index) {
    parts.push_back({static_cast<int>(parts.size()) + 1, name, kind, set, static_cast<int>(index)});
  };
  for (int set = 0; set < set_count_; ++set) {
    const auto& surfaces = sections(step, set).layout.surfaces;
    for (std::size_t i = 0; surfaces && i < surfaces->size(); ++i)
      add((*surfaces)[i].name, PartKind::surface, set, i);
  }
  for (int set = 0; set < set_count_; ++set) {
    const auto& volumes = sections(step, set).layout.volumes;
    for (std::size_t i = 0; volumes && i < volumes->size(); ++i)
      add((*volumes)[i].name, PartKind::volume, set, i);
  }
  for (int set = 0; set < set_count_; ++set) add("", PartKind::whole, set, 0);
  return parts;
}

std::vector<MovingVolumes> Series::locate_motion(const SetSections& sections, int set) const {
  const fld::ALE& ale = file(sections.motion_file).m_overlap[static_cast<std::size_t>(set)].m_ale;
  std::vector<std::string_view> names;
  if (sections.layout.volumes) {
    for (const fld::VolumeLayout& volume : *sections.layout.volumes) names.emplace_back(volume.name);
  }
  const std::vector<std::vector<int>> moved = fld::share_out_volumes(ale, names);
  std::vector<MovingVolumes> motion;
  for (std::size_t r = 0; r < ale.regions.size(); ++r) {
    MovingVolumes moving;
    for (const int volume : moved[r]) {
      moving.lists.push_back(
          at(sections.volumes_file, (*sections.layout.volumes)[static_cast<std::size_t>(volume)].elem));
    }
    moving.actions = ale.regions[r].actions;
    if (!moving.lists.empty()) motion.push_back(std::move(moving));
  }
  return motion;
}

SetMesh Series::locate_mesh(const SetSections& sections, int set) const {
  const fld::RegionSetLayout& layout = sections.layout;
  SetMesh mesh;
  mesh.is_cylindrical = layout.coordinateSystem == 1;
  mesh.is_overset =
      std::any_of(dataset_.m_fld.begin(), dataset_.m_fld.end(), [set](const fld::FLDFile& file) {
        const auto region = static_cast<std::size_t>(set);
        return region < file.m_overlap.size() && file.m_overlap[region].m_hasOverset;
      });
  if (layout.elements) {
    mesh.element_bias = file(sections.elements_file).m_bias;
    mesh.types = at(sections.elements_file, layout.elements->type);
    mesh.conn = at(sections.elements_file, layout.elements->conn);
  }
  if (layout.materials) mesh.materials = at(sections.materials_file, layout.materials->mat);
  if (layout.nodes) {
    mesh.node_count = layout.nodes->nnode;
    mesh.axes = {at(sections.nodes_file, layout.nodes->x), at(sections.nodes_file, layout.nodes->y),
                 at(sections.nodes_file, layout.nodes->z)};
  }
  if (layout.volumes) mesh.list_bias = file(sections.volumes_file).m_bias;
  if (sections.motion_file >= 0) {
    mesh.motion_file = sections.motion_file;
    mesh.motion = locate_motion(sections, set);
  }
  return mesh;
}

PartLists Series::locate_part(const Part& part, const SetSections& sections) const {
  PartLists lists;
  lists.number = part.number;
  lists.kind = part.kind;
  lists.set = part.set;
  const auto index = static_cast<std::size_t>(part.index);
  if (part.kind == PartKind::surface) {
    const fld::SurfaceLayout& surface = sections.layout.surfaces->at(index);
    lists.bias = file(sections.surfaces_file).m_bias;
    lists.face_types = at(sections.surfaces_file, surface.faceType);
    lists.face_links = at(sections.surfaces_file, surface.faceLink);
    lists.face_nodes = at(sections.surfaces_file, surface.faceNode);
  } else if (part.kind == PartKind::volume) {
    lists.bias = file(sections.volumes_file).m_bias;
    lists.elements = at(sections.volumes_file, sections.layout.volumes->at(index).elem);
  }
  return lists;
}

SetValues Series::locate_values(int step, const Variable& variable, int set) const {
  SetValues values;
  const fld::FLDFile& of_step = file(step);
  const auto limit = [&](const fld::ArrayLayout& array) {
    return 0.99 * (array.width == 4 ? static_cast<double>(of_step.m_unusedFloat) : of_step.m_unusedDouble);
  };
  try {
    if (variable.components == 1) {
      const auto* title = of_step.findSeekScalar(variable.name.c_str(), set);
      if (title == nullptr) return values;
      values.components[0] = at(step, of_step.locateValues(*title).values);
      values.undefined_above[0] = limit(values.components[0].place);
    } else {
      const auto* title = of_step.findSeekVector(variable.name.c_str(), set);
      if (title == nullptr) return values;
      const fld::VectorLayout vector = of_step.locateValues(*title);
      for (std::size_t c = 0; c < 3; ++c) {
        values.components[c] = at(step, vector.components[c]);
        values.undefined_above[c] = limit(vector.components[c]);
      }
    }
  } catch (const fld::FLDException& error) {
    values.components = {};
    values.problem = of_step.m_path + ": " + text_of(error);
  }
  return values;
}

VariableValues Series::locate_variable(int step, const Variable& variable) const {
  VariableValues located;
  located.number = variable.number;
  located.components = variable.components;
  located.is_material = variable.is_material;
  for (int set = 0; !variable.is_material && set < set_count_; ++set)
    located.sets.push_back(locate_values(step, variable, set));
  return located;
}

StepLayout Series::locate(int step, const std::vector<Part>& parts, const std::vector<int>& variables) {
  StepLayout located;
  located.step = step;
  for (int set = 0; set < set_count_; ++set) located.sets.push_back(locate_mesh(sections(step, set), set));
  for (const Part& part : parts) located.parts.push_back(locate_part(part, sections(step, part.set)));
  for (const int number : variables) {
    located.variables.push_back(locate_variable(step, variables_.at(static_cast<std::size_t>(number) - 1)));
  }
  return located;
}

}  // namespace layout
