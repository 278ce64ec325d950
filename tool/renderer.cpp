#include "tool/renderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "render/fonts.h"
#include "render/scene.h"
#include "tool/coordinate_names.h"
#include "tool/exit_status.h"
#include "tool/interrupt.h"
#include "tool/jobs.h"
#include "tool/output.h"
#include "tool/picture_contents.h"
#include "tool/picture_files.h"
#include "tool/picture_series.h"
#include "tool/picture_text.h"
#include "tool/progress.h"
#include "tool/read_error.h"

namespace tool {
namespace {

constexpr char kMapOfDifferences[] = "cool-warm";

class Renderer {
 public:
  Renderer(host::Session& session, ComparedDataset* compared, const RenderOptions& options)
      : session_(session),
        compared_(compared),
        options_(options),
        scene_(scene_options(options)),
        choice_(choose_picture(session, options)),
        reader_(session, choice_, compared),
        jobs_(usable_jobs(options.jobs, choice_.steps.size(), memory_of_step(session, choice_.steps))) {
    if (choice_.parts.size() + choice_.faint.size() + choice_.cuts.volumes.size() == 0)
      throw CommandError(ExitStatus::failure, options.dataset.file, "there is no part to draw");
    if (options.output == kStandardOutput && choice_.pictures() > 1)
      throw CommandError(ExitStatus::usage, "several pictures need a file name for --output");
    scene_.is_cropped = choice_.focus.size() > 0 || options.zoom > 1;
  }

  void draw_all() {
    for (const std::optional<PictureScalar>& scalar : choice_.scalars) {
      scalar_ = scalar;
      range_ = choice_.range;
      draw_steps();
    }
  }

 private:
  void draw_steps() {
    const PictureFiles files(options_, choice_, scalar_);
    const std::unique_ptr<Film> film = files.begin_film(scene_.background);
    makes_film_ = film != nullptr;
    if (choice_.steps.size() > 1) {
      survey();
    } else if (choice_.focus.size() > 0) {
      session_.select_step(choice_.steps.front());
      scene_.extent = focus_extent(session_, choice_, scene_.view);
    }
    Progress progress("pictures", choice_.steps.size(), ProgressUnit::steps);
    const auto draw_step = [&](std::size_t i) {
      progress.update(i);
      try {
        session_.select_step(choice_.steps[i]);
        choice_.parts.tell_missing(session_, progress);
        choice_.faint.tell_missing(session_, progress);
        choice_.cuts.volumes.tell_missing(session_, progress);
        missing_.clear();
        const std::string picture = draw();
        return Json{{"picture", as_bytes(picture)}, {"font", as_bytes(font_)}, {"missing", missing_}};
      } catch (const host::Error& error) {
        throw read_error(error, session_);
      }
    };
    progress.update(0);
    run_jobs(jobs_, choice_.steps.size(), draw_step, [&](std::size_t i, const Json& drawn) {
      font_report_.tell_missing(drawn.at("missing"), text_of(drawn.at("font")), progress);
      const std::string picture = text_of(drawn.at("picture"));
      if (film) {
        film->add(picture);
      } else {
        Output output(files.of_step(choice_.steps[i]).string());
        output.write(picture);
        output.finish();
      }
      // The line is erased after the last picture, and would only flicker.
      if (i + 1 < choice_.steps.size()) progress.update(i + 1);
      return true;
    });
    if (film) film->finish();
  }

  void survey() {
    Progress progress("survey", choice_.steps.size(), ProgressUnit::steps);
    const PictureSeries series = survey_pictures(session_, choice_, reader_, scalar_, scene_.view, progress);
    progress.erase();
    require_values(series.range);
    require_cuts(series.empty);
    scene_.extent = series.extent;
    longest_vector_ = series.longest_vector;
    if (!range_) range_ = ends_of(series.range);
  }

  // `range` is that of all pictures of the scalar.
  void require_values(const ValueRange& range) const {
    if (!scalar_ || range.on_parts() != ValuesOnParts::none) return;
    const std::string variable = host::to_utf8(scalar_->quantity.variable.name);
    throw CommandError(
        ExitStatus::usage, session_.path().string(),
        fmt::format("variable {} is not there for the parts at {}", variable, steps_in_words()));
  }

  // `empty` are the cuts that meet nothing in all pictures.
  void require_cuts(const std::set<std::string>& empty) const {
    if (empty.empty()) return;
    throw CommandError(ExitStatus::usage, session_.path().string(),
                       fmt::format("{} meets nothing in the volumes at {}",
                                   host::message_to_utf8(*empty.begin()), steps_in_words()));
  }

