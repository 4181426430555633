#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "graphs/profile/BandInfo.h"
#include "graphs/profile/ProfileInfo.h"
#include "graphs/profile/ScoreAxis.h"
#include "platform/graphics/CDC.h"

namespace tessalink {

/// Where the names of the profiles stand.
enum class ProfileLegend {
    None = 0,
    Inside = 1,  ///< in the plot, at the place that SetLegendPosition names
    Below = 2,   ///< under everything, in rows that take room from the plot
};

/// A range of scores that is shaded: the same for all scales, or one for each.
struct ProfileRegion {
    std::vector<double> lows;   ///< the lower limit, one for each scale or one for all
    std::vector<double> highs;  ///< the upper limit, one for each scale or one for all
    COLORREF color = 0;         ///< of the area
    CString label;              ///< may be empty
    bool isConstant = true;     ///< whether one pair of limits holds for all scales
};

/// What upright and horizontal profile graphs have in common: profiles, a range of scores, bands,
/// reference lines and a legend, scaled from a design size to any rectangle. It is used through
/// ProfileGraph, ProfileGraph2, ProfileGraph3 and HorProfileGraph.
///
/// Scales are numbered from 1. A score that equals the missing value, is not a number, or has no
/// place in the profile's array is no score. All arrays that are handed over come from an array new
/// and are deleted by the graph.
class TESSALINK_API BasicProfileGraph {
public:
    /// A profile of the graph.
    using ProfileInfo = tessalink::ProfileInfo;

    /// The score that stands for none unless another is set.
    static constexpr double cDefaultMissingValue = -999999999.0;
    /// The size of symbols, in percent of what it is designed to be.
    static constexpr int cFullPointScale = 100;

    virtual ~BasicProfileGraph();
    BasicProfileGraph(const BasicProfileGraph&) = delete;
    BasicProfileGraph& operator=(const BasicProfileGraph&) = delete;

    /// Draws the whole graph. The context's colors, alignment, pen, brush and font are as before
    /// afterwards, also after an exception. A rectangle too small for any text gets its frame only.
    virtual void Draw(CDC* dc, CRect rect);

    /// The size that all fonts and pens are designed for.
    void SetDesignSize(int width, int height) {
        m_designWidth = width;
        m_designHeight = height;
    }
    /// The face of all texts; "Times New Roman" unless another is set.
    void SetTypeface(const CString& face) { m_typeface = face; }
    /// The face of all texts.
    const CString& GetTypeface() const { return m_typeface; }
    /// Changes the score that stands for none.
    void SetMissingValue(double value) { m_missingValue = value; }
    /// The score that stands for none.
    double GetMissingValue() const { return m_missingValue; }

    /// Changes the name, the scores or both (those that are not null) of the first profile with the
    /// identifier. Returns 0 when there is none; the scores stay the caller's then. The profiles
    /// are looked through in their order.
    int UpdateProfile(std::uint32_t id, const char* name, double* values);
    /// Deletes the first profile with the identifier, if there is one.
    void RemoveProfile(std::uint32_t id);
    /// Deletes all profiles.
    void RemoveProfiles();

    /// Shades the scores from one to another, behind the profiles.
    void AddBand(int from, int to, COLORREF color) { m_bands.Add({from, to, color}); }
    /// Removes all bands.
    void RemoveBands() { m_bands.RemoveAll(); }
    /// Whether bands are drawn; they are at first.
    void ShowBands(int show) { m_bandsShown = show; }
    /// The bands, in the order in which they were added.
    const BandInfoArray& GetBands() const { return m_bands; }
    /// Stores the bands, or replaces them by those loaded. Faults are those of CArchive, and a
    /// CInvalidArgException for a count beyond 31 bits.
    void SerializeBands(CArchive& archive) { m_bands.Serialize(archive); }

    /// Where the legend's left top corner lies, in percent of the plot from its left top corner.
    void SetLegendPosition(int xPercent, int yPercent) {
        m_legendX = xPercent;
        m_legendY = yPercent;
    }

