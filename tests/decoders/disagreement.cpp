#include "tests/decoders/disagreement.h"

#include <vector>

#include "inspect/check.h"
#include "inspect/series.h"
#include "tests/decoders/decoded_file.h"
#include "tests/decoders/expected_answers.h"
#include "tests/decoders/served_answers.h"

namespace decoders {
namespace {

bool has_errors(const std::filesystem::path& file, bool full) {
  bool found = false;
  inspect::check_files({file.string()}, {.full = full, .limit = 1}, [&](const inspect::FileReport& report) {
    found = found || !report.is_readable() || report.findings.count(inspect::Severity::error) > 0;
  });
  return found;
}

}  // namespace

std::string disagreement(const host::EntryPoints& api, const std::filesystem::path& file,
                         bool* was_compared) {
  if (was_compared != nullptr) *was_compared = false;
  const Answers served = served_answers(api, file);
  if (!served.failure.empty()) {
    return has_errors(file, true) ? "" : "a full check finds no error, but: " + served.failure;
  }
  std::vector<inspect::SeriesFile> series = inspect::find_series(file.string());
  if (series.empty()) series.push_back({file.string()});
  std::vector<DecodedFile> decoded;
  for (const inspect::SeriesFile& member : series) {
    if (has_errors(member.path, false)) return "";
    inspect::FileSource source(member.path);
    decoded.push_back(decode(source));
    if (decoded.back().region_sets.size() != decoded.front().region_sets.size()) return "";
  }
  if (was_compared != nullptr) *was_compared = true;
  return difference(served, expected_answers(decoded));
}

}  // namespace decoders
