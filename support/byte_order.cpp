#include "support/byte_order.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace fld {

namespace {

constexpr int read_endian = 0;
constexpr int write_endian = 1;
constexpr int dmy_endian = 1;  // its first byte tells the host's byte order

constexpr size_t kStagingSize = 256;
char staging[kStagingSize];

int host_endian() {
  signed char first = 0;
  memcpy(&first, &dmy_endian, 1);
  return first == 1 ? 1 : 0;
}

uint16_t reversed(uint16_t value) {
  return __builtin_bswap16(value);
}
uint32_t reversed(uint32_t value) {
  return __builtin_bswap32(value);
}
uint64_t reversed(uint64_t value) {
  return __builtin_bswap64(value);
}

// Byte-swaps every Word in the `bytes` bytes at `in` into `out`. Compiles to vector code.
template <class Word>
void swap_words(char* out, const char* in, size_t bytes) {
  for (size_t i = 0; i < bytes; i += sizeof(Word)) {
    Word word = 0;
    memcpy(&word, in + i, sizeof(Word));
    word = reversed(word);
    memcpy(out + i, &word, sizeof(Word));
  }
}

// Reads `bytes` bytes into the staging buffer; false after a short read.
bool refill(size_t bytes, FILE* stream) {
  return fread_unlocked(staging, 1, bytes, stream) == bytes;
}

// Elements whose width divides the buffer size never straddle two chunks, so whole chunks are swapped.
template <class Word>
size_t read_whole_chunks(char* out, size_t bytes, FILE* stream) {
  size_t chunk = 0;
  bool more = true;
  for (size_t done = 0; done < bytes; done += chunk) {
    chunk = std::min(bytes - done, kStagingSize);
    more = more && refill(chunk, stream);
    swap_words<Word>(out + done, staging, chunk);
  }
  return chunk;
}

// Any other width: byte by byte. A chunk may end in the middle of an element.
size_t read_bytes_reversed(char* out, size_t size, size_t n, FILE* stream) {
  size_t remaining = size * n;
  size_t chunk = 0;
  size_t position = 0;
  bool more = true;
  for (size_t element = 0; element < n; ++element, out += size) {
    for (size_t byte = size; byte-- > 0;) {
      if (position == chunk) {
        chunk = std::min(remaining, kStagingSize);
        remaining -= chunk;
        more = more && refill(chunk, stream);
        position = 0;
      }
      out[byte] = staging[position++];
    }
  }
  return position;
}

}  // namespace

int get_endian_read() {
  return read_endian;
}
int get_endian_write() {
  return write_endian;
}

size_t cnvt_fread(void* buffer, size_t size, size_t n, FILE* stream) {
  if (size <= 1 || get_endian_read() == host_endian()) return fread_unlocked(buffer, size, n, stream);
  if (n == 0) return static_cast<size_t>(get_endian_read());
  auto* out = static_cast<char*>(buffer);
  switch (size) {
    case 2:
      return read_whole_chunks<uint16_t>(out, size * n, stream);
    case 4:
      return read_whole_chunks<uint32_t>(out, size * n, stream);
    case 8:
      return read_whole_chunks<uint64_t>(out, size * n, stream);
    default:
      return read_bytes_reversed(out, size, n, stream);
  }
}

void cnvt_copy(void* out, const void* in, size_t size, size_t n) {
  auto* to = static_cast<char*>(out);
  const auto* from = static_cast<const char*>(in);
  if (get_endian_read() == host_endian()) {
    memcpy(to, from, size * n);
  } else if (size == sizeof(uint32_t)) {
    swap_words<uint32_t>(to, from, size * n);
  } else {
    swap_words<uint64_t>(to, from, size * n);
  }
}

void cnvt_trimright(char* s, int n) {
  for (int i = n - 1; i >= 0 && s[i] == ' '; --i) s[i] = '\0';
}

}  // namespace fld
