#include "page/scene.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <utility>

namespace page {
namespace {

// What stands around each chunk in the page, about.
constexpr std::size_t kChunkMarkup = 64;
// Points in single precision that have moved rigidly arrive this close, relative to the largest coordinate.
constexpr double kSingleTolerance = 4e-7;

std::vector<float> axis_of(const std::vector<float>& points, std::size_t axis) {
  std::vector<float> numbers(points.size() / 3);
  for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = points[3 * i + axis];
  return numbers;
}

// How far a point may be from where a page says it is.
double tolerance(const std::vector<float>& points, int bits) {
  const Range range = range_of(points);
  const double largest =
      std::max(std::abs(static_cast<double>(range.low)), std::abs(static_cast<double>(range.high)));
  double step = 0;
  for (std::size_t axis = 0; bits > 0 && axis < 3; ++axis) {
    const Range along = range_of(axis_of(points, axis));
    step = std::max(step, (static_cast<double>(along.high) - static_cast<double>(along.low)) /
                              static_cast<double>(1U << static_cast<unsigned>(bits)));
  }
  return std::max(step / 2, kSingleTolerance * largest);
}

bool are_same(const std::vector<float>& a, const std::vector<float>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](float x, float y) { return x == y || (std::isnan(x) && std::isnan(y)); });
}

bool are_same(const SurfaceValues& a, const SurfaceValues& b) {
  return a.per_face == b.per_face &&
         std::equal(a.components.begin(), a.components.end(), b.components.begin(), b.components.end(),
                    [](const auto& x, const auto& y) { return are_same(x, y); });
}

nlohmann::json ranges_json(const std::vector<Range>& ranges) {
  auto list = nlohmann::json::array();
  for (const Range& range : ranges) {
    list.push_back(range.low);
    list.push_back(range.high);
  }
  return list;
}

}  // namespace

Scene::Scene(std::size_t variables, Precision precision)
    : precision_(precision), values_(variables), written_values_(variables) {}

void Scene::set_part_count(std::size_t count) {
  written_.resize(count);
  for (auto& of_parts : written_values_) of_parts.resize(count);
  // The steps so far do not have the new ones.
  for (Step& step : steps_) {
    step.geometry.resize(count);
    for (auto& of_parts : step.values) of_parts.resize(count);
  }
}

void Scene::begin_step(nlohmann::json about) {
  Step step;
  step.about = std::move(about);
  if (steps_.empty()) {
    step.geometry.resize(written_.size());
  } else {
    step.geometry = steps_.back().geometry;
  }
  step.values.assign(values_.size(), std::vector<std::optional<Block>>(written_.size()));
  steps_.push_back(std::move(step));
  geometry_.chunk = chunks_.size();
  for (std::size_t i = 0; i < values_.size(); ++i) values_[i].chunk = chunks_.size() + 1 + i;
  chunks_.resize(chunks_.size() + 1 + values_.size());
}

Scene::FaceBlock Scene::add_faces(const Faces& faces, std::size_t points) {
  const FaceBlock block = {geometry_.chunk, geometry_.bytes.size(), faces.sizes.size(), points,
                           !faces.nodes.empty()};
  append_faces(geometry_.bytes, faces);
  return block;
}

Scene::Block Scene::add_points(const std::vector<float>& points) {
  Block block = {geometry_.chunk, geometry_.bytes.size(), points.size() / 3, {}, false};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const std::vector<float> numbers = axis_of(points, axis);
    block.ranges.push_back(range_of(numbers));
    append_numbers(geometry_.bytes, numbers, block.ranges.back(), precision_.coordinate_bits);
  }
  return block;
}

void Scene::set_surface(std::size_t part, Surface surface) {
  if (surface.faces.sizes.empty()) {
    remove_surface(part);
    return;
  }
  std::optional<Written>& written = written_[part];
  std::optional<Geometry>& geometry = steps_.back().geometry[part];
  const bool same_faces =
      written && written->points.size() == surface.points.size() && written->faces == surface.faces;
  if (!same_faces) {
    const FaceBlock face_block = add_faces(surface.faces, surface.points.size() / 3);
    const Block point_block = add_points(surface.points);
    written = Written{std::move(surface.faces), std::move(surface.points), face_block, point_block};
    geometry = Geometry{face_block, point_block, std::nullopt};
    return;
  }
  std::optional<Matrix> matrix;
  if (!are_same(written->points, surface.points)) {
    matrix = find_rigid_motion(written->points, surface.points,
                               tolerance(surface.points, precision_.coordinate_bits));
    if (!matrix) {
      written->point_block = add_points(surface.points);
      written->points = std::move(surface.points);
    }
  }
  geometry = Geometry{written->face_block, written->point_block, matrix};
}

