// A fuzz target: one function that takes any bytes and returns, or ends the process if the reader breaks a
// guarantee. A target is linked twice: with libFuzzer as fuzz_<name>, and with replay_main.cpp as
// replay_<name>, which replays saved inputs.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
