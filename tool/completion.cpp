#include "tool/completion.h"

#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"

namespace tool {
namespace {

std::vector<const CLI::App*> commands_of(const CLI::App& program) {
  return program.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<std::string> options_of(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_snames()) names.push_back("-" + name);
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

std::string joined_command_names(const CLI::App& program) {
  std::string names;
  for (const CLI::App* command : commands_of(program))
    names += (names.empty() ? "" : " ") + command->get_name();
  return names;
}

// Text between single quotes of a shell.
std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char character : text) {
    if (character == '\'') {
      result += "'\\''";
    } else {
      result += character;
    }
  }
  return result + "'";
}

}  // namespace

std::string bash_completion(const CLI::App& program) {
  const std::string& name = program.get_name();
  std::string text = fmt::format(
      "# bash completion of {0}\n"
      "_{0}() {{\n"
      "  local word=${{COMP_WORDS[COMP_CWORD]}} options\n"
      "  COMPREPLY=()\n"
      "  if ((COMP_CWORD == 1)); then\n"
      "    mapfile -t COMPREPLY < <(compgen -W '{1} {2}' -- \"$word\")\n"
      "    return\n"
      "  fi\n"
      "  case ${{COMP_WORDS[1]}} in\n",
      name, joined_command_names(program), fmt::join(options_of(program), " "));
  for (const CLI::App* command : commands_of(program)) {
    const bool is_help = command->get_name() == "help";
    text +=
        fmt::format("    {}) options='{}{}' ;;\n", command->get_name(),
                    is_help ? joined_command_names(program) + " " : "", fmt::join(options_of(*command), " "));
  }
  return text + fmt::format(
                    "    *) return ;;\n"
                    "  esac\n"
                    "  if [[ $word == -* || ${{COMP_WORDS[1]}} == help ]]; then\n"
                    "    mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
                    "  fi\n"
                    "}}\n"
                    "complete -o default -F _{0} {0}\n",
                    name);
}

std::string zsh_completion(const CLI::App& program) {
  const std::string& name = program.get_name();
  std::string text =
      fmt::format("#compdef {0}\n# zsh completion of {0}\n_{0}() {{\n  local -a names\n", name);
  text += "  if ((CURRENT == 2)); then\n    names=(\n";
  for (const CLI::App* command : commands_of(program))
    text += fmt::format("      {}\n", quoted(command->get_name() + ":" + command->get_description()));
  text += fmt::format(
      "    )\n"
      "    _describe command names\n"
      "    [[ $PREFIX == -* ]] && compadd -- {}\n"
      "    return\n"
      "  fi\n"
      "  case $words[2] in\n",
      fmt::join(options_of(program), " "));
  for (const CLI::App* command : commands_of(program))
    text += fmt::format("    {}) names=({}) ;;\n", command->get_name(), fmt::join(options_of(*command), " "));
  text += fmt::format(
      "  esac\n"
      "  if [[ $PREFIX == -* ]]; then\n"
      "    compadd -- $names\n"
      "  elif [[ $words[2] == help ]]; then\n"
      "    compadd -- {1}\n"
      "  else\n"
      "    _files\n"
      "  fi\n"
      "}}\n"
      "_{0} \"$@\"\n",
      name, joined_command_names(program));
  return text;
}

}  // namespace tool
