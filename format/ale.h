// Moving-mesh (ALE) motion of one region set and the section "LS_ALE".
#pragma once

#include <array>
#include <stdio.h>
#include <string>
#include <vector>

namespace fld {

enum class Motion { rotate, translate, scale, four_points, none };

// One action on the nodes of a moving region.
struct ALE_ACT {
  static constexpr int kKindColumns = 80;
  char kind[kKindColumns + 1] = {};  // keyword as stored, not trimmed
  // Rotate: centre, axis, angle in radians. Translate: displacement. Scale: centre, factors. 4Points: four
  // source points, then four target points. A point or vector is three entries; unused entries are 0.
  std::array<double, 24> data = {};

  // The motion whose keyword ("Rotate", "Translate", "Scale" or "4Points") is a prefix of `kind`.
  Motion motion() const;
};

// Volume regions that move together.
struct ALE_REGION {
  int nname = 0;
  std::vector<std::string> names;  // of volume regions, without trailing blanks
  std::vector<ALE_ACT> actions;    // in the order in which they are applied
};

struct ALE {
  int base_cycle = 0;  // cycle number of the file with the unmoved geometry
  std::vector<ALE_REGION> regions;
};

// Reads the section's body: ints L (length of a name), base cycle, R (regions); per region: int N, N char
// blocks of L, int A (actions); per action: char block of L (kind), int ndat, and the data of the kind:
// "Rotate" two floating blocks of 3 and one of 1, "Translate" one of 3, "Scale" two of 3, "4Points" eight of
// 3; end rule. An unknown kind has no data. A wrong ndat fails an assertion.
void FLDV4_ALE(FILE* stream, ALE& ale);

}  // namespace fld
