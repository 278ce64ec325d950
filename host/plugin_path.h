// Where the programs of this project look for the reader plug-in.
#pragma once

#include <filesystem>
#include <optional>

namespace host {

// The plug-in's file name and the environment variable that names another one.
inline constexpr char kPluginFile[] = "libuserd-fld.so";
inline constexpr char kPluginVariable[] = "FLD_PLUGIN";

// The path to load: `given` if there is one, otherwise the value of FLD_PLUGIN, otherwise the plug-in of this
// program. A path that is given, or named by the variable, is returned unchecked.
std::filesystem::path find_plugin(const std::optional<std::filesystem::path>& given = std::nullopt);

// The plug-in in the folder of the program, otherwise in the library folder of its installation (usually
// ../lib). Throws Error if there is none.
std::filesystem::path find_plugin_of_program(const std::filesystem::path& program);

// The same for code in a library that other programs load: the value of FLD_PLUGIN, otherwise the plug-in in
// the folder of the library (or program) that contains `address`, or in the nearest of the three folders
// above it.
std::filesystem::path find_plugin_near(const void* address);

}  // namespace host
