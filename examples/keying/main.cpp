// An answer sheet of 240 items and a list of forty raw scores, each beside a profile that follows
// every keystroke. F2 starts a second pass over the list that has the focus.
//
//     keying                       on the screen, where the toolkit was built in
//     keying --picture FILE.svg    keys some data without a screen and draws the window
#include "examples/keying/KeyingFrame.h"
#include "examples/windows/Show.h"
#include "platform/windows/HeadlessSystem.h"

namespace {

void keySomeData(keying::KeyingFrame& frame) {
    auto& keyboard = tessalink::HeadlessSystem::Default();
    frame.Numbers().SetFocus();
    for (const char* raw : {"12", "18", "25", "9", "", "16", "21", "14"}) {
        keyboard.Type(raw);
        keyboard.PressKey(VK_RETURN);
    }
    frame.Sheet().SetFocus();
    for (int item = 0; item < 170; ++item) {
        const char answer = static_cast<char>('1' + (item * 7 + item / 5) % 5);
        keyboard.Type({&answer, 1});
    }
}

}  // namespace

int main(int argc, char** argv) {
    const examples::Arguments arguments(argc, argv);
    examples::WindowProgram program(argc, argv, arguments);
    keying::KeyingFrame frame;
    frame.CreateFrame(CRect(0, 0, 1100, 720));
    if (!arguments.Picture().empty()) keySomeData(frame);
    return program.Run(frame);
}
