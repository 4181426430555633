#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iterator>
#include <new>
#include <vector>

#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/PictureModuleCalls.h"

namespace tessalink {

/// The picture of a job while it is drawn.
class JobPicture {
public:
    /// Reads the metafile of the job.
    explicit JobPicture(const TessalinkPictureJob& job)
        : m_handle(SetEnhMetaFileBits(static_cast<UINT>(job.size), job.metafile)),
          m_whole(0, 0, job.width, job.height) {}
    ~JobPicture() { DeleteEnhMetaFile(m_handle); }
    JobPicture(const JobPicture&) = delete;
    JobPicture& operator=(const JobPicture&) = delete;

    /// Draws the picture so that its frame fills the size of the job.
    void Draw(CDC& dc) const { PlayEnhMetaFile(&dc, m_handle, m_whole); }

private:
    HENHMETAFILE m_handle;
    CRect m_whole;
};

/// Hands over what `render` makes of the job, in memory of its own; or why there is nothing.
inline int answerJob(std::vector<BYTE> (*render)(const TessalinkPictureJob&),
                     const TessalinkPictureJob& job, TessalinkPictureFile& file) {
    file = {};
    try {
        const std::vector<BYTE> bytes = render(job);
        file.bytes = static_cast<unsigned char*>(std::malloc(bytes.size()));
        if (file.bytes == nullptr) throw std::bad_alloc();
        std::memcpy(file.bytes, bytes.data(), bytes.size());
        file.size = bytes.size();
        return 1;
    } catch (const std::exception& error) {
        std::snprintf(file.message, std::size(file.message), "%s", error.what());
        return 0;
    }
}

/// Gives the memory of answerJob back.
inline void freeJobFile(TessalinkPictureFile& file) {
    std::free(file.bytes);
    file = {};
}

}  // namespace tessalink
