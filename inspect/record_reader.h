// Steps from record to record and compares their markers. What is wrong goes to a reporter; where the markers
// and the length that belongs at the place leave no doubt, reading goes on.
#pragma once

#include <cstdint>
#include <string>

#include "inspect/byte_reader.h"
#include "inspect/findings.h"
#include "inspect/pieces.h"

namespace inspect {

// It is not known where the next record begins. Was reported.
struct FramingLost {
  std::uint64_t offset = 0;
};

class RecordReader {
 public:
  RecordReader(ByteReader& reader, Reporter& reporter) : reader_(reader), reporter_(reporter) {}

  // Goes to the payload of the next record, which should be `expected` bytes long. The record that is there
  // may have another length (reported). Throws FramingLost.
  Record begin(std::uint64_t expected);
  // The same for one that may be shorter, by whole `unit`s.
  Record begin_at_most(std::uint64_t expected, std::uint64_t unit);
  // The same for one of unknown length.
  Record begin_any();
  // Goes behind the trailing marker and compares it.
  void end(const Record& record);

 private:
  // The record here when it is exactly so long by its trailing marker.
  bool ends_after(std::uint64_t length);
  // What the leading marker says; throws FramingLost when the file is over.
  std::int32_t leading_marker();
  // The record at a leading marker that is not as expected.
  Record odd_record(std::int32_t marker, std::uint64_t expected);
  Record started(std::uint64_t length);
  [[noreturn]] void lose(Kind kind, std::string wanted, std::string found);

  ByteReader& reader_;
  Reporter& reporter_;
};

}  // namespace inspect
