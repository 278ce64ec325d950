// The time sets of a session's dataset and the selection of a step.
#include <algorithm>
#include <string>

#include "host/diagnostic_text.h"
#include "host/error.h"
#include "host/session.h"
#include "host/step_pairing.h"
#include "host/text_rows.h"

namespace host {
namespace {

constexpr std::size_t kTimeSetText = 80;

}  // namespace

void Session::ask_time_sets() {
  const int count = guarded_.call_checked(entry_.get_number_of_timesets);
  for (int number = 1; number <= count; ++number) {
    TimeSet set{number, "", {}};
    if (entry_.get_timeset_description) {
      TextRows text(1, kTimeSetText);
      guarded_.call_checked(entry_.get_timeset_description, number, text.row(0));
      set.description = text.text(0);
    }
    set.times.resize(static_cast<std::size_t>(guarded_.call_checked(entry_.get_num_of_time_steps, number)));
    guarded_.call_checked(entry_.get_sol_times, number, set.times.data());
    time_sets_.push_back(std::move(set));
  }
  geometry_set_ = entry_.get_geom_timeset_number ? guarded_.call_checked(entry_.get_geom_timeset_number) : 1;
  // The reader tells the variables' set along with the variables, for which a step has to be selected first.
  // It is the other set, or the only one.
  variable_set_ = geometry_set_;
  for (const TimeSet& set : time_sets_) {
    if (set.number != geometry_set_) variable_set_ = set.number;
  }
  const int status = guarded_.call_checked(entry_.get_changing_geometry_status);
  changing_geometry_ = static_cast<ChangingGeometry>(std::min(status, 2));
  geometry_steps_ = pair_steps(variable_times().times, geometry_times().times);
}

// The step of the variables whose file the reader traces when it loads a geometry step. With several region
// sets some may be loaded from files before it; a motion names its base.
std::optional<int> Session::step_of_geometry(int geometry_step) {
  select(geometry_set_, geometry_step);
  std::optional<int> last;
  for (const std::string& file : guarded_.latest_files()) {
    const auto found = std::find(traced_files_.begin(), traced_files_.end(), file);
    if (found == traced_files_.end()) continue;
    last = std::max(last.value_or(0), static_cast<int>(found - traced_files_.begin()));
  }
  return last;
}

// Steps of one time are told apart by the files that the reader loads their geometry from, where it names
// every file. Returns whether the reader was asked: it has other steps loaded then than after opening.
bool Session::pair_equal_times() {
  bool was_asked = false;
  if (traced_files_.size() != variable_times().times.size()) return was_asked;
  geometry_steps_ = pair_steps(variable_times().times, geometry_times().times, [&](int geometry_step) {
    was_asked = true;
    return step_of_geometry(geometry_step);
  });
  return was_asked;
}

const TimeSet& Session::time_set(int number) const {
  static const TimeSet kNone;
  const auto set = std::find_if(time_sets_.begin(), time_sets_.end(),
                                [&](const TimeSet& candidate) { return candidate.number == number; });
  return set == time_sets_.end() ? kNone : *set;
}

int Session::geometry_step_of(int step) const {
  if (step < 0 || step >= step_count()) {
    throw Error("step " + std::to_string(step) + " is outside 0 to " + std::to_string(step_count() - 1));
  }
  return geometry_steps_[static_cast<std::size_t>(step)];
}

std::string Session::file_of_step(int step) const {
  if (step < 0 || step >= step_count() || !knows_every_file()) return "";
  return traced_files_[static_cast<std::size_t>(step)];
}

void Session::select(int set, int step) {
  if (selection_ != std::pair(set, step)) requests_.clear();
  selection_.reset();
  guarded_.call(entry_.set_time_set_and_step, set, step);
  selection_ = std::pair(set, step);
}

// Loads the geometry of a step of its set. Returns the Error when the reader says that it failed.
std::optional<Error> Session::select_geometry(int geometry_step) {
  geometry_step_.reset();
  parts_.clear();
  select(geometry_set_, geometry_step);
  const std::string& text = guarded_.latest_diagnostics();
  if (tells_geometry_failure(text))
    return guarded_.error(entry_.set_time_set_and_step.name, reason_in_diagnostics(text));
  geometry_step_ = geometry_step;
  return std::nullopt;
}

void Session::select_step(int step) {
  require_open();
  const int geometry_step = geometry_step_of(step);
  const bool new_geometry = geometry_step_ != geometry_step;
  step_ = step;
  guarded_.set_place(file_of_step(step), step);
  const std::optional<Error> failure = new_geometry ? select_geometry(geometry_step) : std::nullopt;
  // A reader has one current step for both sets and reads values for the one that was selected last.
  select(variable_set_, step);
  if (new_geometry) ask_parts();
  if (failure) throw *failure;
}

// Selecting another step and returning empties the reader's cache and, in the variables' set, reloads no
// geometry. With a single step, the number after it is selected: it has no file, which the reader accepts.
void Session::drop_cached_quantity() {
  const int steps = step_count();
  select(variable_set_, steps > 1 ? (step_ + 1) % steps : step_ + 1);
  select(variable_set_, step_);
}

}  // namespace host
