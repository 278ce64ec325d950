#include "paraview/dataset_source.h"

#include <cstdlib>
#include <set>

#include "host/diagnostic_text.h"

namespace paraview {
namespace {

host::SessionOptions session_options(const ReadingOptions& options) {
  return {.toggles = {{host::kSimplifyToggle, options.simplify}, {host::kGroupsToggle, options.group_parts}},
          .capture_diagnostics = true,
          .recover_from_assertions = true};
}

// All open sources. Never destroyed: ParaView releases its last readers while the process exits.
std::set<DatasetSource*>& open_sources() {
  static auto& sources = *new std::set<DatasetSource*>;
  return sources;
}

}  // namespace

DatasetSource::DatasetSource(const std::filesystem::path& plugin, const std::filesystem::path& file,
                             const ReadingOptions& options)
    : library_(plugin, host::Library::Globals::own),
      session_(std::make_unique<host::Session>(library_, session_options(options))) {
  session_->open(file);
  open_sources().insert(this);
  // Exit handlers run in reverse order: registered after the library was loaded, this one runs before the
  // library's globals are destroyed.
  static_cast<void>(std::atexit(close_all));
}

DatasetSource::~DatasetSource() {
  open_sources().erase(this);
}

void DatasetSource::close_all() {
  for (DatasetSource* source : open_sources()) {
    source->session_.reset();
    source->library_.leave_loaded();
  }
}

std::vector<std::string> DatasetSource::take_warnings() {
  const std::string& text = session_->diagnostics();
  const std::string_view unseen = std::string_view(text).substr(seen_diagnostics_);
  seen_diagnostics_ = text.size();
  return host::warnings(unseen);
}

}  // namespace paraview
