#include "tests/host/fake_session.h"

#include <dlfcn.h>
#include <memory>
#include <stdexcept>

#include "host/diagnostic_text.h"
#include "tests/host/fake_reader.h"

namespace fake {

Reader::Reader() : library(FAKE_READER) {
  forget_calls();
}

void* Reader::symbol(const char* name) const {
  // The library is loaded already; this only finds it again.
  const auto close = [](void* handle) { dlclose(handle); };
  const std::unique_ptr<void, decltype(close)> handle(dlopen(FAKE_READER, RTLD_NOW | RTLD_NOLOAD), close);
  void* found = handle ? dlsym(handle.get(), name) : nullptr;
  if (found == nullptr) throw std::runtime_error(std::string("the made-up reader has no ") + name);
  return found;
}

std::vector<std::string> Reader::calls() const {
  return calls("");
}

std::vector<std::string> Reader::calls(const std::string& start) const {
  const auto log = reinterpret_cast<decltype(&fake_reader_log)>(symbol("fake_reader_log"));
  std::vector<std::string> found;
  for (const std::string_view line : host::split_lines(log())) {
    if (line.starts_with(start)) found.emplace_back(line);
  }
  return found;
}

void Reader::forget_calls() const {
  reinterpret_cast<decltype(&fake_reader_forget_log)>(symbol("fake_reader_forget_log"))();
}

int Reader::reads() const {
  return reinterpret_cast<decltype(&fake_reader_reads)>(symbol("fake_reader_reads"))();
}

std::filesystem::path file(const char* name) {
  return std::filesystem::path("/made-up") / name;
}

}  // namespace fake
