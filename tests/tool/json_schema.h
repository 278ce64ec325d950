// Checks documents against the schemas in docs/.
#pragma once

#include <string>
#include <vector>

#include "nlohmann/json.hpp"

namespace tool_test {

// What is wrong with the document by the schema of this name ("info.schema.json"); empty when it follows it.
std::string schema_complaints(const std::string& schema, const nlohmann::json& document);

// What `fldtool COMMAND --json FILE OPTION...` prints, which has to go well and to follow the command's
// schema.
nlohmann::json checked_json(const std::string& command, const std::string& file,
                            std::vector<std::string> options);

}  // namespace tool_test
