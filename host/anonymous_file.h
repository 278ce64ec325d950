// Files without a name, which vanish with their last descriptor.
#pragma once

namespace host {

// Where such a file is kept. Not every system has files in memory, and not every one lets programs run from
// them.
enum class Storage { memory, temporary_folder };

// The descriptor of an empty file, closed on exec, or -1 with errno set.
int open_anonymous_file(Storage storage);

// In memory if possible, otherwise in the temporary folder.
int open_anonymous_file();

}  // namespace host
