// Identity and options: names, versions, toggles, and the exchange of the undefined value.
#include <cstdio>
#include <cstring>

#include "interface/userd_api.h"
#include "reader/globals.h"

namespace fld {

namespace {

constexpr char kReaderName[] = "Vantrel FLD";
constexpr char kRelease[] = "1.02";
constexpr char kReleaseDate[] = "Nov 28, 2016";
constexpr char kApiVersion[] = "2.04";
constexpr char kDescription[] =
    "Vantrel FLD file (.fld)\nUser-defined reader (release version %s, %s).\n(Using API Version %s)";
constexpr char kFileButtonLabel[] = "Set file";
constexpr char kSimplifyTitle[] = "Simplify reading sequential FLD files";
constexpr char kGroupTitle[] = "Make group of parts";

// Sizes of the host's buffers.
constexpr size_t kIdentityText = 20;
constexpr size_t kDescriptionText = 255;
constexpr size_t kToggleTitle = 40;

constexpr int kUndefinedValueRequest = 0x40000000;

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_name_of_reader(char* name, int* two_fields) {
  strncpy(name, kReaderName, kIdentityText);
  *two_fields = 0;
  return 1;
}

int USERD_get_reader_release(char* release) {
  strncpy(release, kRelease, kIdentityText);
  return 1;
}

int USERD_get_reader_version(char* version) {
  strncpy(version, kApiVersion, kIdentityText);
  return 1;
}

int USERD_get_reader_descrip(char* description) {
  char text[kDescriptionText];
  snprintf(text, sizeof text, kDescription, kRelease, kReleaseDate, kApiVersion);
  strncpy(description, text, kDescriptionText);
  return 1;
}

// Returns label1, like strcpy.
char* USERD_set_filename_button_labels(char* label1, char* /*label2*/) {
  return static_cast<char*>(memcpy(label1, kFileButtonLabel, sizeof kFileButtonLabel));
}

void USERD_set_server_number(int server, int total) {
  Server_Number = server;
  Tot_Servers = total;
}

int USERD_get_extra_gui_numbers(int* num_toggles, int* num_pulldowns, int* num_fields) {
  *num_toggles = 2;
  *num_pulldowns = 0;
  *num_fields = 0;
  return 0;
}

int USERD_get_extra_gui_defaults(char** toggle_titles, int* toggle_defaults, char** /*pulldown_titles*/,
                                 int* /*pulldown_counts*/, int* /*pulldown_defaults*/,
                                 char*** /*pulldown_items*/, char** /*field_titles*/,
                                 char** /*field_texts*/) {
  strncpy(toggle_titles[0], kSimplifyTitle, kToggleTitle);
  strncpy(toggle_titles[1], kGroupTitle, kToggleTitle);
  toggle_defaults[0] = 0;
  toggle_defaults[1] = 1;
  return 1;
}

void USERD_set_extra_gui_data(int* toggles, int* /*pulldowns*/, char** /*field_texts*/) {
  Num_toggle = 2;
  Toggle_user[0] = toggles[0];
  Toggle_user[1] = toggles[1];
}

int USERD_get_extra_data(int* request, int* /*a2*/, int* count, int* /*a4*/, void* /*a5*/, float* values) {
  if (*request == 0) {  // the host asks what the reader wants: one float
    *request = kUndefinedValueRequest;
    if (values == nullptr) *count = 1;
  } else {  // the host delivers it
    *request = 0;
    if (values != nullptr) Ens_Undef_value = values[0];
  }
  return 1;
}
