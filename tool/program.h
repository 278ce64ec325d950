// What the two programs of fldtool have in common. Where there is VTK, whose libraries take a tenth of a
// second to load, fldtool has the commands that need none of it and starts at once, and fldtool-vtk has all
// of them. The first one goes on as the second one when it has to, so that users see one program. Without VTK
// there is fldtool alone.
#pragma once

#include <string>

#include "tool/cli_names.h"
#include "tool/exit_status.h"

namespace tool {

// Adds a program's commands; `first` is the first argument, empty if there is none.
using AddCommands = void (*)(CLI::App& app, const std::string& first);

// Runs the command line with these commands. Returns the exit status, after one line about what went wrong.
int run_program(int argc, char** argv, AddCommands add_commands);

// The exit status, after the line "fldtool: message".
int report(ExitStatus status, const std::string& message);

// Adds what needs no VTK at all or only for some of its options.
void add_inspecting_commands(CLI::App& app);

// Thrown through run_program before anything has been done.
class NeedsVtk {};

// To be called first by a command that needs VTK for the options that it got. Throws NeedsVtk in the program
// that can go on as the other one; does nothing in one that has VTK, or has nothing to go on as.
void need_vtk();

}  // namespace tool
