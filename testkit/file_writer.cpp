#include "testkit/file_writer.h"

#include <stdexcept>

#include "testkit/record_writer.h"

namespace testkit {
namespace {

// Writes titles and sections and records their places.
class PlaceKeeper {
 public:
  PlaceKeeper(ByteSink& sink, std::int32_t shift, std::int64_t split)
      : writer_(sink), shift_(shift), split_(split) {}

  RecordWriter& writer() { return writer_; }

  void title(const Title& title, int region_set) {
    Place& place = start(title, region_set);
    writer_.title(title);
    place.end = writer_.offset();
  }

  void section(const Section& section, int region_set) {
    Place& place = start(section.title, region_set);
    writer_.title(section.title);
    if (section.leading) writer_.block(Block::integer(*section.leading));
    for (const Block& block : section.blocks) {
      place.blocks.push_back(writer_.offset());
      writer_.block(block, shift_, split_);
    }
    if (section.end_rule) writer_.rule(*section.end_rule);
    place.end = writer_.offset();
  }

  Places finish() {
    places_.size = writer_.offset();
    return std::move(places_);
  }

 private:
  Place& start(const Title& title, int region_set) {
    places_.all.push_back({.title = title.text, .region_set = region_set, .offset = writer_.offset()});
    return places_.all.back();
  }

  RecordWriter writer_;
  std::int32_t shift_;
  std::int64_t split_;
  Places places_;
};

}  // namespace

const Place& Places::of(std::string_view title, int occurrence) const {
  for (const Place& place : all) {
    if (place.title == title && occurrence-- == 0) return place;
  }
  throw std::out_of_range("nothing written under the title " + std::string(title));
}

Places write(const File& file, ByteSink& sink) {
  PlaceKeeper keeper(sink, file.index_shift.value_or(file.header.bias()), file.split);
  keeper.writer().identification(file.magic);
  if (file.version) keeper.writer().version(*file.version);
  for (const Section& item : file.header.items) keeper.section(item, -1);
  if (file.header_end) keeper.title(*file.header_end, -1);
  int number = 0;
  for (const RegionSet& set : file.region_sets) {
    if (set.opener) keeper.title(*set.opener, number);
    for (const Section& section : set.sections) keeper.section(section, number);
    ++number;
  }
  if (file.closer) keeper.title(*file.closer, -1);
  keeper.writer().raw(file.trailing_bytes);
  return keeper.finish();
}

Places write_file(const File& file, const std::filesystem::path& path) {
  FileSink sink(path);
  Places places = write(file, sink);
  sink.close();
  return places;
}

std::string to_bytes(const File& file, Places* places) {
  StringSink sink;
  Places written = write(file, sink);
  if (places != nullptr) *places = std::move(written);
  return sink.take();
}

}  // namespace testkit
