#include "tool/dataset_options.h"

#include <limits>
#include <optional>
#include <string_view>
#include <unistd.h>

#include "fmt/format.h"
#include "host/diagnostic_text.h"
#include "host/error.h"
#include "host/plugin_path.h"
#include "host/text_encoding.h"
#include "tool/exit_status.h"

namespace tool {
namespace {

// For the hook below, which gets nothing but the captured text.
std::string file_being_read;  // NOLINT(cert-err58-cpp,bugprone-dynamic-static-initializers)
bool show_all_text = false;

void write_error(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

// An assertion of the reader is about to end the program: the last line of what it wrote is the assertion's
// report. Writes in pieces and leaves without running anything of the interrupted program.
void report_fatal(std::string_view captured) {
  if (show_all_text) write_error(captured);
  std::string_view last = captured;
  while (last.ends_with('\n')) last.remove_suffix(1);
  last.remove_prefix(last.rfind('\n') + 1);
  constexpr std::string_view kOwnName = "fldtool: ";
  if (last.starts_with(kOwnName)) last.remove_prefix(kOwnName.size());
  for (const std::string_view piece :
       {kOwnName, std::string_view(file_being_read), std::string_view(": the reader stopped: "), last,
        std::string_view("\n")}) {
    write_error(piece);
  }
  _exit(static_cast<int>(ExitStatus::unreadable));
}

std::unique_ptr<host::Library> load(const DatasetOptions& options, host::Library::Globals globals) {
  try {
    const std::filesystem::path plugin = host::find_plugin(
        options.plugin.empty() ? std::nullopt : std::optional<std::filesystem::path>(options.plugin));
    return std::make_unique<host::Library>(plugin, globals);
  } catch (const host::Error& error) {
    throw CommandError(ExitStatus::failure, error.what());
  }
}

}  // namespace

void add_dataset_options(CLI::App& command, DatasetOptions& options) {
  add_series_options(command, options);
  command.add_option("--step", options.step, "The time step, from 0")
      ->check(CLI::Range(0, std::numeric_limits<int>::max()).description(""))
      ->capture_default_str();
}

void add_series_options(CLI::App& command, DatasetOptions& options) {
  command
      .add_option("FILE", options.file,
                  "Any file of the dataset; the others of its series are found by their names")
      ->required();
  command.add_option("--plugin", options.plugin,
                     "The reader plug-in (otherwise FLD_PLUGIN, the folder of fldtool, ../lib)");
  command.add_flag(
      "--simplify", options.simplify,
      "Look for the quantities in the first file of a series only: for files that are laid out alike");
  command.add_flag("--no-groups", options.no_groups, "Do not let the reader group the parts");
  command.add_flag("-v,--verbose", options.verbose,
                   "Show the reader's diagnostics on the standard error stream");
}

OpenDataset::OpenDataset(const DatasetOptions& options, Globals globals)
    : file_(options.file), verbose_(options.verbose), library_(load(options, globals)) {
  file_being_read = options.file;
  show_all_text = options.verbose;
  try {
    open(options);
  } catch (const host::Error& error) {
    throw CommandError(ExitStatus::unreadable, options.file, host::to_utf8(error.reason()));
  }
}

void OpenDataset::open(const DatasetOptions& options) {
  host::SessionOptions choices;
  choices.toggles = {{host::kSimplifyToggle, options.simplify}, {host::kGroupsToggle, !options.no_groups}};
  choices.capture_diagnostics = true;
  choices.on_fatal = report_fatal;
  session_ = std::make_unique<host::Session>(*library_, choices);
  session_->open(options.file);
  if (options.step >= session_->step_count()) {
    throw CommandError(
        ExitStatus::usage, options.file,
        fmt::format("there is no step {}: the steps are 0 to {}", options.step, session_->step_count() - 1));
  }
  session_->select_step(options.step);
}

host::Session& OpenDataset::session() {
  file_being_read = file_;
  return *session_;
}

OpenDataset::~OpenDataset() {
  if (!session_) return;
  try {
    session_->close();
    if (verbose_) fmt::print(stderr, "{}", host::to_utf8(session_->diagnostics()));
  } catch (const std::exception&) {
    // The answer stands; a reader that fails to let go changes nothing about it.
    verbose_ = false;
  }
}

}  // namespace tool
