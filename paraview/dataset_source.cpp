#include "paraview/dataset_source.h"

#include "host/diagnostic_text.h"

namespace paraview {
namespace {

host::SessionOptions session_options(const ReadingOptions& options) {
  return {.toggles = {{host::kSimplifyToggle, options.simplify}, {host::kGroupsToggle, options.group_parts}},
          .capture_diagnostics = true,
          .recover_from_aborts = true};
}

}  // namespace

DatasetSource::DatasetSource(const std::filesystem::path& plugin, const std::filesystem::path& file,
                             const ReadingOptions& options)
    : library_(plugin, host::Library::Globals::own),
      session_(std::make_unique<host::Session>(library_, session_options(options))) {
  try {
    session_->open(file);
  } catch (const host::Error&) {
    if (session_->is_lost()) library_.leave_loaded();
    throw;
  }
}

DatasetSource::~DatasetSource() {
  const bool is_lost = session_->is_lost();
  session_.reset();
  if (is_lost) library_.leave_loaded();
}

std::vector<std::string> DatasetSource::take_warnings() {
  const std::string& text = session_->diagnostics();
  const std::string_view unseen = std::string_view(text).substr(seen_diagnostics_);
  seen_diagnostics_ = text.size();
  return host::warnings(unseen);
}

}  // namespace paraview
