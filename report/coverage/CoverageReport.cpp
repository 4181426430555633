#include "report/coverage/CoverageReport.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "platform/base/CodePage.h"

namespace tessalink {

namespace {

constexpr std::string_view cLineEnds = "\r\n";
// Of a stretch without a command that is longer than cLongStretch, so much is shown at either end.
constexpr std::size_t cLongStretch = 400;
constexpr std::size_t cShownEnd = 100;

constexpr const char* cPartNames[] = {"@THEN", "@ELSE", "the block of @DEFER_START", "@INCLUDE"};

const char* nameOf(PartKind kind) {
    return cPartNames[static_cast<int>(kind)];
}

std::string percentText(std::size_t run, std::size_t parts) {
    char text[32];
    // Never rounded up to all.
    const double tenths = static_cast<double>(static_cast<int>(10 * percentOf(run, parts)));
    std::snprintf(text, sizeof text, "%.1f", tenths / 10);
    return text;
}

/// "3 of 4 parts ran (75.0 percent)".
std::string summary(std::size_t run, std::size_t parts) {
    return std::to_string(run) + " of " + std::to_string(parts) + " parts ran (" +
           percentText(run, parts) + " percent)";
}

/// Lines of a text: CR, LF and CR LF each end one.
class Lines {
public:
    explicit Lines(std::string_view text) {
        m_starts.push_back(0);
        for (std::size_t at = text.find_first_of(cLineEnds); at != std::string_view::npos;
             at = text.find_first_of(cLineEnds, at)) {
            at += text.substr(at).starts_with(cLineEnds) ? 2 : 1;
            m_starts.push_back(at);
        }
    }

    const std::vector<std::size_t>& Starts() const { return m_starts; }
    /// The number of the line that an offset is in, from 1.
    std::size_t LineOf(std::size_t offset) const {
        const auto next = std::upper_bound(m_starts.begin(), m_starts.end(), offset);
        return static_cast<std::size_t>(next - m_starts.begin());
    }
    /// From 1, in bytes.
    std::size_t ColumnOf(std::size_t offset) const {
        return offset - m_starts[LineOf(offset) - 1] + 1;
    }

private:
    std::vector<std::size_t> m_starts;
};

/// A stretch of a template that shows alike.
struct Stretch {
    std::size_t start;
    std::size_t end;
    const CoveredPart* part;  ///< the innermost part that it is in; null: none
    bool hasRun;
};

/// Cuts a template where parts begin and end.
class StretchCutter {
public:
    explicit StretchCutter(const CoveredTemplate& shown) {
        for (const CoveredPart& part : shown.parts) {
            close_before(part.start);
            cut(part.start);
            m_open.push_back(&part);
        }
        close_before(shown.text.size() + 1);
        cut(shown.text.size());
    }
    const std::vector<Stretch>& Stretches() const { return m_stretches; }

private:
    void close_before(std::size_t offset) {
        while (!m_open.empty() && m_open.back()->end <= offset) {
            cut(m_open.back()->end);
            m_open.pop_back();
        }
    }
    void cut(std::size_t end) {
        if (end <= m_at) return;
        const bool hasRun = std::all_of(m_open.begin(), m_open.end(),
                                        [](const CoveredPart* part) { return part->reports > 0; });
        if (!hasRun && !m_stretches.empty() && !m_stretches.back().hasRun) {
            m_stretches.back().end = end;
        } else {
            m_stretches.push_back({m_at, end, m_open.empty() ? nullptr : m_open.back(), hasRun});
        }
        m_at = end;
    }

