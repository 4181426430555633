#pragma once

#include <span>

#include "platform/graphics/EnhMetaFile.h"

namespace tessalink::detail {

// Whether the bytes are a whole metafile of records that are known here, each of them as long as
// what it holds, with objects that were created before they are used.
bool isPlayable(std::span<const BYTE> bytes);

// The header of such a metafile.
ENHMETAHEADER headerOf(std::span<const BYTE> bytes);

// Draws the picture so that its frame fills the rectangle. False when the metafile turned out to be
// damaged, or the context has no device.
bool play(std::span<const BYTE> bytes, CDC& dc, const RECT& rect);

}  // namespace tessalink::detail
