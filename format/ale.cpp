#include "format/ale.h"

#include <cstring>

#include "format/data_block.h"
#include "format/read_checks.h"
#include "format/record.h"
#include "format/region_lists.h"
#include "support/assertion.h"

namespace fld {

namespace {

constexpr char kModule[] = "Convert_read_fld";
constexpr char kFunction[] = "void FLDV4_ALE(_IO_FILE *, ALE &)";

constexpr size_t kLeastMovingRegion = 40;  // bytes: two rule records
constexpr size_t kLeastName = 28;          // bytes: a character block
constexpr size_t kLeastAction = 48;        // bytes: a character block and a rule record

// Reads `count` points or vectors of three values each.
void read_points(FILE* stream, int count, double* places) {
  struct Item {
    VFPA values;
    ~Item() { cv_mfree(values.data); }
  };
  for (int k = 0; k < count; ++k) {
    Item item;
    FLDV4_I_FPRECaloc_array(stream, 3, &item.values);
    for (int i = 0; i < 3; ++i) *places++ = vfpa2double(item.values, i);
  }
}

void read_action(FILE* stream, int name_length, ALE_ACT& act) {
  FLDV4_I_CHARarray80(stream, name_length, act.kind);
  const int ndat = read_int(stream);
  double* data = act.data.data();
  switch (act.motion()) {
    case Motion::rotate:
      FLD_ASSERT(ndat == 3, kModule, kFunction);
      read_points(stream, 2, data);
      data[6] = FLDV4_I_FPREC(stream);
      break;
    case Motion::translate:
      FLD_ASSERT(ndat == 1, kModule, kFunction);
      read_points(stream, 1, data);
      break;
    case Motion::scale:
      FLD_ASSERT(ndat == 2, kModule, kFunction);
      read_points(stream, 2, data);
      break;
    case Motion::four_points:
      FLD_ASSERT(ndat == 8, kModule, kFunction);
      read_points(stream, 8, data);
      break;
    case Motion::none:
      break;
  }
}

int read_count(FILE* stream, size_t bytes_each) {
  const int count = read_int(stream);
  check_count(stream, count, bytes_each);
  return count;
}

void read_region(FILE* stream, int name_length, ALE_REGION& region) {
  region.nname = read_count(stream, kLeastName);
  region.names.resize(static_cast<size_t>(region.nname));
  for (std::string& name : region.names) name = read_field(stream, name_length);
  region.actions.assign(static_cast<size_t>(read_count(stream, kLeastAction)), {});
  for (ALE_ACT& act : region.actions) read_action(stream, name_length, act);
}

}  // namespace

Motion ALE_ACT::motion() const {
  const auto begins_with = [this](const char* keyword) {
    return strncmp(kind, keyword, strlen(keyword)) == 0;
  };
  if (begins_with("Rotate")) return Motion::rotate;
  if (begins_with("Translate")) return Motion::translate;
  if (begins_with("Scale")) return Motion::scale;
  if (begins_with("4Points")) return Motion::four_points;
  return Motion::none;
}

void FLDV4_ALE(FILE* stream, ALE& ale) {
  const int name_length = read_name_length(stream);
  ale.base_cycle = read_int(stream);
  ale.regions.resize(static_cast<size_t>(read_count(stream, kLeastMovingRegion)));
  for (ALE_REGION& region : ale.regions) read_region(stream, name_length, region);
  FLDV4_I_END(stream);
}

}  // namespace fld
