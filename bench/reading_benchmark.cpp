// Reading arrays out of the page cache, against reading them as they are, and copying and swapping them.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>

#include "support/byte_order.h"

namespace {

constexpr std::size_t kBytes = std::size_t{16} << 20;

struct Close {
  void operator()(FILE* file) const { fclose(file); }
};

// A file of kBytes that has no name.
std::unique_ptr<FILE, Close> filled_file() {
  std::unique_ptr<FILE, Close> file(tmpfile());
  const std::vector<char> bytes(kBytes, 'x');
  if (!file || fwrite(bytes.data(), 1, kBytes, file.get()) != kBytes || fflush(file.get()) != 0) {
    throw std::runtime_error("no temporary file");
  }
  setvbuf(file.get(), nullptr, _IOFBF, std::size_t{1} << 20);
  return file;
}

template <class Read>
void read_again(benchmark::State& state, Read read) {
  const auto file = filled_file();
  const std::unique_ptr<char[]> out(new char[kBytes]);
  while (state.KeepRunning()) {
    rewind(file.get());
    read(out.get(), file.get());
    benchmark::DoNotOptimize(out.get());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBytes));
}

void cnvt_fread_elements(benchmark::State& state) {
  const auto width = static_cast<std::size_t>(state.range(0));
  read_again(state, [width](char* out, FILE* file) { fld::cnvt_fread(out, width, kBytes / width, file); });
}
BENCHMARK(cnvt_fread_elements)->Arg(1)->Arg(4)->Arg(8);

void plain_fread(benchmark::State& state) {
  read_again(state, [](char* out, FILE* file) { benchmark::DoNotOptimize(fread(out, 1, kBytes, file)); });
}
BENCHMARK(plain_fread);

std::uint32_t swapped(std::uint32_t word) {
  return __builtin_bswap32(word);
}
std::uint64_t swapped(std::uint64_t word) {
  return __builtin_bswap64(word);
}

template <class Word>
void memcpy_and_bswap(benchmark::State& state) {
  const std::vector<Word> from(kBytes / sizeof(Word), 0x01020304);
  std::vector<Word> out(from.size());
  while (state.KeepRunning()) {
    memcpy(out.data(), from.data(), kBytes);
    for (Word& word : out) word = swapped(word);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kBytes));
}
BENCHMARK(memcpy_and_bswap<std::uint32_t>);
BENCHMARK(memcpy_and_bswap<std::uint64_t>);

}  // namespace
