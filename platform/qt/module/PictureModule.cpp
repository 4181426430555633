// The module that the command line loads for pictures.
#include <QGuiApplication>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iterator>
#include <new>
#include <optional>

#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/PictureModuleCalls.h"
#include "platform/qt/QtImages.h"

namespace {

// The toolkit while it draws in memory, where there may be no screen; it says nothing.
class Toolkit {
public:
    Toolkit() {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        m_application.emplace(m_count, m_arguments);
        std::setlocale(LC_NUMERIC, "C");
    }

private:
    char m_name[10] = "tessalink";
    char m_option[10] = "-platform";
    char m_platform[10] = "offscreen";
    char* m_arguments[4] = {m_name, m_option, m_platform, nullptr};
    int m_count = 3;
    std::optional<QGuiApplication> m_application;
};

struct PictureHandle {
    HENHMETAFILE handle;
    ~PictureHandle() { DeleteEnhMetaFile(handle); }
};

std::vector<BYTE> render(const TessalinkPictureJob& job) {
    const Toolkit toolkit;
    const PictureHandle picture = {SetEnhMetaFileBits(static_cast<UINT>(job.size), job.metafile)};
    const auto draw = [&](CDC& dc) {
        const CRect whole(0, 0, job.width, job.height);
        PlayEnhMetaFile(&dc, picture.handle, whole);
    };
    const bool isPng = std::strcmp(job.format, "png") == 0;
    return (isPng ? tessalink::pngOf : tessalink::pdfOf)(job.width, job.height, job.dpi, draw);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int tessalink_render_picture_1(
    const TessalinkPictureJob* job, TessalinkPictureFile* file) {
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

extern "C" __attribute__((visibility("default"))) void tessalink_free_picture_1(
    TessalinkPictureFile* file) {
    std::free(file->bytes);
    *file = {};
}
