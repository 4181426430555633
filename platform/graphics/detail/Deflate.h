#pragma once

#include <string>
#include <string_view>

namespace tessalink::detail {

/// Whether the library was built with zlib.
#ifdef TESSALINK_PDF_COMPRESSED
inline constexpr bool cCanDeflate = true;
#else
inline constexpr bool cCanDeflate = false;
#endif

/// The bytes as a zlib stream; as they are where the library was built without.
std::string deflated(std::string_view bytes);

}  // namespace tessalink::detail
