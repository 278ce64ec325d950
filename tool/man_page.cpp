#include "tool/man_page.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "tool/exit_status.h"

namespace tool {
namespace {

// Text with the characters escaped that troff would interpret.
std::string escaped(std::string_view text) {
  std::string result;
  // A dot or a quote at the beginning of a line would begin a request.
  if (text.starts_with('.') || text.starts_with('\'')) result += "\\&";
  for (const char character : text) {
    if (character == '\\') {
      result += "\\e";
    } else if (character == '-') {
      result += "\\-";
    } else {
      result += character;
    }
  }
  return result;
}

std::string upper_case(std::string text) {
  for (char& character : text)
    character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
  return text;
}

// Lines of a manual text become paragraphs and lists.
class TextWriter {
 public:
  void add(std::string_view line) {
    const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
    const std::string_view words = line.substr(indent);
    const std::size_t gap = words.find("  ");
    if (words.empty()) {
      state_ = State::none;
    } else if (state_ == State::list && indent == description_column_) {
      text_ += escaped(words) + "\n";
    } else if (indent > 0 || gap != std::string_view::npos) {
      add_entry(words, indent, gap);
      state_ = State::list;
    } else {
      if (state_ != State::paragraph) text_ += ".PP\n";
      state_ = State::paragraph;
      text_ += escaped(words) + "\n";
    }
  }

  const std::string& text() const { return text_; }

 private:
  enum class State { none, paragraph, list };
  static constexpr std::size_t kMargin = 2;  // of the entries of a list that is not part of another one

  void add_entry(std::string_view words, std::size_t indent, std::size_t gap) {
    const std::string margin(indent > kMargin ? indent - kMargin : 0, ' ');
    text_ += fmt::format(".TP\n{}\n", escaped(margin + std::string(words.substr(0, gap))));
    description_column_ = 0;
    if (gap == std::string_view::npos) return;
    const std::size_t description = words.find_first_not_of(' ', gap);
    text_ += escaped(words.substr(description)) + "\n";
    description_column_ = indent + description;
  }

  State state_ = State::none;
  std::size_t description_column_ = 0;  // lines that begin there go on with the entry above
  std::string text_;
};

std::string options_text(const CLI::App& app) {
  const CLI::Formatter names;
  const bool is_command = app.get_parent() != nullptr;
  std::string text;
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_name() == "--help-all" || (is_command && option->get_name() == "--help")) continue;
    const bool is_positional = option->get_positional();
    std::string entry = names.make_option_name(option, is_positional);
    const bool takes_value = option->get_type_size() != 0;
    if (takes_value && !is_positional) entry += " " + option->get_type_name();
    if (!option->get_default_str().empty()) entry += " (default: " + option->get_default_str() + ")";
    if (option->get_required() && !is_positional) entry += " (required)";
    text += fmt::format(".TP\n.B {}\n{}\n", escaped(entry), escaped(option->get_description()));
  }
  return text;
}

// A command's manual without what the page says once for all of them.
std::string own_footer(const CLI::App& command) {
  std::string footer = command.get_footer();
  const std::size_t shared = footer.find(kExitStatusText);
  return shared == std::string::npos ? footer : footer.substr(0, shared);
}

}  // namespace

std::string man_text(const std::string& text) {
  TextWriter writer;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) writer.add(line);
  return writer.text();
}

std::string man_page(const CLI::App& program, const std::string& version) {
  const std::string& name = program.get_name();
  std::string page =
      fmt::format(".TH {} 1 \"\" \"{} {}\" \"User Commands\"\n", upper_case(name), name, version);
  page += fmt::format(".SH NAME\n{} \\- {}\n", name, escaped(program.get_description()));
  page += fmt::format(".SH SYNOPSIS\n.B {}\n.I COMMAND\n[\\fIOPTION\\fR]... [\\fIARGUMENT\\fR]...\n", name);
  page += ".SH OPTIONS\n" + options_text(program);
  page += ".SH COMMANDS\n";
  const auto commands = program.get_subcommands([](const CLI::App*) { return true; });
  for (const CLI::App* command : commands) {
    page += fmt::format(".SS {} {}\n{}.\n", name, command->get_name(), escaped(command->get_description()));
    page += options_text(*command) + man_text(own_footer(*command));
  }
  return page + ".SH EXIT STATUS\n" + man_text(kExitStatusText);
}

}  // namespace tool