    std::vector<Stretch> m_stretches;
    std::vector<const CoveredPart*> m_open;
    std::size_t m_at = 0;
};

/// A piece of a line, in UTF-8, shortened when it is long and has no command.
std::string shownLine(std::string_view text) {
    while (!text.empty() && cLineEnds.find(text.back()) != std::string_view::npos) {
        text.remove_suffix(1);
    }
    std::string result;
    while (!text.empty()) {
        const std::size_t next = std::min(text.find('@', 1), text.size());
        const std::string_view piece = text.substr(0, next);
        text.remove_prefix(next);
        if (piece.size() <= cLongStretch) {
            result += toUtf8(piece);
            continue;
        }
        result += toUtf8(piece.substr(0, cShownEnd)) + " \xE2\x80\xA6 " +
                  std::to_string(piece.size() - 2 * cShownEnd) + " bytes \xE2\x80\xA6 " +
                  toUtf8(piece.substr(piece.size() - cShownEnd));
    }
    return result;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char ch : text) {
        switch (ch) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                // Controls are no characters of HTML.
                result += static_cast<unsigned char>(ch) < ' ' && ch != '\t' ? ' ' : ch;
        }
    }
    return result;
}

std::string nameText(const CoveredTemplate& shown) {
    return std::string(shown.name.View());
}

/// Calls `line` for each line and `piece` for each of its stretches.
template <class Line, class Piece>
void showLines(const CoveredTemplate& shown, const Line& line, const Piece& piece) {
    const Lines lines(shown.text);
    const StretchCutter cutter(shown);
    auto stretch = cutter.Stretches().begin();
    const auto& starts = lines.Starts();
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const std::size_t end = i + 1 < starts.size() ? starts[i + 1] : shown.text.size();
        if (starts[i] == end) break;
        line(i + 1);
        for (std::size_t at = starts[i]; at < end; at = std::min(stretch->end, end)) {
            while (stretch->end <= at) ++stretch;
            const std::size_t stop = std::min(stretch->end, end);
            piece(*stretch, std::string_view(shown.text).substr(at, stop - at));
        }
    }
}

class TextPage {
public:
    void Line(std::size_t number) {
        End();
        m_number = number;
    }
    void Piece(const Stretch& stretch, std::string_view text) {
        const std::string letters = shownLine(text);
        m_isMissed |= !stretch.hasRun;
        m_line +=
            stretch.hasRun || letters.empty() ? letters : "\xE2\x9F\xA6" + letters + "\xE2\x9F\xA7";
    }
    std::string End() {
        if (m_number != 0) {
            char start[32];
            std::snprintf(start, sizeof start, "%c %6zu  ", m_isMissed ? '!' : ' ', m_number);
            m_text += start + m_line + "\n";
        }
        m_line.clear();
        m_isMissed = false;
        return m_text;
    }

private:
    std::string m_text;
    std::string m_line;
    std::size_t m_number = 0;
    bool m_isMissed = false;
};

std::string ranIn(const CoveredPart& part, std::size_t reports) {
    if (part.reports == 0) return std::string(nameOf(part.kind)) + ": never ran";
    return std::string(nameOf(part.kind)) + ": ran in " + std::to_string(part.reports) + " of " +
           std::to_string(reports) + (reports == 1 ? " report" : " reports");
}

