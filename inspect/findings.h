// The findings in a file, with a limit per kind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "inspect/finding_kinds.h"

namespace inspect {

struct Finding {
  Kind kind{};
  std::uint64_t offset = 0;  // in the file
  std::string place{};       // "region set 0, LS_Nodes, x"; empty for the file as a whole
  std::string wanted{};
  std::string found{};

  friend bool operator==(const Finding&, const Finding&) = default;
};

// Receives findings.
class Reporter {
 public:
  virtual ~Reporter() = default;
  virtual void report(Kind kind, std::uint64_t offset, std::string wanted, std::string found) = 0;
  // Whether further findings of a kind are only counted, so that their texts are not needed.
  virtual bool only_counts(Kind /*kind*/) const { return false; }
  virtual void count(Kind /*kind*/, std::uint64_t /*more*/) {}
};

class Findings {
 public:
  // Keeps the first `limit` findings of each kind and counts the others.
  explicit Findings(std::size_t limit) : limit_(limit) {}

  void add(Finding finding);
  // Counts findings of a kind whose limit is reached.
  void count_more(Kind kind, std::uint64_t more) { counts_[kind] += more; }
  // Sorts the findings by offset.
  void sort();

  const std::vector<Finding>& kept() const { return kept_; }
  const std::map<Kind, std::uint64_t>& counts() const { return counts_; }
  std::uint64_t count(Severity severity) const;
  bool has_enough(Kind kind) const;
  // How many of a kind are not kept.
  std::uint64_t left_out(Kind kind) const;
  // Whether there are neither errors nor warnings.
  bool is_fine() const { return count(Severity::error) == 0 && count(Severity::warning) == 0; }

 private:
  std::size_t limit_;
  std::vector<Finding> kept_;
  std::map<Kind, std::uint64_t> counts_;
};

// Bytes of the file for display: text as it is; otherwise non-ASCII bytes as \x8a and so on.
std::string shown(std::string_view bytes);
// The same in quotes.
std::string in_quotes(std::string_view bytes);

}  // namespace inspect
