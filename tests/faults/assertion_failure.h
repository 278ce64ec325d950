// The reader's assertions as exceptions: a program or plug-in that is linked with assertion_failure.cpp in
// the place of support/assertion.cpp goes on after a broken invariant, so that one process can try many
// broken files.
#pragma once

#include <stdexcept>
#include <string>

namespace faults {

// A failed assertion. what() is "<module>: <function>: <expression>", which leaves out the line so that it
// names the assertion and not the state of the source.
class AssertionFailure : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

}  // namespace faults
