// A second dataset with the same mesh, whose values are taken away from those of a picture.
#pragma once

#include <string>
#include <vtkDataArray.h>
#include <vtkSmartPointer.h>

#include "host/session.h"
#include "tool/dataset_options.h"
#include "tool/picture_scalar.h"

namespace tool {

class ComparedDataset {
 public:
  // Opens `file` as `options` say. Throws CommandError when it cannot be read.
  ComparedDataset(const DatasetOptions& options, const std::string& file);

  // What `shown`, the scalar's values on a part at the session's step, are more than those of the same part,
  // step and variable here. Undefined where one of them is; null where one of them has none. Throws
  // CommandError (wrong usage) when this dataset lacks the step, the part or the variable, or when its mesh
  // is another.
  vtkSmartPointer<vtkDataArray> difference(host::Session& session, int part, const PictureScalar& scalar,
                                           vtkDataArray* shown);

  const std::string& file() const { return dataset_.file(); }

 private:
  int matching_part(const host::Session& session, int part);
  PictureScalar matching_scalar(host::Session& session, const PictureScalar& scalar);
  void require_same_nodes(host::Session& session, int part, int other);

  OpenDataset dataset_;
  PictureValues values_;
};

}  // namespace tool
