#include "tool/picture_series.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "tool/interrupt.h"
#include "vtk/points.h"

namespace tool {
namespace {

// Without cuts and arrows it is enough to read the places and the values.
void survey_parts(host::Session& session, const PictureChoice& choice, ContentsReader& reader,
                  const std::optional<PictureScalar>& scalar, PictureSeries& series) {
  const auto add = [&](int part) {
    stop_if_interrupted();
    series.extent.add(vtkdata::make_points(session.coordinates(part)));
  };
  for (const int part : choice.coloured(session)) {
    add(part);
    if (scalar) series.range.add(reader.values(*scalar, part), session.part(part).nodes);
  }
  for (const int part : choice.faint.at(session)) add(part);
}

void survey_contents(ContentsReader& reader, const std::optional<PictureScalar>& scalar, bool is_first,
                     PictureSeries& series) {
  const PictureContents contents = reader.read(scalar);
  for (const render::ShownPart& part : contents.parts) {
    if (part.faces->GetPoints() != nullptr) series.extent.add(part.faces->GetPoints());
  }
  series.range.add(contents.range);
  series.longest_vector = std::max(series.longest_vector, contents.longest_vector);
  if (is_first) {
    series.empty = contents.empty;
  } else {
    std::erase_if(series.empty, [&](const std::string& cut) { return !contents.empty.contains(cut); });
  }
}

}  // namespace

PictureSeries survey_pictures(host::Session& session, const PictureChoice& choice, ContentsReader& reader,
                              const std::optional<PictureScalar>& scalar, const render::View& view,
                              Progress& progress) {
  PictureSeries series{{}, render::Extent(view), 0, {}};
  render::Extent focus(view);
  std::size_t done = 0;
  for (const int step : choice.steps) {
    progress.update(done++);
    session.select_step(step);
    if (choice.has_cuts() || choice.cuts.arrows) {
      survey_contents(reader, scalar, done == 1, series);
    } else {
      survey_parts(session, choice, reader, scalar, series);
    }
    for (const int part : choice.focus.at(session))
      focus.add(vtkdata::make_points(session.coordinates(part)));
  }
  if (choice.focus.size() > 0) series.extent = focus;
  return series;
}

render::Extent focus_extent(host::Session& session, const PictureChoice& choice, const render::View& view) {
  render::Extent extent(view);
  for (const int part : choice.focus.at(session)) extent.add(vtkdata::make_points(session.coordinates(part)));
  return extent;
}

}  // namespace tool
