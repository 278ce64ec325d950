#include "tests/faults/soak_files.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "testkit/box_dataset.h"
#include "testkit/byte_sink.h"
#include "testkit/file_writer.h"
#include "testkit/random_dataset.h"

namespace faults {
namespace {

std::string base_name(std::size_t number) {
  return "soak" + std::to_string(number);
}

void discard(const std::filesystem::path& path) {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

// Writes into the file that is there, piece by piece, so that readers see it half written.
void overwrite(const std::filesystem::path& path, const std::string& bytes, std::size_t piece) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0600);
  if (file < 0) return;  // a folder or a pipe is in its place
  for (std::size_t begin = 0; begin < bytes.size(); begin += piece) {
    const std::size_t size = std::min(piece, bytes.size() - begin);
    if (pwrite(file, bytes.data() + begin, size, static_cast<off_t>(begin)) < 0) break;
  }
  if (ftruncate(file, static_cast<off_t>(bytes.size())) != 0) discard(path);
  close(file);
}

// Gives a new file the name of the old one, which readers keep.
void put_in_place(const std::filesystem::path& path, const std::string& bytes) {
  const std::filesystem::path fresh = path.string() + ".new";
  testkit::write_bytes(fresh, bytes);
  std::error_code failed;
  std::filesystem::rename(fresh, path, failed);
  if (failed) discard(fresh);
}

}  // namespace

std::filesystem::path ChangingSeries::first_file(const std::filesystem::path& folder, std::size_t number) {
  return folder / testkit::random_file_name(base_name(number), 0);
}

ChangingSeries::ChangingSeries(std::filesystem::path folder, std::size_t count, std::uint64_t seed)
    : folder_(std::move(folder)), engine_(seed), series_(count) {
  for (std::size_t number = 0; number < count; ++number) replace(number);
}

void ChangingSeries::replace(std::size_t number) {
  std::vector<File>& files = series_[number];
  for (const File& file : files) discard(file.path);
  files.clear();
  // Now and then one that takes long enough to read for a change to fall into it.
  const std::vector<testkit::File> descriptions =
      roll(8) == 0 ? std::vector{testkit::box_file({.nx = 24, .ny = 24, .nz = 24, .volumes = 3})}
                   : testkit::random_series(engine_());
  for (std::size_t i = 0; i < descriptions.size(); ++i) {
    files.push_back(
        {folder_ / testkit::random_file_name(base_name(number), i), testkit::to_bytes(descriptions[i])});
    put_in_place(files.back().path, files.back().bytes);
  }
}

std::string ChangingSeries::damaged(std::string bytes) {
  switch (roll(4)) {
    case 0:  // single bits
      for (std::size_t i = 0; i <= roll(8); ++i)
        bytes[roll(bytes.size())] ^= static_cast<char>(1U << roll(8));
      break;
    case 1:  // a word that is a count, more often than not
      for (std::size_t i = 0; i < 4 && bytes.size() > 8; ++i) {
        bytes[roll(bytes.size() / 4) * 4 + 3] = static_cast<char>(roll(256));
      }
      break;
    case 2:  // a stretch doubled
      bytes.insert(roll(bytes.size()), bytes.substr(roll(bytes.size()), 1 + roll(400)));
      break;
    default:  // a stretch missing
      bytes.erase(roll(bytes.size()), 1 + roll(400));
  }
  return bytes;
}

void ChangingSeries::change() {
  const std::size_t number = roll(series_.size());
  if (roll(16) == 0) return replace(number);
  const File& file = series_[number][roll(series_[number].size())];
  const std::vector<File>& others = series_[roll(series_.size())];
  switch (roll(10)) {
    case 0:
      discard(file.path);
      break;
    case 1:
      if (truncate(file.path.c_str(), static_cast<off_t>(roll(file.bytes.size()))) != 0) return;
      break;
    case 2:
      overwrite(file.path, damaged(file.bytes), 1 + roll(100000));
      break;
    case 3:
      put_in_place(file.path, damaged(file.bytes));
      break;
    case 4:
      overwrite(file.path, others[roll(others.size())].bytes, 1 + roll(100000));
      break;
    case 5:
      put_in_place(file.path, others[roll(others.size())].bytes);
      break;
    case 6: {  // no file at all
      std::error_code ignored;
      discard(file.path);
      if (roll(2) == 0) {
        std::filesystem::create_directory(file.path, ignored);
      } else if (mkfifo(file.path.c_str(), 0600) != 0) {
        return;
      }
      break;
    }
    case 7:
      overwrite(file.path, file.bytes, 1 + roll(100000));
      break;
    default:  // right again
      if (std::error_code ignored; !std::filesystem::is_regular_file(file.path, ignored)) discard(file.path);
      put_in_place(file.path, file.bytes);
  }
}

}  // namespace faults
