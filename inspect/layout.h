// Lists the records of a file in file order.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "inspect/visitor.h"
#include "nlohmann/json_fwd.hpp"

namespace inspect {

enum class EntryType : std::uint8_t {
  identification,
  version,
  title,
  rule,
  record,
  end_rule,
  skipped,  // a record that was skipped while looking for the next title
  problem,
};

struct LayoutEntry {
  EntryType type = EntryType::record;
  std::uint64_t offset = 0;
  std::uint64_t length = 0;  // bytes, with the markers
  std::string what{};        // the title, the content of the block, or the text of a problem
  std::int64_t region_set = -1;
  std::int64_t region = -1;              // the region in a section that stores its regions separately
  Rule rule{};                           // of a rule
  std::int64_t width = -1;               // bytes of an element
  std::int64_t count = -1;               // elements of the record, or of the block if known
  std::optional<std::int64_t> number{};  // the version, or the value of a block of one integer
  std::optional<std::string> text{};     // the beginning of a block of characters
  std::optional<Finding> finding{};
};

// Converts texts of the file to UTF-8.
using Decode = std::function<std::string(const std::string& bytes)>;

class Layout : public Visitor {
 public:
  using Use = std::function<void(const LayoutEntry& entry)>;

  // Calls `use` for the entries of the sections and header items whose titles, as in the file or decoded,
  // match one of the patterns, which may have the wildcards * and ?. Without patterns every entry is listed.
  // Problems are always listed.
  Layout(const std::vector<std::string>& patterns, Decode decode, Use use);

  std::int64_t errors() const { return errors_; }
  // The patterns that no title matched.
  std::vector<std::string> unmatched() const;
  // To be called after the walk.
  void finish() { flush(); }

  void identification(const Record& record) override;
  void version(const Record& record, std::int32_t version) override;
  void title(const Title& title) override;
  void end_section(const Title& title, const Record& rule) override;
  void begin_block(const Block& block) override;
  void record(const Block& block, const Record& record, std::int64_t count) override;
  void integer(const Block& block, std::int64_t value) override;
  void characters(const Block& block, std::string_view bytes) override;
  void end_block(const Block&) override { flush(); }
  void skipped(const Record& record) override;
  void problem(const Finding& finding) override;

 private:
  struct Pattern {
    std::string text;
    bool is_matched = false;
  };

  // Whether the title matches a pattern (recorded in it), or there are no patterns.
  bool picks(const std::string& title);
  void tell(const LayoutEntry& entry);
  void flush();

  std::vector<Pattern> patterns_;
  Decode decode_;
  Use use_;
  bool is_picked_ = true;
  std::optional<LayoutEntry> record_;  // the latest record, whose value follows
  std::int64_t errors_ = 0;
};

// The heading of the table and the line of an entry. Texts are as in the file.
std::string layout_heading();
std::string layout_line(const LayoutEntry& entry);

nlohmann::ordered_json layout_json(const LayoutEntry& entry, const Decode& decode);

}  // namespace inspect
