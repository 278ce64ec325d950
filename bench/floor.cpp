#include "bench/floor.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace bench {

void read_and_swap(const std::filesystem::path& path) {
  constexpr std::size_t kWordsPerRead = (std::size_t{1} << 20) / sizeof(std::uint32_t);
  struct Close {
    void operator()(FILE* file) const { fclose(file); }
  };
  const std::unique_ptr<FILE, Close> file(fopen(path.c_str(), "rb"));
  if (file == nullptr) throw std::runtime_error("cannot open " + path.string());
  setvbuf(file.get(), nullptr, _IONBF, 0);
  const std::size_t size = std::filesystem::file_size(path) / sizeof(std::uint32_t);
  const auto words = std::make_unique_for_overwrite<std::uint32_t[]>(size);
  for (std::size_t done = 0; done < size;) {
    const std::size_t wanted = std::min(kWordsPerRead, size - done);
    std::uint32_t* const chunk = words.get() + done;
    if (fread(chunk, sizeof *chunk, wanted, file.get()) != wanted) throw std::runtime_error("cannot read");
    for (std::size_t i = 0; i < wanted; ++i) chunk[i] = __builtin_bswap32(chunk[i]);
    done += wanted;
  }
}

}  // namespace bench
