// The end of a session: releases all state and reports leaked arrays.
#include "interface/userd_api.h"
#include "reader/globals.h"
#include "reader/work_tables.h"
#include "support/tracked_allocation.h"

using namespace fld;

void USERD_exit_routine() {
  g_fld.dec_ref();
  g_fldgeo.dec_ref();
  g_scalar.dec_ref();
  g_vector.dec_ref();
  clear_cached_quantities();
  freeMemoryForGeometry();
  free_memory();
}
