#include "inspect/walker.h"

#include <string>

#include "fmt/format.h"
#include "inspect/big_endian.h"
#include "inspect/byte_reader.h"
#include "inspect/places.h"
#include "inspect/record_reader.h"
#include "inspect/section_reader.h"
#include "inspect/text_check.h"

namespace inspect {
namespace {

constexpr char kMagic[] = "VTRL-FLD";
constexpr std::size_t kMagicLength = 8;
constexpr std::int32_t kVersion = 4;

class Walker : private Reporter {
 public:
  Walker(ByteSource& source, Visitor& visitor, const Progress& progress)
      : reader_(source, progress),
        visitor_(visitor),
        records_(reader_, *this),
        section_(reader_, records_, *this, visitor) {}

  WalkResult walk() {
    try {
      if (reader_.text_at(4, kMagicLength) != kMagic) {
        report(Kind::not_fld, 0, kMagic, in_quotes(reader_.text_at(4, kMagicLength).value_or("")));
        return {WalkEnd::not_fld, 0};
      }
      identification();
      while (next_title()) {
      }
    } catch (const FramingLost& lost) {
      return {WalkEnd::stopped, lost.offset};
    }
    return {WalkEnd::complete, reader_.position()};
  }

 private:
  void report(Kind kind, std::uint64_t offset, std::string wanted, std::string found) override {
    visitor_.problem({kind, offset, place(), std::move(wanted), std::move(found)});
  }

  std::string place() const { return place_of(title_, is_in_section_ ? &section_.current() : nullptr); }

  void identification() {
    const Record magic = records_.begin(kMagicLength);
    records_.end(magic);
    visitor_.identification(magic);
    const Record record = records_.begin(4);
    const std::int32_t version = record.length < 4 ? 0 : load_int32(reader_.take(4, 4).data());
    records_.end(record);
    visitor_.version(record, version);
    if (record.length >= 4 && version != kVersion) {
      report(Kind::other_version, record.payload(), std::to_string(kVersion), std::to_string(version));
    }
    title_.in_header = true;
  }

  // Reads a title and its body; false at the end.
  bool next_title() {
    const std::uint64_t offset = reader_.position();
    title_.text.clear();
    if (reader_.remaining() == 0) {
      report(title_.in_header ? Kind::no_header_end : Kind::no_file_end, offset,
             title_.in_header ? "HeaderDataEnd" : "OverlapEnd", "the end of the file");
      return false;
    }
    const Record record = records_.begin(kTitleLength);
    if (record.length != kTitleLength) {
      records_.end(record);
      visitor_.skipped(record);
      skip_to_title();
      return true;
    }
    const Bytes bytes = reader_.take(kTitleLength, kTitleLength);
    const std::string text(bytes.begin(), bytes.end());
    records_.end(record);
    begin_title(record, text);
    return body();
  }

  void begin_title(const Record& record, const std::string& text) {
    title_.record = record;
    title_.text = without_padding(text);
    title_.info = find_title(title_.text);
    if (title_.info == nullptr) report_unknown();
    const bool is_for_body = title_.info != nullptr && title_.info->group != TitleGroup::header_item &&
                             title_.info->group != TitleGroup::header_end;
    if (title_.in_header && is_for_body) {
      report(Kind::no_header_end, record.offset, "HeaderDataEnd", shown(title_.text));
      title_.in_header = false;
    }
    if (title_.is(TitleId::region_set)) ++title_.region_set;
    visitor_.title(title_);
  }

  void report_unknown() {
    const TitleInfo* similar = similar_title(title_.text);
    const Kind kind = !is_printable(title_.text) ? Kind::title_not_text
                      : similar != nullptr       ? Kind::title_misspelt
                                                 : Kind::title_unknown;
    report(kind, title_.record.payload(), similar != nullptr ? std::string(similar->text) : "a known title",
           in_quotes(title_.text));
  }

  bool body() {
    const TitleGroup group = title_.info == nullptr ? TitleGroup::section : title_.info->group;
    switch (group) {
      case TitleGroup::header_end:
        if (!title_.in_header) report_misplaced();
        title_.in_header = false;
        return true;
      case TitleGroup::region_set:
        return true;
      case TitleGroup::file_end:
        report_rest();
        return false;
      case TitleGroup::header_item:
        if (!title_.in_header) report_misplaced();
        break;
      case TitleGroup::section:
        if (!title_.in_header && title_.region_set < 0) {
          report(Kind::section_outside, title_.record.offset, "OverlapStart_", shown(title_.text));
        }
    }
    section();
    return true;
  }

  void report_misplaced() {
    report(Kind::title_misplaced, title_.record.offset, "a section", shown(title_.text));
  }

  void report_rest() {
    if (reader_.remaining() == 0) return;
    report(Kind::bytes_after_end, reader_.position(), "the end of the file",
           fmt::format("{} bytes", reader_.remaining()));
  }

  void section() {
    is_in_section_ = true;
    section_.start();
    Record end;
    bool is_lost = false;
    try {
      const bool is_item = title_.info != nullptr && title_.info->group == TitleGroup::header_item;
      if (!title_.in_header && !is_item) section_.integer(Content::section_integer);
      const auto read = title_.info == nullptr ? &read_rest : title_.info->read;
      read(section_);
      end = section_.end();
    } catch (const SectionEnded& ended) {
      end = ended.end;
    } catch (const SectionLost&) {
      is_lost = true;
    }
    is_in_section_ = false;
    if (is_lost) skip_to_title();
    visitor_.end_section(title_, end);
  }

  static void read_rest(SectionReader& section) { section.anything(); }

  // Skips records up to a known title that is valid here, or to the end of the file.
  void skip_to_title() {
    while (reader_.remaining() > 0) {
      const auto title = known_title_at(reader_, reader_.position());
      if (title && (title_.in_header || (title->info->group != TitleGroup::header_item &&
                                         title->info->group != TitleGroup::header_end))) {
        return;
      }
      const Record record = records_.begin_any();
      records_.end(record);
      visitor_.skipped(record);
    }
  }

  ByteReader reader_;
  Visitor& visitor_;
  RecordReader records_;
  SectionReader section_;
  Title title_{};
  bool is_in_section_ = false;
};

}  // namespace

bool is_fld(ByteSource& source) {
  return ByteReader(source).text_at(4, kMagicLength) == kMagic;
}

WalkResult walk(ByteSource& source, Visitor& visitor, const Progress& progress) {
  return Walker(source, visitor, progress).walk();
}

}  // namespace inspect
