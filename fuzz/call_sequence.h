// Entry-point calls in any order and with unusual arguments, chosen by the input. Every array has exactly the
// size that the reader announced, in its own heap block.
#pragma once

#include <vector>

#include "fuzz/byte_source.h"
#include "fuzz/changing_files.h"
#include "host/entry_points.h"

namespace fuzz {

class CallSequence {
 public:
  // `files`: the files to open. Both must outlive the sequence.
  CallSequence(const host::EntryPoints& api, ChangingFiles& files, std::string_view choices)
      : api_(api), files_(files), choices_(choices) {}

  // Makes the calls chosen by the input, then ends the session.
  void run();

 private:
  using Call = void (CallSequence::*)();
  static const Call kCalls[];

  // A number from 0 to `count`, or far out of range.
  int number_up_to(int count);

  void open();
  void exit();
  void set_step();
  void ask_times();
  void ask_parts();
  void ask_coordinates();
  void ask_elements();
  void ask_variables();
  void ask_values();
  void ask_metadata();
  void set_options();
  void exchange_undefined_value();
  void ask_identity();
  void ask_texts();
  void ask_fixed_answers();
  void ask_about_blocks();
  void change_file();

  // The current sizes of the parts; 0 for parts that do not exist.
  struct PartSize {
    int nodes = 0;
    std::vector<int> elements;  // per slot
  };
  std::vector<PartSize> build_parts();
  PartSize size_of(int part);
  static int elements_of(const PartSize& size, int slot);

  const host::EntryPoints& api_;
  ChangingFiles& files_;
  ByteSource choices_;
};

}  // namespace fuzz
