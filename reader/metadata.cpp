// The part-group block: XML that lists the parts and puts some of them into two named groups.
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
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

constexpr char kPart[] = "      <part name=\"";
constexpr char kWholeMesh[] = "ALL_ELEMENTS";
constexpr char kPartEnd[] = "\"></part>\n";

// The kind of a surface, from the prefix of its name.
enum class SurfaceKind { grouping, undefined, plain };

SurfaceKind kind_of(std::string_view name) {
  if (name.starts_with("&VFG")) return SurfaceKind::grouping;
  return name.starts_with("@") ? SurfaceKind::undefined : SurfaceKind::plain;
}

// The start of the line for such a surface, with the ampersand escaped.
const char* opening_of(SurfaceKind kind) {
  switch (kind) {
    case SurfaceKind::grouping:
      return "        <part name=\"&amp;";
    case SurfaceKind::undefined:
      return "       <part name=\"";
    case SurfaceKind::plain:
      break;
  }
  return kPart;
}

// Builds the text in one allocation, because a file may have a region every few bytes.
class Block {
 public:
  explicit Block(const std::vector<FLDGEO>& geos) : geos_(geos) {
    text_.reserve(room());
    text_ += kOpening;
    add_group(SurfaceKind::grouping, "Grouping_Regions");
    add_group(SurfaceKind::undefined, "Undefined_Regions");
    add_surfaces(SurfaceKind::plain);
    for (const FLDGEO& geo : geos_) {
      for (const auto& volume : geo.volumes) add_part(kPart, volume->name);
    }
    for (size_t g = 0; g < geos_.size(); ++g) add_part(kPart, kWholeMesh);
    text_ += kClosing;
  }

  const std::string& text() const { return text_; }

 private:
  // An upper bound of the text's size.
  size_t room() const {
    constexpr size_t kGroupLines = 256;
    constexpr size_t kLine = sizeof(kPart) + sizeof(kPartEnd);
    size_t size = sizeof(kOpening) + kGroupLines + sizeof(kClosing);
    size += geos_.size() * (kLine + sizeof(kWholeMesh));
    for (const FLDGEO& geo : geos_) {
      for (const auto& surface : geo.surfaces) {
        const std::string_view name = surface->name;
        size += strlen(opening_of(kind_of(name))) + name.size() + sizeof(kPartEnd);
      }
      for (const auto& volume : geo.volumes) size += kLine + strlen(volume->name);
    }
    return size;
  }

  void add_group(SurfaceKind kind, const char* group) {
    const size_t before = text_.size();
    text_.append("    <group name=\"").append(group).append("\">\n");
    if (add_surfaces(kind)) {
      text_ += kGroupEnd;
    } else {
      text_.resize(before);
    }
  }

  // Returns whether there are any surfaces of this kind.
  bool add_surfaces(SurfaceKind kind) {
    bool any = false;
    for (const FLDGEO& geo : geos_) {
      for (const auto& surface : geo.surfaces) {
        const std::string_view name = surface->name;
        if (kind_of(name) != kind) continue;
        any = true;
        add_part(opening_of(kind), kind == SurfaceKind::grouping ? name.substr(1) : name);
      }
    }
    return any;
  }

  // One part line. `opening` contains the indentation and may start the name.
  void add_part(const char* opening, std::string_view name) {
    text_.append(opening).append(name).append(kPartEnd);
  }

  const std::vector<FLDGEO>& geos_;
  std::string text_;
};

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_metadata(int* size, char* buffer) {
  if (Toggle_user[1] == 0) {
    if (buffer == nullptr) *size = 0;
    return 1;
  }
  const std::vector<FLDGEO> nothing;
  const Block block(g_fldgeo ? g_fldgeo->geos : nothing);
  const std::string& text = block.text();
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
