#include "inspect/name_check.h"

namespace inspect {

void NameCheck::add(const Piece& piece) {
  splitter_.add(piece, [this](std::string_view name, std::uint64_t offset) { check(name, offset); });
}

void NameCheck::check(std::string_view name, std::uint64_t offset) {
  if (name.empty()) {
    reporter_.report(Kind::name_empty, offset, "a name", "blanks");
    return;
  }
  if (!is_text(name)) reporter_.report(Kind::name_not_text, offset, "text", in_quotes(name));
  if (names_.knows(name)) {
    reporter_.report(Kind::name_twice, offset, "another name", in_quotes(name));
  } else if (names_.is_full() && !told_full_) {
    told_full_ = true;
    reporter_.report(Kind::too_many_names, offset, "fewer names", "more");
  }
}

}  // namespace inspect
