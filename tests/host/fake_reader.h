// The datasets and faults of the fake reader library.
//
// Its datasets depend on the file name alone; no file is read. There are two region sets, a hexahedron and a
// pyramid, each with one surface and one volume, and two steps. It caches the last scalar and vector by name
// alone. Opening a file named "throws_...", "aborts..." and so on does what the name says.
#pragma once

namespace fake {

// Open successfully.
inline constexpr char kTwoSets[] = "two_sets.fld";
inline constexpr char kOneSet[] = "one_set.fld";
inline constexpr char kOneStep[] = "two_sets_one_step.fld";
inline constexpr char kBadNodeNumber[] = "bad_node_number.fld";  // the first surface has a node 5 of 4
inline constexpr char kGeometryFails[] = "geometry_fails.fld";   // the second step's geometry cannot be read
inline constexpr char kNoValues[] = "no_values.fld";             // requests for values are answered with 3
inline constexpr char kNegativeCount[] = "negative_count.fld";   // the first part has -1 nodes
inline constexpr char kNoStatus[] = "no_status.fld";             // the status of the geometry is an error
// The first variable is given per part, the second is a tensor; the first part has an element of slot 0; the
// status of the geometry is 3; there is no metadata. The opening after this one asks for values of a kind,
// but of none; that after kNoValues for values of no kind.
inline constexpr char kOddKinds[] = "odd_kinds.fld";
inline constexpr char kExitAsserts[] = "exit_asserts.fld";         // an assertion fails in the exit routine
inline constexpr char kSlowSecondStep[] = "slow_second_step.fld";  // its coordinates take 0.11 s per part

// A series of so many files, "/made-up/many_files_0000000.fld" and on.
inline constexpr char kManyFiles[] = "many_files.fld";
inline constexpr int kManyFilesCount = 40'000;

// Fail to open.
inline constexpr char kFails[] = "fails.fld";  // writes lines, answers -1
inline constexpr char kFailsSilently[] = "fails_silently.fld";
inline constexpr char kAnswersTwo[] = "answers_two.fld";  // neither success nor an error
inline constexpr char kThrowsStandard[] = "throws_standard.fld";
inline constexpr char kThrowsReader[] = "throws_reader.fld";
inline constexpr char kThrowsInt[] = "throws_int.fld";
inline constexpr char kThrowsUnknown[] = "throws_unknown.fld";
inline constexpr char kAborts[] = "aborts.fld";
inline constexpr char kAsserts[] = "asserts.fld";
inline constexpr char kTerminates[] = "terminates.fld";
inline constexpr char kBreaksTheHeap[] = "breaks_heap.fld";  // releases a block twice
inline constexpr char kFaults[] = "faults.fld";

// Variables.
inline constexpr int kPressure = 1;
inline constexpr int kBroken = 2;     // cannot be read: -1
inline constexpr int kOnlyFirst = 3;  // not in the second step's file: 2
inline constexpr int kHole = 4;       // undefined at node 1
inline constexpr int kUnwritten = 5;  // answers 1 and writes nothing
inline constexpr int kVelocity = 6;
inline constexpr int kMaterial = 7;

// The value of the pressure at node `node` (from 0) of a region set's mesh.
constexpr float pressure(int step, int region_set, int node) {
  return static_cast<float>(1000 * step + 100 * region_set + node);
}
constexpr float velocity(int step, int region_set, int node, int component) {
  return pressure(step, region_set, node) + 0.25F * static_cast<float>(component);
}
constexpr float material(int region_set) {
  return static_cast<float>(7 + region_set);
}

// The x of a node: the second step moves it by 0.5.
constexpr float x(int geometry_step, int region_set, int node) {
  return static_cast<float>(10 * region_set + node) + 0.5F * static_cast<float>(geometry_step);
}

}  // namespace fake

// The log of all calls, one line each, with the numbers passed: "USERD_set_time_set_and_step 2 0".
extern "C" const char* fake_reader_log();
extern "C" void fake_reader_forget_log();
// The number of quantities read, not counting hits of the cache.
extern "C" int fake_reader_reads();
