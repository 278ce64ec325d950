// The table of results, for a terminal or as Markdown, printed row by row.
#pragma once

#include "bench/comparison.h"

namespace bench {

enum class TableForm { kPlain, kMarkdown };

void print_heading(TableForm form);
// Seconds, or MiB for memory, of both sides; a row that cannot be measured says that it was not built.
void print_row(const Result& result, TableForm form);

}  // namespace bench
