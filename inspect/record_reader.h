// Reads record by record and compares the markers. Errors are reported; reading continues where the markers
// and the expected length leave no doubt about the record's extent.
#pragma once

#include <cstdint>
#include <string>

#include "inspect/byte_reader.h"
#include "inspect/findings.h"
#include "inspect/pieces.h"

namespace inspect {

// The start of the next record is unknown (already reported).
struct FramingLost {
  std::uint64_t offset = 0;
};

class RecordReader {
 public:
  RecordReader(ByteReader& reader, Reporter& reporter) : reader_(reader), reporter_(reporter) {}

  // Moves to the payload of the next record, which should be `expected` bytes long. The record may have
  // another length (reported). Throws FramingLost.
  Record begin(std::uint64_t expected);
  // The same for a record that may be shorter by a multiple of `unit`.
  Record begin_at_most(std::uint64_t expected, std::uint64_t unit);
  // The same for a record of unknown length.
  Record begin_any();
  // Reads the trailing marker and compares it with the leading one.
  void end(const Record& record);

 private:
  // Whether the trailing marker confirms a record of this length here.
  bool ends_after(std::uint64_t length);
  // The leading marker; throws FramingLost at the end of the file.
  std::int32_t leading_marker();
  // The record at a leading marker with an unexpected value.
  Record odd_record(std::int32_t marker, std::uint64_t expected);
  Record started(std::uint64_t length);
  [[noreturn]] void lose(Kind kind, std::string wanted, std::string found);

  ByteReader& reader_;
  Reporter& reporter_;
};

}  // namespace inspect
