#pragma once

#include <string>

namespace bigfive {

// One row of an RTF table, cell by cell from left to right. Cells have no margin of their own.
class RtfRow {
public:
    // `height` in twips: positive at least, negative exactly, 0 as the text needs it.
    explicit RtfRow(int height, const std::string& properties = "") {
        m_head = "\\trowd\\trgaph0\\trleft0\\trkeep\\trrh" + std::to_string(height) + properties;
    }

    // A cell that ends `right` twips from the margin. `look` is its borders and shading, `text` the
    // paragraph in it with its format.
    RtfRow& Cell(int right, const std::string& look, const std::string& text) {
        m_head += "\\clvertalc" + look + "\\cellx" + std::to_string(right);
        m_text += text + "\\cell";
        return *this;
    }

    std::string Text() const { return m_head + "\n" + m_text + "\\row\n"; }

private:
    std::string m_head;
    std::string m_text;
};

}  // namespace bigfive
