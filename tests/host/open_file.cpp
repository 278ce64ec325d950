#include "tests/host/open_file.h"

#include <stdexcept>

#include "host/plugin_path.h"
#include "testkit/file_writer.h"

namespace host_test {
namespace {

host::SessionOptions quiet() {
  host::SessionOptions options;
  options.capture_diagnostics = true;
  return options;
}

}  // namespace

Reader::Reader() : library_(host::find_plugin()), session_(library_, quiet()) {}

int Reader::part(const std::string& name) {
  for (const host::Part& part : session_.parts()) {
    if (part.name == name) return part.number;
  }
  throw std::out_of_range(name);
}

int Reader::variable(const std::string& name) {
  for (const host::Variable& variable : session_.variables()) {
    if (variable.name == name) return variable.number;
  }
  throw std::out_of_range(name);
}

OpenFile::OpenFile(const testkit::File& file) {
  testkit::write_file(file, directory_ / "case.fld");
  session().open(directory_ / "case.fld");
}

}  // namespace host_test
