#include "tool/written_files.h"

#include <cctype>
#include <fstream>
#include <string_view>
#include <system_error>

#include "tool/replaced_file.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

constexpr char kListName[] = ".fldtool-files";

// Whether it is "step_N.vtm" or "step_N/part_....vtu".
bool is_step_file(std::string_view name) {
  constexpr std::string_view kStep = "step_";
  if (!name.starts_with(kStep)) return false;
  name.remove_prefix(kStep.size());
  std::size_t digits = 0;
  while (digits < name.size() && std::isdigit(static_cast<unsigned char>(name[digits])) != 0) ++digits;
  if (digits == 0) return false;
  name.remove_prefix(digits);
  if (name == ".vtm") return true;
  if (!name.starts_with("/part_") || !name.ends_with(".vtu")) return false;
  return name.find('/', 1) == std::string_view::npos;
}

}  // namespace

WrittenFiles::WrittenFiles(const fs::path& folder) : folder_(folder) {
  std::ifstream list(folder_ / kListName);
  for (std::string line; std::getline(list, line);) {
    if (is_step_file(line)) files_.insert(line);
  }
}

void WrittenFiles::add(const std::set<std::string>& files) {
  const std::size_t before = files_.size();
  files_.insert(files.begin(), files.end());
  if (files_.size() != before) save();
}

void WrittenFiles::remove_others(const std::set<std::string>& kept, const std::string& beginning) {
  std::set<fs::path> folders;
  const std::size_t removed = std::erase_if(files_, [&](const std::string& file) {
    if (!file.starts_with(beginning) || kept.contains(file)) return false;
    std::error_code ignored;
    fs::remove(folder_ / file, ignored);
    folders.insert((folder_ / file).parent_path());
    return true;
  });
  folders.erase(folder_);
  std::error_code ignored;
  for (const fs::path& folder : folders) fs::remove(folder, ignored);  // fails while it has other files
  if (removed > 0) save();
}

void WrittenFiles::save() const {
  std::string text =
      "# Written by fldtool convert, which removes these files when it writes the folder again.\n";
  for (const std::string& file : files_) text += file + "\n";
  replace_file(folder_ / kListName, text);
}

}  // namespace tool
