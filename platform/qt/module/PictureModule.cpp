// The module that the command line loads for pictures.
#include <QGuiApplication>
#include <clocale>
#include <cstring>
#include <optional>
#include <vector>

#include "platform/graphics/PictureModuleAnswers.h"
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

std::vector<BYTE> render(const TessalinkPictureJob& job) {
    const Toolkit toolkit;
    const tessalink::JobPicture picture(job);
    const auto draw = [&](CDC& dc) { picture.Draw(dc); };
    const bool isPng = std::strcmp(job.format, "png") == 0;
    return (isPng ? tessalink::pngOf : tessalink::pdfOf)(job.width, job.height, job.dpi, draw);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int tessalink_render_picture_1(
    const TessalinkPictureJob* job, TessalinkPictureFile* file) {
    return tessalink::answerJob(render, *job, *file);
}

extern "C" __attribute__((visibility("default"))) void tessalink_free_picture_1(
    TessalinkPictureFile* file) {
    tessalink::freeJobFile(*file);
}
