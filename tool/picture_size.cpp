#include "tool/picture_size.h"

#include <optional>
#include <string_view>

#include "fmt/format.h"
#include "tool/exit_status.h"
#include "tool/number_range.h"

namespace tool {
namespace {

constexpr int kSmallestPicture = 64;
constexpr int kLargestPicture = 4096;

// 0 unless it is a number of pixels.
int pixels(std::string_view text) {
  const std::optional<NumberRange> range = parse_range(text, kSmallestPicture, kLargestPicture);
  return range && range->from == range->to && text != "last" ? range->from : 0;
}

}  // namespace

std::array<int, 2> picture_size(const char* command, const std::string& text) {
  const std::size_t times = text.find('x');
  const std::string_view all = text;
  const int width = times == std::string::npos ? 0 : pixels(all.substr(0, times));
  const int height = times == std::string::npos ? 0 : pixels(all.substr(times + 1));
  if (width == 0 || height == 0) {
    throw CommandError(ExitStatus::usage,
                       fmt::format("--size: '{}' is not WIDTHxHEIGHT in pixels, {} to {} each (see fldtool "
                                   "{} --help)",
                                   text, kSmallestPicture, kLargestPicture, command));
  }
  return {width, height};
}

}  // namespace tool
