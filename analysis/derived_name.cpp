#include "analysis/derived_name.h"

#include <array>
#include <utility>

namespace analysis {
namespace {

constexpr std::array<std::pair<const char*, Derivation>, 4> kWords = {{{"grad", Derivation::gradient},
                                                                       {"vorticity", Derivation::vorticity},
                                                                       {"q", Derivation::q_criterion},
                                                                       {"mag", Derivation::magnitude}}};

std::string_view trimmed(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

}  // namespace

std::optional<DerivedName> parse_derived_name(std::string_view text) {
  text = trimmed(text);
  for (const auto& [word, derivation] : kWords) {
    std::string_view rest = text;
    if (!rest.starts_with(word) || !rest.ends_with(')')) continue;
    rest.remove_prefix(std::string_view(word).size());
    if (!rest.starts_with('(')) continue;
    const std::string_view of = trimmed(rest.substr(1, rest.size() - 2));
    if (!of.empty()) return DerivedName{derivation, std::string(of)};
  }
  return std::nullopt;
}

const char* derivation_word(Derivation derivation) {
  for (const auto& [word, known] : kWords) {
    if (known == derivation) return word;
  }
  return "";
}

bool takes_vector(Derivation derivation) {
  return derivation != Derivation::gradient;
}

bool gives_vector(Derivation derivation) {
  return derivation == Derivation::gradient || derivation == Derivation::vorticity;
}

bool needs_elements(Derivation derivation) {
  return derivation != Derivation::magnitude;
}

}  // namespace analysis
