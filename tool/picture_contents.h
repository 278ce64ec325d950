// What a picture of one step shows: parts, cuts and arrows, ready to be drawn.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/session.h"
#include "render/scene.h"
#include "tool/chosen_parts.h"
#include "tool/compared_dataset.h"
#include "tool/picture_cuts.h"
#include "tool/picture_parts.h"

namespace tool {

// What the command line chooses.
struct PictureChoice {
  std::vector<int> steps;
  ChosenParts parts;  // coloured unless they are faint
  ChosenParts faint;
  ChosenParts focus;  // that the picture has room for; none: all that is shown
  CutChoice cuts;
  std::vector<std::optional<PictureScalar>> scalars;  // each gets pictures of its own
  std::optional<std::array<double, 2>> range;         // of the colours
  double size = 0;                                    // of what is shown, at the first step

  std::size_t pictures() const { return steps.size() * scalars.size(); }
  bool has_cuts() const { return cuts.volumes.size() > 0; }

  // The numbers of the coloured parts at the session's step.
  std::vector<int> coloured(const host::Session& session) const;
};

// Throws CommandError for what there is not.
PictureChoice choose_picture(host::Session& session, const RenderOptions& options);

struct PictureContents {
  std::vector<render::ShownPart> parts;
  ValueRange range;                                        // of the values that are coloured
  std::set<std::string> empty;                             // the cuts that meet nothing
  std::vector<vtkSmartPointer<vtkPolyData>> arrow_points;  // places and vectors
  double longest_vector = 0;
};

// Reads and cuts parts at the session's step.
class ContentsReader {
 public:
  // `compared` may be null: then values are shown as they are.
  ContentsReader(host::Session& session, const PictureChoice& choice, ComparedDataset* compared)
      : session_(session), values_(session), choice_(choice), compared_(compared) {}

  PictureContents read(const std::optional<PictureScalar>& scalar);

  // What colours a part; null when there are no values.
  vtkSmartPointer<vtkDataArray> values(const PictureScalar& scalar, int part);

 private:
  void add_parts(PictureContents& contents, const std::optional<PictureScalar>& scalar);
  void add_cuts(PictureContents& contents, const std::optional<PictureScalar>& scalar);
  void add_arrow_points(PictureContents& contents, vtkPolyData* surface) const;
  render::ShownPart shown_part(int part, vtkDataArray* values, bool per_cell);

  host::Session& session_;
  PictureValues values_;
  const PictureChoice& choice_;
  ComparedDataset* compared_;
};

// Adds the arrows, the longest of which is as long as a picture has room for when `longest` is the length of
// the longest vector of all pictures.
void add_arrows(PictureContents& contents, const PictureChoice& choice, double longest);

}  // namespace tool
