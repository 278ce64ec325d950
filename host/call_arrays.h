// The raw layer of calls: the arrays of the entry points that fill several at once, in the sizes of the
// interface, and the order of their arguments.
//
// How the arrays are stored is up to the caller: a storage class has the members Array<T> (count), Rows<T>
// (count, width) and Texts (count, width). How the calls are made is too: `call` gets the entry point and its
// arguments.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/element_slots.h"
#include "host/entry_points.h"
#include "host/text_rows.h"

namespace host {

// `count` rows of `width` zeroed entries in one block.
template <class T>
class PooledRows {
 public:
  PooledRows(std::size_t count, std::size_t width) : pool_(count * width), rows_(count) {
    for (std::size_t i = 0; i < count; ++i) rows_[i] = pool_.data() + i * width;
  }

  T** rows() { return rows_.data(); }
  T* operator[](std::size_t i) const { return rows_[i]; }
  std::vector<T>& pool() { return pool_; }

 private:
  std::vector<T> pool_;
  std::vector<T*> rows_;
};

struct PooledStorage {
  template <class T>
  using Array = std::vector<T>;
  template <class T>
  using Rows = PooledRows<T>;
  using Texts = TextRows;
};

// The same with a heap block per row, so that a memory checker detects every access beyond a row.
template <class T>
class SeparateRows {
 public:
  SeparateRows(std::size_t count, std::size_t width, T value = T()) : width_(width), rows_(count) {
    for (auto& row : rows_) {
      blocks_.push_back(std::make_unique<T[]>(width));
      row = blocks_.back().get();
      for (std::size_t i = 0; i < width; ++i) row[i] = value;
    }
  }

  T** rows() { return rows_.data(); }
  T* operator[](std::size_t i) const { return rows_[i]; }
  std::size_t count() const { return rows_.size(); }
  std::size_t width() const { return width_; }

 private:
  std::size_t width_;
  std::vector<std::unique_ptr<T[]>> blocks_;
  std::vector<T*> rows_;
};

struct SeparateStorage {
  template <class T>
  using Array = std::vector<T>;
  template <class T>
  using Rows = SeparateRows<T>;
  using Texts = SeparateRows<char>;
};

// Calls an entry point as it is.
inline constexpr auto call_directly = [](const auto& entry_point, auto... arguments) {
  return entry_point(arguments...);
};

// Sizes of the host's buffers.
inline constexpr std::size_t kListText = 80;  // descriptions and file names in lists
inline constexpr std::size_t kBlockDimensions = 3;
inline constexpr std::size_t kBlankingOptions = 6;

template <class Storage>
struct PartArrays {
  explicit PartArrays(std::size_t count)
      : ids(count),
        types(count),
        nodes(count),
        descriptions(count, kListText),
        elements(count, kElementSlots),
        dimensions(count, kBlockDimensions),
        blanking(count, kBlankingOptions) {}

  template <class Call>
  int fill(const EntryPoints& api, Call call) {
    return call(api.get_gold_part_build_info, ids.data(), types.data(), descriptions.rows(), nodes.data(),
                elements.rows(), dimensions.rows(), blanking.rows());
  }

  typename Storage::template Array<int> ids, types, nodes;
  typename Storage::Texts descriptions;
  typename Storage::template Rows<int> elements;  // a count per slot
  typename Storage::template Rows<int> dimensions, blanking;
};

template <class Storage>
struct VariableArrays {
  explicit VariableArrays(std::size_t count)
      : descriptions(count, kListText),
        files(count, kListText),
        imaginary_files(count, kListText),
        types(count),
        classify(count),
        complex(count),
        constant(count),
        time_sets(count),
        frequencies(count) {}

  template <class Call>
  int fill(const EntryPoints& api, Call call) {
    return call(api.get_gold_variable_info, descriptions.rows(), files.rows(), types.data(), classify.data(),
                complex.data(), imaginary_files.rows(), frequencies.data(), constant.data(),
                time_sets.data());
  }

  typename Storage::Texts descriptions, files, imaginary_files;
  typename Storage::template Array<int> types, classify, complex, constant, time_sets;
  typename Storage::template Array<float> frequencies;
};

// Calls set_filenames with copies of the names, because a reader may write to them.
template <class Call>
int call_set_filenames(const EntryPoints& api, const std::filesystem::path& path, Call call,
                       std::string second = "") {
  std::string file = path.string();
  std::string directory = path.parent_path().string();
  return call(api.set_filenames, file.data(), second.data(), directory.data(), 0);
}

}  // namespace host
