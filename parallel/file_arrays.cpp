#include "parallel/file_arrays.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "support/byte_order.h"

namespace parallel {
namespace {

constexpr std::int64_t kRead = std::int64_t{1} << 20;  // bytes of a large read
constexpr std::int64_t kSmallRead = std::int64_t{256} << 10;
constexpr std::size_t kPiece = std::size_t{64}
                               << 10;  // bytes that are swapped at a time, to stay in the cache
constexpr std::int64_t kSlack = 64;    // markers at the ends of a read

}  // namespace

struct FileArrays::Buffers {
  std::byte staged[kRead + kSlack];
  alignas(8) std::byte piece[kPiece];
};

FileArrays::FileArrays(std::vector<std::string> paths) : paths_(std::move(paths)) {}

FileArrays::~FileArrays() {
  close();
}

void FileArrays::close() {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
  open_file_ = -1;
}

void FileArrays::open(std::int32_t file) {
  if (file == open_file_) return;
  close();
  const std::string& path = paths_.at(static_cast<std::size_t>(file));
  // O_NONBLOCK: a pipe in the place of the file must not wait for a writer.
  descriptor_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor_ < 0) throw FileError(path + ": " + std::strerror(errno));
  open_file_ = file;
}

void FileArrays::start(const layout::FileArray& array, std::int64_t first, std::int64_t count,
                       std::size_t width) {
  if (count <= 0) {
    at_ = end_ = 0;
    return;
  }
  if (first < 0 || first + count > array.count() || static_cast<std::size_t>(array.place.width) != width) {
    throw FileError("elements outside their array were asked for");
  }
  if (!buffers_) buffers_ = std::make_unique_for_overwrite<Buffers>();
  open(array.file);
  array_ = array;
  at_ = staged_end_ = first;
  end_ = first + count;
  whole_ = count * array.place.width;
}

// Reads as many elements as fit into the buffer, with the markers between their records.
void FileArrays::refill() {
  const fld::ArrayLayout& place = array_.place;
  const std::int64_t width = place.width;
  std::int64_t elements = kRead / width;
  if (place.per_record > 0) elements = kRead * place.per_record / (place.per_record * width + 8);
  elements = std::min(std::max<std::int64_t>(elements, 1), end_ - at_);
  staged_offset_ = place.offset_of(at_);
  staged_end_ = at_ + elements;
  const std::int64_t size = place.offset_of(staged_end_ - 1) + width - staged_offset_;
  read_bytes(descriptor_, buffers_->staged, static_cast<std::size_t>(size), staged_offset_,
             paths_[static_cast<std::size_t>(array_.file)]);
  ++counts_.reads;
  counts_.bytes += size;
  // The last read of a stretch is as long as what is left.
  if (size < kSmallRead && whole_ >= kSmallRead && staged_end_ < end_) ++counts_.small_reads;
}

std::size_t FileArrays::next() {
  if (at_ == end_) return 0;
  if (at_ == staged_end_) refill();
  const fld::ArrayLayout& place = array_.place;
  const auto width = static_cast<std::size_t>(place.width);
  std::size_t elements = 0;
  // The pieces of short records are put together.
  while (at_ < staged_end_ && elements < kPiece / width) {
    const auto room = static_cast<std::int64_t>(kPiece / width - elements);
    const std::int64_t count = std::min({place.together_from(at_), staged_end_ - at_, room});
    const std::byte* const from = buffers_->staged + (place.offset_of(at_) - staged_offset_);
    std::byte* const to = buffers_->piece + elements * width;
    fld::cnvt_copy(to, from, width, static_cast<std::size_t>(count));
    elements += static_cast<std::size_t>(count);
    at_ += count;
  }
  return elements;
}

const void* FileArrays::piece() const {
  return buffers_->piece;
}

void FileArrays::read_bytes(int descriptor, std::byte* to, std::size_t size, std::int64_t offset,
                            const std::string& path) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t given = pread(descriptor, to + done, size - done, offset + static_cast<std::int64_t>(done));
    if (given < 0 && errno == EINTR) continue;
    if (given < 0) throw FileError(path + ": " + std::strerror(errno));
    if (given == 0) {
      throw FileError(path + ": the file ends at byte " +
                      std::to_string(offset + static_cast<std::int64_t>(done)) +
                      ", which it did not when it was opened");
    }
    done += static_cast<std::size_t>(given);
  }
}

}  // namespace parallel
