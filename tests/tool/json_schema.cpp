#include "tests/tool/json_schema.h"

#include <fstream>

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

}  // namespace tool_test
