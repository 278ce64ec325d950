// Where the programs of this project look for the reader plug-in.
#pragma once

#include <filesystem>
#include <optional>

namespace host {

// The plug-in's file name and the environment variable that names another one.
inline constexpr char kPluginFile[] = "libuserd-fld.so";
inline constexpr char kPluginVariable[] = "FLD_PLUGIN";

// The path to load: `given` if there is one, else what FLD_PLUGIN names, else the plug-in beside the running
// executable, else the one in the library directory of an installation (mostly lib) next to
// the executable's directory. Throws Error when none of
// these is there; a path that was given, or named by the variable, is returned as it stands.
std::filesystem::path find_plugin(const std::optional<std::filesystem::path>& given = std::nullopt);

// The same for code in a library that other programs load: what FLD_PLUGIN names, else the plug-in in the
// folder of the library (or program) that holds `address`, or in the nearest of the three folders above it.
std::filesystem::path find_plugin_near(const void* address);

}  // namespace host
