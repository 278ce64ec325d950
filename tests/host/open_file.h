// A dataset in a new directory, opened through the plug-in.
#pragma once

#include <filesystem>
#include <string>

#include "host/library.h"
#include "host/session.h"
#include "testkit/description.h"
#include "testkit/temporary_directory.h"

namespace host_test {

// The plug-in and a session with it that is quiet.
class Reader {
 public:
  Reader();
  host::Session& session() { return session_; }

  // The number of the first part, or variable, of that name.
  int part(const std::string& name);
  int variable(const std::string& name);

 private:
  host::Library library_;
  host::Session session_;
};

class OpenFile : public Reader {
 public:
  explicit OpenFile(const testkit::File& file);

 private:
  testkit::TemporaryDirectory directory_;
};

}  // namespace host_test
