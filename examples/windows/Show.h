#pragma once

#include <memory>
#include <string>

#include "platform/windows/CWnd.h"

namespace examples {

/// The arguments of a program with a window: "--picture FILE.svg" and others.
class Arguments {
public:
    Arguments(int argc, char** argv);

    const std::string& Picture() const { return m_picture; }
    /// The first other argument; empty without one.
    const std::string& First() const { return m_first; }

private:
    std::string m_picture;
    std::string m_first;
};

/// Makes windows appear: on the screen, by the toolkit or those of Windows, or in a picture.
class WindowProgram {
public:
    WindowProgram(int& argc, char** argv, const Arguments& arguments);
    ~WindowProgram();
    WindowProgram(const WindowProgram&) = delete;
    WindowProgram& operator=(const WindowProgram&) = delete;

    /// Shows a window until it is closed, or draws it into the picture. Returns the exit code.
    int Run(CWnd& window);

private:
    struct Toolkit;

    std::string m_picture;
    std::unique_ptr<Toolkit> m_toolkit;
};

}  // namespace examples
