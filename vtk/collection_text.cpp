#include "vtk/collection_text.h"

#include <array>
#include <charconv>
#include <string_view>

namespace vtkdata {
namespace {

std::string escaped(std::string_view text) {
  std::string result;
  for (const char character : text) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += character;
    }
  }
  return result;
}

// The shortest text that converts back to the same number.
std::string number_text(float number) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  return {text.data(), end};
}

std::string head(const char* type) {
  return std::string("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<VTKFile type=\"") + type +
         "\" version=\"1.0\" byte_order=\"LittleEndian\" header_type=\"UInt64\">\n";
}

struct CompositeWriter {
  const std::function<std::string(int)>& name_of;
  const std::function<std::string(int)>& file_of;
  std::string text{};

  void add(const std::vector<host::PartFolder>& folders, std::size_t& index, const std::string& indent) {
    for (const host::PartFolder& folder : folders) {
      text += indent + "<Block index=\"" + std::to_string(index++) + "\" name=\"" + escaped(folder.name) +
              "\">\n";
      std::size_t inside = 0;
      for (const int part : folder.parts) {
        text += indent + "  <DataSet index=\"" + std::to_string(inside++) + "\" name=\"" +
                escaped(name_of(part)) + "\" file=\"" + escaped(file_of(part)) + "\"/>\n";
      }
      add(folder.folders, inside, indent + "  ");
      text += indent + "</Block>\n";
    }
  }
};

}  // namespace

std::string composite_text(const std::vector<host::PartFolder>& tree,
                           const std::function<std::string(int part)>& name_of,
                           const std::function<std::string(int part)>& file_of) {
  CompositeWriter writer{name_of, file_of};
  std::size_t index = 0;
  writer.text = head("vtkMultiBlockDataSet") + "  <vtkMultiBlockDataSet>\n";
  writer.add(tree, index, "    ");
  return writer.text + "  </vtkMultiBlockDataSet>\n</VTKFile>\n";
}

std::string collection_text(const std::vector<CollectionStep>& steps) {
  std::string text = head("Collection") + "  <Collection>\n";
  for (const CollectionStep& step : steps) {
    text += "    <DataSet timestep=\"" + number_text(step.time) + "\" part=\"0\" file=\"" +
            escaped(step.file) + "\"/>\n";
  }
  return text + "  </Collection>\n</VTKFile>\n";
}

}  // namespace vtkdata
