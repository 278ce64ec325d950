#include "bench/table.h"

#include <cstdio>
#include <fmt/core.h>
#include <string>

namespace bench {

namespace {

struct Cells {
  std::string name{}, what{}, goal{}, ratio{}, side{}, against{}, verdict{};
};

void print(const Cells& cells, TableForm form) {
  if (form == TableForm::kMarkdown) {
    fmt::print("| {} | {} | {} | {} | {} | {} | {} |\n", cells.name, cells.what, cells.goal, cells.ratio,
               cells.side, cells.against, cells.verdict);
  } else {
    fmt::print("{:<18} {:<80} {:>5} {:>7} {:>12} {:>12}  {}\n", cells.name, cells.what, cells.goal,
               cells.ratio, cells.side, cells.against, cells.verdict);
  }
  fflush(stdout);
}

std::string shown(double value, Figure figure) {
  switch (figure) {
    case Figure::kMemory: {
      const double mebibytes = value / 1048576.0;
      return mebibytes < 0.1 ? fmt::format("{:.2f} KiB", value / 1024.0)
                             : fmt::format("{:.1f} MiB", mebibytes);
    }
    case Figure::kCount:
      return fmt::format("{:.3g}", value);
    default:
      return value < 1e-4 ? fmt::format("{:.3f} us", value * 1e6) : fmt::format("{:.4f} s", value);
  }
}

}  // namespace

void print_heading(TableForm form) {
  print({"row", "what / against what", "goal", "ratio", "this", "against", "met"}, form);
  if (form == TableForm::kMarkdown) fmt::print("|---|---|---|---|---|---|---|\n");
}

void print_row(const Result& result, TableForm form) {
  const Row& row = result.row;
  Cells cells{.name = row.name, .what = row.what, .goal = row.goal ? fmt::format("{:.2f}", *row.goal) : "-"};
  if (row.missing.empty()) {
    cells.ratio = fmt::format("{:.2f}", result.ratio);
    cells.side = shown(result.side, row.figure);
    cells.against = shown(result.against, row.figure);
    cells.verdict = !row.goal ? "-" : result.is_met() ? "yes" : "no";
  } else {
    cells.ratio = cells.side = cells.against = "-";
    cells.verdict = "not built: needs " + row.missing;
  }
  print(cells, form);
}

}  // namespace bench