  std::string steps_in_words() const {
    return choice_.steps.size() == 1 ? fmt::format("step {}", choice_.steps.front())
                                     : std::string("any of the steps");
  }

  // A picture of the session's step.
  std::string draw() {
    // Not with a film: what ffmpeg has written has to be removed.
    std::optional<ExitAtOnce> while_vtk_works;
    if (!makes_film_) while_vtk_works.emplace();
    PictureContents contents = reader_.read(scalar_);
    if (choice_.steps.size() == 1) {
      require_values(contents.range);
      require_cuts(contents.empty);
    }
    add_arrows(contents, choice_, longest_vector_.value_or(contents.longest_vector));
    render::SceneOptions scene = scene_;
    if (are_cylindrical(choice_.coloured(session_)) && are_cylindrical(choice_.faint.at(session_)) &&
        are_cylindrical(choice_.cuts.volumes.at(session_)))
      std::copy(kCylindricalAxes.begin(), kCylindricalAxes.end(), scene.axes.begin());
    scene.title = options_.title ? title_lines(*options_.title) : title();
    if (scalar_) scene.scale = colour_scale(contents.range);
    scene.font = choose_font(scene, contents.parts);
    // Made by the process that draws: a graphics context cannot be shared with a copy of the process.
    if (!renderer_) renderer_.emplace(scene_.width, scene_.height);
    return renderer_->draw(contents.parts, scene);
  }

  std::string title() const {
    std::string text = usual_title(session_);
    if (compared_ != nullptr) text += "    minus " + shown_file_name(compared_->file());
    return text;
  }

  // Whether all of these parts are drawn at their radius, angle and height.
  bool are_cylindrical(const std::vector<int>& parts) {
    return std::all_of(parts.begin(), parts.end(), [&](int part) {
      return coordinate_names_.of(session_, session_.part(part)) == kCylindricalAxes;
    });
  }

  // The ends of the colours: of differences as far above zero as below.
  std::array<double, 2> ends_of(const ValueRange& range) const {
    const std::array<double, 2> ends = range.ends();
    if (compared_ == nullptr) return ends;
    const double most = std::max(std::abs(ends[0]), std::abs(ends[1]));
    return {-most, most};
  }

  // For a picture with values of this range.
  render::ColourScale colour_scale(const ValueRange& range) const {
    const auto [low, high] = range_.value_or(ends_of(range));
    const std::string usual = compared_ == nullptr ? render::colour_map_names().front() : kMapOfDifferences;
    const std::string title = compared_ == nullptr ? scalar_->title : "Difference of " + scalar_->title;
    render::ColourScale scale{options_.colours.value_or(usual), low, high, title, {}};
    if (range.on_parts() == ValuesOnParts::none) {
      scale.note = fmt::format("no {} at this step", scale.title);
    } else if (range.on_parts() == ValuesOnParts::undefined) {
      scale.note = fmt::format("{}: all values are undefined", scale.title);
    }
    return scale;
  }

  // Notes which characters it lacks.
  std::string choose_font(const render::SceneOptions& scene, const std::vector<render::ShownPart>& parts) {
    std::string text = scene.title;
    if (scene.scale) {
      text += scene.scale->title + scene.scale->note;
    } else {
      for (const render::ShownPart& part : parts) text += part.name;
    }
    font_ = options_.font.empty() ? render::font_for(text) : options_.font;
    for (const char32_t character : render::missing_characters(text, font_))
      missing_.push_back(static_cast<std::uint32_t>(character));
    return font_;
  }

  host::Session& session_;
  ComparedDataset* compared_;
  const RenderOptions& options_;
  render::SceneOptions scene_;
  PictureChoice choice_;
  ContentsReader reader_;
  int jobs_;
  std::optional<PictureScalar> scalar_;           // what the next picture shows
  std::optional<std::array<double, 2>> range_{};  // of its colours
  std::optional<double> longest_vector_{};        // of all pictures; none: of the one
  std::optional<render::SceneRenderer> renderer_;
  CoordinateNames coordinate_names_;
  FontReport font_report_;
  bool makes_film_ = false;
  std::string font_;                    // of the latest picture
  std::vector<std::uint32_t> missing_;  // characters that it lacks
};

}  // namespace

void draw_pictures(host::Session& session, ComparedDataset* compared, const RenderOptions& options) {
  Renderer(session, compared, options).draw_all();
}

}  // namespace tool
