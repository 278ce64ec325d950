#include "tests/host/real_data.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "host/plugin_path.h"

namespace real_data {

std::optional<std::filesystem::path> folder(const std::string& dataset) {
  const char* data = std::getenv("FLD_REAL_DATA");
  if (data == nullptr || *data == '\0') return std::nullopt;
  return std::filesystem::path(data) / dataset;
}

void RealData::SetUp() {
  const auto data = folder(GetParam());
  if (!data) GTEST_SKIP() << "FLD_REAL_DATA is not set: the solver results are not compared";
  std::ifstream file(*data / "expected.json");
  ASSERT_TRUE(file) << "no expected.json in " << *data;
  expected = nlohmann::json::parse(file);
  library = std::make_unique<host::Library>(host::find_plugin());
  host::SessionOptions options;
  options.capture_diagnostics = true;
  session = std::make_unique<host::Session>(*library, options);
  session->open(*data / expected["files"][0].get<std::string>());
}

const host::Variable& RealData::variable(const std::string& name) {
  for (const host::Variable& candidate : session->variables()) {
    if (candidate.name == name) return candidate;
  }
  throw std::runtime_error("no variable " + name);
}

}  // namespace real_data
