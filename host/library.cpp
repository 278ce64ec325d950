#include "host/library.h"

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <unistd.h>
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

Error loading_error(const std::string& reason) {
  return Error("cannot load the reader library: " + reason);
}

// Copies the file at `path` into a file in memory and returns its descriptor. There is no place on disk that
// would have to be writable and free to run programs from, and nothing is left behind.
int copy_to_memory(const std::filesystem::path& path) {
  const auto error = [&] { return loading_error(path.string() + ": " + std::strerror(errno)); };
  const int source = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (source < 0) throw error();
  const int copy = memfd_create("reader-library", MFD_CLOEXEC);
  ssize_t moved = copy < 0 ? -1 : 1;
  while (moved > 0) moved = sendfile(copy, source, nullptr, std::size_t{1} << 30);
  const Error failure = error();
  close(source);
  if (moved == 0) return copy;
  if (copy >= 0) close(copy);
  throw failure;
}

bool is_loaded(const std::string& name) {
  void* handle = dlopen(name.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

// A path to the copy that no loaded library has for its name. The loader knows libraries by their names, and
// those of copies stay when their descriptors have long been given out again: steps on the spot, which spell
// a number, tell them apart.
std::string free_name_of(int copy) {
  for (unsigned number = 0;; ++number) {
    std::string name = "/proc/self/fd/";
    for (unsigned rest = number; rest > 0; rest /= 2) name += rest % 2 == 0 ? "./" : ".//";
    name += std::to_string(copy);
    if (!is_loaded(name)) return name;
  }
}

}  // namespace

void Library::Close::operator()(void* handle) const {
  dlclose(handle);
}

Library::Handle Library::load(const std::filesystem::path& path, Globals globals) {
  const int copy = globals == Globals::own ? copy_to_memory(path) : -1;
  // An absolute path keeps the loader from searching its own directories for a bare file name.
  const std::string name = copy >= 0 ? free_name_of(copy) : std::filesystem::absolute(path).string();
  Handle handle(dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL));
  const char* message = handle == nullptr ? dlerror() : nullptr;
  const std::string reason = message != nullptr ? message : "";
  // What is loaded holds the copy by itself.
  if (copy >= 0) close(copy);
  if (handle == nullptr) throw loading_error(copy >= 0 ? path.string() + ": " + reason : reason);
  return handle;
}

void Library::leave_loaded() {
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
