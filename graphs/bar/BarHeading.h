#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "graphs/bar/BarSection.h"
#include "platform/base/CString.h"

/// The section with free texts: titles of columns, of the graph, captions. Each text has a
/// position, alignment, color and font of its own; line feeds make lines. Texts of one font share
/// a record.
class TESSALINK_API BarHeading : public BarSection {
public:
    /// A font of the heading.
    struct FontInfo {
        int size = 0;      ///< the line height in design units
        CString typeface;  ///< as it was written first
        int index = 0;     ///< its place among the fonts
        int refCount = 0;  ///< how many texts have it
    };

    /// How a text lies at its position; together they mean the right and the bottom. Without any,
    /// the text starts there, at the top margin.
    static constexpr std::uint16_t cCenter = 1;
    static constexpr std::uint16_t cRight = 2;   ///< ends at its position
    static constexpr std::uint16_t cMiddle = 4;  ///< between the margins
    static constexpr std::uint16_t cBottom = 8;  ///< at the bottom margin

    /// No text.
    BarHeading(int left, int right, int top, int bottom) : BarSection(left, right, top, bottom) {}
    /// One text; see AddText.
    BarHeading(const char* text, double position, std::uint16_t flags, int fontSize, COLORREF color,
               const char* typeface, int left, int right, int top, int bottom);
    ~BarHeading() override;
    BarHeading(const BarHeading&) = delete;
    BarHeading& operator=(const BarHeading&) = delete;

    /// The highest text, and the margins.
    int GetDesignHeight() const override;
    void Draw(CDC* dc, double xScale, double yScale, const CRect& rect) override;

    /// Adds a text and returns its index. `position` is in design units from the left edge of the
    /// section, margin or not.
    virtual int AddText(const char* text, double position, std::uint16_t flags, int fontSize,
                        COLORREF color, const char* typeface);
    /// Removes all texts.
    virtual void Clear();
    /// An index out of range raises CInvalidArgException, here and below.
    virtual void RemoveTextAt(int index);
    /// Changes a text; its position, color and font stay.
    virtual void SetTextAt(int index, const char* text);
    /// The text at an index.
    CString GetText(int index) const;
    /// How many texts there are.
    int GetTextCount() const { return static_cast<int>(m_texts.size()); }

    /// How many different fonts the texts have.
    int GetFontCount() const { return static_cast<int>(m_fonts.size()); }
    /// A font, by its number from 0.
    const FontInfo& GetFont(int index) const;

protected:
    /// Prints one text, at a place and with the font, color and alignment that are set.
    virtual void print(CDC* dc, int x, int y, CString text);

private:
    struct Text {
        CString text;
        double position;
        std::uint32_t flags;
        COLORREF color;
        FontInfo* font;  ///< of m_fonts
    };

    /// The size and the typeface in lower case: texts of one look share a font.
    using FontLook = std::pair<int, CString>;

    FontInfo* add_font(int size, const CString& typeface);
    static FontLook look_of(int size, CString typeface);
    std::size_t checked(int index, std::size_t count) const;
    void draw_text(CDC& dc, const Text& text, double xScale, double yScale, const CRect& rect);

    std::vector<Text> m_texts;
    std::vector<std::unique_ptr<FontInfo>> m_fonts;
    std::map<FontLook, FontInfo*> m_fontByLook;
};
