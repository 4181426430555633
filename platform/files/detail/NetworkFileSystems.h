#pragma once

#include <cstdint>

namespace tessalink::detail {

// Whether statfs tells a file system of this type for files that other computers use, too.
bool isNetworkFileSystem(std::uint32_t type);

}  // namespace tessalink::detail
