// Draws the pictures and films that a command line asks for.
#pragma once

#include "host/session.h"
#include "tool/compared_dataset.h"
#include "tool/render_options.h"

namespace tool {

// Reads, draws and writes all of them; `compared` may be null. Throws CommandError for options that name what
// the dataset lacks and for files that cannot be written, and host::Error for what cannot be read.
void draw_pictures(host::Session& session, ComparedDataset* compared, const RenderOptions& options);

}  // namespace tool
