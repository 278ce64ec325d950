#include "tool/vtkhdf_series.h"

#include "tool/exit_status.h"
#ifdef FLDTOOL_HAS_HDF5
#include <system_error>

#include "nlohmann/json.hpp"
#include "vtkhdf/series.h"
#endif

namespace tool {
#ifdef FLDTOOL_HAS_HDF5
namespace {

namespace fs = std::filesystem;

vtkhdf::SeriesOptions series_options(const SeriesOptions& options, std::size_t steps) {
  if (options.compression == vtkdata::Compression::lz4)
    throw CommandError(ExitStatus::usage, "--compress: a .vtkhdf file is compressed with zlib alone");
  if (options.box) throw CommandError(ExitStatus::usage, "--box: a .vtkhdf file has all elements");
  if (!options.quantities.derived.empty())
    throw CommandError(ExitStatus::usage, "--variables: a .vtkhdf file has no derived variables");
  return {.variables = options.quantities.variables,
          .steps = steps,
          .double_precision = options.precision == vtkdata::Precision::double_width,
          .compress = options.compression == vtkdata::Compression::zlib};
}

[[noreturn]] void cannot_write(const fs::path& file, const std::string& reason) {
  throw CommandError(ExitStatus::failure, file.string(), "cannot write: " + reason);
}

class VtkHdfSeries : public SeriesWriter {
 public:
  VtkHdfSeries(host::Session& session, const fs::path& file, const SeriesOptions& options, std::size_t steps)
      : session_(session), file_(file), parts_(options.parts) {
    const vtkhdf::SeriesOptions choices = series_options(options, steps);
    std::error_code error;
    if (file.has_parent_path()) fs::create_directories(file.parent_path(), error);
    if (error) cannot_write(file, error.message());
    try {
      series_ = std::make_unique<vtkhdf::Series>(file, session, choices);
    } catch (const vtkhdf::WriteError& failure) {
      cannot_write(file, failure.what());
    }
  }

  Json write_step(const std::function<void()>& after_part) override {
    try {
      series_->write_step(session_, parts_.at(session_), after_part);
    } catch (const vtkhdf::WriteError& failure) {
      cannot_write(file_, failure.what());
    }
    return nullptr;
  }

  void add_step(const Json& /*step*/) override {}  // the file has it

 private:
  host::Session& session_;
  fs::path file_;
  ChosenParts parts_;
  std::unique_ptr<vtkhdf::Series> series_;
};

}  // namespace

std::unique_ptr<SeriesWriter> make_vtkhdf_series(host::Session& session, const fs::path& file,
                                                 const SeriesOptions& options, std::size_t steps) {
  return std::make_unique<VtkHdfSeries>(session, file, options, steps);
}
#else
std::unique_ptr<SeriesWriter> make_vtkhdf_series(host::Session& /*session*/,
                                                 const std::filesystem::path& /*file*/,
                                                 const SeriesOptions& /*options*/, std::size_t /*steps*/) {
  throw CommandError(ExitStatus::failure, "this fldtool was built without HDF5: it writes no .vtkhdf files");
}
#endif

}  // namespace tool
