#include "vtkhdf/hdf5_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <string_view>

namespace vtkhdf {
namespace {

// A chunk has at most so many rows: small enough to be read without the rest of a large step.
constexpr std::size_t kMostChunkRows = std::size_t{1} << 20;
// A group with more links than these has them in a heap and two trees, which take kilobytes.
constexpr unsigned kMostLinksInHeader = 64;

// HDF5 has its errors on a stack; the number of the system's, if there is one, stands in a description.
herr_t find_number(unsigned /*depth*/, const H5E_error2_t* error, void* number) {
  constexpr std::string_view kBefore = "errno = ";
  const std::string_view text = error->desc == nullptr ? "" : error->desc;
  const std::size_t start = text.find(kBefore);
  if (start == std::string_view::npos) return 0;
  std::from_chars(text.begin() + start + kBefore.size(), text.end(), *static_cast<int*>(number));
  return 1;
}

[[noreturn]] void fail() {
  int number = EIO;
  H5Ewalk2(H5E_DEFAULT, H5E_WALK_DOWNWARD, find_number, &number);
  throw WriteError(number);
}

void check(herr_t result) {
  if (result < 0) fail();
}

Handle property_list(hid_t kind) {
  return {H5Pcreate(kind), H5Pclose};
}

Handle space_of(const std::vector<hsize_t>& shape, const hsize_t* largest = nullptr) {
  return {H5Screate_simple(static_cast<int>(shape.size()), shape.data(), largest), H5Sclose};
}

void create_attribute(const Handle& object, const std::string& name, hid_t type, const Handle& space,
                      const void* value) {
  const Handle attribute(H5Acreate2(object.id(), name.c_str(), type, space.id(), H5P_DEFAULT, H5P_DEFAULT),
                         H5Aclose);
  check(H5Awrite(attribute.id(), type, value));
}

// Names are in UTF-8.
Handle link_properties() {
  Handle list = property_list(H5P_LINK_CREATE);
  check(H5Pset_char_encoding(list.id(), H5T_CSET_UTF8));
  return list;
}

}  // namespace

Handle::Handle(hid_t id, Close close) : id_(id), close_(close) {
  if (id < 0) fail();
}

void Handle::reset() {
  if (id_ >= 0) close_(std::exchange(id_, H5I_INVALID_HID));
}

Handle create_file(const std::filesystem::path& path) {
  H5dont_atexit();                              // it cannot close a file that it failed to write
  H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);  // errors are thrown
  const Handle creation = property_list(H5P_FILE_CREATE);
  check(H5Pset_obj_track_times(creation.id(), false));
  // Space that becomes free is not used again: the file as it was flushed last may still refer to it.
  check(H5Pset_file_space_strategy(creation.id(), H5F_FSPACE_STRATEGY_NONE, false, 1));
  // Makes the root group one of the newer and smaller kind.
  check(H5Pset_link_creation_order(creation.id(), H5P_CRT_ORDER_TRACKED));
  const Handle access = property_list(H5P_FILE_ACCESS);
  // A file in the 1.10 format is marked as open for writing, and nobody could open it after a kill. In all
  // formats but the earliest, the object that holds the strategy above has the time of its creation.
  check(H5Pset_libver_bounds(access.id(), H5F_LIBVER_EARLIEST, H5F_LIBVER_V110));
  H5AC_cache_config_t cache{};
  cache.version = H5AC__CURR_CACHE_CONFIG_VERSION;
  check(H5Pget_mdc_config(access.id(), &cache));
  cache.evictions_enabled = 0;
  cache.incr_mode = H5C_incr__off;
  cache.flash_incr_mode = H5C_flash_incr__off;
  cache.decr_mode = H5C_decr__off;
  check(H5Pset_mdc_config(access.id(), &cache));
  Handle file(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, creation.id(), access.id()), H5Fclose);
  // The arrays in it have a newer one, whose index of chunks grows without moving entries.
  check(H5Fset_libver_bounds(file.id(), H5F_LIBVER_V110, H5F_LIBVER_V110));
  return file;
}

void flush(const Handle& file) {
  check(H5Fflush(file.id(), H5F_SCOPE_GLOBAL));
}

Handle create_group(const Handle& parent, const std::string& name) {
  const Handle creation = property_list(H5P_GROUP_CREATE);
  check(H5Pset_link_creation_order(creation.id(), H5P_CRT_ORDER_TRACKED | H5P_CRT_ORDER_INDEXED));
  check(H5Pset_obj_track_times(creation.id(), false));
  check(H5Pset_link_phase_change(creation.id(), kMostLinksInHeader, kMostLinksInHeader / 2));
  return {H5Gcreate2(parent.id(), name.c_str(), link_properties().id(), creation.id(), H5P_DEFAULT),
          H5Gclose};
}

