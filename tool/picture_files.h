// The files that pictures are written into.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "render/colour_map.h"
#include "tool/film.h"
#include "tool/picture_contents.h"
#include "tool/picture_scalar.h"
#include "tool/render_options.h"

namespace tool {

// Those of one scalar.
class PictureFiles {
 public:
  PictureFiles(const RenderOptions& options, const PictureChoice& choice,
               const std::optional<PictureScalar>& scalar);

  std::filesystem::path of_step(int step) const;

  // Null when the output is no film, or when there is nothing to make one with, which it tells.
  std::unique_ptr<Film> begin_film(const render::Colour& background) const;

 private:
  const RenderOptions& options_;
  const PictureChoice& choice_;
  std::filesystem::path path_;  // without the number of a step
};

}  // namespace tool
