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
    static constexpr std::uint16_t cRight = 2;   ///< to the right of its column
    static constexpr std::uint16_t cMiddle = 4;  ///< in the middle of its height
    static constexpr std::uint16_t cBottom = 8;  ///< at the bottom

    /// The scale is not owned. A legend whose scale is gone, or null, draws nothing.
    BarLegend(BarScale* scale, const char* leftDesc, const char* rightDesc, COLORREF descColor,
              int leftMargin, int rightMargin, int topMargin, int bottomMargin, int descFontSize,
              const char* descTypeface);

    /// The body or the lines of the higher description, and the margins.
    int GetDesignHeight() const override;
    void Draw(CDC* dc, double xScale, double yScale, const CRect& rect) override;

    /// The text left of the body.
    CString GetLeftDesc() const { return m_leftDesc; }
    /// Line feeds make lines.
    void SetLeftDesc(const char* text);
    /// The text right of the body.
    CString GetRightDesc() const { return m_rightDesc; }
    /// Line feeds make lines.
    void SetRightDesc(const char* text);
    /// The color of both descriptions.
    COLORREF GetDescColor() const { return m_descColor; }
    /// Changes the color of both descriptions.
    void SetDescColor(COLORREF color) { m_descColor = color; }
    /// The line height of both descriptions, in design units.
    int GetDescFontSize() const { return m_descFontSize; }
    /// Changes the line height of both descriptions, in design units.
    void SetDescFontSize(int size) { m_descFontSize = size; }
    /// The face of both descriptions.
    CString GetDescTypeface() const { return m_descTypeface; }
    /// Changes the face of both descriptions.
    void SetDescTypeface(const char* typeface) { m_descTypeface = typeface; }
    /// How the left description lies, see above; at first to the right and in the middle.
    std::uint16_t GetLeftDescAlignment() const { return m_leftAlignment; }
    /// Changes how the left description lies.
    void SetLeftDescAlignment(std::uint16_t alignment) { m_leftAlignment = alignment; }
    /// How the right description lies, see above; at first to the left and in the middle.
    std::uint16_t GetRightDescAlignment() const { return m_rightAlignment; }
    /// Changes how the right description lies.
    void SetRightDescAlignment(std::uint16_t alignment) { m_rightAlignment = alignment; }
    /// Those of the scale; 0 without one.
    int GetLeftTextWidth() const;
    /// The width of the scale's right column in design units; 0 without a scale.
    int GetRightTextWidth() const;
    /// Null when it is gone.
    BarScale* GetScale() const { return m_scaleLife.expired() ? nullptr : m_scale; }

protected:
    /// Creates the font of the descriptions, as high as told, in device units.
    virtual void create_font(int height, CFont& font);
    /// The height of the body in design units.
    virtual int get_design_body_height() const = 0;
    /// Draws the left description into its column.
    virtual void draw_left_desc(CDC* dc, double xScale, const CRect& column);
    /// Draws the right description into its column.
    virtual void draw_right_desc(CDC* dc, double xScale, const CRect& column);
    /// Draws the body; `body` is its place, under the box of the scale.
    virtual void draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) = 0;
    /// Prints a text of several lines, with the font and alignment that are set.
    virtual void print_multi_lines(CDC* dc, int x, int y, CString text);
    /// Creates the font of the body, as high as told, in device units.
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
