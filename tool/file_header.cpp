#include "tool/file_header.h"

#include <string_view>

#include "host/text_encoding.h"
#include "inspect/byte_source.h"
#include "inspect/visitor.h"
#include "inspect/walker.h"

namespace tool {
namespace {

struct HeaderEnded {};

std::string shown(std::string_view bytes) {
  const std::size_t last = bytes.find_last_not_of(std::string_view(" \0", 2));
  return host::printable(bytes.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

class HeaderVisitor : public inspect::Visitor {
 public:
  explicit HeaderVisitor(FileHeader& header) : header_(header) {}

  void title(const inspect::Title& title) override {
    if (!title.in_header || title.is(inspect::TitleId::header_end)) throw HeaderEnded();
    id_ = title.info == nullptr ? inspect::TitleId::unused : title.info->id;
  }

  void characters(const inspect::Block& /*block*/, std::string_view bytes) override {
    if (std::string* text = text_of(id_); text != nullptr && text->empty()) *text = shown(bytes);
  }

  void integer(const inspect::Block& block, std::int64_t value) override {
    if (block.content == inspect::Content::application_version) header_.version = std::to_string(value);
  }

  bool wants_data(const inspect::Block& block) override {
    return block.width == 1 && text_of(id_) != nullptr;
  }

  void data(const inspect::Block& block, const inspect::Piece& piece) override {
    characters(block, {reinterpret_cast<const char*>(piece.bytes.data()), piece.bytes.size()});
  }

 private:
  std::string* text_of(inspect::TitleId id) {
    switch (id) {
      case inspect::TitleId::application:
        return &header_.application;
      case inspect::TitleId::date:
        return &header_.date;
      case inspect::TitleId::comments:
        return &header_.comments;
      default:
        return nullptr;
    }
  }

  FileHeader& header_;
  inspect::TitleId id_ = inspect::TitleId::unused;
};

}  // namespace

FileHeader read_file_header(const std::filesystem::path& path) {
  FileHeader header;
  HeaderVisitor visitor(header);
  try {
    inspect::FileSource source(path);
    inspect::walk(source, visitor);
  } catch (const HeaderEnded&) {
    return header;
  } catch (const inspect::ReadError&) {
    return {};
  }
  return header;
}

}  // namespace tool
