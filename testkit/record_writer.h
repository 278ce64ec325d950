// Writes the records of a file: identification, version, titles, rule records, data blocks. A data record is
// its payload between two 4-byte markers that hold the payload's length.
//
//   FileSink sink(path);
//   RecordWriter writer(sink);
//   writer.identification();
//   writer.version();
//   writer.title("HeaderDataEnd");
//   ...
//   sink.close();
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "testkit/block.h"
#include "testkit/byte_sink.h"
#include "testkit/section.h"

namespace testkit {

class RecordWriter {
 public:
  // Writes to `sink`, which has to outlive the writer.
  explicit RecordWriter(ByteSink& sink) : sink_(sink) {}

  // Offset of the next record, in bytes from the start of the file.
  std::uint64_t offset() const { return sink_.offset(); }

  void identification(std::string_view magic = "VTRL-FLD") { record(magic); }
  void version(std::int32_t version = 4);
  void title(const Title& title) { record(title.payload(), title.markers); }
  void rule(const Rule& rule);
  void end_rule() { rule(kEndRule); }
  void record(std::string_view payload, const Markers& markers = {});
  void raw(std::string_view bytes) { sink_.write(bytes); }

  // Rule record and data records of a block; the values are converted and written in pieces. `shift` is added
  // to the integers that the block marks as indices. `split` is the number of elements per full data record
  // if the block does not set it; 0 for as few records as possible. Throws std::invalid_argument for a width
  // that does not suit the kind of data.
  void block(const Block& block, std::int32_t shift = 0, std::int64_t split = 0);

 private:
  void characters(const Block& block);
  template <class Value>
  void numbers(const Source<Value>& source, const Block& block, std::int32_t shift, std::int64_t split);
  template <class Stored, class Value>
  void values(const Source<Value>& source, std::int64_t first, std::int64_t count, IndexBase base,
              std::int32_t shift);
  void marker(std::int64_t payload_size, const std::optional<std::int32_t>& wrong);

  ByteSink& sink_;
  std::vector<char> stored_;  // a piece in the file's byte order
};

}  // namespace testkit
