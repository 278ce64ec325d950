#include "host/library.h"

#include <dlfcn.h>
#include <string>
#include <vector>

#include "host/error.h"
#include "host/guarded_reader.h"
#include "host/text_rows.h"

namespace host {
namespace {

constexpr std::size_t kVersionLength = 20;

template <typename Signature>
void look_up(void* handle, EntryPoint<Signature>& entry_point) {
  entry_point.function = reinterpret_cast<Signature*>(dlsym(handle, entry_point.name));
}

template <typename Signature>
void note_missing(const EntryPoint<Signature>& entry_point, std::string& missing) {
  if (!entry_point) missing += (missing.empty() ? "" : ", ") + std::string(entry_point.name);
}

void* open_library(const std::filesystem::path& path) {
  // An absolute path keeps the loader from searching its own directories for a bare file name.
  void* handle = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    const char* message = dlerror();
    throw Error("cannot load the reader library: " +
                std::string(message != nullptr ? message : path.string()));
  }
  return handle;
}

}  // namespace

void Library::Close::operator()(void* handle) const {
  dlclose(handle);
}

Library::Library(const std::filesystem::path& path) : path_(path), handle_(open_library(path)) {
#define HOST_LOOK_UP(member) look_up(handle_.get(), entry_points_.member);
  HOST_REQUIRED_ENTRY_POINTS(HOST_LOOK_UP)
  HOST_OPTIONAL_ENTRY_POINTS(HOST_LOOK_UP)
#undef HOST_LOOK_UP

  std::string missing;
#define HOST_NOTE_MISSING(member) note_missing(entry_points_.member, missing);
  HOST_REQUIRED_ENTRY_POINTS(HOST_NOTE_MISSING)
#undef HOST_NOTE_MISSING
  if (!missing.empty()) throw Error(path.string() + " is not a reader library: it lacks " + missing);

  TextRows version(1, kVersionLength);
  GuardedReader(entry_points_).call(entry_points_.get_reader_version, version.row(0));
  if (version.text(0) != kApiVersion) {
    throw Error(path.string() + " speaks version '" + version.text(0) +
                "' of the reader interface, this host '" + kApiVersion + "'");
  }
}

}  // namespace host
