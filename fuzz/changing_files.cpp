#include "fuzz/changing_files.h"

#include "fuzz/good_datasets.h"
#include "testkit/file_writer.h"

namespace fuzz {
namespace {

constexpr unsigned kCuts = 8;  // positions at which a file is truncated; the first means "removed"

}  // namespace

ChangingFiles::ChangingFiles(const ScratchDirectory& scratch) : scratch_(scratch) {
  for (const GoodDataset& dataset : good_datasets()) {
    paths_.push_back(scratch.path() / dataset.file_name(0));
    for (std::size_t i = 0; i < dataset.files.size(); ++i) {
      files_.push_back({dataset.file_name(i), testkit::to_bytes(dataset.files[i])});
      scratch.write(files_.back().name, files_.back().bytes);
    }
  }
  const std::string& good = files_.front().bytes;
  paths_.push_back(scratch.path());
  paths_.push_back(scratch.path() / "missing.fld");
  paths_.push_back(scratch.write("text.fld", "not a result file"));
  paths_.push_back(scratch.write("text.txt", good));
  paths_.push_back(scratch.write("half.fld", good.substr(0, good.size() / 2)));
}

void ChangingFiles::change(unsigned choice) {
  const std::size_t number = choice % files_.size();
  const std::size_t way = choice / files_.size();
  File& file = files_[number];
  file.is_changed = true;
  if (way == 0) {
    std::filesystem::remove(scratch_.path() / file.name);
  } else if (way < kCuts) {
    scratch_.write(file.name, file.bytes.substr(0, file.bytes.size() * way / kCuts));
  } else {
    scratch_.write(file.name, files_[(number + way) % files_.size()].bytes);
  }
}

void ChangingFiles::restore() {
  for (File& file : files_) {
    if (file.is_changed) scratch_.write(file.name, file.bytes);
    file.is_changed = false;
  }
}

}  // namespace fuzz
