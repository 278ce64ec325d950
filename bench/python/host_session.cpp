// What bench/python/benchmark.py is compared with: the same requests in C++ through host/. Prints the seconds
// that they took and the bytes that the process grew by, from before the opening to its peak.
//
//   host_session FILE arrays        points, elements and the first scalar of all parts, all held, as Python
//                                   has them: coordinates interleaved, node numbers from 0
//   host_session FILE axes          the same as the reader has them: an array for each axis, numbers from 1
//   host_session FILE small COUNT   the first scalar of the first part, so many times
#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "host/plugin_path.h"
#include "host/session.h"

namespace {

// VmHWM, the peak, or VmRSS, what is there now.
long bytes_of_memory(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long kibibytes = 0;
    if (word == name + ":" && status >> kibibytes) return kibibytes * 1024;
  }
  return 0;
}

struct PartArrays {
  host::LargeArray<float> points;
  host::Coordinates coordinates;
  std::vector<host::ElementBlock> elements;
  host::PartValues values;
};

int first_scalar(host::Session& session) {
  for (const host::Variable& variable : session.variables()) {
    if (variable.kind == host::VariableKind::scalar && variable.location == host::Location::node)
      return variable.number;
  }
  throw host::Error("there is no scalar");
}

void measure(const std::string& file, const std::string& what, int count) {
  const host::Library library(host::find_plugin());
  host::SessionOptions options;
  options.capture_diagnostics = true;
  options.recover_from_assertions = true;
  const long before = bytes_of_memory("VmRSS");
  const auto start = std::chrono::steady_clock::now();
  host::Session session(library, options);
  session.open(file);
  const int scalar = first_scalar(session);
  std::vector<PartArrays> held;
  auto begin = start;
  if (what != "small") {
    const bool as_axes = what == "axes";
    for (const host::Part& part : session.parts()) {
      PartArrays& arrays = held.emplace_back();
      if (as_axes) {
        arrays.coordinates = session.coordinates(part.number);
      } else {
        arrays.points = session.points(part.number);
      }
      arrays.elements = session.elements(part.number, as_axes ? 1 : 0);
      arrays.values = session.values(scalar, part.number);
    }
  } else {
    begin = std::chrono::steady_clock::now();
    for (int i = 0; i < count; ++i) static_cast<void>(session.values(scalar, 1));
  }
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  std::cout << seconds.count() << ' ' << bytes_of_memory("VmHWM") - before << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc < 3) throw std::runtime_error("usage: host_session FILE arrays | axes | small COUNT");
    measure(argv[1], argv[2], argc > 3 ? std::stoi(argv[3]) : 1);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
