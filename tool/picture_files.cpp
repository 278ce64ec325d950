#include "tool/picture_files.h"

#include <string>
#include <unistd.h>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/best_effort_write.h"
#include "tool/file_names.h"

namespace tool {
namespace {

// NAME.png becomes NAME_SUFFIX.png.
std::filesystem::path with_suffix(const std::filesystem::path& path, const std::string& suffix) {
  return path.parent_path() / (path.stem().string() + "_" + suffix + path.extension().string());
}

std::string hex_colour(const render::Colour& colour) {
  std::string text = "#";
  for (const double part : colour) text += fmt::format("{:02x}", static_cast<int>(part * 255 + 0.5));
  return text;
}

}  // namespace

PictureFiles::PictureFiles(const RenderOptions& options, const PictureChoice& choice,
                           const std::optional<PictureScalar>& scalar)
    : options_(options), choice_(choice), path_(options.output) {
  if (path_.empty()) path_ = std::filesystem::path(options.dataset.file).filename().replace_extension(".png");
  if (choice.scalars.size() > 1) {
    path_ =
        with_suffix(path_, fmt::format("{}_{}", scalar->quantity.source_number(), plain_name(scalar->name)));
  }
}

std::filesystem::path PictureFiles::of_step(int step) const {
  std::filesystem::path path = path_;
  if (is_film(path)) path.replace_extension(".png");
  if (choice_.steps.size() == 1) return path;
  return with_suffix(path, fmt::format("{:0{}}", step, std::to_string(choice_.steps.back()).size()));
}

std::unique_ptr<Film> PictureFiles::begin_film(const render::Colour& background) const {
  if (!is_film(path_)) return nullptr;
  std::unique_ptr<Film> film = Film::begin(path_, options_.fps, hex_colour(background));
  if (!film) {
    std::string names = host::message_to_utf8(of_step(choice_.steps.front()).string());
    if (choice_.steps.size() > 1)
      names += " to " + host::message_to_utf8(of_step(choice_.steps.back()).filename().string());
    write_if_possible(STDERR_FILENO,
                      fmt::format("fldtool: ffmpeg is not installed: writing {} in place of {}\n", names,
                                  host::message_to_utf8(path_.filename().string())));
  }
  return film;
}

}  // namespace tool
