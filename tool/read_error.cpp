#include "tool/read_error.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "inspect/series.h"

namespace tool {
namespace {

// The file of a step; where the reader does not name it, by the names of the files. Empty if it is not known.
std::string file_of(const host::Session& session, int step) {
  std::string file = session.file_of_step(step);
  if (!file.empty() || !session.is_open()) return file;
  const std::vector<inspect::SeriesFile> series = inspect::find_series(session.path().string());
  if (series.size() == static_cast<std::size_t>(session.step_count()))
    file = series[static_cast<std::size_t>(step)].path;
  return file;
}

ReadProblem problem(const host::Session& session, std::string file, std::optional<int> step,
                    const std::string& what, const std::string& reason) {
  if (file.empty() && step) file = file_of(session, *step);
  std::string text;
  if (step && session.is_open() && session.step_count() > 1) text += fmt::format("step {}: ", *step);
  if (!what.empty()) text += what + ": ";
  return {shown_path(file, session.path().string()), text + host::message_to_utf8(reason)};
}

}  // namespace

ReadProblem read_problem(const host::Error& error, const host::Session& session, const std::string& what) {
  return problem(session, error.file(), error.step(), what, error.reason());
}

ReadProblem read_problem(const host::PartValues& values, const host::Session& session,
                         const std::string& what) {
  return problem(session, values.file, session.step(), what, values.reason);
}

bool select_step(host::Session& session, int step, Problems& problems) {
  try {
    session.select_step(step);
    return true;
  } catch (const host::Error& error) {
    problems.add(read_problem(error, session).text());
    return false;
  }
}

CommandError read_error(const host::Error& error, const host::Session& session) {
  const ReadProblem found = read_problem(error, session);
  return {ExitStatus::unreadable, found.file, found.reason};
}

std::string shown_path(const std::string& file, const std::string& dataset) {
  namespace fs = std::filesystem;
  if (file.empty()) return dataset;
  std::error_code error;
  const fs::path folder = fs::absolute(dataset, error).parent_path().lexically_normal();
  const fs::path path = fs::absolute(file, error).lexically_normal();
  if (error || path.parent_path() != folder) return file;
  return (fs::path(dataset).parent_path() / path.filename()).string();
}

}  // namespace tool
