// fldtool layout
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/text_encoding.h"
#include "inspect/byte_source.h"
#include "inspect/layout.h"
#include "inspect/walker.h"
#include "nlohmann/json.hpp"
#include "tool/commands.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/json_values.h"
#include "tool/output.h"
#include "tool/walk_progress.h"

namespace tool {
namespace {

constexpr char kLayoutManual[] =
    R"(Prints the structure of FILE, record by record in file order: the offset and the length in bytes (with the two markers
of 4 bytes), what it is, the bytes of an element and the number of elements. Titles stand at the margin, the blocks of a
section below them, each with its rule record and its data records. Single integers and texts are shown as well. Where
something is wrong, a line with !! and the number of the finding says so; docs/findings.md explains the numbers. The last
line says where the file ended, or where reading stopped.

--title shows the header items and sections of that title alone; it may have the wildcards * and ?, and may be given
several times: --title 'LS_Scalar:*'. A pattern without a match is a finding.

--json prints one JSON object:
  file, size        the file as given, its bytes
  entries           in file order, each with type, offset and length, and by type:
    identification
    version         value
    title           title, region_set (from 0; none in the header)
    rule            what, region (from 0, in a section with its regions one after the other), width, per_record, records,
                    count (elements, if the section's layout tells)
    record          width, count, value (of a single integer or a text)
    end_rule
    skipped         a record that belongs to no known section
    problem         number, severity, offset, text, place, wanted, found; no length
  complete          whether reading came to the end
  ended_at          the offset where it ended

The plug-in is not used. Errors in the file's structure count as findings for the exit status.

)";

struct LayoutOptions {
  std::string file;
  std::vector<std::string> titles;
  bool json = false;
};

// Prints the entries as they come.
class LayoutPrinter {
 public:
  LayoutPrinter(const LayoutOptions& options, std::uint64_t size, WalkProgress& progress)
      : options_(options), progress_(progress), output_("") {
    if (options_.json) {
      output_.write(
          fmt::format("{{\n\"file\": {},\n\"size\": {},\n\"entries\": [", json_text(options_.file), size));
    } else {
      output_.write(inspect::layout_heading());
    }
  }

  void print(const inspect::LayoutEntry& entry) {
    stop_if_interrupted();
    if (output_.is_terminal()) progress_.erase();
    if (options_.json) {
      output_.write((is_first_ ? "\n" : ",\n") + inspect::layout_json(entry, host::to_utf8).dump());
    } else {
      output_.write(host::to_utf8(inspect::layout_line(entry)));
    }
    is_first_ = false;
  }

  void finish(const inspect::WalkResult& walk, std::uint64_t size) {
    progress_.erase();
    const bool is_complete = walk.end == inspect::WalkEnd::complete;
    if (options_.json) {
      output_.write(fmt::format("\n],\n\"complete\": {},\n\"ended_at\": {}\n}}\n", is_complete, walk.offset));
    } else {
      output_.write(fmt::format("{:>12}{:>12}  {}\n", walk.offset, "",
                                is_complete ? "end"
                                            : fmt::format("stopped here, {} bytes before the end of the file",
                                                          size - walk.offset)));
    }
    output_.finish();
  }

 private:
  const LayoutOptions& options_;
  WalkProgress& progress_;
  Output output_;
  bool is_first_ = true;
};

void run_layout(const LayoutOptions& options) {
  try {
    inspect::FileSource source(options.file);
    if (!inspect::is_fld(source)) {
      throw CommandError(ExitStatus::unreadable, options.file, "is not an FLD file");
    }
    WalkProgress progress("reading");
    LayoutPrinter printer(options, source.size(), progress);
    inspect::Layout layout(options.titles, host::to_utf8,
                           [&](const inspect::LayoutEntry& entry) { printer.print(entry); });
    const inspect::WalkResult walk = inspect::walk(source, layout, std::ref(progress));
    layout.finish();
    printer.finish(walk, source.size());
    if (const std::vector<std::string> missing = layout.unmatched(); !missing.empty()) {
      throw CommandError(ExitStatus::findings, options.file,
                         fmt::format("there is no title '{}'", fmt::join(missing, "', '")));
    }
    if (layout.errors() > 0) throw QuietExit(ExitStatus::findings);
  } catch (const inspect::ReadError& error) {
    throw CommandError(ExitStatus::unreadable, options.file, error.what());
  }
}

}  // namespace

void add_layout_command(CLI::App& app) {
  const auto options = std::make_shared<LayoutOptions>();
  CLI::App* command = app.add_subcommand("layout", "Print the structure of a file with offsets and lengths");
  command->add_option("FILE", options->file, "The file")->required()->check(file_name());
  command->add_option("--title", options->titles, "Show only items with this title; repeatable")
      ->allow_extra_args(false);
  command->add_flag("--json", options->json, "Print JSON for programs");
  command->footer(std::string(kLayoutManual) + kExitStatusText);
  command->callback([options] { run_layout(*options); });
}

}  // namespace tool
