#include "inspect/check.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <system_error>

#include "inspect/content_check.h"
#include "inspect/dataset_outline.h"
#include "inspect/series.h"
#include "inspect/structure_check.h"

namespace inspect {
namespace {

// A file's position in its series; null if the series is not checked.
struct InSeries {
  DatasetOutline* dataset = nullptr;
  std::size_t number = 0;
};

std::optional<MotionBase> own_base(const Outline& outline, std::int32_t cycle, std::int64_t region_set) {
  if (cycle != outline.cycle) return std::nullopt;
  return MotionBase{.has_nodes = outline.region_sets[static_cast<std::size_t>(region_set)].nodes.has_value()};
}

void check_source(ByteSource& source, const CheckOptions& options, bool opens_dataset, const InSeries& series,
                  FileReport& report) {
  report.size = source.size();
  StructureCheck structure(report.findings, opens_dataset);
  report.walk = walk(source, structure, options.progress);
  structure.finish(report.walk.end == WalkEnd::complete);
  if (options.full && report.walk.end != WalkEnd::not_fld) {
    const Outline& outline = structure.outline();
    // While another file is read, the progress of this one stands still.
    std::uint64_t done = 0;
    const auto advance = [&](std::uint64_t to, std::uint64_t total) {
      done = to;
      if (options.progress) options.progress(to, total);
    };
    const auto stand = [&](std::uint64_t, std::uint64_t) { advance(done, source.size()); };
    Surroundings surroundings{.outline = outline};
    if (series.dataset != nullptr) {
      series.dataset->check(series.number, report.findings);
      surroundings.knows_series = true;
      surroundings.nodes_of_values = [&](std::int64_t set) {
        return series.dataset->nodes_at(series.number, set);
      };
      surroundings.motion_base = [&](std::int32_t cycle, std::int64_t set) {
        return series.dataset->motion_base(cycle, set, stand);
      };
    } else if (opens_dataset) {
      // In a dataset of one file, motion can only start from that file.
      surroundings.knows_series = true;
      surroundings.motion_base = [&](std::int32_t cycle, std::int64_t set) {
        return own_base(outline, cycle, set);
      };
    }
    ContentCheck content(surroundings, report.findings);
    walk(source, content, advance);
  }
  report.findings.sort();
}

FileReport check_file(const std::string& path, const CheckOptions& options, bool opens_dataset,
                      const InSeries& series) {
  FileReport report(path, options.limit);
  try {
    FileSource source(path);
    check_source(source, options, opens_dataset, series, report);
  } catch (const ReadError& error) {
    report.reason = error.what();
  }
  return report;
}

// Equal for all spellings of a path.
std::string identity(const std::string& path) {
  std::error_code error;
  const auto canonical = std::filesystem::weakly_canonical(path, error);
  return error ? path : canonical.string();
}

}  // namespace

std::vector<FileCheck> plan_checks(const std::vector<std::string>& files, const CheckOptions& options) {
  std::vector<FileCheck> checks;
  std::set<std::string> planned;
  for (const std::string& file : files) {
    if (planned.contains(identity(file))) continue;
    if (options.full && !options.alone) {
      const std::vector<SeriesFile> series = find_series(file);
      const auto dataset = std::make_shared<DatasetOutline>(series, options.progress);
      for (std::size_t i = 0; i < series.size(); ++i) {
        if (!planned.insert(identity(series[i].path)).second) continue;
        checks.emplace_back([path = series[i].path, options, dataset, i] {
          return check_file(path, options, i == 0, {dataset.get(), i});
        });
      }
    }
    // A file without a series, or one that does not exist.
    if (planned.insert(identity(file)).second)
      checks.emplace_back([file, options] { return check_file(file, options, !has_cycle(file), {}); });
  }
  return checks;
}

void check_files(const std::vector<std::string>& files, const CheckOptions& options,
                 const std::function<void(const FileReport&)>& tell) {
  for (const FileCheck& check : plan_checks(files, options)) tell(check());
}

std::string first_broken_file(const std::string& file, const Progress& progress) {
  std::vector<SeriesFile> series = find_series(file);
  if (series.empty()) series.push_back({file});
  for (std::size_t i = 0; i < series.size(); ++i) {
    const FileReport report = check_file(series[i].path, {.limit = 0, .progress = progress}, i == 0, {});
    if (!report.reason.empty() || report.findings.count(Severity::error) > 0) return series[i].path;
  }
  return "";
}

FileReport check_bytes(ByteSource& source, const CheckOptions& options) {
  FileReport report("", options.limit);
  check_source(source, options, true, {}, report);
  return report;
}

}  // namespace inspect
