#include "tests/reader/linked_reader.h"

#include <algorithm>
#include <iterator>

#include "dataset/fld_file.h"
#include "reader/globals.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {

void reset_reader() {
  stderr_of([] { USERD_exit_routine(); });
  fld::Geom_file[0] = '\0';
  fld::Resu_file[0] = '\0';
  fld::Toggle_user[0] = 0;
  fld::Toggle_user[1] = 0;
  fld::Num_toggle = 0;
  fld::Ens_Undef_value = 0.0F;
  fld::Server_Number = 1;
  fld::Tot_Servers = 1;
  fld::Current_timeset = 1;
  fld::Current_time_step = 0;
  std::fill(std::begin(fld::Num_time_steps), std::end(fld::Num_time_steps), 0);
  fld::Numparts_available = 0;
  fld::Num_variables = 0;
}

fld::smart_ptr<fld::Geometry> LinkedReader::geometry_of(const std::vector<testkit::Mesh>& meshes) const {
  auto geometry = fld::make_smart<fld::Geometry>();
  stderr_of([&] {
    fld::FLDFile file(write(file_at(0, meshes), "geometry.fld"));
    EXPECT_EQ(0, file.checkSections());
    for (std::size_t g = 0; g < meshes.size(); ++g) {
      fld::FLDGEO geo;
      EXPECT_EQ(0, file.readGeometry(static_cast<int>(g), geo));
      geometry->geos.push_back(std::move(geo));
      geometry->loadedStep.push_back(0);
    }
  });
  return geometry;
}

}  // namespace reader_test
