#pragma once

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "platform/qt/UseQt.h"

/// Keys as the toolkit's own events, on its platform without a screen.
namespace tessalink {

/// Everything that follows, painting included.
inline void settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

/// A key to whatever has the focus, and all that follows.
inline void press(int key, const QString& text) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QWidget* const focused = QApplication::focusWidget();
        if (focused == nullptr) return;
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(focused, &event);
    }
    settle();
}

inline void pressCharacter(char character) {
    press(character, QString(QLatin1Char(character)));
}

/// The main of a program of benchmarks with windows.
inline int runToolkitBenchmarks(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    useQt();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

}  // namespace tessalink
