// The state kept between calls: options, the open dataset and its geometry, the current step and the cached
// quantities. Not thread-safe.
#pragma once

#include <string>

#include "dataset/fld.h"
#include "dataset/geometry.h"
#include "format/quantity.h"
#include "support/smart_ptr.h"

namespace fld {

constexpr int kPathBuffer = 255;
constexpr int kTimesetTable = 300;

extern char Geom_file[kPathBuffer];  // first and second file name of the last opening, truncated
extern char Resu_file[kPathBuffer];

// The options set by the host: 0 "Simplify reading sequential FLD files", 1 "Make group of parts".
extern int Toggle_user[2];
extern int Num_toggle;         // toggles received
extern float Ens_Undef_value;  // the host's value for an undefined result

extern int Server_Number;
extern int Tot_Servers;

constexpr int Num_timesets = 2;
constexpr int Num_dataset_files = 0;
constexpr int Num_material_sets = 0;

extern int Current_timeset;
extern int Current_time_step;              // from 0
extern int Num_time_steps[kTimesetTable];  // step count last reported, by time set
extern int Numparts_available;             // part count last reported
extern int Num_variables;                  // variable count last reported

extern smart_ptr<FLD> g_fld;          // the open dataset
extern smart_ptr<Geometry> g_fldgeo;  // its geometry

// The cached scalar and vector and their names. An empty name means that nothing is cached.
extern smart_ptr<Scalar> g_scalar;
extern smart_ptr<Vector> g_vector;
extern std::string g_prev_scalar_xxxx;
extern std::string g_prev_vector_xxxx;

// Invalidates both cached quantities.
void clear_cached_quantities();

}  // namespace fld
