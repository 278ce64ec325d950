// The contents of a dataset as `fldtool info` shows them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/bounding_box.h"
#include "host/session.h"
#include "host/value_statistics.h"
#include "tool/chosen_parts.h"
#include "tool/coordinate_names.h"

namespace tool {

// One step of the variables' time set.
struct StepSummary {
  int step = 0;
  float time = 0;
  int geometry_step = 0;
  // From the reader's trace of the files it indexed; empty when it did not index this step's file.
  std::optional<std::string> file;
  std::optional<long long> cycle;  // the digits at the end of the file's name
};

struct PartSummary {
  host::Part part;
  std::string name;        // UTF-8
  std::string group;       // empty: none
  AxisNames axes = kAxes;  // of the box
};

// A variable at one step, over the whole mesh of every region set.
struct VariableSummary {
  host::Variable variable;
  std::string name;   // UTF-8
  std::string label;  // UTF-8
  host::Availability availability = host::Availability::given;
  std::string reason;                             // why it could not be read
  std::vector<host::ValueStatistics> components;  // empty unless availability is `given`
};

// What may differ from step to step.
struct StepContents {
  int step = 0;
  std::vector<std::optional<host::BoundingBox>> boxes;  // per part that is shown; empty if the step lacks it
  std::vector<VariableSummary> variables;
};

// Which of the parts that are shown move, found by comparing the parts' coordinates.
struct MotionSummary {
  std::vector<int> compared_steps;  // geometry steps; empty when there is only one
  std::vector<int> moving_parts;    // numbers at the step shown
};

struct DatasetSummary {
  std::string file;
  host::ReaderIdentity reader;
  std::string library;
  bool has_ranges =
      false;  // boxes and ranges were looked at; without, nothing is known of variables but their kind
  std::vector<host::Toggle> options;
  std::vector<StepSummary> steps;
  std::vector<host::TimeSet> time_sets;
  int geometry_set = 0;
  int variable_set = 0;
  host::ChangingGeometry changing_geometry = host::ChangingGeometry::fixed;
  int region_sets = 0;
  std::vector<host::PartGroup> groups;  // names in UTF-8
  std::vector<PartSummary> parts;       // those chosen, at the step shown
  std::vector<host::Part> whole_meshes;
  StepContents shown;
  std::vector<StepContents> all_steps;  // empty unless asked for
  MotionSummary motion;
  std::vector<std::string> problems;  // what could not be read
  std::vector<std::string> warnings;  // what the reader found doubtful
};

// How much is looked at: the structure alone; the boxes and ranges of the shown step too, and the first and
// the last geometry step, to find what moves; or those of all steps chosen.
enum class SummaryDetail { structure, ranges, all_steps };

// What is shown of a dataset.
struct SummaryChoice {
  std::vector<int> steps;  // for SummaryDetail::all_steps
  ChosenParts parts;
  std::vector<int> variables;  // numbers
};

// Goes through the session's dataset, beginning with the selected step, which is shown.
DatasetSummary summarize(host::Session& session, const std::string& library, SummaryDetail detail,
                         const SummaryChoice& choice);

// The summary as text for a person, and as JSON for programs (command_info.cpp documents its fields).
std::string summary_text(const DatasetSummary& summary);
std::string summary_json(const DatasetSummary& summary);

// Words for enumerations, the same in both forms.
std::string kind_word(host::PartKind kind);
std::string kind_word(host::VariableKind kind);
std::string location_word(host::Location location);
std::string availability_word(host::Availability availability);
std::string changing_geometry_words(host::ChangingGeometry status);

}  // namespace tool
