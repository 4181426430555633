#include "examples/windows/Show.h"

#include <cstdio>
#include <exception>
#include <string_view>

#include "platform/graphics/SvgDevice.h"
#include "platform/windows/HeadlessSystem.h"

#ifdef TESSALINK_EXAMPLES_WITH_QT
#include <QApplication>

#include "platform/qt/UseQt.h"
#elif defined(TESSALINK_EXAMPLES_WITH_WIN32)
#include "platform/win32/UseWin32.h"
#endif

namespace examples {

Arguments::Arguments(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--picture" && i + 1 < argc) {
            m_picture = argv[++i];
        } else if (m_first.empty()) {
            m_first = argv[i];
        }
    }
}

#ifdef TESSALINK_EXAMPLES_WITH_QT

struct WindowProgram::Toolkit {
    Toolkit(int& argc, char** argv) : application(argc, argv) { tessalink::useQt(); }

    int Run(CWnd&) { return QApplication::exec(); }

    QApplication application;
};

#elif defined(TESSALINK_EXAMPLES_WITH_WIN32)

struct WindowProgram::Toolkit {
    Toolkit(int&, char**) {
        tessalink::scalePerMonitor();
        tessalink::useWin32();
    }

    int Run(CWnd& window) {
        tessalink::windowSystem().RunUntil([&] { return window.GetSafeHwnd() == nullptr; });
        return 0;
    }
};

#else

struct WindowProgram::Toolkit {
    Toolkit(int&, char**) {}

    int Run(CWnd&) {
        std::fprintf(stderr,
                     "This program was built without the toolkit: use --picture FILE.svg\n");
        return 2;
    }
};

#endif

WindowProgram::WindowProgram(int& argc, char** argv, const Arguments& arguments)
    : m_picture(arguments.Picture()) {
    if (m_picture.empty()) m_toolkit = std::make_unique<Toolkit>(argc, argv);
}

WindowProgram::~WindowProgram() = default;

int WindowProgram::Run(CWnd& window) {
    if (m_toolkit) return m_toolkit->Run(window);
    auto& system = tessalink::HeadlessSystem::Default();
    system.Pump();
    CRect client;
    window.GetClientRect(&client);
    tessalink::SvgDevice device({client.Width(), client.Height(), 96});
    system.PaintAll(window, device);
    return tessalink::savePicture(device.Finish(), m_picture.c_str()) != 0 ? 0 : 2;
}

}  // namespace examples
