// fldtool where there is VTK: the commands that need none, at once; for the others it becomes fldtool-vtk.
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>

#include "CLI/CLI.hpp"
#include "tool/command_line.h"
#include "tool/commands.h"
#include "tool/interrupt.h"
#include "tool/program.h"

namespace {

namespace fs = std::filesystem;

constexpr char kProgramWithVtk[] = "fldtool-vtk";

void add_commands(CLI::App& app, const std::string& first) {
  tool::add_inspecting_commands(app);
  tool::add_sample_command(app);
  // Help is about all commands, as is the error about an unknown one.
  if (first != "--version" && tool::find_command(app, first) == nullptr) tool::need_vtk();
}

// Replaces this process. Returns the exit status of an error.
int go_on_with_vtk(char** argv) {
  constexpr char kThisProgram[] = "/proc/self/exe";
  std::error_code error;
  const fs::path folder = fs::read_symlink(kThisProgram, error).parent_path();
  if (error) return tool::report(tool::ExitStatus::failure, kThisProgram + (": " + error.message()));
  // Beside this program, where both are built, or in the folder that it is installed in.
  fs::path program = folder / kProgramWithVtk;
  if (!fs::exists(program, error))
    program = (folder / FLDTOOL_LIBEXEC_FOLDER / kProgramWithVtk).lexically_normal();
  // The other program would know nothing of a signal that has come.
  if (tool::interrupted()) return tool::report(tool::ExitStatus::interrupted, tool::Interrupted().what());
  execv(program.c_str(), argv);
  const std::string reason = std::generic_category().message(errno);
  return tool::report(tool::ExitStatus::failure, program.string() + ": " + reason);
}

}  // namespace

void tool::need_vtk() {
  throw NeedsVtk();
}

int main(int argc, char** argv) {
  try {
    return tool::run_program(argc, argv, add_commands);
  } catch (const tool::NeedsVtk&) {
    return go_on_with_vtk(argv);
  }
}
