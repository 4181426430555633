#include "platform/graphics/EnhMetaFile.h"

#include <algorithm>
#include <memory>
#include <new>

#include "platform/files/CFile.h"
#include "platform/files/CFileException.h"
#include "platform/files/WholeFile.h"
#include "platform/graphics/detail/MetafilePlayer.h"

namespace tessalink {

struct EnhMetaFile {
    std::shared_ptr<const std::vector<BYTE>> bytes;
};

namespace {

std::vector<BYTE> readFile(const char* name) {
    CFile file(name, CFile::modeRead | CFile::shareDenyWrite);
    const std::uint64_t length = file.GetLength();
    if (length > cMaxMetafile) return {};
    std::vector<BYTE> bytes(static_cast<std::size_t>(length));
    bytes.resize(file.Read(bytes.data(), bytes.size()));
    return bytes;
}

}  // namespace

HENHMETAFILE makeEnhMetaFile(std::vector<BYTE> bytes) {
    if (bytes.size() > cMaxMetafile || !detail::isPlayable(bytes)) return nullptr;
    return new EnhMetaFile{std::make_shared<const std::vector<BYTE>>(std::move(bytes))};
}

std::span<const BYTE> bytesOf(HENHMETAFILE picture) {
    return picture != nullptr ? std::span<const BYTE>(*picture->bytes) : std::span<const BYTE>();
}

HENHMETAFILE GetEnhMetaFile(const char* fileName) {
    if (fileName == nullptr) return nullptr;
    try {
        return makeEnhMetaFile(readFile(fileName));
    } catch (const CFileException&) {
        return nullptr;
    }
}

HENHMETAFILE SetEnhMetaFileBits(UINT size, const BYTE* bytes) {
    return bytes != nullptr ? makeEnhMetaFile({bytes, bytes + size}) : nullptr;
}

UINT GetEnhMetaFileBits(HENHMETAFILE picture, UINT size, BYTE* bytes) {
    const auto all = bytesOf(picture);
    if (bytes == nullptr) return static_cast<UINT>(all.size());
    if (size < all.size()) return 0;
    std::copy(all.begin(), all.end(), bytes);
    return static_cast<UINT>(all.size());
}

UINT GetEnhMetaFileHeader(HENHMETAFILE picture, UINT size, ENHMETAHEADER* header) {
    if (picture == nullptr) return 0;
    if (header == nullptr) return sizeof(ENHMETAHEADER);
    const ENHMETAHEADER whole = detail::headerOf(bytesOf(picture));
    const std::size_t count = std::min<std::size_t>(size, sizeof(whole));
    std::memcpy(static_cast<void*>(header), &whole, count);
    return static_cast<UINT>(count);
}

HENHMETAFILE CopyEnhMetaFile(HENHMETAFILE picture, const char* fileName) {
    if (picture == nullptr) return nullptr;
    if (fileName != nullptr) {
        try {
            WholeFile file(fileName);
            const auto bytes = bytesOf(picture);
            file.Write(bytes.data(), bytes.size());
            file.Commit();
        } catch (const CFileException&) {
            return nullptr;
        }
    }
    return new EnhMetaFile(*picture);
}

BOOL PlayEnhMetaFile(CDC* dc, HENHMETAFILE picture, const RECT* rect) {
    if (dc == nullptr || picture == nullptr || rect == nullptr) return 0;
    return detail::play(bytesOf(picture), *dc, *rect);
}

BOOL DeleteEnhMetaFile(HENHMETAFILE picture) {
    delete picture;
    return picture != nullptr;
}

}  // namespace tessalink
