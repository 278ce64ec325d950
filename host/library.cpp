#include "host/library.h"

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/sendfile.h>
#include <unistd.h>
#include <vector>

#include "host/anonymous_file.h"
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

Error loading_error(const std::string& reason) {
  return Error("cannot load the reader library: " + reason);
}

Error loading_error(const std::filesystem::path& path, int error) {
  return loading_error(path.string() + ": " + std::strerror(error));
}

// Copies the file at `path` into an anonymous file, of which nothing is left behind, and returns its
// descriptor.
int copy_of(const std::filesystem::path& path, Storage storage) {
  const int source = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (source < 0) throw loading_error(path, errno);
  const int copy = open_anonymous_file(storage);
  ssize_t moved = copy < 0 ? -1 : 1;
  while (moved > 0) moved = sendfile(copy, source, nullptr, std::size_t{1} << 30);
  const int error = errno;
  close(source);
  if (moved == 0) return copy;
  if (copy >= 0) close(copy);
  throw loading_error(path, error);
}

bool is_loaded(const std::string& name) {
  void* handle = dlopen(name.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

// A path of the descriptor that no loaded library has. dlopen identifies libraries by path, and a
// descriptor's number is reused while the library that was loaded from it stays: redundant `./` components
// encode a counter.
std::string free_path_of(int descriptor) {
  for (unsigned number = 0;; ++number) {
    std::string path = "/proc/self/fd/";
    for (unsigned rest = number; rest > 0; rest /= 2) path += rest % 2 == 0 ? "./" : ".//";
    path += std::to_string(descriptor);
    if (!is_loaded(path)) return path;
  }
}

void* open_library(const std::string& path) {
  return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* open_copy(const std::filesystem::path& path, Storage storage) {
  const int copy = copy_of(path, storage);
  void* handle = open_library(free_path_of(copy));
  // A loaded library keeps the file by itself.
  close(copy);
  return handle;
}

}  // namespace

void Library::Close::operator()(void* handle) const {
  dlclose(handle);
}

Library::Handle Library::load(const std::filesystem::path& path, Globals globals) {
  Handle handle;
  if (globals == Globals::shared) {
    // An absolute path keeps the loader from searching its own directories for a bare file name.
    handle.reset(open_library(std::filesystem::absolute(path).string()));
  } else {
    try {
      handle.reset(open_copy(path, Storage::memory));
    } catch (const Error&) {
      handle.reset();
    }
    if (!handle) handle.reset(open_copy(path, Storage::temporary_folder));
  }
  if (handle) return handle;
  const char* message = dlerror();
  const std::string reason = message == nullptr ? "unknown error" : message;
  throw loading_error(globals == Globals::own ? path.string() + ": " + reason : reason);
}

void Library::leave_loaded() const {
  static_cast<void>(handle_.release());
}

Library::Library(const std::filesystem::path& path, Globals globals)
    : path_(path), handle_(load(path, globals)) {
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
