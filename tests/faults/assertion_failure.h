// The reader's assertions as exceptions. A program or plug-in linked with assertion_failure.cpp instead of
// support/assertion.cpp continues after a failed assertion, so that one process can try many broken files.
#pragma once

#include <stdexcept>
#include <string>

namespace faults {

// A failed assertion. what() is "<module>: <function>: <expression>", without the line number, which changes
// with the source.
class AssertionFailure : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

}  // namespace faults
