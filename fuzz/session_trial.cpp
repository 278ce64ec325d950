#include "fuzz/session_trial.h"

#include <cstdint>
#include <functional>

#include "fuzz/good_datasets.h"
#include "fuzz/scratch_directory.h"
#include "fuzz/trial.h"
#include "testkit/file_writer.h"
#include "tests/faults/documented.h"
#include "tests/reader/linked_entry_points.h"

namespace fuzz {
namespace {

// More often would slow the fuzzer down and blur the coverage of the input's own session.
constexpr std::size_t kFollowed = 32;

faults::Ending tried_session(const std::filesystem::path& file, std::size_t size,
                             faults::SessionOptions options) {
  const Trial trial(size);
  options.lines = &trial;
  faults::Ending ending = faults::whole_session(reader_test::linked_entry_points(), file, options);
  const std::string reasons = faults::undocumented(ending);
  if (!reasons.empty()) report_broken_promise(reasons.c_str());
  return ending;
}

// A valid dataset and the reader's answers when it was first opened.
class GoodDatasetBeside {
 public:
  GoodDatasetBeside() : bytes_(testkit::to_bytes(good_datasets().front().files.front())) {
    file_ = scratch_.write("good.fld", bytes_);
    digest_ = session().digest;
  }
  void expect_as_ever() const {
    const faults::Ending ending = session();
    if (ending.outcome != faults::Outcome::kServed || ending.digest != digest_)
      report_broken_promise("the good dataset is not served as ever afterwards");
  }

 private:
  faults::Ending session() const { return tried_session(file_, bytes_.size(), {}); }

  ScratchDirectory scratch_;
  std::string bytes_;
  std::filesystem::path file_;
  std::uint64_t digest_ = 0;
};

}  // namespace

void run_session(const std::filesystem::path& file, std::string_view input, faults::SessionOptions options) {
  static const GoodDatasetBeside good;
  const std::size_t number = std::hash<std::string_view>()(input);
  const bool is_followed = number % kFollowed == 0;
  options.ends = !is_followed || number / kFollowed % 2 == 0;
  tried_session(file, input.size(), options);
  if (is_followed) good.expect_as_ever();
}

}  // namespace fuzz
