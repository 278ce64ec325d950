// Reports of checks as text and JSON. Decode makes UTF-8 of what comes from the file; paths stay as they are.
#pragma once

#include <string>

#include "inspect/check.h"
#include "inspect/layout.h"
#include "nlohmann/json.hpp"

namespace inspect {

// "error FLD-106 at 1234: the markers of a record differ (LS_Nodes, x): wanted 16, found 20"
std::string finding_text(const Finding& finding);

// A line per finding, how many are left out, and a last line that sums up; all begin with the file's path.
// Without `notes`, notes are left out.
std::string report_text(const FileReport& report, bool notes, const Decode& decode);

nlohmann::ordered_json finding_json(const Finding& finding, const Decode& decode);
nlohmann::ordered_json report_json(const FileReport& report, const Decode& decode);

}  // namespace inspect
