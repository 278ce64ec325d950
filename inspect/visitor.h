// Receives the content of a file during a walk, in file order.
#pragma once

#include <cstdint>
#include <string_view>

#include "inspect/findings.h"
#include "inspect/pieces.h"

namespace inspect {

class Visitor {
 public:
  virtual ~Visitor() = default;

  virtual void identification(const Record& /*record*/) {}
  virtual void version(const Record& /*record*/, std::int32_t /*version*/) {}

  // Every title, including those without a body.
  virtual void title(const Title& /*title*/) {}
  // The end of a section or header item; `rule` is its end rule, empty if missing.
  virtual void end_section(const Title& /*title*/, const Record& /*rule*/) {}

  // A valid rule record was read; the data records follow.
  virtual void begin_block(const Block& /*block*/) {}
  // Whether data() is to be called for the block.
  virtual bool wants_data(const Block& /*block*/) { return false; }
  virtual void data(const Block& /*block*/, const Piece& /*piece*/) {}
  // A data record of `count` elements was read.
  virtual void record(const Block& /*block*/, const Record& /*record*/, std::int64_t /*count*/) {}
  virtual void end_block(const Block& /*block*/) {}

  // The value of a block of one integer, or the beginning of a text; called before end_block().
  virtual void integer(const Block& /*block*/, std::int64_t /*value*/) {}
  virtual void characters(const Block& /*block*/, std::string_view /*bytes*/) {}

  // A record that was skipped while looking for the next title, after an error.
  virtual void skipped(const Record& /*record*/) {}
  virtual void problem(const Finding& /*finding*/) {}
};

}  // namespace inspect
