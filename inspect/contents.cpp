#include "inspect/contents.h"

#include <array>

namespace inspect {
namespace {

// In the order of the enumeration.
constexpr std::array<std::string_view, 44> kNames{
    "data",
    "leading integer",
    "version of the application",
    "release date",
    "dimension",
    "index base",
    "cycle number",
    "solution time",
    "marker of undefined values, single precision",
    "marker of undefined values, double precision",
    "coordinate system",
    "number of regions",
    "length of a name",
    "name",
    "names",
    "number of faces",
    "face codes",
    "elements of the faces",
    "length of the node list",
    "nodes of the faces",
    "number of elements",
    "elements",
    "number of elements",
    "element codes",
    "length of the connectivity",
    "connectivity",
    "number of elements",
    "material numbers",
    "number of nodes",
    "x",
    "y",
    "z",
    "vector's leading integer",
    "label",
    "number of values",
    "values",
    "cycle of the base file",
    "number of moving regions",
    "number of region names",
    "name of a volume region",
    "number of actions",
    "kind of action",
    "number of items",
    "item",
};
static_assert(kNames.size() == static_cast<std::size_t>(Content::item) + 1);

}  // namespace

std::string_view name(Content content) {
  return kNames[static_cast<std::size_t>(content)];
}

}  // namespace inspect
