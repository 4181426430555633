#pragma once

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/graphics/CDC.h"
#include "platform/graphics/FailingDevice.h"
#include "platform/graphics/RecordingDevice.h"

namespace tessalink::test {

/// A context with everything changed, and whether it still has that.
class MarkedContext {
public:
    explicit MarkedContext(DrawingDevice& device) : dc(device) {
        m_font.CreateFont(31, 0, 0, 0, FW_NORMAL, 1, 0, 0, 0, 0, 0, 0, 0, "Arial");
        dc.SelectObject(&m_pen);
        dc.SelectObject(&m_brush);
        dc.SelectObject(&m_font);
        dc.SetTextColor(0x111111);
        dc.SetBkColor(0x222222);
        dc.SetBkMode(TRANSPARENT);
        dc.SetTextAlign(TA_CENTER | TA_BASELINE);
    }
    bool IsUnchanged() const {
        return dc.GetCurrentPen() == &m_pen && dc.GetCurrentBrush() == &m_brush &&
               dc.GetCurrentFont() == &m_font && dc.GetTextColor() == 0x111111 &&
               dc.GetBkColor() == 0x222222 && dc.GetBkMode() == TRANSPARENT &&
               dc.GetTextAlign() == (TA_CENTER | TA_BASELINE);
    }

private:
    CPen m_pen{PS_SOLID, 7, 0x333333};
    CBrush m_brush{0x444444};
    CFont m_font;

public:
    CDC dc;
};

/// One step of a drawing, for as long as it lives: its name is noted, and at its end the context
/// has to have everything again that it had before.
class DrawingStep {
public:
    DrawingStep(std::vector<std::string>& steps, CDC* dc, std::string name)
        : m_dc(*dc), m_before(state_of(*dc)), m_name(name) {
        steps.push_back(std::move(name));
    }
    ~DrawingStep() { EXPECT_TRUE(state_of(m_dc) == m_before) << m_name; }
    DrawingStep(const DrawingStep&) = delete;
    DrawingStep& operator=(const DrawingStep&) = delete;

private:
    using State = std::tuple<CPen*, CBrush*, CFont*, COLORREF, COLORREF, int, UINT>;
    static State state_of(const CDC& dc) {
        return State(dc.GetCurrentPen(), dc.GetCurrentBrush(), dc.GetCurrentFont(),
                     dc.GetTextColor(), dc.GetBkColor(), dc.GetBkMode(), dc.GetTextAlign());
    }

    CDC& m_dc;
    State m_before;
    std::string m_name;
};

/// Whatever primitive of `draw(dc)` fails, the state is back and the same is drawn afterwards.
template <class Draw>
void expectStateRestored(Draw draw) {
    RecordingDevice device;
    MarkedContext marked(device);
    draw(marked.dc);
    EXPECT_TRUE(marked.IsUnchanged());
    const std::vector<std::string> whole = device.Lines();
    for (std::size_t failing = 1; failing <= whole.size(); ++failing) {
        FailingDevice failingDevice(device, failing);
        MarkedContext broken(failingDevice);
        EXPECT_THROW(draw(broken.dc), FailingDevice::Fault);
        ASSERT_TRUE(broken.IsUnchanged()) << "primitive " << failing;
    }
    device.Clear();
    draw(marked.dc);
    EXPECT_EQ(device.Lines(), whole);
}

}  // namespace tessalink::test
