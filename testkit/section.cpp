#include "testkit/section.h"

namespace testkit {

Title Title::exactly(std::string bytes) {
  Title title(std::move(bytes));
  title.is_padded = false;
  return title;
}

std::string Title::payload() const {
  return is_padded && text.size() < kTitleLength ? padded(text, kTitleLength) : text;
}

Section header_item(Title title, std::vector<Block> blocks) {
  Section item;
  item.title = std::move(title);
  item.blocks = std::move(blocks);
  item.leading.reset();
  return item;
}

}  // namespace testkit
