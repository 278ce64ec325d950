// Checks documents against the schemas in docs/.
#pragma once

#include <string>

#include "nlohmann/json.hpp"

namespace tool_test {

// What is wrong with the document by the schema of this name ("info.schema.json"); empty when it follows it.
std::string schema_complaints(const std::string& schema, const nlohmann::json& document);

}  // namespace tool_test
