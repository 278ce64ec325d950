// In programs without VTK no chart is drawn.
#include "tool/chart_output.h"
#include "tool/exit_status.h"

namespace tool {

void check_chart_output(const std::string& path) {
  if (path.empty()) return;
  throw CommandError(ExitStatus::usage, path, "this fldtool was built without VTK, which draws charts");
}

void write_chart(const std::string& path, const render::Chart& /*chart*/,
                 const render::ChartOptions& /*options*/) {
  check_chart_output(path);
}

}  // namespace tool
