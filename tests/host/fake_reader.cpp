// A fake reader library for the tests of the host; see fake_reader.h.
#include "tests/host/fake_reader.h"

#include <algorithm>
#include <array>
#include <chrono>
#undef NDEBUG  // the C library declares its report only where assertions are on
#include <cassert>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "interface/userd_api.h"
#include "support/errors.h"

#ifndef FAKE_API_VERSION
#define FAKE_API_VERSION "2.04"
#endif
#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

struct UnknownTrouble {};

// The state of the reader between calls.
struct State {
  std::string log;
  std::string file;
  int reads = 0;
  float undefined = 0.0F;
  int geometry_step = 0;
  int set = 1;
  int step = 0;
  // Per scalar and vector: the cached variable (0 for none), and its region set and step.
  struct Cached {
    int variable = 0;
    int region_set = 0;
    int step = 0;
  };
  std::array<Cached, 2> cached;
} state;

// std::to_string would keep the library loaded after dlclose: its table of digits is a STB_GNU_UNIQUE symbol.
void log_number(int number) {
  std::array<char, 16> text = {};
  std::snprintf(text.data(), text.size(), " %d", number);
  state.log += text.data();
}

template <typename... Numbers>
void log_call(const char* name, Numbers... numbers) {
  state.log += name;
  (log_number(numbers), ...);
  state.log += '\n';
}
#define LOG(...) log_call(__func__ __VA_OPT__(, ) __VA_ARGS__)

bool is_file(const char* name) {
  return state.file == name;
}
int region_sets() {
  return is_file(fake::kOneSet) ? 1 : 2;
}
int steps() {
  if (is_file(fake::kManyFiles)) return fake::kManyFilesCount;
  return is_file(fake::kOneStep) ? 1 : 2;
}

// What a part is: 0 surface, 1 volume, 2 whole mesh.
struct Place {
  int kind;
  int region_set;
};
Place place_of(int part) {
  return {(part - 1) / region_sets(), (part - 1) % region_sets()};
}

const char* name_of(Place place) {
  if (place.kind == 0) return "WALL";
  return place.kind == 1 ? "FLUID" : "ALL_ELEMENTS";
}

// Set 0 is a hexahedron whose bottom is the surface, set 1 a pyramid whose bottom and front are the surface.
int node_count(Place place) {
  if (place.kind == 0) return place.region_set == 0 ? 4 : 5;
  return place.region_set == 0 ? 8 : 5;
}

[[noreturn]] void fail_assertion() {
  __assert_fail("is_made_up", "fake", 1, "void fail_assertion()");
}

void release_twice() {
  // Hides from the compiler that both are the same block.
  void* volatile block = std::malloc(64);
  void* volatile same = block;
  std::free(block);
  std::free(same);
}

// A series traces each of its files, and the first one again for its geometry.
void trace_files(const std::string& path) {
  if (is_file(fake::kManyFiles)) {
    const std::string start = path.substr(0, path.size() - 4);
    std::string lines;
    std::array<char, 512> line = {};
    for (int i = 0; i <= steps(); ++i) {
      std::snprintf(line.data(), line.size(), "IN ( FLD): %s_%07d.fld\n", start.c_str(), i % steps());
      lines += line.data();
    }
    std::fputs(lines.c_str(), stderr);
  } else {
    std::fprintf(stderr, "IN ( FLD): %s\n", path.c_str());
  }
  std::fputs("read done\n", stderr);
}

void give(const std::vector<int>& nodes, int* row) {
  std::memcpy(row, nodes.data(), nodes.size() * sizeof(int));
}

}  // namespace

EXPORT const char* fake_reader_log() {
  return state.log.c_str();
}
EXPORT void fake_reader_forget_log() {
  state.log.clear();
}
EXPORT int fake_reader_reads() {
  return state.reads;
}

int USERD_get_name_of_reader(char* name, int* two_fields) {
  LOG();
  std::copy_n("A reader of 20 bytes", 20, name);  // no room for a terminator
  *two_fields = 0;
  return 1;
}

int USERD_get_reader_version(char* version) {
  LOG();
  std::strncpy(version, FAKE_API_VERSION, 20);
  return 1;
}

#ifndef FAKE_MINIMAL
int USERD_get_reader_release(char* release) {
  LOG();
  std::strncpy(release, "3.1", 20);
  return 1;
}

int USERD_get_reader_descrip(char* description) {
  LOG();
  std::strncpy(description, "made up\nfor tests", 255);
  return 1;
}

char* USERD_set_filename_button_labels(char* label1, char* /*label2*/) {
  LOG();
  return std::strncpy(label1, "Set file", 80);
}

void USERD_set_server_number(int server, int total) {
  LOG(server, total);
}

