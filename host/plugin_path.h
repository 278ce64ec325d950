// Where the programs of this project look for the reader plug-in.
#pragma once

#include <filesystem>
#include <optional>

namespace host {

// The plug-in's file name and the environment variable that names another one.
inline constexpr char kPluginFile[] = "libuserd-fld.so";
inline constexpr char kPluginVariable[] = "FLD_PLUGIN";

// The path to load: `given` if there is one, otherwise the value of FLD_PLUGIN, otherwise the plug-in in the
// folder of the executable, otherwise in the library folder of the installation (usually ../lib). Throws
// Error if none exists; a path that is given, or named by the variable, is returned unchecked.
std::filesystem::path find_plugin(const std::optional<std::filesystem::path>& given = std::nullopt);

// The same for code in a library that other programs load: the value of FLD_PLUGIN, otherwise the plug-in in
// the folder of the library (or program) that contains `address`, or in the nearest of the three folders
// above it.
std::filesystem::path find_plugin_near(const void* address);

}  // namespace host
