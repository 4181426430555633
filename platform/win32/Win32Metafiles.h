#pragma once

#include "platform/graphics/EnhMetaFile.h"

/// Pictures of the library and enhanced metafiles of the platform, handed over as handles.
namespace tessalink {

/// A picture as a metafile of the platform, for the clipboard or its own calls; the caller gives it
/// back by ::DeleteEnhMetaFile. Null for null, or when the platform has no memory for it.
TESSALINK_API ::HENHMETAFILE toPlatformMetafile(HENHMETAFILE picture);

/// A metafile of the platform, which stays the caller's, as a picture; null when it is none, larger
/// than cMaxMetafile, or has records that this library does not play.
TESSALINK_API HENHMETAFILE fromPlatformMetafile(::HENHMETAFILE metafile);

}  // namespace tessalink
