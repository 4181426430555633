#include "platform/graphics/detail/Deflate.h"

#ifdef TESSALINK_PDF_COMPRESSED
#include <zlib.h>

#include <new>
#endif

namespace tessalink::detail {

#ifdef TESSALINK_PDF_COMPRESSED

std::string deflated(std::string_view bytes) {
    uLongf size = ::compressBound(bytes.size());
    std::string result(size, '\0');
    const int state = ::compress2(reinterpret_cast<Bytef*>(result.data()), &size,
                                  reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(),
                                  Z_DEFAULT_COMPRESSION);
    if (state != Z_OK) throw std::bad_alloc();  // the only fault that is left
    result.resize(size);
    return result;
}

#else

std::string deflated(std::string_view bytes) {
    return std::string(bytes);
}

#endif

}  // namespace tessalink::detail
