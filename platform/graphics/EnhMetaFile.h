#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/base/Export.h"
#include "platform/base/Types.h"
#include "platform/graphics/CDC.h"

/// Enhanced metafiles: pictures as records of what was drawn. A handle is owned by whoever got it
/// and is given back by DeleteEnhMetaFile; null is no picture. A picture never changes; several
/// threads may play it at a time, each into a context of its own.

namespace tessalink {

struct EnhMetaFile;
/// A picture, owned by whoever got it; null for none.
using HENHMETAFILE = EnhMetaFile*;

/// The largest metafile that is taken or recorded, in bytes: its hexadecimal text fits a CString.
inline constexpr std::uint64_t cMaxMetafile = (std::uint64_t{1} << 30) - 4096;

/// A handle for a metafile in memory, which is copied; null when it is damaged, larger than
/// cMaxMetafile, or has records that this library does not play. What memory that takes is within
/// four times the size of the metafile, and so it is for playing it.
TESSALINK_API HENHMETAFILE makeEnhMetaFile(std::vector<BYTE> bytes);

/// The bytes of a picture; empty for null.
TESSALINK_API std::span<const BYTE> bytesOf(HENHMETAFILE picture);

/// Reads a metafile from a file; null when it can't be read or is damaged.
TESSALINK_API HENHMETAFILE GetEnhMetaFile(const char* fileName);

/// The same from memory.
TESSALINK_API HENHMETAFILE SetEnhMetaFileBits(UINT size, const BYTE* bytes);

/// Copies the bytes of the picture when `size` holds them all; returns how many there are. With a
/// null buffer it only tells how many; 0 for null and when there is not enough room.
TESSALINK_API UINT GetEnhMetaFileBits(HENHMETAFILE picture, UINT size, BYTE* bytes);

/// Copies the header, up to `size` bytes; returns how many were copied, or without a buffer how
/// many there are.
TESSALINK_API UINT GetEnhMetaFileHeader(HENHMETAFILE picture, UINT size, ENHMETAHEADER* header);

/// A second handle of the picture. With a name it is also stored there, wholly or not at all; null
/// when that fails, or for null.
TESSALINK_API HENHMETAFILE CopyEnhMetaFile(HENHMETAFILE picture, const char* fileName);

/// Draws the picture so that its frame fills the rectangle; the context is as before afterwards.
/// Nonzero on success.
TESSALINK_API BOOL PlayEnhMetaFile(CDC* dc, HENHMETAFILE picture, const RECT* rect);

/// Gives the picture back; nonzero unless it is null.
TESSALINK_API BOOL DeleteEnhMetaFile(HENHMETAFILE picture);

}  // namespace tessalink

// Windows has the same names for pictures of its own: there ours are those of the namespace alone.
#ifndef _WIN32
using tessalink::CopyEnhMetaFile;
using tessalink::DeleteEnhMetaFile;
using tessalink::GetEnhMetaFile;
using tessalink::GetEnhMetaFileBits;
using tessalink::GetEnhMetaFileHeader;
using tessalink::HENHMETAFILE;
using tessalink::PlayEnhMetaFile;
using tessalink::SetEnhMetaFileBits;
#endif
