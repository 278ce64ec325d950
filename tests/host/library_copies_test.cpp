// Several datasets open in one process, each in a private copy of the library.
#include <gtest/gtest.h>
#include <iterator>
#include <link.h>
#include <memory>
#include <set>
#include <sys/resource.h>
#include <utility>
#include <vector>

#include "host/library.h"
#include "host/plugin_path.h"
#include "host/session.h"
#include "samples/samples.h"
#include "testkit/temporary_directory.h"

namespace {

// A session with a private copy of the library.
struct OwnReader {
  host::Library library{host::find_plugin(), host::Library::Globals::own};
  host::Session session{library, {.capture_diagnostics = true}};
};

// The answers of a session, for comparison.
struct Answers {
  explicit Answers(host::Session& session) {
    for (const host::Part& part : session.parts()) {
      parts.push_back(part.name);
      const host::Coordinates nodes = session.coordinates(part.number);
      x.insert(x.end(), nodes.x().begin(), nodes.x().end());
      const host::PartValues pressure = session.values(1, part.number);
      values.insert(values.end(), pressure.values().begin(), pressure.values().end());
    }
  }
  bool operator==(const Answers&) const = default;

  std::vector<std::string> parts;
  std::vector<float> x;
  std::vector<float> values;
};

class LibraryCopies : public testing::Test {
 protected:
  LibraryCopies() {
    for (const samples::SampleInfo& sample : samples::write_samples(directory_.path()))
      files.push_back(sample.file);
  }

  testkit::TemporaryDirectory directory_;
  std::vector<std::filesystem::path> files;
};

TEST_F(LibraryCopies, ServeTheirOwnDatasetsInTurn) {
  std::vector<Answers> alone;
  for (const auto& file : files) {
    OwnReader reader;
    reader.session.open(file);
    reader.session.select_step(reader.session.step_count() - 1);
    alone.emplace_back(reader.session);
  }

  std::vector<std::unique_ptr<OwnReader>> readers;
  for (const auto& file : files) {
    readers.push_back(std::make_unique<OwnReader>());
    readers.back()->session.open(file);
  }
  for (const auto& reader : readers) reader->session.select_step(reader->session.step_count() - 1);
  for (int round = 0; round < 2; ++round) {
    for (std::size_t i = 0; i < readers.size(); ++i)
      EXPECT_EQ(Answers(readers[i]->session), alone[i]) << files[i] << " in round " << round;
  }
}

TEST_F(LibraryCopies, GoWithoutTakingAnotherWithThem) {
  OwnReader stays;
  stays.session.open(files.front());
  const Answers before(stays.session);
  for (int i = 0; i < 3; ++i) {
    OwnReader goes;
    goes.session.open(files.back());
  }
  EXPECT_EQ(Answers(stays.session), before);
}

// The number of open files of this process.
std::ptrdiff_t open_files() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                       std::filesystem::directory_iterator());
}

// Limits this process to a few more open files than it has now.
class FewFiles {
 public:
  FewFiles() {
    EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &usual_), 0);
    struct rlimit few = usual_;
    few.rlim_cur = static_cast<rlim_t>(open_files()) + 20;
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
  }
  FewFiles(const FewFiles&) = delete;
  FewFiles& operator=(const FewFiles&) = delete;
  ~FewFiles() { setrlimit(RLIMIT_NOFILE, &usual_); }

 private:
  struct rlimit usual_ = {};
};

TEST(LibrariesLeftLoaded, MayBeMoreThanTheProcessMayOpenFiles) {
  const std::ptrdiff_t before = open_files();
  const FewFiles few;
  std::set<decltype(&::USERD_exit_routine)> places;
  for (int i = 0; i < 60; ++i) {
    host::Library library(FAKE_READER, host::Library::Globals::own);
    places.insert(library.entry_points().exit_routine.function);
    library.leave_loaded();
  }
  EXPECT_EQ(places.size(), 60U);
  EXPECT_EQ(open_files(), before);
}

// The number of libraries that are loaded.
int loaded_libraries() {
  int count = 0;
  const auto add_one = [](dl_phdr_info*, std::size_t, void* to) {
    ++*static_cast<int*>(to);
    return 0;
  };
  dl_iterate_phdr(add_one, &count);
  return count;
}

// Those that come later look for names that the earlier ones do not have.
TEST_F(LibraryCopies, AreUnloadedInAnyOrder) {
  const int before = loaded_libraries();
  std::vector<std::unique_ptr<host::Library>> libraries;
  for (int i = 0; i < 3; ++i)
    libraries.push_back(std::make_unique<host::Library>(FAKE_READER, host::Library::Globals::own));
  EXPECT_EQ(loaded_libraries(), before + 3);
  for (const std::size_t i : {1U, 0U, 2U}) libraries[i].reset();
  EXPECT_EQ(loaded_libraries(), before);
}

TEST_F(LibraryCopies, MayStayLoaded) {
  const auto lost = std::make_unique<OwnReader>();
  lost->library.leave_loaded();
  OwnReader next;
  next.session.open(files.front());
  EXPECT_EQ(next.session.step_count(), 1);
}

}  // namespace
