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

TEST(CollectionText, HasTheHierarchyOfTheParts) {
  const auto named = [](const char* before) {
    return [before](int part) { return before + std::to_string(part); };
  };
  EXPECT_EQ(vtkdata::composite_text({{"Surfaces", {3}, {{"Groups", {1, 2}, {}}}}, {"Volumes", {4}, {}}},
                                    named("part "), named("f")),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<VTKFile type=\"vtkMultiBlockDataSet\" version=\"1.0\" byte_order=\"LittleEndian\" "
            "header_type=\"UInt64\">\n"
            "  <vtkMultiBlockDataSet>\n"
            "    <Block index=\"0\" name=\"Surfaces\">\n"
            "      <DataSet index=\"0\" name=\"part 3\" file=\"f3\"/>\n"
            "      <Block index=\"1\" name=\"Groups\">\n"
            "        <DataSet index=\"0\" name=\"part 1\" file=\"f1\"/>\n"
            "        <DataSet index=\"1\" name=\"part 2\" file=\"f2\"/>\n"
            "      </Block>\n"
            "    </Block>\n"
            "    <Block index=\"1\" name=\"Volumes\">\n"
            "      <DataSet index=\"0\" name=\"part 4\" file=\"f4\"/>\n"
            "    </Block>\n"
            "  </vtkMultiBlockDataSet>\n"
            "</VTKFile>\n");
}

TEST(CollectionText, HasASetPerStep) {
  EXPECT_EQ(
      vtkdata::collection_text({{0, "0.vtm"}, {0.5F, "1.vtm"}}),
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
      "<VTKFile type=\"Collection\" version=\"1.0\" byte_order=\"LittleEndian\" header_type=\"UInt64\">\n"
      "  <Collection>\n"
      "    <DataSet timestep=\"0\" part=\"0\" file=\"0.vtm\"/>\n"
      "    <DataSet timestep=\"0.5\" part=\"0\" file=\"1.vtm\"/>\n"
      "  </Collection>\n"
      "</VTKFile>\n");
}

TEST(CollectionText, TellsTimesExactly) {
  const std::string text = vtkdata::collection_text({{0.1F, "a/0.vtm"}, {1e-9F, "a/1.vtm"}});
  EXPECT_NE(text.find("timestep=\"0.1\" part=\"0\" file=\"a/0.vtm\""), std::string::npos) << text;
  EXPECT_NE(text.find("timestep=\"1e-09\""), std::string::npos) << text;
}

}  // namespace