int USERD_get_extra_gui_numbers(int* num_toggles, int* num_pulldowns, int* num_fields) {
  LOG();
  *num_toggles = 2;
  *num_pulldowns = 1;
  *num_fields = 1;
  return 0;
}

int USERD_get_extra_gui_defaults(char** toggle_titles, int* toggle_defaults, char** pulldown_titles,
                                 int* pulldown_counts, int* pulldown_defaults, char*** pulldown_items,
                                 char** field_titles, char** field_texts) {
  LOG();
  std::strncpy(toggle_titles[0], "off by default", 40);
  std::strncpy(toggle_titles[1], "on by default", 40);
  toggle_defaults[0] = 0;
  toggle_defaults[1] = 1;
  std::strncpy(pulldown_titles[0], "choice", 40);
  pulldown_counts[0] = 2;
  pulldown_defaults[0] = 1;
  std::strncpy(pulldown_items[0][0], "one", 40);
  std::strncpy(pulldown_items[0][1], "other", 40);
  std::strncpy(field_titles[0], "text", 40);
  std::strncpy(field_texts[0], "preset", 79);
  return 0;
}

void USERD_set_extra_gui_data(int* toggles, int* pulldowns, char** field_texts) {
  LOG(toggles[0], toggles[1], pulldowns[0], static_cast<int>(std::strlen(field_texts[0])));
}

int USERD_get_extra_data(int* request, int* /*a2*/, int* count, int* /*a4*/, void* /*a5*/, float* values) {
  LOG(*request);
  if (*request == 0) {
    *request = is_file(fake::kNoValues) ? 0 : 0x40000000;
    *count = is_file(fake::kOddKinds) ? 0 : 1;
    return 1;
  }
  *request = 0;
  state.undefined = values[0];
  return 1;
}

int USERD_get_timeset_description(int set, char* text) {
  LOG(set);
  std::strncpy(text, set == 1 ? "geometry" : "variables", 80);
  return 1;
}

int USERD_get_geom_timeset_number() {
  LOG();
  return 1;
}

void USERD_stop_part_building() {
  LOG();
}

int USERD_get_metadata(int* size, char* buffer) {
  LOG();
  static constexpr char kText[] =
      "<group name=\"Grouping_Regions\">\n<part name=\"&amp;VFG_1\"></part>\n</group>\n";
  if (buffer == nullptr) {
    *size = is_file(fake::kOddKinds) ? 0 : sizeof kText - 1;
  } else {
    std::memcpy(buffer, kText, sizeof kText);
  }
  return 1;
}
#endif

int USERD_set_filenames(char* filename1, char* filename2, char* directory, int swap_bytes) {
  const std::string path = filename1;
  const std::string name = path.substr(path.rfind('/') + 1);
  log_call(("USERD_set_filenames " + path + " '" + filename2 + "' " + directory).c_str(), swap_bytes);
  if (name == fake::kThrowsStandard) throw std::runtime_error("the sky is falling");
  if (name == fake::kThrowsReader) throw fld::FLDReadException("UNEXPECTED END OF FILE");
  if (name == fake::kThrowsInt) throw 42;
  if (name == fake::kThrowsUnknown) throw UnknownTrouble();
  if (name == fake::kFails) {
    std::fprintf(stderr, "IN ( FLD): %s\nERROR : NO NODES\nFAILED TO READ GEOMETRY.\n", filename1);
    return -1;
  }
  if (name == fake::kFailsSilently) return -1;
  if (name == fake::kAnswersTwo) return 2;
  if (name == fake::kAborts) {
    std::fputs("about to abort\n", stderr);
    std::abort();
  }
  if (name == fake::kAsserts) fail_assertion();
  if (name == fake::kTerminates) std::terminate();
  if (name == fake::kBreaksTheHeap) release_twice();
  if (name == fake::kFaults) {
    std::fputs("about to fault\n", stderr);
    std::raise(SIGSEGV);
  }
  state.file = name;
  trace_files(path);
  state.cached = {};
  state.geometry_step = 0;
  return 1;
}

int USERD_get_number_of_timesets() {
  LOG();
  return 2;
}

int USERD_get_num_of_time_steps(int set) {
  LOG(set);
  return steps();
}

int USERD_get_sol_times(int set, float* times) {
  LOG(set);
  for (int i = 0; i < steps(); ++i) times[i] = 0.5F * static_cast<float>(i);
  return 1;
}

void USERD_set_time_set_and_step(int set, int step) {
  LOG(set, step);
  if (set != state.set || step != state.step) state.cached = {};
  state.set = set;
  state.step = step;
  if (set != 1) return;
  if (is_file(fake::kGeometryFails) && step == 1) {
    std::fputs("ERROR : CUT SHORT\nFAILED TO READ GEOMETRY DATA IN b.fld.\n", stderr);
    return;
  }
  state.geometry_step = step;
}

