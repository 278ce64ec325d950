// Entry-point calls in any order and with odd parameters, as chosen by bytes. Every array is as large as the
// reader promised right before, and a heap block of its own.
#pragma once

#include <vector>

#include "fuzz/byte_source.h"
#include "fuzz/changing_files.h"
#include "host/entry_points.h"

namespace fuzz {

class CallSequence {
 public:
  // `files`: what may be opened. Both have to outlive the sequence.
  CallSequence(const host::EntryPoints& api, ChangingFiles& files, std::string_view choices)
      : api_(api), files_(files), choices_(choices) {}

  // Makes the calls that the bytes choose, then ends the session.
  void run();

 private:
  using Call = void (CallSequence::*)();
  static const Call kCalls[];

  // A number from 0 to `count`, or one far away.
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

  // What the reader says about its parts right now; of one that it does not have, nothing.
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
