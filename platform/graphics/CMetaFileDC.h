#pragma once

#include <memory>

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/MetafileDevice.h"

namespace tessalink {
class WholeFile;
}

/// A device context that records an enhanced metafile.
class TESSALINK_API CMetaFileDC : public CDC {
    DECLARE_DYNAMIC(CMetaFileDC)

public:
    CMetaFileDC();
    /// Drops a recording that was not closed.
    ~CMetaFileDC() override;

    /// Starts recording; a recording that is under way is dropped. `reference` is what the picture
    /// is measured by: its device must stay until the recording is closed; null stands for the
    /// fixed screen. With a file name the picture is stored there when the recording is closed,
    /// wholly or not at all. The frame is in hundredths of a millimeter, null for that of what is
    /// drawn. The description is of the form "application\0picture\0" or null. Returns nonzero, or
    /// 0 when the file can't be made or the reference has a size or resolution below 1.
    BOOL CreateEnhanced(CDC* reference, const char* fileName, const RECT* frame,
                        const char* description);

    /// Ends the recording and returns the picture, which the caller then owns; null when there was
    /// none, when it became too large or could not be stored.
    tessalink::HENHMETAFILE CloseEnhanced();

    /// Drops a recording that was not closed.
    BOOL DeleteDC() override;

private:
    std::unique_ptr<tessalink::MetafileDevice> m_recording;
    std::unique_ptr<tessalink::WholeFile> m_file;
};
