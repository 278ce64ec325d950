// A dataset that is open for Python: a reader with globals of its own and the session with it.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <pybind11/pybind11.h>
#include <stdexcept>
#include <string>
#include <sys/types.h>

#include "host/error.h"
#include "host/library.h"
#include "host/session.h"
#include "python/binding/reader_lock.h"

namespace binding {

// What vantrel_fld.Error is made of. Texts are UTF-8.
struct DatasetError : std::runtime_error {
  DatasetError(const std::string& its_file, std::optional<int> its_step, const std::string& its_reason)
      : std::runtime_error(its_reason), file(its_file), step(its_step) {}

  std::string file;
  std::optional<int> step;
};

// Every member may be called by any thread that holds Python's lock (the GIL). It is released while the
// reader works; calls of other threads wait for their turn. Each member throws DatasetError when the reader
// fails and when the dataset is closed or belongs to another process.
class Dataset {
 public:
  // Opens the dataset of the file. An empty `plugin` stands for the reader beside this library.
  Dataset(const std::string& file, bool simplify, bool groups, const std::string& plugin);
  Dataset(const Dataset&) = delete;
  Dataset& operator=(const Dataset&) = delete;
  // Closes the dataset.
  ~Dataset();

  void close();
  bool is_open() const { return session_ != nullptr; }

  // What `work` makes of the session as it stands; it must not use Python.
  template <typename Work>
  auto with_session(Work work) {
    const pybind11::gil_scoped_release without_gil;
    return locked(work);
  }

  // The same with the step selected.
  template <typename Work>
  auto at_step(int step, Work work) {
    const pybind11::gil_scoped_release without_gil;
    return locked_at_step(step, work);
  }

  // The same without releasing Python's lock, for work that uses a library which other Python code may use
  // too. It waits for the reader's lock while it holds Python's; nobody who has the former wants the latter.
  template <typename Work>
  auto at_step_with_gil(int step, Work work) {
    return locked_at_step(step, work);
  }

 private:
  template <typename Work>
  auto locked(Work& work) {
    const std::lock_guard lock(reader_mutex());
    require_open();
    try {
      return work(*session_);
    } catch (const host::Error& error) {
      throw_located(error);
    }
  }

  template <typename Work>
  auto locked_at_step(int step, Work& work) {
    auto selecting = [&](host::Session& session) {
      select(step);
      return work(session);
    };
    return locked(selecting);
  }

  void require_open() const;
  void select(int step);
  void close_now() noexcept;
  [[noreturn]] void throw_located(const host::Error& error) const;

  std::string file_;
  pid_t process_;
  std::unique_ptr<host::Library> library_;
  std::unique_ptr<host::Session> session_;
  std::optional<int> selected_;  // the step that was selected last, without a failure
};

}  // namespace binding
