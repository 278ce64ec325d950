// Whether the tests run under qemu-user, for those that ask the kernel for what it does not pass on.
#pragma once

#ifdef FLD_EMULATED
inline constexpr bool kUnderEmulator = true;
#else
inline constexpr bool kUnderEmulator = false;
#endif

// Why names in Shift_JIS are not tested there.
inline constexpr const char* kWithoutConverters = "Debian's cross C libraries convert no texts";