void Scene::remove_surface(std::size_t part) {
  steps_.back().geometry[part].reset();
}

void Scene::set_values(std::size_t variable, std::size_t part, const SurfaceValues& values) {
  const std::optional<Geometry>& geometry = steps_.back().geometry[part];
  if (!geometry || values.components.empty()) return;
  const std::size_t wanted = values.per_face ? geometry->faces.faces : geometry->faces.points;
  if (values.components.front().size() != wanted) return;
  std::optional<WrittenValues>& written = written_values_[variable][part];
  if (!written || !are_same(written->values, values)) {
    Pending& pending = values_[variable];
    Block block = {pending.chunk, pending.bytes.size(), wanted, {}, values.per_face};
    for (const std::vector<float>& numbers : values.components) {
      block.ranges.push_back(range_of(numbers));
      append_numbers(pending.bytes, numbers, block.ranges.back(), precision_.value_bits);
    }
    if (values.components.size() == 3) block.ranges.push_back(range_of(component_of(values, std::nullopt)));
    written = WrittenValues{values, std::move(block)};
  }
  steps_.back().values[variable][part] = written->block;
}

void Scene::end_step() {
  const auto finish = [this](Pending& pending) {
    if (!pending.bytes.empty()) chunks_[pending.chunk] = pack(pending.bytes);
    pending.bytes.clear();
  };
  finish(geometry_);
  for (Pending& pending : values_) finish(pending);
}

std::vector<std::size_t> Scene::chunks_of(const std::vector<std::size_t>& steps) const {
  std::set<std::size_t> used;
  for (const std::size_t number : steps) {
    const Step& step = steps_[number];
    for (const auto& geometry : step.geometry) {
      if (geometry) used.insert({geometry->faces.chunk, geometry->points.chunk});
    }
    for (const auto& parts : step.values) {
      for (const auto& block : parts) {
        if (block) used.insert(block->chunk);
      }
    }
  }
  return {used.begin(), used.end()};
}

std::size_t Scene::size_of(const std::vector<std::size_t>& steps) const {
  std::size_t size = describe(steps).dump().size();
  for (const std::size_t chunk : chunks_of(steps)) size += chunks_[chunk].size() + kChunkMarkup;
  return size;
}

nlohmann::json Scene::describe(const std::vector<std::size_t>& steps) const {
  using nlohmann::json;
  std::map<std::size_t, std::size_t> places;
  for (const std::size_t chunk : chunks_of(steps)) places.emplace(chunk, places.size());
  json list = json::array();
  for (const std::size_t number : steps) {
    const Step& step = steps_[number];
    json described = step.about;
    json& parts = described["parts"] = json::array();
    for (const auto& geometry : step.geometry) {
      if (!geometry) {
        parts.push_back(nullptr);
        continue;
      }
      const FaceBlock& faces = geometry->faces;
      const Block& points = geometry->points;
      json part = {
          {"faces", {places[faces.chunk], faces.offset, faces.faces, faces.points, faces.has_nodes}},
          {"points", {places[points.chunk], points.offset, points.count, ranges_json(points.ranges)}}};
      if (geometry->matrix) part["matrix"] = *geometry->matrix;
      parts.push_back(std::move(part));
    }
    json& variables = described["values"] = json::array();
    for (const auto& of_parts : step.values) {
      json blocks = json::array();
      for (const auto& block : of_parts) {
        blocks.push_back(block ? json{places[block->chunk], block->offset, block->count,
                                      ranges_json(block->ranges), block->per_face}
                               : json());
      }
      variables.push_back(std::move(blocks));
    }
    list.push_back(std::move(described));
  }
  return {
      {"coordinateBits", precision_.coordinate_bits}, {"valueBits", precision_.value_bits}, {"steps", list}};
}

void Scene::each_packed(const std::vector<std::size_t>& steps,
                        const std::function<void(const std::string& packed)>& use) const {
  for (const std::size_t chunk : chunks_of(steps)) use(chunks_[chunk]);
}

}  // namespace page
