#include "vtkhdf/series.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "host/display_names.h"

namespace vtkhdf {
namespace {

namespace fs = std::filesystem;

// The level at which zlib takes a few times longer than no compression, not many times.
constexpr int kFastestZlib = 1;

// Where a link leads, so that the link stays.
fs::path target_of(const fs::path& path) {
  std::error_code error;
  const fs::path target = fs::canonical(path, error);
  return error ? path : target;
}

// A new file beside this one, with a name that nothing has.
fs::path make_file_beside(const fs::path& path) {
  for (int i = 0;; ++i) {
    std::string name = ".";
    name += path.filename().string() + "." + std::to_string(getpid()) + "-" + std::to_string(i);
    fs::path beside = path;
    beside.replace_filename(name);
    std::FILE* file = std::fopen(beside.c_str(), "wbx");
    if (file != nullptr) {
      std::fclose(file);
      return beside;
    }
    if (errno != EEXIST) throw WriteError(errno);
  }
}

// The time that the solver meant: the shortest number that is this one in single precision.
double as_double(float time) {
  std::array<char, 32> text{};
  double value = static_cast<double>(time);
  const char* end = std::to_chars(text.begin(), text.end(), time).ptr;
  std::from_chars(text.begin(), end, value);
  return value;
}

// The name as one of a node in a VTK assembly: letters, digits and "_-.", beginning with a letter or "_".
std::string node_name(const std::string& name) {
  const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; };
  const auto fits = [&](char c) { return is_letter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; };
  std::string made;
  std::copy_if(name.begin(), name.end(), std::back_inserter(made), fits);
  if (made.empty() || !is_letter(made.front())) made.insert(made.begin(), '_');
  return made;
}

// The name as one of a group: without the sign that separates them.
std::string group_name(std::string name) {
  std::replace(name.begin(), name.end(), '/', '_');
  return name == "." || name == ".." ? "_" : name;
}

// The name, with "_" behind it as often as it takes to be one that is not used yet. Notes it.
std::string unused(std::string name, std::set<std::string>& used) {
  while (!used.insert(name).second) name += '_';
  return name;
}

}  // namespace

Series::Series(const fs::path& path, host::Session& session, SeriesOptions options)
    : path_(target_of(path)),
      temporary_(make_file_beside(path_)),
      options_(std::move(options)),
      arrays_{options_.variables, host::variable_names(session), options_.more},
      used_names_{"Assembly"} {
  std::set<std::string> used;
  for (std::string& name : arrays_.names) name = unused(group_name(name), used);
  for (NodalArray& array : arrays_.more) array.name = unused(group_name(array.name), used);
  try {
    make_root();
  } catch (const WriteError&) {
    give_up();
    throw;
  }
}

void Series::make_root() {
  contents_->file = create_file(temporary_);
  contents_->root = create_group(contents_->file, "VTKHDF");
  write_attribute(contents_->root, "Version", std::vector<std::int64_t>{2, 2});
  write_attribute(contents_->root, "Type", "PartitionedDataSetCollection");
  contents_->assembly = create_group(contents_->root, "Assembly");
}

Series::~Series() {
  remove_temporary();
}

// HDF5 fails to close a file that it cannot write, and crashes when it is used afterwards or the process
// ends. Such a file stays open.
void Series::give_up() {
  static auto* const kept = new std::vector<std::unique_ptr<Contents>>();
  kept->push_back(std::move(contents_));
  std::error_code ignored;
  if (!temporary_.empty())
    fs::resize_file(temporary_, 0, ignored);  // while it is open it would take its room
  remove_temporary();
}

void Series::remove_temporary() {
  if (temporary_.empty()) return;
  std::error_code ignored;
  fs::remove(temporary_, ignored);
  temporary_.clear();
}

// The part's block; a new one gets the steps before this one, without points and cells.
Block& Series::block_of(host::Session& session, const host::PartIdentity& identity, const std::string& name) {
  std::unique_ptr<Block>& block = contents_->blocks[identity];
  if (block) return *block;
  const std::string free_name = unused(group_name(name), used_names_);
  const BlockOptions options{.steps = options_.steps,
                             .real_type = options_.double_precision ? H5T_NATIVE_DOUBLE : H5T_NATIVE_FLOAT,
                             .compression = options_.compress ? kFastestZlib : 0};
  block = std::make_unique<Block>(contents_->root, free_name, contents_->blocks.size() - 1, options);
  names_[identity] = free_name;
  for (const double time : times_) {
    block->write_step(session, std::nullopt, {}, time);
    block->finish_step();
  }
  return *block;
}

void Series::add_to_assembly(const Handle& group, const std::string& path,
                             const std::vector<host::PartFolder>& folders,
                             const std::vector<host::PartIdentity>& identities) {
  for (const host::PartFolder& folder : folders) {
    const std::string name = node_name(folder.name);
    const std::string folder_path = path + "/" + name;
    Handle& made = contents_->folders[folder_path];
    if (!made) {
      made = create_group(group, name);
      nodes_.insert(folder_path);
    }
    add_to_assembly(made, folder_path, folder.folders, identities);
    for (const int part : folder.parts) {
      const host::PartIdentity& identity = identities[static_cast<std::size_t>(part) - 1];
      if (!in_assembly_.insert(identity).second) continue;
      const std::string node = unused(folder_path + "/" + node_name(names_[identity]), nodes_);
      create_link(made, node.substr(folder_path.size() + 1), "/VTKHDF/" + names_[identity]);
    }
  }
}

void Series::write_step(host::Session& session, const std::vector<int>& parts,
                        const std::function<void()>& after_part) {
  try {
    add_step(session, parts, after_part);
  } catch (const WriteError&) {
    give_up();
    throw;
  }
}

void Series::add_step(host::Session& session, const std::vector<int>& parts,
                      const std::function<void()>& after_part) {
  const double time = as_double(session.variable_times().times[static_cast<std::size_t>(session.step())]);
  const std::vector<std::string> part_names = host::part_names(session);
  const std::vector<host::PartIdentity> identities = host::part_identities(session);
  std::set<host::PartIdentity> missing;
  for (const auto& [identity, block] : contents_->blocks) missing.insert(identity);
  for (const int part : parts) {
    const auto at = static_cast<std::size_t>(part) - 1;
    block_of(session, identities[at], part_names[at]).write_step(session, part, arrays_, time);
    missing.erase(identities[at]);
    after_part();
  }
  for (const host::PartIdentity& identity : missing)
    contents_->blocks[identity]->write_step(session, std::nullopt, arrays_, time);

  add_to_assembly(contents_->assembly, "", host::make_part_tree(session, parts), identities);
  for (const auto& [identity, block] : contents_->blocks) block->finish_step();
  times_.push_back(time);
  flush(contents_->file);
  for (const auto& [identity, block] : contents_->blocks) block->count_step();
  flush(contents_->file);
  if (temporary_.empty()) return;
  std::error_code error;
  fs::rename(temporary_, path_, error);
  if (error) throw WriteError(error.value());
  temporary_.clear();
}

}  // namespace vtkhdf
