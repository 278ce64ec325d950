// A reader library, loaded into this process and unloaded with the object.
#pragma once

#include <filesystem>
#include <memory>

#include "host/entry_points.h"

namespace host {

// The version of the reader interface that this host supports.
inline constexpr char kApiVersion[] = "2.04";

class Library {
 public:
  // Whether objects for the same path share the library with its globals, and so its one dataset, or this one
  // has its own, loaded from a copy of the file.
  enum class Globals { shared, own };

  // Loads the library at `path`; its symbols are bound at once and are not visible to other libraries. Throws
  // Error if the file cannot be loaded, lacks a required entry point, or has another version of the
  // interface.
  explicit Library(const std::filesystem::path& path, Globals globals = Globals::shared);

  const std::filesystem::path& path() const { return path_; }
  const EntryPoints& entry_points() const { return entry_points_; }

  // Keeps the library loaded for the rest of the process: after a failed assertion the state that its
  // destructors would find is unknown. It takes memory, but no descriptor.
  void leave_loaded() const;

 private:
  struct Close {
    void operator()(void* handle) const;
  };
  using Handle = std::unique_ptr<void, Close>;

  static Handle load(const std::filesystem::path& path, Globals globals);

  std::filesystem::path path_;
  mutable Handle handle_;
  EntryPoints entry_points_;
};

}  // namespace host
