#pragma once

#include <cstdint>

/// The integer names that host programs of the classic desktop write. Each is as wide as it was
/// there, whatever `long` is on this system. On Windows they are the platform's.

#ifdef _WIN32
#include "platform/base/windows/PlatformNames.h"
#else
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using LONG = std::int32_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using BOOL = int;
using LPCSTR = const char*;
using LPSTR = char*;
#endif

namespace tessalink {
struct PositionTag;
}

/// A place in a collection while it is walked; null at the end. Only the collection that handed it
/// out can use it.
using POSITION = tessalink::PositionTag*;
