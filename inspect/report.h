// Reports of checks as text and JSON. Decode converts texts of the file to UTF-8; paths are not converted.
#pragma once

#include <string>

#include "inspect/check.h"
#include "inspect/layout.h"
#include "nlohmann/json_fwd.hpp"

namespace inspect {

// "error FLD-106 at 1234: the markers of a record differ (LS_Nodes, x): wanted 16, found 20"
std::string finding_text(const Finding& finding);

// A line per finding, a line per kind with omitted findings, and a summary; each begins with the file's path.
// Notes are omitted unless `notes` is set.
std::string report_text(const FileReport& report, bool notes, const Decode& decode);

nlohmann::ordered_json finding_json(const Finding& finding, const Decode& decode);
nlohmann::ordered_json report_json(const FileReport& report, const Decode& decode);

}  // namespace inspect
