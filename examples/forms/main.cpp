// A form for demographic data, with what it tells its parent.
//
//     forms [column|grid|flow]            on the screen, where the toolkit was built in
//     forms --picture FILE.svg [LAYOUT]   keys some data without a screen and draws the window
#include <cstring>
#include <string_view>

#include "examples/forms/FormFrame.h"
#include "examples/windows/Show.h"
#include "platform/windows/HeadlessSystem.h"

namespace {

forms::Layout layoutOf(std::string_view name) {
    if (name == "grid") return forms::Layout::Grid;
    return name == "flow" ? forms::Layout::Flow : forms::Layout::Column;
}

void keySomeData(forms::FormFrame& frame) {
    auto& keyboard = tessalink::HeadlessSystem::Default();
    frame.Form().SetFocus();
    for (const char* text : {"Anna Berg", "14.03.1987", "25.11.2026", "1405"}) {
        keyboard.Type(text);
        keyboard.PressKey(VK_RETURN);
    }
    keyboard.Type("f");
    keyboard.Type("45");  // refused
    keyboard.PressKey(VK_RETURN);
    keyboard.Type("12.5");
    keyboard.PressKey(VK_RETURN);
    keyboard.Type("2400.50");
    keyboard.PressKey(VK_RETURN);
    keyboard.Type("eg");
}

}  // namespace

int main(int argc, char** argv) {
    const examples::Arguments arguments(argc, argv);
    examples::WindowProgram program(argc, argv, arguments);
    forms::FormFrame frame(layoutOf(arguments.First()));
    frame.CreateFrame(CRect(0, 0, 760, 560));
    if (!arguments.Picture().empty()) keySomeData(frame);
    return program.Run(frame);
}
