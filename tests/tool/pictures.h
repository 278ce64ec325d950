// Pictures made by `fldtool render`, and a dataset with known colours.
#pragma once

#include <array>
#include <filesystem>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPNGReader.h>

#include "testkit/description.h"

namespace tool_test {

using Pixel = std::array<int, 3>;

inline constexpr Pixel kWhite = {255, 255, 255};
inline constexpr Pixel kLowest = {0x44, 0x01, 0x54};   // of viridis
inline constexpr Pixel kHighest = {0xfd, 0xe7, 0x25};  // of viridis
inline constexpr Pixel kUndefined = {158, 153, 153};

class Picture {
 public:
  explicit Picture(const std::filesystem::path& path) {
    reader_->SetFileName(path.c_str());
    reader_->Update();
  }

  int width() { return reader_->GetOutput()->GetDimensions()[0]; }
  int height() { return reader_->GetOutput()->GetDimensions()[1]; }
  // x from the left, y from below, as fractions of width and height.
  Pixel at(double x, double y) {
    return pixel(static_cast<int>(x * width()), static_cast<int>(y * height()));
  }
  // The same in pixels.
  Pixel pixel(int x, int y) {
    const auto* colour = static_cast<unsigned char*>(reader_->GetOutput()->GetScalarPointer(x, y, 0));
    return {colour[0], colour[1], colour[2]};
  }

 private:
  vtkNew<vtkPNGReader> reader_;
};

void expect_near(const Pixel& found, const Pixel& wanted);

// Three square plates in a row along x: of the lowest value, the highest and an undefined one.
testkit::File three_plates(double low = 0, double high = 10);

// Where the plates are in a picture of 600 x 400 from +z, as fractions of its width and height.
inline constexpr double kFirst = 0.5 - 0.92 / 3;
inline constexpr double kSecond = 0.5;
inline constexpr double kThird = 0.5 + 0.92 / 3;
inline constexpr double kMiddle = 0.55;

}  // namespace tool_test
