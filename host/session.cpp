// Identity, options, opening and closing.
#include "host/session.h"

#include <cstring>
#include <string>
#include <utility>

#include "host/error.h"
#include "host/part_groups.h"
#include "host/text_rows.h"
#include "host/undefined_value.h"

namespace host {
namespace {

constexpr std::size_t kShortText = 20;
constexpr std::size_t kLabelText = 80;
constexpr std::size_t kDescriptionText = 255;

// A reader takes strings as pointers to non-const.
std::vector<char> writable(const std::string& text) {
  return {text.c_str(), text.c_str() + text.size() + 1};
}

}  // namespace

Session::Session(const Library& library, const SessionOptions& options)
    : library_(library),
      guarded_(library.entry_points(), options.capture_diagnostics),
      entry_(library.entry_points()) {
  if (options.recover_from_assertions) guarded_.recover_from_assertions();
  try {
    ask_identity();
    reader_options_ = ask_options(guarded_);
  } catch (const Error&) {
    if (is_lost()) library_.leave_loaded();
    throw;
  }
  reader_options_.choose(options.toggles);
}

Session::~Session() {
  close_quietly();
  if (is_lost()) library_.leave_loaded();
}

void Session::ask_identity() {
  TextRows short_texts(3, kShortText);
  TextRows description(1, kDescriptionText);
  TextRows labels(2, kLabelText);
  int two_files = 0;
  guarded_.call_checked(entry_.get_name_of_reader, short_texts.row(0), &two_files);
  if (entry_.get_reader_release) guarded_.call_checked(entry_.get_reader_release, short_texts.row(1));
  guarded_.call_checked(entry_.get_reader_version, short_texts.row(2));
  if (entry_.get_reader_descrip) guarded_.call_checked(entry_.get_reader_descrip, description.row(0));
  if (entry_.set_filename_button_labels) {
    guarded_.call(entry_.set_filename_button_labels, labels.row(0), labels.row(1));
  }
  if (entry_.set_server_number) guarded_.call(entry_.set_server_number, 1, 1);
  identity_ = {short_texts.text(0), short_texts.text(1), short_texts.text(2),
               description.text(0), labels.text(0),      two_files != 0};
}

// Passes the value for undefined results to the reader if it asks for one.
void Session::exchange_undefined_value() {
  if (!entry_.get_extra_data) return;
  int request = 0;
  int count = 0;
  int unused[2] = {0, 0};
  guarded_.call_checked(entry_.get_extra_data, &request, &unused[0], &count, &unused[1], nullptr, nullptr);
  if (request == 0 || count <= 0) return;
  std::vector<float> values(static_cast<std::size_t>(count), kUndefinedValue);
  guarded_.call_checked(entry_.get_extra_data, &request, &unused[0], &count, &unused[1], nullptr,
                        values.data());
}

// Calls the entry point that opens a dataset.
void Session::give_to_reader(const std::filesystem::path& file) {
  // A reader looks for the other files of the series in the directory of the path, so the path must have one.
  const std::filesystem::path absolute = std::filesystem::absolute(file);
  std::vector<char> name = writable(absolute.string());
  std::vector<char> second_name = writable("");
  std::vector<char> directory = writable(absolute.parent_path().string());
  needs_exit_ = true;
  guarded_.set_place("", std::nullopt);
  const int result =
      guarded_.call_checked(entry_.set_filenames, name.data(), second_name.data(), directory.data(), 0);
  if (result != 1) throw guarded_.error(entry_.set_filenames.name, "the result is " + std::to_string(result));
}

void Session::open(const std::filesystem::path& file) {
  give_options(guarded_, reader_options_);
  exchange_undefined_value();
  give_to_reader(file);

  // From here on the reader holds the new dataset, whatever happens next. The path may be the session's own.
  std::filesystem::path path = file;
  std::vector<std::string> traced = guarded_.latest_files();
  forget_dataset();
  try {
    path_ = std::move(path);
    traced_files_ = std::move(traced);
    ask_time_sets();
    // Positions may depend on the steps that were loaded before, so it starts anew.
    if (pair_equal_times()) give_to_reader(file);
    is_open_ = true;
    select_step(0);
  } catch (...) {
    close_quietly();
    throw;
  }
}

void Session::close() {
  if (!needs_exit_) return;
  needs_exit_ = false;
  forget_dataset();
  guarded_.call(entry_.exit_routine);
}

void Session::close_quietly() noexcept {
  try {
    close();
  } catch (const std::exception&) {
    // There is nothing to be done about it.
  }
}

void Session::forget_dataset() {
  is_open_ = false;
  path_.clear();
  traced_files_.clear();
  guarded_.set_place("", std::nullopt);
  time_sets_.clear();
  geometry_set_ = variable_set_ = 0;
  changing_geometry_ = ChangingGeometry::fixed;
  geometry_steps_.clear();
  step_ = 0;
  geometry_step_.reset();
  selection_.reset();
  parts_.clear();
  region_sets_ = 0;
  building_parts_ = false;
  variables_.reset();
  requests_.clear();
}

void Session::require_open() const {
  if (!is_open_) throw Error("no dataset is open");
}

Metadata Session::metadata() {
  require_open();
  if (!entry_.get_metadata) return {};
  int size = 0;
  guarded_.call_checked(entry_.get_metadata, &size, nullptr);
  if (size <= 0) return {};
  std::vector<char> buffer(static_cast<std::size_t>(size) + 1, '\0');
  guarded_.call_checked(entry_.get_metadata, &size, buffer.data());
  Metadata metadata;
  metadata.xml.assign(buffer.data(), strnlen(buffer.data(), buffer.size()));
  metadata.groups = parse_part_groups(metadata.xml);
  return metadata;
}

}  // namespace host
