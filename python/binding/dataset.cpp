#include "python/binding/dataset.h"

#include <exception>
#include <unistd.h>

#include "host/plugin_path.h"
#include "host/text_encoding.h"

namespace binding {
namespace {

std::filesystem::path plugin_path(const std::string& named) {
  if (!named.empty()) return named;
  return host::find_plugin_near(reinterpret_cast<const void*>(&reader_mutex));
}

}  // namespace

Dataset::Dataset(const std::string& file, bool simplify, bool groups, const std::string& plugin)
    : file_(file), process_(getpid()) {
  const pybind11::gil_scoped_release without_gil;
  const std::lock_guard lock(reader_mutex());
  try {
    library_ = std::make_unique<host::Library>(plugin_path(plugin), host::Library::Globals::own);
    host::SessionOptions options;
    options.toggles = {{host::kSimplifyToggle, simplify}, {host::kGroupsToggle, groups}};
    options.capture_diagnostics = true;
    options.recover_from_assertions = true;
    session_ = std::make_unique<host::Session>(*library_, options);
    session_->open(file);
  } catch (const host::Error& error) {
    close_now();
    throw_located(error);
  }
  selected_ = session_->step();
}

Dataset::~Dataset() {
  try {
    close();
  } catch (const std::exception&) {
    return;  // a destructor has nobody to tell
  }
}

void Dataset::close() {
  if (session_ == nullptr) return;
  const pybind11::gil_scoped_release without_gil;
  const std::lock_guard lock(reader_mutex());
  close_now();
}

void Dataset::close_now() noexcept {
  // A reader that gave up in the middle of a call holds what is in no state to be destroyed.
  if (session_ != nullptr && session_->is_lost()) library_->leave_loaded();
  session_.reset();
  library_.reset();
}

void Dataset::require_open() const {
  if (session_ == nullptr) throw DatasetError(host::message_to_utf8(file_), {}, "the dataset is closed");
  if (process_ != getpid()) {
    throw DatasetError(host::message_to_utf8(file_), {},
                       "the dataset was opened by another process: open the file in this one");
  }
}

void Dataset::select(int step) {
  if (selected_ == step) return;
  selected_.reset();
  session_->select_step(step);
  selected_ = step;
}

void Dataset::throw_located(const host::Error& error) const {
  throw DatasetError(host::message_to_utf8(error.file().empty() ? file_ : error.file()), error.step(),
                     host::message_to_utf8(error.reason()));
}

}  // namespace binding
