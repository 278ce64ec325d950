// The end of a session, seen from inside: the order of release, and the leak report.
#include <csignal>
#include <string>
#include <unistd.h>

#include "reader/globals.h"
#include "reader/work_tables.h"
#include "support/tracked_allocation.h"
#include "tests/reader/linked_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class LeakReport : public LinkedReader {
 protected:
  void open_and_read() {
    testkit::File file = testkit::file_of(testkit::one_of_each());
    file.region_sets[0].add(numbered_scalar("T", 11));
    file.region_sets[0].add(numbered_vector("U", 11));
    write_and_open(file);
    host.scalar(1, 5);
    host.vector(2, 5, 0);
  }
  std::string exit() {
    return stderr_of([&] { api().exit_routine(); });
  }
};
using LeakReportDeathTest = LeakReport;

TEST_F(LeakReport, BlockThatNobodyOwnsIsNamedByItsTag) {
  open_and_read();
  fld::cv_caloc(10, 4, 1100440);
  EXPECT_EQ("MEMORY LEAK DETECTED 1100440\n", exit());
  EXPECT_EQ(nullptr, fld::memory) << "it was released";
}

TEST_F(LeakReport, NewestBlockComesFirst) {
  open_and_read();
  fld::cv_caloc(10, 4, 1100440);
  fld::cv_maloc(10, 1100443);
  fld::cv_caloc(1, 8, 1000165);
  EXPECT_EQ("MEMORY LEAK DETECTED 1000165\nMEMORY LEAK DETECTED 1100443\nMEMORY LEAK DETECTED 1100440\n",
            exit());
}

TEST_F(LeakReport, BlocksAreReportedOnce) {
  fld::cv_caloc(10, 4, 1100440);
  EXPECT_EQ("MEMORY LEAK DETECTED 1100440\n", exit());
  EXPECT_EQ("", exit());
}

TEST_F(LeakReport, BlocksOfTheDatasetBeforeAreNoLeaksOfTheNext) {
  void* const block = fld::cv_caloc(10, 4, 1100440);
  open_and_read();
  EXPECT_EQ("", exit());
  fld::cv_mfree(block);  // its owner may still release it
}

TEST_F(LeakReport, ExitEmptiesEverything) {
  open_and_read();
  EXPECT_EQ("", exit());
  EXPECT_FALSE(fld::g_fld);
  EXPECT_FALSE(fld::g_fldgeo);
  EXPECT_FALSE(fld::g_scalar);
  EXPECT_FALSE(fld::g_vector);
  EXPECT_TRUE(fld::g_mark_node.empty());
  EXPECT_EQ(0U, fld::g_mark_node.capacity());
  EXPECT_TRUE(fld::g_globalNode2localNode.empty());
  EXPECT_EQ(0U, fld::g_globalNode2localNode.capacity());
  EXPECT_EQ(nullptr, fld::g_ele2head.heads);
  EXPECT_EQ(nullptr, fld::memory);
}

// Another reference keeps the objects alive, and their blocks appear in the report.
TEST_F(LeakReport, NodesThatSomebodyElseHoldsOutliveTheDataset) {
  open_and_read();
  fld::smart_ptr<fld::Nodes> nodes = fld::g_fldgeo->geos[0].nodes;
  EXPECT_EQ("MEMORY LEAK DETECTED 1100142\nMEMORY LEAK DETECTED 1100142\nMEMORY LEAK DETECTED 1100142\n",
            exit());
  nodes->x.data = nodes->y.data = nodes->z.data = nullptr;  // the report has released them
}

// Prints which objects are still alive when the process is ended during the exit routine.
void say_what_is_held(int) {
  const auto say = [](const char* text, std::size_t size) {
    if (write(STDERR_FILENO, text, size) < 0) _exit(1);
  };
  say("held:", 5);
  if (fld::g_fld) say(" dataset", 8);
  if (fld::g_fldgeo) say(" geometry", 9);
  if (fld::g_scalar) say(" scalar", 7);
  if (fld::g_vector) say(" vector", 7);
  if (fld::g_ele2head.heads) say(" tables", 7);
  say(".\n", 2);
}

// An unknown block ends the process when it is freed; the objects alive at that moment show the order.
TEST_F(LeakReportDeathTest, GeometryIsReleasedAfterTheDatasetAndBeforeQuantitiesAndTables) {
  open_and_read();
  int unknown = 0;
  EXPECT_DEATH(
      {
        signal(SIGABRT, say_what_is_held);
        fld::g_fldgeo->geos[0].nodes->x.data = &unknown;
        api().exit_routine();
      },
      "held: scalar vector tables\\.");
}

TEST_F(LeakReportDeathTest, ScalarIsReleasedBeforeTheVector) {
  open_and_read();
  int unknown = 0;
  EXPECT_DEATH(
      {
        signal(SIGABRT, say_what_is_held);
        fld::g_scalar->values.data = &unknown;
        api().exit_routine();
      },
      "held: vector tables\\.");
}

TEST_F(LeakReportDeathTest, VectorIsReleasedBeforeTheTables) {
  open_and_read();
  int unknown = 0;
  EXPECT_DEATH(
      {
        signal(SIGABRT, say_what_is_held);
        fld::g_vector->components[0].data = &unknown;
        api().exit_routine();
      },
      "held: tables\\.");
}

}  // namespace
}  // namespace reader_test
