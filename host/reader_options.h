// A reader's options: queries them and passes the user's choices to the reader.
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

// The options of a reader, with their defaults until choose() changes a toggle.
struct ReaderOptions {
  std::vector<Toggle> toggles;
  std::vector<int> pulldown_choices;
  std::vector<std::string> field_texts;

  // Sets toggles, numbered from 0; numbers that the reader does not have are ignored.
  void choose(const std::map<std::size_t, bool>& choices);
};

// Queries the options; a reader without the entry points has none.
ReaderOptions ask_options(GuardedReader& reader);

// Passes the choices to the reader.
void give_options(GuardedReader& reader, const ReaderOptions& options);

}  // namespace host
