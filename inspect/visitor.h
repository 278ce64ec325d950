// What a walk through a file tells, in file order.
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

  // Every title, those without a body as well.
  virtual void title(const Title& /*title*/) {}
  // A section or header item is over; `rule` is its end rule, empty when that is missing.
  virtual void end_section(const Title& /*title*/, const Record& /*rule*/) {}

  // A rule record was read and fits its place; the data records follow.
  virtual void begin_block(const Block& /*block*/) {}
  // Whether data() shall be called for the block.
  virtual bool wants_data(const Block& /*block*/) { return false; }
  virtual void data(const Block& /*block*/, const Piece& /*piece*/) {}
  // A data record was read; `count` elements are in it.
  virtual void record(const Block& /*block*/, const Record& /*record*/, std::int64_t /*count*/) {}
  virtual void end_block(const Block& /*block*/) {}

  // The value of a block of one integer, and the beginning of a text; both before end_block().
  virtual void integer(const Block& /*block*/, std::int64_t /*value*/) {}
  virtual void characters(const Block& /*block*/, std::string_view /*bytes*/) {}

  // A record that was stepped over on the way to the next title, after something was wrong.
  virtual void skipped(const Record& /*record*/) {}
  virtual void problem(const Finding& /*finding*/) {}
};

}  // namespace inspect
