#include "tests/tool/json_schema.h"

#include <fstream>
#include <gtest/gtest.h>

#include "tests/tool/run_fldtool.h"
#include "valijson/adapters/nlohmann_json_adapter.hpp"
#include "valijson/schema.hpp"
#include "valijson/schema_parser.hpp"
#include "valijson/validation_results.hpp"
#include "valijson/validator.hpp"

namespace tool_test {

std::string schema_complaints(const std::string& schema, const nlohmann::json& document) {
  using Adapter = valijson::adapters::NlohmannJsonAdapter;
  std::ifstream file(std::string(SCHEMAS) + "/" + schema);
  const nlohmann::json text = nlohmann::json::parse(file);
  valijson::Schema parsed;
  valijson::SchemaParser().populateSchema(Adapter(text), parsed);
  valijson::ValidationResults results;
  valijson::Validator().validate(parsed, Adapter(document), &results);
  std::string complaints;
  for (valijson::ValidationResults::Error error; results.popError(error);) {
    for (const std::string& place : error.context) complaints += place;
    complaints += ": " + error.description + "\n";
  }
  return complaints;
}

nlohmann::json checked_json(const std::string& command, const std::string& file,
                            std::vector<std::string> options) {
  options.insert(options.begin(), {command, "--json", file});
  const Result result = run_fldtool(options);
  EXPECT_EQ(result.status, 0) << result.errors;
  nlohmann::json document = nlohmann::json::parse(result.output);
  EXPECT_EQ(schema_complaints(command + ".schema.json", document), "");
  return document;
}

}  // namespace tool_test
