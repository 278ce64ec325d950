#include "render/picture.h"

#include <cstddef>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkUnsignedCharArray.h>

namespace render {
namespace {

constexpr int kChannels = 3;

// One line of the picture from the kFiner lines that begin at `from`, each of `stride` bytes.
void average_line(const unsigned char* from, std::size_t stride, int width, unsigned char* to) {
  for (int x = 0; x < width; ++x) {
    for (int channel = 0; channel < kChannels; ++channel) {
      unsigned sum = 0;
      for (std::size_t row = 0; row < kFiner; ++row) {
        for (int column = 0; column < kFiner; ++column)
          sum += from[row * stride + static_cast<std::size_t>((x * kFiner + column) * kChannels + channel)];
      }
      *to++ = static_cast<unsigned char>((sum + kFiner * kFiner / 2) / (kFiner * kFiner));
    }
  }
}

}  // namespace

std::string take_picture(vtkRenderWindow& window) {
  const int* size = window.GetSize();
  const int width = size[0] / kFiner;
  const int height = size[1] / kFiner;
  vtkNew<vtkUnsignedCharArray> pixels;
  window.GetPixelData(0, 0, width * kFiner - 1, height * kFiner - 1, 0, pixels);
  vtkNew<vtkImageData> image;
  image->SetDimensions(width, height, 1);
  image->AllocateScalars(VTK_UNSIGNED_CHAR, kChannels);
  const auto stride = static_cast<std::size_t>(width) * kFiner * kChannels;
  for (int y = 0; y < height; ++y) {
    average_line(pixels->GetPointer(0) + static_cast<std::size_t>(y * kFiner) * stride, stride, width,
                 static_cast<unsigned char*>(image->GetScalarPointer(0, y, 0)));
  }
  vtkNew<vtkPNGWriter> writer;
  writer->SetInputData(image);
  writer->WriteToMemoryOn();
  writer->Write();
  vtkUnsignedCharArray* bytes = writer->GetResult();
  return {reinterpret_cast<const char*>(bytes->GetPointer(0)),
          static_cast<std::size_t>(bytes->GetNumberOfValues())};
}

}  // namespace render
