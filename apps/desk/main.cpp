// The desk: keeps cases in a file, keys, scores and shows them.
//
//     tessalink-desk [FILE.cases]
//     tessalink-desk --make-sample FILE.cases
//     tessalink-desk --pictures FOLDER
#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QSettings>
#include <cstdio>
#include <cstring>

#include "apps/desk/windows/DeskLocale.h"
#include "apps/desk/windows/MainWindow.h"
#include "apps/desk/windows/Pictures.h"
#include "apps/desk/windows/SampleFile.h"
#include "platform/qt/UseQt.h"

namespace {

using namespace tessalink::desk;

constexpr int cUsageExit = 2;

struct Options {
    QString file;
    QString sample;
    QString pictures;
    QString instruments;
    QString language;
    bool isDark;
    bool endsAtOnce;  ///< when the window is painted
};

Options parse(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription("Keeps cases in a file, keys, scores and shows them.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption language("language", "de or en, in place of the system's.",
                                      "LANGUAGE");
    const QCommandLineOption dark("dark", "Dark colors, in place of the system's.");
    const QCommandLineOption sample("make-sample", "Makes a file of twelve invented cases.",
                                    "FILE");
    const QCommandLineOption pictures("pictures", "Makes a picture of each step of the work.",
                                      "FOLDER");
    const QCommandLineOption instruments(
        "instruments", "Where the questionnaires of the sample are.", "FOLDER",
        QApplication::applicationDirPath() + "/../share/tessalink/instruments");
    const QCommandLineOption first("first-window",
                                   "Ends when the window is painted: for measuring.");
    parser.addOptions({language, dark, sample, pictures, instruments, first});
    parser.addPositionalArgument("FILE.cases", "The file to open.", "[FILE.cases]");
    parser.process(application);
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1) parser.showHelp(cUsageExit);
    return {files.value(0),         parser.value(sample),
            parser.value(pictures), parser.value(instruments),
            parser.value(language), parser.isSet(dark),
            parser.isSet(first)};
}

int run(const Options& options) {
    if (!options.sample.isEmpty()) {
        makeSample(options.sample, options.instruments);
        return 0;
    }
    if (!options.pictures.isEmpty()) {
        makePictures(options.pictures, options.instruments);
        return 0;
    }
    QSettings settings;
    MainWindow window(settings);
    window.show();
    if (options.endsAtOnce) {
        QApplication::processEvents();
        return 0;
    }
    if (!options.file.isEmpty()) window.OpenFile(options.file);
    return QApplication::exec();
}

/// What makes files and pictures needs no screen.
bool needsScreen(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        for (const char* const option : {"--make-sample", "--pictures", "--help", "--version"}) {
            if (std::strncmp(argv[i], option, std::strlen(option)) == 0) return false;
        }
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (!needsScreen(argc, argv)) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setOrganizationName("Tessalink");
    QApplication::setApplicationName("tessalink-desk");
    QApplication::setApplicationVersion(TESSALINK_VERSION);
    QGuiApplication::setDesktopFileName("tessalink-desk");
    QApplication::setWindowIcon(QIcon::fromTheme("tessalink-desk"));
    tessalink::useQt();
    try {
        const Options options = parse(application);
        useLanguage(options.language);
        if (options.isDark) useDarkColors();
        return run(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessalink-desk: %s\n", error.what());
        return 1;
    }
}
