#include "graphs/file/detail/BarLabels.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "graphs/common/GraphFont.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"

namespace tessalink::detail {

namespace {

/// The lines of a text, one after the other.
template <class Use>
void eachLine(const CString& text, Use use) {
    for (std::string_view rest = text.View(); !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        use(line);
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    }
}

/// The last switch of the font in a line; empty when the normal one is on.
CString lastSwitch(std::string_view line) {
    CString last;
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        if (line[i] != '\\') continue;
        const char letter = line[++i];
        if (letter == 'n') last.Empty();
        if (letter == 'b' || letter == 'i' || letter == 's') last = line.substr(i - 1, 2);
    }
    return last;
}

}  // namespace

void TextRuler::Use(const TextLook& look) {
    if (look.size == m_look.size && look.face == m_look.face) return;
    constexpr BYTE pitch = 4;
    m_font.DeleteObject();
    createGraphFont(m_font, look.size, look.face, OUT_DEFAULT_PRECIS, DEFAULT_QUALITY, pitch);
    m_look = look;
}

int TextRuler::Width(const CString& text, const TextLook& look) {
    Use(look);
    const Selected selected(m_dc, &m_font);
    int widest = 0;
    eachLine(text, [&](std::string_view line) { widest = std::max(widest, LineWidth(line)); });
    return widest;
}

int TextRuler::Gap(const TextLook& look) {
    Use(look);
    const Selected selected(m_dc, &m_font);
    return m_dc.GetTextExtent("M", 1).cx;
}

/// Bold runs may need a tenth more.
int TextRuler::LineWidth(std::string_view line) const {
    constexpr int tenth = 10;
    const int plain = m_dc.GetTextExtent(CString(line)).cx;
    return line.find('\\') != std::string_view::npos ? plain + plain / tenth : plain;
}

CString TextRuler::Wrapped(const CString& text, const TextLook& look, int room) {
    Use(look);
    const Selected selected(m_dc, &m_font);
    CString result;
    eachLine(text, [&](std::string_view line) {
        if (!result.IsEmpty()) result += '\n';
        result += WrappedLine(line, room);
    });
    return result;
}

CString TextRuler::WrappedLine(std::string_view line, int room) const {
    CString result;
    CString current;
    for (std::string_view rest = line; !rest.empty();) {
        const std::string_view word = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(rest.size(), word.size() + 1));
        const CString longer = current.IsEmpty() ? CString(word) : current + ' ' + CString(word);
        if (current.IsEmpty() || LineWidth(longer.View()) <= room) {
            current = longer;
        } else {
            result += current + '\n';
            current = lastSwitch(current.View()) + CString(word);
        }
    }
    return result + current;
}

std::vector<std::pair<std::size_t, int>> LegendLabels::Colliding(const BarBody& body,
                                                                 TextRuler& ruler) const {
    std::vector<std::size_t> order(m_labels.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return m_labels[a].place < m_labels[b].place;
    });
    std::vector<int> widths;
    widths.reserve(order.size());
    for (const std::size_t index : order) {
        widths.push_back(ruler.Width(m_labels[index].text, m_look));
    }
    constexpr int gapsInSize = 4;
    const int gap = m_look.size / gapsInSize;
    std::vector<std::pair<std::size_t, int>> colliding;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const double place = m_labels[order[i]].place;
        const double half = widths[i] / 2.0;
        double nearest = std::min(place + body.left, body.width + body.right - place);
        bool isColliding = half > nearest;
        nearest *= 2;
        const auto look = [&](std::size_t other) {
            const double distance = std::abs(m_labels[order[other]].place - place) - gap;
            isColliding = isColliding || half + widths[other] / 2.0 > distance;
            nearest = std::min(nearest, distance);
        };
        if (i > 0) look(i - 1);
        if (i + 1 < order.size()) look(i + 1);
        if (isColliding) colliding.emplace_back(order[i], toInt(nearest));
    }
    return colliding;
}

bool LegendLabels::Collide(const BarBody& body, TextRuler& ruler) const {
    return !Colliding(body, ruler).empty();
}

void LegendLabels::Fit(const BarBody& body, bool mayShrink, TextRuler& ruler) {
    constexpr std::size_t most = 1000;  // that are worth the time
    if (m_labels.size() > most) return;
    const LegendLabels given = *this;
    const int smallest = m_look.size / 2;
    const int step = std::max(1, m_look.size / 10);
    for (; m_look.size >= smallest; m_look.size -= step) {
        m_labels = given.m_labels;
        for (const auto& [index, room] : Colliding(body, ruler)) {
            m_labels[index].text = ruler.Wrapped(m_labels[index].text, m_look, room);
        }
        if (!Collide(body, ruler)) return;
        if (!mayShrink) break;
    }
    *this = given;
}

int LegendLabels::BeyondLeft(TextRuler& ruler) const {
    double beyond = 0;
    for (const Label& label : m_labels) {
        beyond = std::max(beyond, ruler.Width(label.text, m_look) / 2.0 - label.place);
    }
    return toInt(std::ceil(beyond));
}

int LegendLabels::BeyondRight(const BarBody& body, TextRuler& ruler) const {
    double beyond = 0;
    for (const Label& label : m_labels) {
        const double right = label.place + ruler.Width(label.text, m_look) / 2.0;
        beyond = std::max(beyond, right - body.width);
    }
    return toInt(std::ceil(beyond));
}

}  // namespace tessalink::detail
