// What a call throws.
#pragma once

#include <string>

#include "support/errors.h"

// The message of the `Error` that `call` throws; "nothing was thrown" when it returns. Other errors go on.
template <class Error = fld::FLDReadException, class Call>
std::string thrown_message(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.getMessage();
  }
  return "nothing was thrown";
}
