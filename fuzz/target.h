// A fuzz target: one function that takes any bytes and comes back, or ends the process when the reader did
// something that it promises not to do. A target is linked twice: with libFuzzer as fuzz_<name>, and with
// replay_main.cpp as replay_<name>, which goes through files that are kept.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
