#include "samples/samples.h"

#include <array>

#include "samples/channel.h"
#include "samples/overset.h"
#include "samples/sector.h"
#include "samples/tank.h"

namespace samples {

std::vector<SampleInfo> write_samples(const std::filesystem::path& directory,
                                      const std::function<void(std::size_t done)>& before_each) {
  using Write = SampleInfo(const std::filesystem::path&);
  constexpr std::array<Write*, kSamples> kWriters = {channel::write, tank::write, overset::write,
                                                     sector::write};
  std::vector<SampleInfo> written;
  for (Write* const write : kWriters) {
    if (before_each) before_each(written.size());
    written.push_back(write(directory));
  }
  return written;
}

}  // namespace samples
