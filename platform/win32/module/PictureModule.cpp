// The module that the command line loads for pictures on Windows.
#include <cstring>
#include <stdexcept>
#include <vector>

#include "platform/graphics/PictureModuleAnswers.h"
#include "platform/win32/Win32Images.h"

namespace {

std::vector<BYTE> render(const TessalinkPictureJob& job) {
    if (std::strcmp(job.format, "png") != 0) {
        throw std::runtime_error(
            "PDF with embedded fonts is made where the toolkit is; leave out "
            "--embed-fonts");
    }
    const tessalink::JobPicture picture(job);
    return tessalink::pngOf(job.width, job.height, job.dpi, [&](CDC& dc) { picture.Draw(dc); });
}

}  // namespace

extern "C" __declspec(dllexport) int tessalink_render_picture_1(const TessalinkPictureJob* job,
                                                                TessalinkPictureFile* file) {
    return tessalink::answerJob(render, *job, *file);
}

extern "C" __declspec(dllexport) void tessalink_free_picture_1(TessalinkPictureFile* file) {
    tessalink::freeJobFile(*file);
}