void create_link(const Handle& group, const std::string& name, const std::string& target) {
  check(H5Lcreate_soft(target.c_str(), group.id(), name.c_str(), link_properties().id(), H5P_DEFAULT));
}

void write_attribute(const Handle& object, const std::string& name, const std::string& text) {
  const Handle type(H5Tcopy(H5T_C_S1), H5Tclose);
  check(H5Tset_size(type.id(), text.size()));
  check(H5Tset_strpad(type.id(), H5T_STR_NULLPAD));
  create_attribute(object, name, type.id(), Handle(H5Screate(H5S_SCALAR), H5Sclose), text.data());
}

void write_attribute(const Handle& object, const std::string& name, std::int64_t value) {
  create_attribute(object, name, H5T_NATIVE_INT64, Handle(H5Screate(H5S_SCALAR), H5Sclose), &value);
}

void write_attribute(const Handle& object, const std::string& name, const std::vector<std::int64_t>& values) {
  create_attribute(object, name, H5T_NATIVE_INT64, space_of({values.size()}), values.data());
}

void set_attribute(const Handle& object, const std::string& name, std::int64_t value) {
  const htri_t exists = H5Aexists(object.id(), name.c_str());
  check(exists);
  if (exists == 0) return write_attribute(object, name, value);
  const Handle attribute(H5Aopen(object.id(), name.c_str(), H5P_DEFAULT), H5Aclose);
  check(H5Awrite(attribute.id(), H5T_NATIVE_INT64, &value));
}

GrowingArray::GrowingArray(const Handle& group, const std::string& name, const Storage& storage,
                           std::size_t rows)
    : width_(storage.width), is_dense_(storage.is_dense) {
  // As few chunks as there can be, all of about one size.
  const std::size_t chunks = rows / kMostChunkRows + 1;
  chunk_rows_ = std::max<hsize_t>(1, (rows + chunks - 1) / chunks);
  const std::size_t dimensions = width_ == 1 ? 1 : 2;
  const std::array<hsize_t, 2> shape = {0, width_};
  const std::array<hsize_t, 2> largest = {storage.most_rows == 0 ? H5S_UNLIMITED : storage.most_rows, width_};
  const std::array<hsize_t, 2> chunk = {chunk_rows_, width_};
  const Handle space(H5Screate_simple(static_cast<int>(dimensions), shape.data(), largest.data()), H5Sclose);
  const Handle creation = property_list(H5P_DATASET_CREATE);
  check(H5Pset_chunk(creation.id(), static_cast<int>(dimensions), chunk.data()));
  check(H5Pset_fill_time(creation.id(), H5D_FILL_TIME_NEVER));
  check(H5Pset_obj_track_times(creation.id(), false));
  if (storage.compression > 0) {
    check(H5Pset_shuffle(creation.id()));
    check(H5Pset_deflate(creation.id(), static_cast<unsigned>(storage.compression)));
  }
  // Blocks are whole chunks: a cache would only cost memory.
  const Handle access = property_list(H5P_DATASET_ACCESS);
  check(H5Pset_chunk_cache(access.id(), 0, 0, 1.0));
  array_ = Handle(H5Dcreate2(group.id(), name.c_str(), storage.type, space.id(), link_properties().id(),
                             creation.id(), access.id()),
                  H5Dclose);
}

std::int64_t GrowingArray::append(hid_t type, const void* data, std::size_t rows) {
  const hsize_t first = is_dense_ ? rows_ : (rows_ + chunk_rows_ - 1) / chunk_rows_ * chunk_rows_;
  rows_ = first + rows;
  const std::array<hsize_t, 2> shape = {rows_, width_};
  check(H5Dset_extent(array_.id(), shape.data()));
  if (rows == 0) return static_cast<std::int64_t>(first);
  const std::array<hsize_t, 2> start = {first, 0};
  const std::array<hsize_t, 2> count = {rows, width_};
  const Handle space(H5Dget_space(array_.id()), H5Sclose);
  check(H5Sselect_hyperslab(space.id(), H5S_SELECT_SET, start.data(), nullptr, count.data(), nullptr));
  const Handle memory(H5Screate_simple(width_ == 1 ? 1 : 2, count.data(), nullptr), H5Sclose);
  check(H5Dwrite(array_.id(), type, memory.id(), space.id(), H5P_DEFAULT, data));
  return static_cast<std::int64_t>(first);
}

}  // namespace vtkhdf
