// What users are told of what could not be read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "parallel/step_reader.h"
#include "paraview/dataset_info.h"

namespace paraview {

// A text per cause, whatever the number of parts and variables that it is about: "cannot read 'Pressure' and
// 2 more on part 'hub' and 7 more: REASON". `parts` are those of the step.
std::vector<std::string> problem_texts(const std::vector<parallel::Problem>& problems,
                                       const std::vector<PartInfo>& parts, const DatasetInfo& info);

// Of selected files that are not of the dataset that `opened` belongs to: one text, whatever their number.
std::string other_files_text(const std::vector<std::string>& others, const std::string& opened);

// `reason`, with the file in front unless it names the file there itself.
std::string reason_with_file(const std::string& file, const std::string& reason);

// A message, which may quote a file or its name, as one line of UTF-8.
std::string message_line(std::string_view message);

}  // namespace paraview
