// Brings a rank's shares of the parts of a dataset to a step: reads what is not there yet or is another than
// before, and nothing else. All ranks do the same at the same time and decide alike.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "layout/step_layout.h"
#include "parallel/node_blocks.h"
#include "parallel/part_share.h"

namespace parallel {

// Takes what was read. Parts and variables go by their numbers in the dataset's lists.
class ShareSink {
 public:
  ShareSink() = default;
  ShareSink(const ShareSink&) = delete;
  ShareSink& operator=(const ShareSink&) = delete;
  virtual ~ShareSink() = default;

  // The share's cells and, by their numbers in the region set from 0, its nodes.
  virtual void set_mesh(int part, ShareCells cells, const NodeSet& nodes) = 0;
  // x, y, z of each node.
  virtual void set_points(int part, Array<float> points) = 0;
  // `components` per node, or one per cell.
  virtual void set_values(int part, int variable, int components, Array<float> values) = 0;
  // Lets go of values that are of another step, or of a part with all that it has.
  virtual void drop_values(int part, int variable) = 0;
  virtual void drop_part(int part) = 0;
};

// What could not be read, on all ranks alike.
struct Problem {
  std::string reason;
  int variable = 0;        // 0: a mesh
  std::vector<int> parts;  // numbers
};

class StepReader {
 public:
  // Told how much is done, from 0 to 1, on every rank; rank 0's answer decides whether to go on.
  using Progress = std::function<bool(double)>;

  explicit StepReader(FileArrays& files) : files_(files) {}

  // Whether the coordinates that motions start from are kept, a copy of the rank's own ones, so that a step
  // of a moving mesh does not read them again.
  void keep_coordinates(bool keep);

  // Brings the sink's shares to the step. Whether it came to the end: progress may stop it, after which what
  // is there is of this step and the rest is not there. What cannot be read is a problem, and the rest is
  // read all the same. Collective.
  bool read(Communicator& ranks, const layout::StepLayout& step, ShareNumber share, ShareSink& sink,
            const Progress& progress);

  const std::vector<Problem>& problems() const { return problems_; }

 private:
  // What a sink has of a part, and what tells whether it is the step's: where all that it was made of stands.
  struct PartState {
    std::string mesh_key;
    std::string points_key;
    std::map<int, std::string> value_keys;  // by variable
    NodeRequest nodes;
    Array<std::uint8_t> entry_codes;
    std::optional<ListRuns> elements;
    GhostCells ghosts;
  };
  struct SetBlocks;

  // The work of one call.
  struct Task {
    Communicator& ranks;
    const layout::StepLayout& step;
    ShareNumber share;
    ShareSink& sink;
    const Progress& progress;
    double done = 0;
    double items = 1;
  };

  void drop_what_is_old(const Task& task);
  bool read_meshes(Task& task);
  bool read_set(Task& task, int set);
  // `is_last`: nothing needs the same blocks after that.
  void read_mesh(const Task& task, const layout::PartLists& part, SetBlocks& blocks, bool is_last);
  void read_points(const Task& task, const layout::PartLists& part, SetBlocks& blocks, bool is_last);
  bool read_variable(Task& task, const layout::VariableValues& variable);
  void read_part_values(const Task& task, const layout::PartLists& part,
                        const layout::VariableValues& variable, SetBlocks& blocks, bool is_last);
  bool lacks_mesh(const Task& task, const layout::PartLists& part) const;
  bool lacks_values(const layout::PartLists& part, const layout::VariableValues& variable) const;
  // Whether the moved nodes of the set are those of another mesh, or not known.
  bool lacks_moved_nodes(const layout::SetMesh& mesh, int set) const;
  bool goes_on(Task& task);
  void drop_part(const Task& task, int part);
  // Does what may fail on some rank; whether it went well.
  template <typename Work>
  bool attempt(int part, int variable, Work work);

  FileArrays& files_;
  std::map<int, PartState> states_;  // by part
  std::vector<Problem> problems_;
  // Which own nodes move, by region set, and what they were found from.
  std::map<int, std::pair<std::string, MovedNodes>> moved_;
  bool keeps_coordinates_ = false;
  std::map<int, std::optional<BaseCoordinates>> base_coordinates_;  // by region set
};

}  // namespace parallel