constexpr const char* cPageStart = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>What the reports cover</title>
<style>
body { font-family: sans-serif; margin: 2em; }
pre { line-height: 1.4; white-space: pre-wrap; overflow-wrap: anywhere; }
table { border-collapse: collapse; }
td, th { padding: 0.2em 1em 0.2em 0; text-align: left; }
.line { color: #666; user-select: none; }
.ran { background: #e6f3e6; }
mark { background: #ffd9d0; color: inherit; border-bottom: 2px solid #b00020; }
</style>
</head>
<body>
<h1>What the reports cover</h1>
)";

class HtmlPage {
public:
    HtmlPage(std::size_t file, std::size_t reports) : m_file(file), m_reports(reports) {}

    void Line(std::size_t number) {
        char start[100];
        std::snprintf(start, sizeof start, "%s<span class=\"line\" id=\"f%zu-%zu\">%6zu</span>  ",
                      m_text.empty() ? "" : "\n", m_file, number, number);
        m_text += start;
    }
    void Piece(const Stretch& stretch, std::string_view text) {
        const std::string letters = escaped(shownLine(text));
        if (letters.empty()) return;
        if (stretch.part == nullptr) {
            m_text += letters;
            return;
        }
        const char* const tag = stretch.hasRun ? "span class=\"ran\"" : "mark";
        const std::string title =
            stretch.hasRun ? escaped(ranIn(*stretch.part, m_reports)) : "never ran";
        m_text.append("<").append(tag).append(" title=\"").append(title).append("\">");
        m_text.append(letters).append(stretch.hasRun ? "</span>" : "</mark>");
    }
    const std::string& Text() const { return m_text; }

private:
    std::string m_text;
    std::size_t m_file;
    std::size_t m_reports;
};

/// "2 reports: 3 of 4 parts ran (75.0 percent)".
std::string sentence(const TemplateCoverage& coverage) {
    const std::size_t count = coverage.ReportCount();
    return std::to_string(count) + (count == 1 ? " report: " : " reports: ") +
           summary(coverage.RunCount(), coverage.PartCount());
}

/// The list of parts that never ran, each a link to its line.
std::string missedList(const TemplateCoverage& coverage) {
    std::string list;
    for (std::size_t i = 0; i < coverage.Templates().size(); ++i) {
        const CoveredTemplate& one = coverage.Templates()[i];
        const Lines lines(one.text);
        for (const CoveredPart& part : one.parts) {
            if (part.reports > 0) continue;
            const std::string line = std::to_string(lines.LineOf(part.start));
            list.append("<li><a href=\"#f").append(std::to_string(i)).append("-").append(line);
            list.append("\">").append(escaped(nameText(one))).append(":").append(line);
            list.append("</a> ").append(nameOf(part.kind)).append("</li>\n");
        }
    }
    return list.empty() ? "" : "<h2>Never ran</h2>\n<ul>\n" + list + "</ul>\n";
}

}  // namespace

std::string partsThatNeverRan(const TemplateCoverage& coverage) {
    std::string text;
    for (const CoveredTemplate& one : coverage.Templates()) {
        const Lines lines(one.text);
        for (const CoveredPart& part : one.parts) {
            if (part.reports > 0) continue;
            text += nameText(one) + ":" + std::to_string(lines.LineOf(part.start)) + ":" +
                    std::to_string(lines.ColumnOf(part.start)) +
                    ": never ran: " + nameOf(part.kind) + "\n";
        }
    }
    return text;
}

std::string coverageSummary(const TemplateCoverage& coverage) {
    return sentence(coverage) + "\n";
}

std::string coverageAsText(const TemplateCoverage& coverage) {
    std::string text = coverageSummary(coverage);
    for (const CoveredTemplate& one : coverage.Templates()) {
        TextPage page;
        showLines(
            one, [&](std::size_t number) { page.Line(number); },
            [&](const Stretch& stretch, std::string_view piece) { page.Piece(stretch, piece); });
        text += "\n" + nameText(one) + ": " + summary(runCount(one.parts), one.parts.size()) +
                "\n\n" + page.End();
    }
    return text;
}

std::string coverageAsHtml(const TemplateCoverage& coverage) {
    std::string html = cPageStart;
    html += "<p>" + sentence(coverage) + ". What never ran is <mark>marked</mark>.</p>\n" +
            missedList(coverage);
    for (std::size_t i = 0; i < coverage.Templates().size(); ++i) {
        const CoveredTemplate& one = coverage.Templates()[i];
        HtmlPage page(i, coverage.ReportCount());
        showLines(
            one, [&](std::size_t number) { page.Line(number); },
            [&](const Stretch& stretch, std::string_view piece) { page.Piece(stretch, piece); });
        html += "<h2>" + escaped(nameText(one)) + "</h2>\n<p>" +
                summary(runCount(one.parts), one.parts.size()) + "</p>\n<pre>" + page.Text() +
                "</pre>\n";
    }
    return html + "</body>\n</html>\n";
}

}  // namespace tessalink
