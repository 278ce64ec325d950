#include "bench/floor.h"

#include <algorithm>
#include <fcntl.h>
#include <future>
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

// Calls work(begin, end) for the ranges of `size` bytes, each on a thread of its own. Rethrows what one
// throws.
template <class Work>
void on_threads(std::uint64_t size, unsigned threads, Work work) {
  std::vector<std::future<void>> ranges;
  for (std::uint64_t k = 0; k < threads; ++k) {
    ranges.push_back(std::async(std::launch::async, work, size / threads * k,
                                k + 1 < threads ? size / threads * (k + 1) : size));
  }
  for (auto& range : ranges) range.get();
}

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

void read_only(const std::filesystem::path& path, const Stretch& stretch, unsigned threads) {
  constexpr std::uint64_t kRead = std::uint64_t{256} << 10;
  const OpenFile file(path);
  on_threads(stretch.size, threads, [&](std::uint64_t begin, std::uint64_t end) {
    std::vector<char> buffer(kRead);
    for (; begin < end; begin += kRead)
      file.read(buffer.data(), std::min(kRead, end - begin), stretch.offset + begin);
  });
}

void touch_pages(std::size_t bytes, unsigned threads) {
  constexpr std::size_t kPage = 4096;
  const auto memory = std::make_unique_for_overwrite<char[]>(bytes);
  volatile char* const pages = memory.get();
  on_threads(bytes, threads, [pages](std::uint64_t begin, std::uint64_t end) {
    for (; begin < end; begin += kPage) pages[begin] = 1;
  });
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
