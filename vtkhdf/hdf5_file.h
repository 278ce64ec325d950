// HDF5's files, groups and arrays as objects that close themselves. Every function throws WriteError when
// HDF5 fails.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <hdf5.h>
#include <stdexcept>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

namespace vtkhdf {

// The file cannot be written: an error of the system, EIO where HDF5 does not say which.
struct WriteError : std::runtime_error {
  explicit WriteError(int error)
      : std::runtime_error(std::generic_category().message(error)), number(error) {}

  int number;
};

// An identifier of HDF5 and the function that closes it.
class Handle {
 public:
  using Close = herr_t (*)(hid_t);

  Handle() = default;
  // Throws WriteError for the negative identifiers with which HDF5 says that it failed.
  Handle(hid_t id, Close close);
  Handle(Handle&& other) noexcept : id_(std::exchange(other.id_, H5I_INVALID_HID)), close_(other.close_) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(id_, other.id_);
    std::swap(close_, other.close_);
    return *this;
  }
  ~Handle() { reset(); }

  void reset();
  hid_t id() const { return id_; }
  explicit operator bool() const { return id_ >= 0; }

 private:
  hid_t id_ = H5I_INVALID_HID;
  Close close_ = nullptr;
};

// A new file that stays readable while it grows: what describes its contents reaches the disk when it is
// flushed and not before, so that a program that is killed leaves what it flushed last.
Handle create_file(const std::filesystem::path& path);
void flush(const Handle& file);

// A group; its links keep the order in which they were made.
Handle create_group(const Handle& parent, const std::string& name);
void create_link(const Handle& group, const std::string& name, const std::string& target);

void write_attribute(const Handle& object, const std::string& name, const std::string& text);
void write_attribute(const Handle& object, const std::string& name, std::int64_t value);
void write_attribute(const Handle& object, const std::string& name, const std::vector<std::int64_t>& values);
// Creates the attribute, or changes its value.
void set_attribute(const Handle& object, const std::string& name, std::int64_t value);

// How the rows of an array are stored.
struct Storage {
  hid_t type = H5T_NATIVE_FLOAT;  // in the file
  std::size_t width = 1;          // values of a row; an array of width 1 has one dimension
  int compression = 0;            // of zlib, 1 to 9; 0 for none
  bool is_dense = false;          // blocks follow each other without rows between them
  hsize_t most_rows = 0;          // that it can have; 0 for any number, which takes more room in the file
};

// An array that grows by blocks of rows.
class GrowingArray {
 public:
  // The blocks are expected to have `rows` rows.
  GrowingArray(const Handle& group, const std::string& name, const Storage& storage, std::size_t rows);

  // Appends rows of `type` and returns the first one's number. Unless the array is dense, a block begins
  // where a chunk does, and there may be rows before it that nobody uses.
  std::int64_t append(hid_t type, const void* data, std::size_t rows);

 private:
  std::size_t width_;
  hsize_t chunk_rows_;
  bool is_dense_;
  hsize_t rows_ = 0;
  Handle array_;
};

// An array with an entry for each step. Entries are staged while a step is written and reach the file
// together when it is complete.
template <typename Value>
class StepArray {
 public:
  StepArray(const Handle& group, const std::string& name, std::size_t steps)
      : rows_(group, name,
              {.type = type(), .width = 1, .compression = 0, .is_dense = true, .most_rows = steps}, steps) {}

  void stage(Value value) { staged_.push_back(value); }
  void commit() {
    rows_.append(type(), staged_.data(), staged_.size());
    staged_.clear();
  }

 private:
  static hid_t type() { return std::is_same_v<Value, double> ? H5T_NATIVE_DOUBLE : H5T_NATIVE_INT64; }

  GrowingArray rows_;
  std::vector<Value> staged_;
};

}  // namespace vtkhdf
