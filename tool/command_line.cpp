#include "tool/command_line.h"

#include <algorithm>
#include <sstream>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "tool/choice.h"
#include "tool/exit_status.h"
#include "tool/output.h"
#include "tool/suggestions.h"

namespace tool {
namespace {

// The command whose name comes first among the arguments; else the program.
const CLI::App& command_of(const CLI::App& app, const std::vector<std::string>& arguments) {
  const auto is_word = [](const std::string& argument) { return !argument.starts_with('-'); };
  const auto word = std::find_if(arguments.begin(), arguments.end(), is_word);
  const CLI::App* command = word == arguments.end() ? nullptr : find_command(app, *word);
  return command == nullptr ? app : *command;
}

std::string full_name(const CLI::App& command) {
  return command.get_parent() == nullptr ? command.get_name()
                                         : command.get_parent()->get_name() + " " + command.get_name();
}

std::vector<std::string> command_names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
    names.push_back(command->get_name());
  return names;
}

std::vector<std::string> option_names(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

CommandError usage_error(const CLI::App& command, const std::string& message) {
  return {ExitStatus::usage, fmt::format("{} (see {} --help)", message, full_name(command))};
}

// What is wrong with arguments that the command did not take.
CommandError unexpected(const CLI::App& command, const std::string& argument) {
  if (argument.starts_with('-') && argument != "-") {
    const std::string option = argument.substr(0, argument.find('='));
    return usage_error(command, fmt::format("{} has no option {}{}", full_name(command), option,
                                            suggestion("; ", option, option_names(command))));
  }
  if (command.get_parent() == nullptr) return unknown_command(command, argument);
  return usage_error(command, fmt::format("{} does not expect '{}'", full_name(command), argument));
}

// The option that `argument` names and that takes a list; "--steps" and "--steps=0" both name one.
bool names_list(const CLI::App& command, const std::string& argument) {
  const CLI::Option* option = command.get_option_no_throw(argument.substr(0, argument.find('=')));
  return option != nullptr && argument.starts_with('-') && is_list_option(*option);
}

void parse(CLI::App& app, std::vector<std::string> arguments) {
  const CLI::App& command = command_of(app, arguments);
  try {
    std::reverse(arguments.begin(), arguments.end());  // as the library wants them
    app.parse(std::move(arguments));
  } catch (const CLI::Success&) {
    throw;
  } catch (const CLI::ParseError& error) {
    // What is left over explains more than what is missing.
    for (const std::string& argument : command.remaining()) {
      if (argument.starts_with('-') || error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError))
        throw unexpected(command, argument);
    }
    throw usage_error(command, error.what());
  }
}

}  // namespace

const CLI::App* find_command(const CLI::App& app, const std::string& name) {
  const auto found =
      app.get_subcommands([&](const CLI::App* command) { return command->get_name() == name; });
  return found.empty() ? nullptr : found.front();
}

CommandError unknown_command(const CLI::App& app, const std::string& name) {
  return usage_error(
      app, fmt::format("there is no command '{}'{}", name, suggestion("; ", name, command_names(app))));
}

std::vector<std::string> joined_lists(const CLI::App& app, const std::vector<std::string>& arguments) {
  const CLI::App& command = command_of(app, arguments);
  std::vector<std::string> joined;
  bool is_list = false;       // the last one is a list
  bool is_list_next = false;  // the next one is
  for (const std::string& argument : arguments) {
    if (is_list && joined.back().ends_with(',')) {
      joined.back() += argument;
      continue;
    }
    joined.push_back(argument);
    const bool is_name = !is_list_next && names_list(command, argument);
    is_list = is_list_next || (is_name && argument.find('=') != std::string::npos);
    is_list_next = is_name && !is_list;
  }
  return joined;
}

void run_command_line(CLI::App& app, int argc, const char* const* argv) {
  const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
  try {
    parse(app, joined_lists(app, arguments));
  } catch (const CLI::Success& asked) {
    std::ostringstream text;
    app.exit(asked, text);
    Output output("");
    output.write(text.str());
    output.finish();
    return;
  }
  if (app.get_subcommands().empty()) throw usage_error(app, "a command is missing");
}

}  // namespace tool