int USERD_get_changing_geometry_status() {
  LOG();
  if (is_file(fake::kOddKinds)) return 3;
  return is_file(fake::kNoStatus) ? -1 : 1;
}

int USERD_get_number_of_model_parts() {
  LOG();
  return 3 * region_sets();
}

int USERD_get_gold_part_build_info(int* ids, int* types, char** descriptions, int* node_counts,
                                   int** element_counts, int** /*ijk_dimensions*/,
                                   int** /*iblanking_options*/) {
  LOG();
  for (int i = 0; i < 3 * region_sets(); ++i) {
    const Place place = place_of(i + 1);
    ids[i] = i + 1;
    types[i] = 0;
    std::strncpy(descriptions[i], name_of(place), 80);
    node_counts[i] = is_file(fake::kNegativeCount) && i == 0 ? -1 : node_count(place);
    std::memset(element_counts[i], 0, 34 * sizeof(int));
    if (place.kind == 0) {
      element_counts[i][10] = 1;
      element_counts[i][6] = place.region_set;
      element_counts[i][0] = is_file(fake::kOddKinds) ? 1 : 0;
    } else {
      element_counts[i][place.region_set == 0 ? 26 : 18] = 1;
    }
  }
  return 1;
}

#ifndef FAKE_WITHOUT_COORDS
int USERD_get_part_coords(int part, float** coords) {
  LOG(part);
  if (is_file(fake::kSlowSecondStep) && state.geometry_step == 1) {
    std::this_thread::sleep_for(std::chrono::milliseconds(110));
  }
  const Place place = place_of(part);
  for (int i = 0; i < node_count(place); ++i) {
    coords[0][i + 1] = fake::x(state.geometry_step, place.region_set, i);
    coords[1][i + 1] = 1.0F;
    coords[2][i + 1] = 2.0F;
  }
  return 1;
}
#endif

int USERD_get_part_elements_by_type(int part, int slot, int** rows) {
  LOG(part, slot);
  if (slot == 6) give({1, 2, 5}, rows[0]);
  if (slot == 10) give({4, 3, 2, is_file(fake::kBadNodeNumber) ? 5 : 1}, rows[0]);
  if (slot == 18) give({1, 2, 3, 4, 5}, rows[0]);
  if (slot == 26) give({1, 2, 3, 4, 5, 6, 7, 8}, rows[0]);
  return 1;
}

int USERD_get_number_of_variables() {
  LOG();
  return fake::kMaterial;
}

int USERD_get_gold_variable_info(char** descriptions, char** filenames, int* types, int* classify,
                                 int* complex, char** ifilenames, float* /*freq*/, int* contran,
                                 int* timeset) {
  LOG();
  const char* const texts[] = {"Pressure (P)",  "Broken (B)",   "First (F)",    "Hole (H)",
                               "Unwritten (W)", "Velocity (V)", "MatOfElements"};
  for (int i = 0; i < fake::kMaterial; ++i) {
    std::strncpy(descriptions[i], texts[i], 80);
    filenames[i][0] = ifilenames[i][0] = '\0';
    types[i] = i + 1 == fake::kVelocity ? 2 : 1;
    classify[i] = i + 1 == fake::kMaterial ? 1 : 4;
    complex[i] = contran[i] = 0;
    timeset[i] = 2;
  }
  if (is_file(fake::kOddKinds)) {
    classify[0] = 2;
    types[1] = 3;
  }
  return 1;
}

int USERD_get_var_by_component(int variable, int part, int var_type, int which_type, int imag_data,
                               int component, float* values) {
  LOG(variable, part, var_type, which_type, imag_data, component);
  if (is_file(fake::kNoValues)) return 3;
  const Place place = place_of(part);
  if (variable == fake::kMaterial) {
    values[1] = fake::material(place.region_set);
    return 1;
  }
  if (variable == fake::kUnwritten) return 1;
  if (variable == fake::kBroken) {
    std::fputs("error : failed to seek fld file.\n", stderr);
    return -1;
  }
  if (variable == fake::kOnlyFirst && state.step > 0) return 2;
  State::Cached& cached = state.cached[variable == fake::kVelocity ? 1 : 0];
  if (cached.variable != variable) {
    cached = {variable, place.region_set, state.step};
    ++state.reads;
  }
  for (int i = 0; i < node_count(place); ++i) {
    values[i + 1] = variable == fake::kVelocity ? fake::velocity(cached.step, cached.region_set, i, component)
                                                : fake::pressure(cached.step, cached.region_set, i);
  }
  if (variable == fake::kHole) values[1] = state.undefined;
  return 1;
}

void USERD_exit_routine() {
  LOG();
  if (is_file(fake::kExitAsserts)) fail_assertion();
}
