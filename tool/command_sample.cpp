// fldtool sample
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "samples/samples.h"
#include "tool/commands.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/output.h"
#include "tool/progress.h"

namespace tool {
namespace {

constexpr char kSampleManual[] =
    R"(Writes the sample datasets, each into a folder of its own below DIR, which is made if it is missing. Prints one line
per sample: its name, the file to open and what it shows.

)";

void run_sample(const std::string& directory) {
  std::vector<samples::SampleInfo> written;
  try {
    Progress progress("samples", samples::kSamples, ProgressUnit::steps);
    written = samples::write_samples(directory, [&](std::size_t done) {
      stop_if_interrupted();
      progress.update(done);
    });
  } catch (const std::system_error& error) {
    throw CommandError(ExitStatus::failure, directory, "cannot write: " + error.code().message());
  }
  Output output("");
  for (const samples::SampleInfo& sample : written) {
    output.write(fmt::format("{:<8}  {}  {}\n", sample.name, sample.file.string(), sample.description));
  }
  output.finish();
}

}  // namespace

void add_sample_command(CLI::App& app) {
  const auto directory = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand("sample", "Write the sample datasets");
  command->add_option("DIR", *directory, "The directory to write into")->required()->check(file_name());
  command->footer(std::string(kSampleManual) + kExitStatusText);
  command->callback([directory] { run_sample(*directory); });
}

}  // namespace tool
