#include "samples/samples.h"

#include "samples/channel.h"
#include "samples/overset.h"
#include "samples/sector.h"
#include "samples/tank.h"

namespace samples {

std::vector<SampleInfo> write_samples(const std::filesystem::path& directory) {
  return {channel::write(directory), tank::write(directory), overset::write(directory),
          sector::write(directory)};
}

}  // namespace samples
