#include "render/picture.h"

#include <cstddef>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkUnsignedCharArray.h>

namespace render {
namespace {

constexpr int kChannels = 3;

// One row of the picture from kSupersampling rows of the window, the first at `from`, each of `stride` bytes.
void average_row(const unsigned char* from, std::size_t stride, int width, unsigned char* to) {
  for (int x = 0; x < width; ++x) {
    for (int channel = 0; channel < kChannels; ++channel) {
      unsigned sum = 0;
      for (std::size_t row = 0; row < kSupersampling; ++row) {
        for (int column = 0; column < kSupersampling; ++column)
          sum += from[row * stride +
                      static_cast<std::size_t>((x * kSupersampling + column) * kChannels + channel)];
      }
      *to++ = static_cast<unsigned char>((sum + kSupersampling * kSupersampling / 2) /
                                         (kSupersampling * kSupersampling));
    }
  }
}

}  // namespace

std::string take_picture(vtkRenderWindow& window) {
  const int* size = window.GetSize();
  const int width = size[0] / kSupersampling;
  const int height = size[1] / kSupersampling;
  vtkNew<vtkUnsignedCharArray> pixels;
  window.GetPixelData(0, 0, width * kSupersampling - 1, height * kSupersampling - 1, 0, pixels);
  vtkNew<vtkImageData> image;
  image->SetDimensions(width, height, 1);
  image->AllocateScalars(VTK_UNSIGNED_CHAR, kChannels);
  const auto stride = static_cast<std::size_t>(width) * kSupersampling * kChannels;
  for (int y = 0; y < height; ++y) {
    average_row(pixels->GetPointer(0) + static_cast<std::size_t>(y * kSupersampling) * stride, stride, width,
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
