#include "tool/vtkhdf_series.h"

#include "tool/exit_status.h"
#ifdef FLDTOOL_HAS_HDF5
#include <optional>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

#include "nlohmann/json.hpp"
#include "tool/derived_reader.h"
#include "vtkhdf/series.h"
#endif

namespace tool {
#ifdef FLDTOOL_HAS_HDF5
namespace {

namespace fs = std::filesystem;

vtkhdf::SeriesOptions series_options(const SeriesOptions& options, std::vector<vtkhdf::NodalArray> derived,
                                     std::size_t steps) {
  if (options.compression == vtkdata::Compression::lz4)
    throw CommandError(ExitStatus::usage, "--compress: a .vtkhdf file is compressed with zlib alone");
  if (options.box) throw CommandError(ExitStatus::usage, "--box: a .vtkhdf file has all elements");
  return {.variables = options.quantities.variables,
          .more = std::move(derived),
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
      : session_(session), file_(file), parts_(options.parts), derived_(session) {
    const vtkhdf::SeriesOptions choices =
        series_options(options, derived_arrays(options.quantities.derived), steps);
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
  std::vector<vtkhdf::NodalArray> derived_arrays(const std::vector<analysis::DerivedVariable>& variables) {
    std::vector<vtkhdf::NodalArray> arrays;
    for (const analysis::DerivedVariable& variable : variables) {
      const auto values = [this, variable](int part) -> std::optional<std::span<const float>> {
        given_ = derived_.on_part(variable, part);
        if (!given_) return std::nullopt;
        return std::span<const float>(given_->GetPointer(0),
                                      static_cast<std::size_t>(given_->GetNumberOfValues()));
      };
      arrays.push_back({variable.name, analysis::gives_vector(variable.derivation) ? 3U : 1U, values});
    }
    return arrays;
  }

  host::Session& session_;
  fs::path file_;
  ChosenParts parts_;
  DerivedReader derived_;
  vtkSmartPointer<vtkFloatArray> given_;  // the derived values that are written
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
