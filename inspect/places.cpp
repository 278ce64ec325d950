#include "inspect/places.h"

#include "fmt/format.h"
#include "inspect/findings.h"

namespace inspect {

std::string place_of(const Title& title, const Block* block) {
  if (title.text.empty()) return title.in_header ? "header" : "";
  std::string text = title.region_set < 0 || title.is(TitleId::file_end)
                         ? shown(title.text)
                         : fmt::format("region set {}, {}", title.region_set, shown(title.text));
  if (block == nullptr) return text;
  if (block->content != Content::data) text += fmt::format(", {}", name(block->content));
  if (block->region >= 0) text += fmt::format(" of region {}", block->region);
  return text;
}

}  // namespace inspect
