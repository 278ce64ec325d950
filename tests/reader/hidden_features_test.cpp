// Features that a host must not find: they only have C++ names.
#include <dlfcn.h>
#include <string>

#include "tests/reader/loaded_reader.h"

namespace reader_test {
namespace {

class HiddenFeatures : public LoadedReader {
 protected:
  template <class Function>
  Function* look_up(const char* name) {
    // The fixture has loaded it already; this only gets a handle.
    void* library = dlopen(FLD_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    EXPECT_NE(nullptr, library);
    void* symbol = dlsym(library, name);
    dlclose(library);
    return reinterpret_cast<Function*>(symbol);
  }
};

TEST_F(HiddenFeatures, PlainNamesAreNotFound) {
  for (const char* name : {"USERD_get_matsp_info", "USERD_rigidbody_existence", "USERD_rigidbody_values",
                           "USERD_get_structured_reader_cinching", "USERD_set_block_range_and_stride",
                           "USERD_get_number_of_species"}) {
    EXPECT_EQ(nullptr, look_up<void()>(name)) << name;
  }
}

TEST_F(HiddenFeatures, SpeciesInformationIs1AndNotWritten) {
  auto* get = look_up<int(int, int*, char**, int*, int*)>("_Z20USERD_get_matsp_infoiPiPPcS_S_");
  ASSERT_NE(nullptr, get);
  int value = kUntouchedInt;
  char text = kUntouchedChar;
  char* row = &text;
  EXPECT_EQ(1, get(0, &value, &row, &value, &value));
  EXPECT_EQ(kUntouchedInt, value);
  EXPECT_EQ(kUntouchedChar, text);
}

TEST_F(HiddenFeatures, ThereAreNoRigidBodies) {
  auto* exist = look_up<int()>("_Z25USERD_rigidbody_existencev");
  ASSERT_NE(nullptr, exist);
  EXPECT_EQ(2, exist());
  auto* values = look_up<int(int, float*)>("_Z22USERD_rigidbody_valuesiPf");
  ASSERT_NE(nullptr, values);
  float value = kUntouchedFloat;
  EXPECT_EQ(2, values(1, &value));
  EXPECT_EQ(kUntouchedFloat, value);
}

TEST_F(HiddenFeatures, ThereIsNoCinchingOfStructuredParts) {
  auto* get = look_up<int()>("_Z36USERD_get_structured_reader_cinchingv");
  ASSERT_NE(nullptr, get);
  EXPECT_EQ(2, get());
}

TEST_F(HiddenFeatures, BlockRangesAreRefused) {
  auto* set = look_up<int(int, int, int, int, int, int, int, int, int, int)>(
      "_Z32USERD_set_block_range_and_strideiiiiiiiiii");
  ASSERT_NE(nullptr, set);
  EXPECT_EQ(-1, set(1, 0, 1, 1, 0, 1, 1, 0, 1, 1));
}

TEST_F(HiddenFeatures, NoSetHasSpecies) {
  auto* get = look_up<int(int)>("_Z27USERD_get_number_of_speciesi");
  ASSERT_NE(nullptr, get);
  EXPECT_EQ(0, get(0));
  EXPECT_EQ(0, get(1000000));
}

}  // namespace
}  // namespace reader_test
