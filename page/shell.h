// The page without a title and data: markup, style and script, put together by build.mjs when the project is
// built.
#pragma once

#include <string_view>

namespace page {

extern const std::string_view kShellBeforeTitle;
extern const std::string_view kShellBeforeData;  // what stands between the title and the data
extern const std::string_view kShellEnd;

}  // namespace page