    /// What the graph holds.
    const ScoreAxis& GetScores() const { return m_scores; }
    /// How many scales there are.
    int GetScaleCount() const { return m_scaleCount; }
    /// The name of a scale, from 1. A number out of range raises CInvalidArgException.
    virtual CString GetScaleText(int scale) const = 0;
    /// How many profiles there are.
    int GetProfileCount() const { return static_cast<int>(m_profiles.size()); }
    /// An index out of range raises CInvalidArgException.
    const ProfileInfo& GetProfile(int index) const { return *m_profiles[checked_profile(index)]; }
    /// Whether the profile has a score on the scale, counted from 0.
    bool IsScore(const ProfileInfo& profile, int scaleIndex) const;
    /// How many reference lines there are.
    int GetReferenceLineCount() const { return m_referenceLines.GetSize(); }
    /// The score of a reference line; an index out of range raises CInvalidArgException.
    int GetReferenceLine(int index) const { return static_cast<int>(m_referenceLines[index]); }
    /// The ranges of scores that are shaded: none when bands are not shown.
    virtual std::vector<ProfileRegion> GetRegions() const;

protected:
    BasicProfileGraph() = default;

    // The steps of Draw. Variants override them.

    /// Draws everything into the frame.
    virtual void draw_contents(CDC* dc, CRect& rect) = 0;
    /// Draws the profiles: lines, then symbols and values.
    virtual void draw_data_series(CDC* dc);
    /// What stands at one point; `scaleIndex` counts from 0.
    virtual void plot_data(CDC* dc, int x, int y, int size, int scaleIndex, ProfileInfo* profile);
    /// Writes the value beside a point, when such texts are shown.
    virtual void draw_point_text(CDC*, int, int, int, int, ProfileInfo*) {}
    /// Sets the rectangle of the legend.
    virtual void calc_legend_rect(CDC* dc);
    /// Draws the legend into its rectangle.
    virtual void draw_line_legends(CDC* dc);

    /// The entries of the legend: one for each profile, to which a variant adds.
    virtual int legend_entry_count() const { return GetProfileCount(); }
    /// The name of an entry, counted from 0.
    virtual CString legend_entry_name(int index) const { return GetProfile(index).GetName(); }
    /// The sample of an entry: 3 characters wide from (left, y), y is its middle.
    virtual void draw_legend_sample(CDC* dc, int index, int left, int y);
    /// The sample of a profile.
    void draw_sample(CDC* dc, const ProfileInfo& profile, int left, int y);
    /// Whether there is a legend to be drawn.
    virtual bool legend_is_drawn() const;
    /// Whether the label of an end has a sign that stands for the scores beyond.
    virtual bool has_end_sign(bool) const { return true; }
    /// The score that a point stands at.
    virtual double drawn_score(ProfileInfo* profile, int scaleIndex) const {
        return profile->GetValue(scaleIndex);
    }

    /// Where a variant has its plot.
    virtual CRect plot_rect() const = 0;
    /// Where a score of a scale, counted from 0, lies on the device.
    virtual CPoint score_place(int scaleIndex, double score) const = 0;
    /// For each scale, whether lines end at it.
    virtual std::vector<bool> line_ends() const = 0;

    /// Appends a profile with the next symbol. Returns null when there is no memory for it; the
    /// scores are deleted then.
    ProfileInfo* add_profile(const char* name, double* values, COLORREF color, std::uint32_t id);
    int add_profile(const char* name, double* values, COLORREF color, std::uint32_t id,
                    ProfilePointType type, int lineStyle, int decimals);
    /// Finds the first profile with the identifier; false when there is none.
    bool find_profile_location(std::uint32_t id, int& index) const;
    /// The symbol that fewest profiles have, the lowest of several.
    int get_symbol() const;
    /// Draws a symbol, from 0 to 7, around a point; `size` is half its width.
    void draw_symbol(CDC* dc, int x, int y, int size, int symbol);
    /// The half size of a symbol in the plot.
    int symbol_size() const;
    /// The width of thin lines: breaks, sky line and profiles.
    int line_width() const;
    /// The width of the lines around the plot.
    int axis_width() const;
    /// Measures the letter "M" in the font that is selected.
    void measure_letter(CDC* dc);
    /// A legend below the plot takes its rows from the rectangle.
    void take_legend_room(CDC* dc, CRect& rect);

