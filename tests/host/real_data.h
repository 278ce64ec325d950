// The solver results with known contents, opened through the plug-in.
//
// The environment variable FLD_REAL_DATA names a folder with one folder per dataset (tjunction, propeller),
// each with the files of a series and an expected.json with the expected answers. Without it, the tests are
// skipped.
#pragma once

#include "gtest/gtest.h"
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/session.h"
#include "nlohmann/json.hpp"

namespace real_data {

// The folder of a dataset; none if the variable is not set.
std::optional<std::filesystem::path> folder(const std::string& dataset);

// A test per dataset: its expected contents, and a session with its first file open.
class RealData : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override;

  // The variable of that name.
  const host::Variable& variable(const std::string& name);
  double tolerance(const char* kind) const { return expected["tolerance"][kind].get<double>(); }

  nlohmann::json expected;
  std::unique_ptr<host::Library> library;
  std::unique_ptr<host::Session> session;
};

}  // namespace real_data
