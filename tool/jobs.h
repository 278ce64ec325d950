// Pieces of work, such as the steps of a dataset, that several processes do at once. Each process is a copy
// of this one as it is when the work begins, with the dataset open in a reader of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/session.h"
#include "tool/cli_names.h"
#include "tool/json_values.h"

namespace tool {

// Adds --jobs to a command that works on such pieces, "steps" or "files". 0, the default, is one job per core
// that the process may use.
void add_jobs_option(CLI::App& command, int& jobs, const char* pieces = "steps");

// The number of jobs for so many pieces of work that take up to `bytes` of memory each: as many as wanted,
// but not more than there are pieces or than fit into half of the memory that is free.
int usable_jobs(int wanted, std::size_t pieces, std::uint64_t bytes);

// The memory that one of these steps takes, as far as the sizes of its files tell.
std::uint64_t memory_of_step(const host::Session& session, const std::vector<int>& steps);

// Calls work(i) for each piece, in `jobs` processes, and then take(i, result) in this one, in the order of
// the pieces. What `work` writes to the standard error stream is written before its result is taken. An
// exception of `work` is thrown here in place of taking the result; a process that ends in another way is a
// CommandError. Stops when `take` returns false. With one job `work` is called in this process.
void run_jobs(int jobs, std::size_t pieces, const std::function<Json(std::size_t)>& work,
              const std::function<bool(std::size_t, Json)>& take);

// A text as a result, or a part of one, whatever its bytes are; and back.
Json as_bytes(std::string_view text);
std::string text_of(const Json& bytes);

}  // namespace tool
