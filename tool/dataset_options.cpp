#include "tool/dataset_options.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <unistd.h>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/error.h"
#include "host/plugin_path.h"
#include "host/text_encoding.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/read_error.h"
#include "tool/remains.h"

namespace tool {
namespace {

// Ends the process without destructors: after a failed assertion the reader's state must not be touched.
void exit_without_destructors(int status, void* /*unused*/) {
  std::fflush(nullptr);
  _exit(status);
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
  command
      .add_option("FILE", options.file,
                  "Any file of the dataset; the others of its series are found by their names")
      ->required()
      ->check(file_name());
  command
      .add_option("--plugin", options.plugin,
                  "The reader plug-in (default: FLD_PLUGIN, else the folder of fldtool, else ../lib)")
      ->check(file_name());
  command.add_flag("--simplify", options.simplify,
                   "Index the first file of a series alone (for files with the same layout)");
  command.add_flag("--no-groups", options.no_groups, "Do not let the reader group the parts");
  command.add_flag("-v,--verbose", options.verbose,
                   "Show the reader's diagnostics on the standard error stream");
}

OpenDataset::OpenDataset(const DatasetOptions& options, Globals globals)
    : file_(options.file), verbose_(options.verbose), library_(load(options, globals)) {
  try {
    open(options);
  } catch (const host::Error& error) {
    close();
    const std::string reason = host::message_to_utf8(error.reason());
    const std::string file = error.file().empty() ? refused_file(options.file, reason) : error.file();
    throw CommandError(ExitStatus::unreadable, shown_path(file, options.file), reason);
  }
}

void OpenDataset::open(const DatasetOptions& options) {
  host::SessionOptions choices;
  choices.toggles = {{host::kSimplifyToggle, options.simplify}, {host::kGroupsToggle, !options.no_groups}};
  choices.capture_diagnostics = true;
  choices.recover_from_assertions = true;
  session_ = std::make_unique<host::Session>(*library_, choices);
  session_->open(options.file);
}

OpenDataset::~OpenDataset() {
  close();
}

void OpenDataset::close() {
  if (!session_) return;
  try {
    if (!session_->is_lost()) session_->close();
    if (verbose_) fmt::print(stderr, "{}", host::message_to_utf8(session_->diagnostics()));
  } catch (const std::exception&) {
    // An error while closing does not change the result.
    verbose_ = false;
  }
  if (!session_->is_lost()) return;
  // Exit handlers run in reverse order, so this one runs before the destructors of the library's globals.
  static_cast<void>(on_exit(exit_without_destructors, nullptr));
}

void with_dataset(const DatasetOptions& options, const std::function<void(host::Session&)>& work) {
  OpenDataset dataset(options);
  try {
    work(dataset.session());
  } catch (const host::Error& error) {
    throw read_error(error, dataset.session());
  }
}

}  // namespace tool
