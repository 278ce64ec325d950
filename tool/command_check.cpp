// fldtool check
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/text_encoding.h"
#include "inspect/check.h"
#include "inspect/report.h"
#include "nlohmann/json.hpp"
#include "tool/commands.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/jobs.h"
#include "tool/json_values.h"
#include "tool/number_range.h"
#include "tool/output.h"
#include "tool/walk_progress.h"

namespace tool {
namespace {

constexpr char kCheckManual[] =
    R"(Checks the integrity of files. It shares no code with the reader, and its memory does not grow with the file.

Without --full the structure is checked: identification, version, header, titles and their order, the markers of every
record, the sizes of all blocks against the counts before them, end rules, the end of the file. This is fast: the data are stepped over.

--full reads everything: indices and codes of elements, faces and regions, counts that have to agree, material numbers,
names, values that are NaN or infinite, motion. When FILE belongs to a series (a number after an underscore
before the extension), all files of the series are checked, one by one and against each other; --alone checks FILE
only.

One line per finding gives the file, the severity, the number, the offset in bytes, what is wrong and where, what was
expected and what was found; docs/findings.md explains every number. The last line for a file is a summary. Errors make readers
refuse or misread the file; warnings are doubtful; notes, shown with --notes, are harmless.

--json prints one JSON object:
  full          whether the content was checked
  files         per file: file, readable, reason (why it cannot be read, else null), size, complete (whether reading came
                to the end), ended_at (the offset), errors, warnings, notes (how many), findings (number, severity,
                offset, text, place, wanted, found), left_out (per number, how many are beyond --limit)

The plug-in is not used. Errors and warnings count as findings for the exit status. It is 3 when a file cannot be read or
is not an FLD file, whatever was found in the others.

)";

struct CheckCommand {
  std::vector<std::string> files;
  inspect::CheckOptions options;
  int jobs = 0;
  bool notes = false;
  bool json = false;
};

void run_check(const CheckCommand& command) {
  Output output("");
  if (command.json) output.write(fmt::format("{{\n\"full\": {},\n\"files\": [", command.options.full));
  ExitStatus status = ExitStatus::ok;
  WalkProgress progress("checking");
  inspect::CheckOptions options = command.options;
  options.progress = std::ref(progress);
  const std::vector<inspect::FileCheck> checks = inspect::plan_checks(command.files, options);
  const auto check = [&](std::size_t file) {
    const inspect::FileReport report = checks[file]();
    progress.erase();
    const std::string text = command.json ? json_text(inspect::report_json(report, host::to_utf8), -1)
                                          : inspect::report_text(report, command.notes, host::to_utf8);
    return Json{{"text", as_bytes(text)},
                {"is_readable", report.is_readable()},
                {"is_fine", report.findings.is_fine()}};
  };
  // A check holds a part of its file, whatever the size.
  constexpr std::uint64_t kMemory = std::uint64_t{64} << 20;
  const int jobs = usable_jobs(command.options.full ? command.jobs : 1, checks.size(), kMemory);
  run_jobs(jobs, checks.size(), check, [&](std::size_t file, const Json& report) {
    if (command.json) output.write(file == 0 ? "\n" : ",\n");
    output.write(text_of(report.at("text")));
    if (!report.at("is_readable").get<bool>()) {
      status = ExitStatus::unreadable;
    } else if (!report.at("is_fine").get<bool>() && status == ExitStatus::ok) {
      status = ExitStatus::findings;
    }
    return true;
  });
  if (command.json) output.write("\n]\n}\n");
  output.finish();
  if (status != ExitStatus::ok) throw QuietExit(status);
}

}  // namespace

void add_check_command(CLI::App& app) {
  const auto command = std::make_shared<CheckCommand>();
  CLI::App* check = app.add_subcommand("check", "Check the integrity of files");
  check->add_option("FILE", command->files, "The files")->required()->check(file_name());
  check->add_flag("--full", command->options.full,
                  "Check the content as well, and the other files of a series");
  check->add_flag("--alone", command->options.alone, "With --full: do not check the other files of a series");
  check->add_flag("--notes", command->notes, "Show notes too");
  check->add_option("--limit", command->options.limit, "How many findings of one kind to show per file")
      ->check(whole_number(1, 1000000))
      ->capture_default_str();
  check->add_flag("--json", command->json, "Print JSON for programs");
  add_jobs_option(*check, command->jobs, "files");
  check->footer(std::string(kCheckManual) + kExitStatusText);
  check->callback([command] { run_check(*command); });
}

}  // namespace tool
