// The XML files of a series.
#include "vtk/collection_text.h"

#include "gtest/gtest.h"
#include <string>

namespace {

TEST(CollectionText, EscapesNames) {
  const std::string text = vtkdata::composite_text(
      {{"A<b>", {1}, {}}}, [](int) { return std::string("&\"x\""); },
      [](int) { return std::string("f.vtu"); });
  EXPECT_NE(text.find("<Block index=\"0\" name=\"A&lt;b&gt;\">"), std::string::npos) << text;
  EXPECT_NE(text.find("<DataSet index=\"0\" name=\"&amp;&quot;x&quot;\" file=\"f.vtu\"/>"), std::string::npos)
      << text;
}

TEST(CollectionText, TellsTimesExactly) {
  const std::string text = vtkdata::collection_text({{0.1F, "a/0.vtm"}, {1e-9F, "a/1.vtm"}});
  EXPECT_NE(text.find("timestep=\"0.1\" part=\"0\" file=\"a/0.vtm\""), std::string::npos) << text;
  EXPECT_NE(text.find("timestep=\"1e-09\""), std::string::npos) << text;
}

}  // namespace
