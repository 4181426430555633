#include "platform/win32/Win32Metafiles.h"

#include <utility>
#include <vector>

namespace tessalink {

::HENHMETAFILE toPlatformMetafile(HENHMETAFILE picture) {
    const std::span<const BYTE> bytes = bytesOf(picture);
    if (bytes.empty()) return nullptr;
    return ::SetEnhMetaFileBits(static_cast<UINT>(bytes.size()), bytes.data());
}

HENHMETAFILE fromPlatformMetafile(::HENHMETAFILE metafile) {
    const UINT size = ::GetEnhMetaFileBits(metafile, 0, nullptr);
    if (size == 0 || size > cMaxMetafile) return nullptr;
    std::vector<BYTE> bytes(size);
    if (::GetEnhMetaFileBits(metafile, size, bytes.data()) != size) return nullptr;
    return makeEnhMetaFile(std::move(bytes));
}

}  // namespace tessalink
