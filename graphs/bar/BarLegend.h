#pragma once

#include <cstdint>
#include <memory>

#include "graphs/bar/BarScale.h"
#include "graphs/bar/BarSection.h"
#include "platform/base/CString.h"

/// A section that lines up with a scale: descriptions in the columns of the scale's descriptions,
/// and a body under its box.
class TESSALINK_API BarLegend : public BarSection {
public:
    /// How a description lies in its column: to the left unless centered or right, at the top
    /// unless in the middle or at the bottom, of which the middle wins.
    static constexpr std::uint16_t cCenter = 1;
    static constexpr std::uint16_t cRight = 2;
    static constexpr std::uint16_t cMiddle = 4;
    static constexpr std::uint16_t cBottom = 8;

    /// The scale is not owned. A legend whose scale is gone, or null, draws nothing.
    BarLegend(BarScale* scale, const char* leftDesc, const char* rightDesc, COLORREF descColor,
              int leftMargin, int rightMargin, int topMargin, int bottomMargin, int descFontSize,
              const char* descTypeface);

    /// The body or the lines of the higher description, and the margins.
    int GetDesignHeight() const override;
    void Draw(CDC* dc, double xScale, double yScale, const CRect& rect) override;

    CString GetLeftDesc() const { return m_leftDesc; }
    void SetLeftDesc(const char* text);
    CString GetRightDesc() const { return m_rightDesc; }
    void SetRightDesc(const char* text);
    COLORREF GetDescColor() const { return m_descColor; }
    void SetDescColor(COLORREF color) { m_descColor = color; }
    int GetDescFontSize() const { return m_descFontSize; }
    void SetDescFontSize(int size) { m_descFontSize = size; }
    CString GetDescTypeface() const { return m_descTypeface; }
    void SetDescTypeface(const char* typeface) { m_descTypeface = typeface; }
    std::uint16_t GetLeftDescAlignment() const { return m_leftAlignment; }
    void SetLeftDescAlignment(std::uint16_t alignment) { m_leftAlignment = alignment; }
    std::uint16_t GetRightDescAlignment() const { return m_rightAlignment; }
    void SetRightDescAlignment(std::uint16_t alignment) { m_rightAlignment = alignment; }
    /// Those of the scale; 0 without one.
    int GetLeftTextWidth() const;
    int GetRightTextWidth() const;
    /// Null when it is gone.
    BarScale* GetScale() const { return m_scaleLife.expired() ? nullptr : m_scale; }

protected:
    virtual void create_font(int height, CFont& font);
    /// The height of the body in design units.
    virtual int get_design_body_height() const = 0;
    virtual void draw_left_desc(CDC* dc, double xScale, const CRect& column);
    virtual void draw_right_desc(CDC* dc, double xScale, const CRect& column);
    virtual void draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) = 0;
    virtual void print_multi_lines(CDC* dc, int x, int y, CString text);
    virtual void create_body_font(int height, CFont& font) = 0;

private:
    void draw_descriptions(CDC& dc, double xScale, double yScale, const CRect& rect,
                           const CRect& body);

    BarScale* m_scale;
    std::weak_ptr<const bool> m_scaleLife;
    CString m_leftDesc;
    CString m_rightDesc;
    int m_leftDescLines = 0;
    int m_rightDescLines = 0;
    COLORREF m_descColor;
    int m_descFontSize;
    CString m_descTypeface;
    std::uint16_t m_leftAlignment = cRight | cMiddle;
    std::uint16_t m_rightAlignment = cMiddle;
};
