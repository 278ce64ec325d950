#include "bench/floor.h"

#include <algorithm>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace bench {

namespace {

class OpenFile {
 public:
  explicit OpenFile(const std::filesystem::path& path) : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (file_ < 0) throw std::runtime_error("cannot open " + path.string());
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() { close(file_); }

  void read(void* out, std::size_t size, std::uint64_t offset) const {
    if (pread(file_, out, size, static_cast<off_t>(offset)) != static_cast<ssize_t>(size)) {
      throw std::runtime_error("cannot read");
    }
  }

 private:
  int file_;
};

}  // namespace

Words read_and_swap(const std::filesystem::path& path, const Stretch& stretch) {
  constexpr std::size_t kWord = sizeof(std::uint32_t);
  constexpr std::size_t kWordsPerRead = (std::size_t{1} << 20) / kWord;
  const OpenFile file(path);
  const std::size_t size = stretch.size / kWord;
  auto words = std::make_unique_for_overwrite<std::uint32_t[]>(size);
  for (std::size_t done = 0; done < size;) {
    const std::size_t wanted = std::min(kWordsPerRead, size - done);
    std::uint32_t* const chunk = words.get() + done;
    file.read(chunk, wanted * kWord, stretch.offset + done * kWord);
    for (std::size_t i = 0; i < wanted; ++i) chunk[i] = __builtin_bswap32(chunk[i]);
    done += wanted;
  }
  return words;
}

void read_stretches(const std::filesystem::path& path, const std::vector<Stretch>& stretches) {
  const OpenFile file(path);
  std::vector<char> bytes;
  for (const Stretch& stretch : stretches) {
    bytes.resize(std::max<std::size_t>(bytes.size(), stretch.size));
    file.read(bytes.data(), stretch.size, stretch.offset);
  }
}

}  // namespace bench
