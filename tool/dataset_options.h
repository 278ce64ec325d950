// The options that every command which opens a dataset shares, and the opening itself.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/session.h"
#include "tool/cli_names.h"

namespace tool {

// What the command line says about the dataset and the reader.
struct DatasetOptions {
  std::string file;
  std::string plugin;      // empty: where host::find_plugin looks
  bool simplify = false;   // the reader's option for series of files with the same layout
  bool no_groups = false;  // the reader's option for groups of parts, switched off
  bool verbose = false;    // show the reader's diagnostics
};

// Adds FILE and the options to a command.
void add_dataset_options(CLI::App& command, DatasetOptions& options);

// The reader with a dataset open and its first step selected. A failed assertion of the reader is a
// host::Error like any other, after which the session is lost: it answers every further call with one.
class OpenDataset {
 public:
  using Globals = host::Library::Globals;

  // A reader serves one dataset at a time; open a second one with Globals::own.
  // Throws CommandError when the plug-in cannot be loaded or the file cannot be read.
  explicit OpenDataset(const DatasetOptions& options, Globals globals = Globals::shared);
  OpenDataset(const OpenDataset&) = delete;
  OpenDataset& operator=(const OpenDataset&) = delete;
  // Closes the dataset; with verbose on, writes the reader's diagnostics to the standard error stream.
  ~OpenDataset();

  host::Session& session() { return *session_; }
  const std::string& file() const { return file_; }
  const host::Library& library() const { return *library_; }

 private:
  void open(const DatasetOptions& options);
  void close();

  std::string file_;
  bool verbose_;
  std::unique_ptr<host::Library> library_;
  std::unique_ptr<host::Session> session_;
};

// Opens the dataset and does `work` with its session. Throws CommandError for what cannot be read: in opening
// it, or as a host::Error of `work`.
void with_dataset(const DatasetOptions& options, const std::function<void(host::Session&)>& work);

}  // namespace tool
