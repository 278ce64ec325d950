// Opens a dataset through the installed reader and prints how many parts and nodes it has.
#include <exception>
#include <iostream>

#include "host/error.h"
#include "host/library.h"
#include "host/session.h"
#include "interface/userd_api.h"

int main(int argc, char** argv) {
  try {
    const host::Library library(READER);
    host::Session session(library, {.capture_diagnostics = true});
    session.open(argc > 1 ? argv[1] : "none.fld");
    const host::Part& whole = session.parts().back();
    std::cout << session.parts().size() << " parts, " << session.coordinates(whole.number).size()
              << " nodes, " << session.elements(whole.number).front().size() << " of the first shape\n";
    return 0;
  } catch (const host::Error& error) {
    std::cout << "error: " << error.reason() << '\n';
    return 1;
  }
}
