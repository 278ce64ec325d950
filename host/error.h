// The error of the host library: what went wrong, in which entry point of the reader, and at which file and
// step of the dataset.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace host {

class Error : public std::runtime_error {
 public:
  // An error of the host itself: the library cannot be loaded, a wrong part number and the like.
  explicit Error(const std::string& reason) : std::runtime_error(reason), reason_(reason) {}

  // A call of `entry_point` that failed, left an exception or answered something impossible.
  Error(const std::string& entry_point, const std::string& reason)
      : std::runtime_error(entry_point + ": " + reason), entry_point_(entry_point), reason_(reason) {}

  // The entry point's plain name; empty when none was involved.
  const std::string& entry_point() const { return entry_point_; }

  // The message without the entry point's name.
  const std::string& reason() const { return reason_; }

  // The file of the dataset that the error is about, as the reader names it; empty when it is not known.
  const std::string& file() const { return file_; }

  // The step of the variables' time set that was being read; none while a dataset is opened.
  std::optional<int> step() const { return step_; }

  // what(), followed by the file if it is known: "USERD_set_filenames: NOT ENOUGH MEMORY (in
  // /data/case_10.fld)".
  std::string text_with_file() const { return file_.empty() ? what() : what() + (" (in " + file_ + ")"); }

  // Sets the file and the step, unless they are set already.
  void locate(const std::string& file, std::optional<int> step) {
    if (file_.empty()) file_ = file;
    if (!step_) step_ = step;
  }

 private:
  std::string entry_point_;
  std::string reason_;
  std::string file_;
  std::optional<int> step_;
};

}  // namespace host
