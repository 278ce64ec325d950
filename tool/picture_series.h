// What the pictures of several steps have in common, so that colours, places and arrows mean the same in all.
#pragma once

#include <optional>
#include <set>
#include <string>

#include "host/session.h"
#include "render/camera.h"
#include "tool/picture_contents.h"
#include "tool/progress.h"

namespace tool {

struct PictureSeries {
  ValueRange range;  // of what is coloured
  render::Extent extent;
  double longest_vector = 0;
  std::set<std::string> empty;  // cuts that meet nothing at any of the steps
};

// Goes through all steps.
PictureSeries survey_pictures(host::Session& session, const PictureChoice& choice, ContentsReader& reader,
                              const std::optional<PictureScalar>& scalar, const render::View& view,
                              Progress& progress);

// What the picture of the session's step has room for when --focus chooses it.
render::Extent focus_extent(host::Session& session, const PictureChoice& choice, const render::View& view);

}  // namespace tool
