// The module that the command line loads for pictures on Windows.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iterator>
#include <new>
#include <stdexcept>

#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/PictureModuleCalls.h"
#include "platform/win32/Win32Images.h"

namespace {

struct PictureHandle {
    tessalink::HENHMETAFILE handle;
    ~PictureHandle() { tessalink::DeleteEnhMetaFile(handle); }
};

std::vector<BYTE> render(const TessalinkPictureJob& job) {
    if (std::strcmp(job.format, "png") != 0) {
        throw std::runtime_error(
            "PDF with embedded fonts is made where the toolkit is; leave out "
            "--embed-fonts");
    }
    const PictureHandle picture = {
        tessalink::SetEnhMetaFileBits(static_cast<UINT>(job.size), job.metafile)};
    return tessalink::pngOf(job.width, job.height, job.dpi, [&](CDC& dc) {
        const CRect whole(0, 0, job.width, job.height);
        tessalink::PlayEnhMetaFile(&dc, picture.handle, whole);
    });
}

}  // namespace

extern "C" __declspec(dllexport) int tessalink_render_picture_1(const TessalinkPictureJob* job,
                                                                TessalinkPictureFile* file) {
    *file = {};
    try {
        const std::vector<BYTE> bytes = render(*job);
        file->bytes = static_cast<unsigned char*>(std::malloc(bytes.size()));
        if (file->bytes == nullptr) throw std::bad_alloc();
        std::memcpy(file->bytes, bytes.data(), bytes.size());
        file->size = bytes.size();
        return 1;
    } catch (const std::exception& error) {
        std::snprintf(file->message, std::size(file->message), "%s", error.what());
        return 0;
    }
}

extern "C" __declspec(dllexport) void tessalink_free_picture_1(TessalinkPictureFile* file) {
    std::free(file->bytes);
    *file = {};
}
