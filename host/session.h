// A session with a reader: opens a dataset, selects steps, and reads parts and values.
//
// A session calls the entry points of the reader in the order and with the array sizes that the interface
// prescribes, and turns the answers into the values of dataset.h. A reader keeps its state in globals, so
// only one session at a time may use a library. Every member throws Error if a call fails or a number is out
// of range; the session remains usable. The Error of a call names the file and the step that were being read,
// as far as they are known; with captured diagnostics they mostly are.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/dataset.h"
#include "host/guarded_reader.h"
#include "host/library.h"
#include "host/quantity_requests.h"
#include "host/reader_options.h"

namespace host {

// The reader's toggles, by number.
inline constexpr std::size_t kSimplifyToggle = 0;  // "Simplify reading sequential FLD files"
inline constexpr std::size_t kGroupsToggle = 1;    // "Make group of parts"

struct SessionOptions {
  std::map<std::size_t, bool> toggles = {};  // the user's choices; other toggles keep their defaults
  bool capture_diagnostics = false;          // capture what the reader writes to the standard error stream
  // With captured diagnostics: a failed assertion of the reader is an Error, after which the session is lost
  // and the library stays loaded.
  bool recover_from_assertions = false;
};

class Session {
 public:
  // Queries identity and options of the reader. The library must outlive the session.
  explicit Session(const Library& library, const SessionOptions& options = {});
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  // Closes the dataset; an error of the exit routine is ignored.
  ~Session();

  const ReaderIdentity& reader() const { return identity_; }
  // The reader's options, with the user's choices.
  const std::vector<Toggle>& toggles() const { return reader_options_.toggles; }

  // Opens the dataset that the file belongs to and selects its first step. May be called again, after success
  // or failure. If the reader refuses the file, the dataset that was open stays open; if it fails after that,
  // nothing is open.
  void open(const std::filesystem::path& file);
  // Calls the exit routine if opening was attempted. Nothing is open afterwards.
  void close();
  bool is_open() const { return is_open_; }
  const std::filesystem::path& path() const { return path_; }

  // Time.
  const std::vector<TimeSet>& time_sets() const { return time_sets_; }
  const TimeSet& geometry_times() const { return time_set(geometry_set_); }
  const TimeSet& variable_times() const { return time_set(variable_set_); }
  ChangingGeometry changing_geometry() const { return changing_geometry_; }
  int step_count() const { return static_cast<int>(variable_times().times.size()); }
  // The geometry step that belongs to a step of the variables' set, both from 0.
  int geometry_step_of(int step) const;
  // Selects a step of the variables' set and its geometry, which is loaded only if it is not the current one.
  // With captured diagnostics, geometry that cannot be read is an Error, after which the parts are those that
  // the reader holds; without, the reader has no way to tell.
  void select_step(int step);
  int step() const { return step_; }

  // Parts of the selected step.
  const std::vector<Part>& parts() const { return parts_; }
  const Part& part(int number) const;
  int region_set_count() const { return region_sets_; }
  Coordinates coordinates(int part);
  // The same interleaved: x, y, z of the first node, then those of the second.
  LargeArray<float> points(int part);
  // One block per shape of the part, in the order of the slots. Node numbers are checked against the number
  // of nodes; the first node has the number `first_node`.
  std::vector<ElementBlock> elements(int part, int first_node = 1);

  // Variables and their values at the selected step.
  const std::vector<Variable>& variables();
  const Variable& variable(int number);
  // One component (0, 1, 2 for the x, y, z of a vector; 0 for a scalar) of a variable on a part.
  PartValues values(int variable, int part, int component = 0);
  // The same without the reason why there are none: empty where the step has no values or the reader offers
  // none. Throws Error where they cannot be read.
  std::optional<HostArray> given_values(int variable, int part, int component = 0);
  // All components of a variable in this way.
  std::optional<std::vector<HostArray>> given_components(int variable, int part);

  Metadata metadata();

  // Whether a call ended in a failed assertion. Then every other call is an Error.
  bool is_lost() const { return guarded_.has_aborted(); }

  // What the reader wrote to the standard error stream in this session; empty unless captured.
  const std::string& diagnostics() const { return guarded_.diagnostics(); }
  // The files that the reader traced while it opened the dataset, in the order of the steps; empty unless
  // captured.
  const std::vector<std::string>& traced_files() const { return traced_files_; }
  // Whether these are the files of all steps. With kSimplifyToggle a reader may index the first one alone.
  bool knows_every_file() const { return is_open_ && traced_files_.size() >= variable_times().times.size(); }
  // The file of a step of the variables' set; empty when it is not known or there is no such step.
  std::string file_of_step(int step) const;

 private:
  void close_quietly() noexcept;
  // Resets the session to the state with nothing open.
  void forget_dataset();
  void ask_identity();
  void exchange_undefined_value();
  void require_open() const;
  const TimeSet& time_set(int number) const;
  void give_to_reader(const std::filesystem::path& file);
  void ask_time_sets();
  std::optional<int> step_of_geometry(int geometry_step);
  bool pair_equal_times();
  void select(int set, int step);
  std::optional<Error> select_geometry(int geometry_step);
  void ask_parts();
  void finish_parts();
  void check_and_renumber(const Part& part, ElementBlock& block, int first_node) const;
  void ask_variables();
  void drop_cached_quantity();
  PartValues node_values(const Variable& variable, const Part& part, int component);
  PartValues element_values(const Variable& variable, const Part& part, int component);
  int ask_values(const Variable& variable, const Part& part, int slot, int component, float* entries);
  bool note_availability(int result, PartValues& values) const;

  const Library& library_;
  GuardedReader guarded_;
  const EntryPoints& entry_;
  ReaderIdentity identity_;
  ReaderOptions reader_options_;

  bool needs_exit_ = false;  // opening was attempted since the last exit
  bool is_open_ = false;
  std::filesystem::path path_;
  std::vector<std::string> traced_files_;

  std::vector<TimeSet> time_sets_;
  int geometry_set_ = 0;
  int variable_set_ = 0;
  ChangingGeometry changing_geometry_ = ChangingGeometry::fixed;
  std::vector<int> geometry_steps_;  // per step of the variables' set
  int step_ = 0;
  std::optional<int> geometry_step_;              // empty if the reader's geometry is unknown
  std::optional<std::pair<int, int>> selection_;  // the set and step that were selected last

  std::vector<Part> parts_;
  int region_sets_ = 0;
  bool building_parts_ = false;

  std::optional<std::vector<Variable>> variables_;
  QuantityRequests requests_;
};

}  // namespace host
