#include "graphs/bar/BarHeading.h"

#include <algorithm>
#include <deque>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/GraphFont.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::toDevice;

BarHeading::BarHeading(const char* text, double position, std::uint16_t flags, int fontSize,
                       COLORREF color, const char* typeface, int left, int right, int top,
                       int bottom)
    : BarSection(left, right, top, bottom) {
    BarHeading::AddText(text, position, flags, fontSize, color, typeface);
}

BarHeading::~BarHeading() {
    BarHeading::Clear();
}

int BarHeading::GetDesignHeight() const {
    int highest = 0;
    for (const Text& text : m_texts) {
        highest = std::max(highest, KOVGraphUtilities::CountLines(text.text) * text.font->size);
    }
    return GetTopMargin() + GetBottomMargin() + highest;
}

int BarHeading::AddText(const char* text, double position, std::uint16_t flags, int fontSize,
                        COLORREF color, const char* typeface) {
    m_texts.push_back({text, position, flags, color, add_font(fontSize, typeface)});
    return GetTextCount() - 1;
}

BarHeading::FontInfo* BarHeading::add_font(int size, const CString& typeface) {
    const auto [known, isNew] = m_fontByLook.try_emplace(look_of(size, typeface));
    if (isNew) {
        m_fonts.push_back(std::make_unique<FontInfo>(FontInfo{size, typeface, GetFontCount(), 0}));
        known->second = m_fonts.back().get();
    }
    ++known->second->refCount;
    return known->second;
}

BarHeading::FontLook BarHeading::look_of(int size, CString typeface) {
    return {size, typeface.MakeLower()};
}

void BarHeading::Clear() {
    m_texts.clear();
    m_fontByLook.clear();
    m_fonts.clear();
}

void BarHeading::RemoveTextAt(int index) {
    const auto text = m_texts.begin() + static_cast<std::ptrdiff_t>(checked(index, m_texts.size()));
    FontInfo* const font = text->font;
    m_texts.erase(text);
    if (--font->refCount > 0) return;
    m_fontByLook.erase(look_of(font->size, font->typeface));
    const auto next = m_fonts.erase(m_fonts.begin() + font->index);
    std::for_each(next, m_fonts.end(), [](const auto& later) { --later->index; });
}

void BarHeading::SetTextAt(int index, const char* text) {
    m_texts[checked(index, m_texts.size())].text = text;
}

CString BarHeading::GetText(int index) const {
    return m_texts[checked(index, m_texts.size())].text;
}

const BarHeading::FontInfo& BarHeading::GetFont(int index) const {
    return *m_fonts[checked(index, m_fonts.size())];
}

std::size_t BarHeading::checked(int index, std::size_t count) const {
    if (index < 0 || static_cast<std::size_t>(index) >= count) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

void BarHeading::Draw(CDC* dc, double xScale, double yScale, const CRect& rect) {
    if (dc == nullptr) return;
    std::deque<CFont> fonts(m_fonts.size());
    const tessalink::RestoredState restored(*dc);
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        tessalink::createGraphFont(fonts[i], toDevice(m_fonts[i]->size * yScale),
                                   m_fonts[i]->typeface, OUT_TT_PRECIS, PROOF_QUALITY,
                                   tessalink::cTrueTypeVariable);
    }
    for (const Text& text : m_texts) {
        dc->SelectObject(&fonts[static_cast<std::size_t>(text.font->index)]);
        draw_text(*dc, text, xScale, yScale, rect);
    }
}

void BarHeading::draw_text(CDC& dc, const Text& text, double xScale, double yScale,
                           const CRect& rect) {
    const int topMargin = toDevice(GetTopMargin() * yScale);
    const int bottomMargin = toDevice(GetBottomMargin() * yScale);
    const int block = KOVGraphUtilities::CountLines(text.text) * toDevice(text.font->size * yScale);
    int y = rect.top + topMargin;
    if ((text.flags & cBottom) != 0) {
        y = rect.bottom - (block + bottomMargin);
    } else if ((text.flags & cMiddle) != 0) {
        y = tessalink::middleTop(rect, topMargin, bottomMargin, block);
    }
    dc.SetTextColor(text.color);
    dc.SetTextAlign((text.flags & cRight) != 0    ? TA_RIGHT
                    : (text.flags & cCenter) != 0 ? TA_CENTER
                                                  : TA_LEFT);
    print(&dc, rect.left + toDevice(text.position * xScale), y, text.text);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts override this signature
void BarHeading::print(CDC* dc, int x, int y, CString text) {
    KOVGraphUtilities::PrintMultipleLines(dc, x, y, text);
}
