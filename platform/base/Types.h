#pragma once

#include <cstdint>

/// The integer names that host programs of the classic desktop write. Each is as wide as it was
/// there, whatever `long` is on this system. On Windows they are the platform's.

#ifdef _WIN32
#include "platform/base/windows/PlatformNames.h"
#else
using BYTE = std::uint8_t;    ///< 8 bits without sign
using WORD = std::uint16_t;   ///< 16 bits without sign
using LONG = std::int32_t;    ///< 32 bits with sign
using DWORD = std::uint32_t;  ///< 32 bits without sign
using UINT = unsigned int;    ///< 32 bits without sign
using BOOL = int;             ///< 0 or nonzero
using LPCSTR = const char*;   ///< a text that ends in a NUL
using LPSTR = char*;          ///< one that may be changed
#endif

namespace tessalink {
struct PositionTag;
}

/// A place in a collection while it is walked; null at the end. Only the collection that handed it
/// out can use it.
using POSITION = tessalink::PositionTag*;
