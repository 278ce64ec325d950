// The part-group block: an XML text that lists the parts and puts some of them into two named groups.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "interface/userd_api.h"
#include "reader/globals.h"

namespace fld {

namespace {

constexpr char kOpening[] =
    "<?xml version=\"1.0\" encoding=\"shift_jis\"?>\n<CEImetadata version=\"1.0\">\n  <parts>\n    "
    "<partlist>\n";
constexpr char kClosing[] = "    </partlist>\n  </parts>\n</CEImetadata>";
constexpr char kGroupEnd[] = "    </group>\n";

// The names of the surface regions, sorted by what their first characters say.
struct SurfaceNames {
  std::vector<std::string> grouping;   // "&VFG..."
  std::vector<std::string> undefined;  // "@..."
  std::vector<std::string> plain;
};

SurfaceNames sort_surfaces(const std::vector<FLDGEO>& geos) {
  SurfaceNames names;
  for (const FLDGEO& geo : geos) {
    for (const auto& surface : geo.surfaces) {
      const std::string name = surface->name;
      auto& list = name.starts_with("&VFG") ? names.grouping
                   : name.starts_with("@")  ? names.undefined
                                            : names.plain;
      list.push_back(name);
    }
  }
  return names;
}

// One part line, indented by `opening`, which also begins the name.
std::string part_line(const char* opening, const std::string& name) {
  return opening + name + "\"></part>\n";
}

constexpr char kPart[] = "      <part name=\"";

std::string build_block(const std::vector<FLDGEO>& geos) {
  const SurfaceNames names = sort_surfaces(geos);
  std::string text = kOpening;
  if (!names.grouping.empty()) {
    text += "    <group name=\"Grouping_Regions\">\n";
    for (const auto& name : names.grouping) text += part_line("        <part name=\"&amp;", name.substr(1));
    text += kGroupEnd;
  }
  if (!names.undefined.empty()) {
    text += "    <group name=\"Undefined_Regions\">\n";
    for (const auto& name : names.undefined) text += part_line("       <part name=\"", name);
    text += kGroupEnd;
  }
  for (const auto& name : names.plain) text += part_line(kPart, name);
  for (const FLDGEO& geo : geos) {
    for (const auto& volume : geo.volumes) text += part_line(kPart, volume->name);
  }
  for (size_t g = 0; g < geos.size(); ++g) text += part_line(kPart, "ALL_ELEMENTS");
  return text + kClosing;
}

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_metadata(int* size, char* buffer) {
  if (Toggle_user[1] == 0) {
    if (buffer == nullptr) *size = 0;
    return 1;
  }
  const std::string text = build_block(g_fldgeo ? g_fldgeo->geos : std::vector<FLDGEO>());
  if (buffer != nullptr) {
    memcpy(buffer, text.c_str(), text.size() + 1);
    fputs("XML1\n", stderr);
  } else {
    *size = static_cast<int>(text.size());
    fputs("XML0\n", stderr);
  }
  fprintf(stderr, "%s", text.c_str());
  return 1;
}
