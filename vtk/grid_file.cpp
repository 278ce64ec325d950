#include "vtk/grid_file.h"

#include <array>
#include <fstream>
#include <ostream>
#include <string>
#include <string_view>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkXMLUnstructuredGridWriter.h>

namespace vtkdata {

namespace {

// VTK's reader passes the file to its XML parser in blocks of 4,096 bytes until the parser reports the
// appended data. Parsers that defer incomplete tokens (Expat since 2.6, and older versions with its security
// fixes) report it one block late. Blanks before the data, which VTK skips, keep that block free of data.
constexpr std::size_t kParserBlock = 4096;
constexpr std::size_t kBlanks = 2 * kParserBlock;

class Writer : public vtkXMLUnstructuredGridWriter {
 public:
  static Writer* New();
  vtkTypeMacro(Writer, vtkXMLUnstructuredGridWriter);

 protected:
  // Everything up to the underscore before the data has been written.
  int WriteHeader() override {
    if (Superclass::WriteHeader() == 0) return 0;
    Stream->seekp(AppendedDataPosition - 1);
    *Stream << std::string(kBlanks, ' ') << '_';
    AppendedDataPosition = Stream->tellp();
    return Stream->fail() ? 0 : 1;
  }
};

vtkStandardNewMacro(Writer);

void set_compression(vtkXMLWriter& writer, Compression compression) {
  switch (compression) {
    case Compression::none:
      writer.SetCompressorTypeToNone();
      break;
    case Compression::lz4:
      writer.SetCompressorTypeToLZ4();
      break;
    case Compression::zlib:
      writer.SetCompressorTypeToZLib();
      break;
  }
}

// Whether the file is complete: VTK's writer does not notice if the last block cannot be written.
bool is_complete(const std::filesystem::path& path) {
  constexpr std::string_view kEnd = "</VTKFile>\n";
  std::array<char, kEnd.size()> end{};
  std::ifstream file(path, std::ios::binary);
  file.seekg(-static_cast<std::streamoff>(kEnd.size()), std::ios::end);
  file.read(end.data(), end.size());
  return file && std::string_view(end.data(), end.size()) == kEnd;
}

}  // namespace

bool write_grid(const std::filesystem::path& path, vtkUnstructuredGrid* grid, Compression compression) {
  vtkNew<Writer> writer;
  writer->SetFileName(path.c_str());
  writer->SetInputData(grid);
  writer->SetDataModeToAppended();
  writer->EncodeAppendedDataOff();
  writer->SetHeaderTypeToUInt64();
  set_compression(*writer, compression);
  return writer->Write() == 1 && is_complete(path);
}

}  // namespace vtkdata
