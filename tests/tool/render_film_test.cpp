// Films of fldtool render, with programs that stand in for ffmpeg.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "tests/tool/render_fixture.h"
#include "tests/tool/run_fldtool.h"

namespace {

namespace fs = std::filesystem;
using tool_test::Result;
using Words = std::vector<std::string>;

std::string content(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

int count(const std::string& text, const std::string& word) {
  int found = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++found;
  return found;
}

class RenderFilm : public tool_test::RenderTest {
 protected:
  RenderFilm() : path_(getenv("PATH")) {
    for (int step = 0; step < 3; ++step) {
      testkit::write_file(testkit::box_file({.nx = 3, .ny = 3, .nz = 3, .cycle = step, .time = 0.5 * step}),
                          folder() / ("s_" + std::to_string(step) + ".fld"));
    }
    fs::create_directory(folder() / "programs");
  }
  ~RenderFilm() override { setenv("PATH", path_.c_str(), 1); }

  fs::path folder() const { return dataset.directory().path(); }
  std::string file() const { return (folder() / "s_0.fld").string(); }

  // The only program called ffmpeg from now on; none without a text.
  void stand_in(const std::string& script) {
    const fs::path program = folder() / "programs" / "ffmpeg";
    if (!script.empty()) {
      std::ofstream(program) << "#!/bin/sh\n" << script;
      fs::permissions(program, fs::perms::owner_all);
    }
    setenv("PATH", ((folder() / "programs").string() + (script.empty() ? "" : ":/usr/bin:/bin")).c_str(), 1);
  }

  Result film(const std::string& name, const Words& more = {}) const {
    Words arguments = {"render", file(),   "--steps", "all",
                       "--size", "101x80", "-o",      (folder() / name).string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return tool_test::run_fldtool(arguments);
  }

  // How many files there are besides the dataset and the programs.
  std::vector<std::string> written() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder())) {
      const std::string name = entry.path().filename().string();
      if (!name.ends_with(".fld") && name != "programs" && name != "words") names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::string path_;
};

TEST_F(RenderFilm, GivesThePicturesToFfmpeg) {
  stand_in("echo \"$@\" > " + (folder() / "words").string() + "\ncat >&3\n");
  for (const char* name : {"a.webm", "b.MP4", "c.gif"}) {
    const Result result = film(name, {"--fps", "12.5"});
    EXPECT_EQ(result.status, 0) << name;
    EXPECT_EQ(result.errors, "") << name;
    const std::string pictures = content(folder() / name);
    EXPECT_TRUE(pictures.starts_with("\x89PNG\r\n")) << name;
    EXPECT_EQ(count(pictures, "IEND"), 3) << name;
    EXPECT_NE(content(folder() / "words").find("-framerate 12.5 "), std::string::npos);
  }
  EXPECT_EQ(written(), (Words{"a.webm", "b.MP4", "c.gif"}));
}

TEST_F(RenderFilm, MakesOneOfEachVariable) {
  stand_in("cat >&3\n");
  const Result result = film("a.gif", {"--variables", "scalar_1,vector_1.x"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(written(), (Words{"a_1_scalar_1.gif", "a_3_vector_1_x.gif"}));
}

TEST_F(RenderFilm, WritesPicturesWithoutFfmpeg) {
  stand_in("");
  const Result result = film("a.webm");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "fldtool: ffmpeg is not installed: writing " + (folder() / "a_0.png").string() +
                               " to a_2.png in place of a.webm\n");
  EXPECT_EQ(written(), (Words{"a_0.png", "a_1.png", "a_2.png"}));
}

TEST_F(RenderFilm, SaysWhyFfmpegFails) {
  const std::string path = (folder() / "a.mp4").string();
  stand_in("cat > /dev/null\necho first >&2\necho 'Unknown encoder libx264' >&2\nexit 1\n");
  Result result = film("a.mp4");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: " + path + ": ffmpeg cannot make the film: Unknown encoder libx264\n");
  stand_in("exit 3\n");
  result = film("a.mp4");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: " + path + ": ffmpeg cannot make the film\n");
  EXPECT_EQ(written(), Words{});
}

TEST_F(RenderFilm, LeavesNothingWhenItIsInterrupted) {
  stand_in("cat >&3\n");
  const Result result = tool_test::run_fldtool_on_terminal_and_interrupt(
      {"render", file(), "--steps", "all", "--size", "2000x2000", "-o", (folder() / "a.gif").string()},
      SIGINT);
  EXPECT_EQ(result.status, 130);
  EXPECT_TRUE(result.errors.ends_with("fldtool: interrupted\r\n")) << result.errors;
  EXPECT_EQ(written(), Words{});
}

TEST_F(RenderFilm, RejectsWrongOptions) {
  for (const std::string fps : {"0", "121", "x"}) {
    EXPECT_EQ(film("a.gif", {"--fps", fps}).errors,
              "fldtool: --fps: '" + fps + "' is not a number from 0.1 to 120 (see fldtool render --help)\n");
  }
  EXPECT_EQ(film("a.avi").errors, "fldtool: " + (folder() / "a.avi").string() +
                                      ": cannot write '.avi' files: the name has to end in .png or .webm or "
                                      ".mp4 or .gif\n");
}

}  // namespace