    /// The label of an end of the axis: the score after a sign of the symbol font.
    struct EndLabel {
        CString sign;       ///< one character of the symbol font; may be empty
        CString text;       ///< the score
        int signWidth = 0;  ///< in device units
        int width = 0;      ///< of both, in device units
    };
    /// Measures the label of the lower or the upper end.
    EndLabel end_label(CDC* dc, bool isLower, CFont& symbols) const;
    /// Draws a label at its left top corner.
    void draw_end_label(CDC* dc, int left, int top, const EndLabel& label, CFont& symbols) const;

    /// Where a line leads from a point: 1 to higher scores, -1 to lower ones, 0 to equal ones.
    struct Slope {
        bool exists = false;  ///< whether there is a line
        int direction = 0;    ///< 1, -1 or 0

        /// Whether the line leads to higher scores.
        bool IsUp() const { return exists && direction > 0; }
        /// Whether the line leads to lower scores.
        bool IsDown() const { return exists && direction < 0; }
    };
    /// Where the profile's line leads from one scale to a neighbor, both counted from 0.
    Slope slope_to(const ProfileInfo& profile, int scaleIndex, int neighbor) const;
    /// The value of a point as it is written beside it.
    CString point_text(const ProfileInfo& profile, int scaleIndex) const;
    /// The same as a label, with an arrow behind a value that lies off the plot, where its point
    /// is drawn at the edge: `towardMin` and `towardMax` are the arrows of the symbol font.
    CString point_label(const ProfileInfo& profile, int scaleIndex, char towardMin,
                        char towardMax) const;

    double m_missingValue = cDefaultMissingValue;  ///< the score that stands for none
    int m_designWidth = 0;                         ///< in device units at 100 percent
    int m_designHeight = 0;                        ///< in device units at 100 percent
    std::array<int, 8> m_symbolUse{};              ///< how many profiles have each symbol
    int m_scaleCount = 0;                          ///< how many scales there are
    ScoreAxis m_scores;                            ///< the range of scores, ticks and labels
    CString m_typeface = "Times New Roman";        ///< the face of all texts
    int m_fontHeight = 0;                          ///< of the usual texts, in device units
    int m_charWidth = 0;                           ///< of the letter "M", in device units
    int m_charHeight = 0;                          ///< of the letter "M", in device units
    CArray<unsigned, unsigned> m_referenceLines;   ///< their scores
    std::vector<std::unique_ptr<ProfileInfo>> m_profiles;  ///< in the order in which they are drawn
    ProfileLegend m_legend = ProfileLegend::Inside;        ///< where the legend stands
    int m_legendX = 5;                   ///< its left edge, in percent of the plot
    int m_legendY = 5;                   ///< its top edge, in percent of the plot
    CRect m_legendRect;                  ///< where it was drawn last
    BandInfoArray m_bands;               ///< shaded scores
    int m_bandsShown = 1;                ///< whether bands are drawn
    double m_scaleFactor = 0;            ///< device units of one unit of the design
    int m_pointScale = cFullPointScale;  ///< of symbols, in percent
    int m_pointTextsShown = 1;           ///< whether values are written beside points

private:
    std::size_t checked_profile(int index) const;
    void draw_profile(CDC* dc, ProfileInfo& profile, int size);
    /// The half size of a symbol in the legend.
    int legend_symbol_size() const { return (m_charWidth / 2 + 1) & ~1; }
    void draw_legend_entry(CDC* dc, int index, int left, int top);
    /// Calls `visit(entry, left, row)` for each entry of a legend so wide, and returns its rows.
    template <class Visit>
    int flow_entries(const CDC& dc, int width, Visit visit) const;

    std::vector<bool> m_lineEnds;  ///< of the profiles that are being drawn
    CRect m_legendArea;            ///< below the plot
};

}  // namespace tessalink
