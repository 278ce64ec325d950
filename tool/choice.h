// The options that choose steps, parts and variables, which have the same names and forms in every command,
// and what they choose.
//
//   add_steps_option(*command, options->steps, "The steps to draw");
//   ...
//   const std::vector<int> steps = choose_steps(session, options.steps);
//   session.select_step(steps.front());
//   const ChosenParts parts = choose_parts(session, options.parts);
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/session.h"
#include "tool/chosen_parts.h"
#include "tool/cli_names.h"

namespace tool {

// For the manuals of commands with such options.
inline constexpr char kChoiceText[] =
    R"(Steps, parts and variables are chosen by lists, separated by commas; --step and --steps are the same, and so are --part
and --parts, --variable and --variables. Blanks after the commas are fine.

Steps count from 0, parts and variables from 1. Lists have numbers (4), ranges (2-5), open ranges (6-), ranges with a
stride (0-100:10) and the word last; all stands for everything.

Parts and variables are also chosen by name; a name may be a pattern with * and ?. The words surfaces, volumes and whole
choose the parts of that kind. Numbers of parts are those of the first step chosen; at other steps the part of the same
kind and name is meant, whatever its number, and a message tells which parts a step lacks.

)";

// Each adds an option with all its names to the command, and stores the lists as they are given. Lists that
// are there already are the default, and the help shows it.
CLI::Option* add_steps_option(CLI::App& command, std::vector<std::string>& lists,
                              const std::string& description, const std::string& names = "--step,--steps");
CLI::Option* add_parts_option(CLI::App& command, std::vector<std::string>& lists,
                              const std::string& description);
CLI::Option* add_variables_option(CLI::App& command, std::vector<std::string>& lists,
                                  const std::string& description);
// The same for another option that takes a list, such as "--faint".
CLI::Option* add_list_option(CLI::App& command, const std::string& names, std::vector<std::string>& lists,
                             const std::string& description);
// Whether the option was added by one of these.
bool is_list_option(const CLI::Option& option);

// Each takes the lists of an option and throws CommandError (wrong usage) for an item that chooses nothing.

// The steps, ascending; all of them when there are no lists.
std::vector<int> choose_steps(const host::Session& session, const std::vector<std::string>& lists);

// The parts; none when there are no lists. Numbers and names are those of the session's step, which should be
// the first one chosen; a name that it lacks may be that of a part of step 0. Throws host::Error when that
// cannot be read.
ChosenParts choose_parts(host::Session& session, const std::vector<std::string>& lists);

// The numbers of the variables, ascending; all of them when there are no lists.
std::vector<int> choose_variables(host::Session& session, const std::vector<std::string>& lists);

// A variable, or of a vector a component (0, 1, 2) or the magnitude (kMagnitude).
struct ChosenComponent {
  int variable = 0;  // number
  std::optional<int> component;
};

// The same as choose_variables, in the order of the lists; an item may be a vector's name or number with .x,
// .y, .z or .magnitude after it.
std::vector<ChosenComponent> choose_components(host::Session& session, const std::vector<std::string>& lists);

// The items of lists of variables, which are separated by commas; a list that is the name of a variable is
// one item, commas or not.
std::vector<std::string> split_variables(host::Session& session, const std::vector<std::string>& lists);

// Whether a variable has this name.
bool is_variable(host::Session& session, const std::string& text);

// The component that the end of `text` names (.x, .y, .z or .magnitude), which is taken off; none without
// one.
std::optional<int> take_component(std::string& text);

// The one that `text` means. Throws CommandError also when it means several.
ChosenComponent choose_component(host::Session& session, const std::string& text);

}  // namespace tool
