// A reader's option controls: asking for them and handing over the user's choice.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/guarded_reader.h"

namespace host {

// An option that is on or off.
struct Toggle {
  std::string title;
  bool is_on = false;
};

// The option controls of a reader, with their defaults until choose() changes a toggle.
struct ReaderOptions {
  std::vector<Toggle> toggles;
  std::vector<int> pulldown_choices;
  std::vector<std::string> field_texts;

  // Switches toggles, numbered from 0; numbers that the reader does not have are passed over.
  void choose(const std::map<std::size_t, bool>& choices);
};

// Asks the reader for its options; a reader without the entry points has none.
ReaderOptions ask_options(GuardedReader& reader);

// Hands over what was chosen.
void give_options(GuardedReader& reader, const ReaderOptions& options);

}  // namespace host
