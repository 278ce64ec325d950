#include "reader/globals.h"

#include "reader/work_tables.h"

namespace fld {

char Geom_file[kPathBuffer] = {};
char Resu_file[kPathBuffer] = {};
int Toggle_user[2] = {0, 0};
int Num_toggle = 0;
float Ens_Undef_value = 0.0F;
int Server_Number = 1;
int Tot_Servers = 1;
int Current_timeset = 1;
int Current_time_step = 0;
int Num_time_steps[kTimesetTable] = {};
int Numparts_available = 0;
int Num_variables = 0;

// All in one file, so that they are constructed in this order and destroyed in reverse order at unload.
NodeTable<char> g_mark_node;
NodeTable<int> g_globalNode2localNode;
NodeTable<int> g_part_nodes;
NodeTable<NodeList> g_part_lists;
ElementOffsets g_ele2head;
std::vector<ElementOffsets> g_own_ele2head;
smart_ptr<FLD> g_fld;
smart_ptr<Geometry> g_fldgeo;
smart_ptr<Scalar> g_scalar;
smart_ptr<Vector> g_vector;
std::string g_prev_scalar_xxxx;
std::string g_prev_vector_xxxx;

void clear_cached_quantities() {
  // Unlike clear(), this releases the memory of a long name.
  std::string().swap(g_prev_scalar_xxxx);
  std::string().swap(g_prev_vector_xxxx);
}

}  // namespace fld
