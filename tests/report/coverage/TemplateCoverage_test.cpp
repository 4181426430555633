#include "report/coverage/TemplateCoverage.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "report/coverage/CoverageReport.h"
#include "report/coverage/ListenedParser.h"
#include "tests/report/RandomTemplates.h"
#include "tests/report/RunTemplate.h"

namespace tessalink::test {
namespace {

/// A run that a coverage listens to; includes are texts under their names.
class CoveredRun : public ListenedParser<FileParser> {
public:
    using Files = std::map<std::string, std::string>;

    CoveredRun(TemplateCoverage& coverage, CFile& file, CFile& output, VarTable& variables,
               int isScrambled, const Files& files = {})
        : ListenedParser(coverage, file, output, variables, isScrambled),
          m_coverage(coverage),
          m_files(files) {}

protected:
    int do_include(const CString& name) override {
        CMemFile file{std::string_view(m_files.at(std::string(name.View())))};
        file.SetFilePath(name);
        m_coverage.AddTemplate(file, 0);
        return run_include(file, 0);
    }
    std::unique_ptr<FileParser> create_parser(CFile& file, CFile& output, int scrambled) override {
        return std::make_unique<CoveredRun>(m_coverage, file, output, variables(), scrambled,
                                            m_files);
    }

private:
    TemplateCoverage& m_coverage;
    const Files& m_files;
};

/// Runs a template, as far as it goes; its output.
std::string run(TemplateCoverage& coverage, const std::string& text, VarTable& variables,
                int isScrambled = 0, const CoveredRun::Files& files = {}) {
    CMemFile file{std::string_view(text)};
    file.SetFilePath("main.rtf");
    coverage.AddTemplate(file, isScrambled);
    coverage.BeginReport();
    CMemFile output;
    ParseException fault;
    CoveredRun(coverage, file, output, variables, isScrambled, files).Parse(&fault);
    return std::string(output.View());
}

std::size_t endOfExpression(const std::string& text, std::size_t at) {
    for (int depth = 0;; ++at) {
        if (text[at] == '(') ++depth;
        if (text[at] == ')' && --depth == 0) return at + 1;
    }
}

/// A template with a marker of its own at the start of each branch and block: "#T1#", "#E2#",
/// "#B3#".
class MarkedTemplate {
public:
    explicit MarkedTemplate(const std::string& text) {
        for (std::size_t at = 0; at < text.size();) {
            const std::string_view rest = std::string_view(text).substr(at);
            if (rest.starts_with(")@THEN ")) {
                Copy(text, at, 7, 'T');
            } else if (rest.starts_with("@ELSE ")) {
                Copy(text, at, 6, 'E');
            } else if (rest.starts_with("@DEFER_START(")) {
                Copy(text, at, endOfExpression(text, at + 12) - at, 'B');
            } else {
                m_text += text[at++];
            }
        }
    }

    const std::string& Text() const { return m_text; }
    const std::vector<std::string>& Markers() const { return m_markers; }

private:
    void Copy(const std::string& text, std::size_t& at, std::size_t count, char kind) {
        // What the expression of a block holds has no branches.
        m_text += text.substr(at, count);
        at += count;
        m_markers.push_back("#" + std::string(1, kind) + std::to_string(m_markers.size()) + "#");
        m_text += m_markers.back();
    }

    std::string m_text;
    std::vector<std::string> m_markers;
};

std::string markerAt(const std::string& text, std::uint64_t offset) {
    const std::size_t start = static_cast<std::size_t>(offset);
    return text.substr(start, text.find('#', start + 1) + 1 - start);
}

/// What stands between two marks, all together.
std::string between(const std::string& text, const std::string& open, const std::string& close) {
    std::string result;
    for (std::size_t at = text.find(open); at != std::string::npos; at = text.find(open, at)) {
        const std::size_t end = text.find(close, at);
        result += text.substr(at, end - at);
        at = end;
    }
    return result;
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// A branch or block counts as run exactly in the reports that have its marker, whole or ended by a
/// fault, and the pages mark exactly those that are in none.
TEST(TemplateCoverage, CountsWhatRanInRandomTemplates) {
    Dice dice(11);
    Grammar grammar = templateGrammar();
    int partsRun = 0;
    int partsMissed = 0;
    for (int i = 0; i < 3000; ++i) {
        const MarkedTemplate made("@DEFINE(n)" + grammar.Write('S', 8, dice));
        const std::string& text = made.Text();
        TemplateCoverage coverage;
        std::map<std::string, std::size_t> expected;
        for (int report = 0; report < 4; ++report) {
            VarTable variables;
            fillVariables(variables, dice);
            const std::string output = run(coverage, text, variables);
            for (const std::string& marker : made.Markers())
                expected[marker] += has(output, marker);
        }
        ASSERT_EQ(coverage.PartCount(), made.Markers().size()) << text;
        const std::string missedInText =
            between(coverageAsText(coverage), "\xE2\x9F\xA6", "\xE2\x9F\xA7");
        const std::string missedInHtml = between(coverageAsHtml(coverage), "<mark ", "</mark>");
        std::size_t runCount = 0;
        for (const CoveredPart& part : coverage.Templates()[0].parts) {
            const std::string marker = markerAt(text, part.start);
            ASSERT_TRUE(expected.contains(marker)) << marker << " in " << text;
            EXPECT_EQ(part.kind, marker[1] == 'T'   ? PartKind::Then
                                 : marker[1] == 'E' ? PartKind::Else
                                                    : PartKind::Block);
            ASSERT_EQ(part.reports, expected.at(marker)) << marker << " in " << text;
            const std::string behind = text.substr(static_cast<std::size_t>(part.end), 6);
            EXPECT_TRUE(behind == "@ENDIF" || behind == "@ELSE " || behind == "@DEFER") << text;
            EXPECT_EQ(has(missedInText, marker), part.reports == 0) << text;
            EXPECT_EQ(has(missedInHtml, marker), part.reports == 0) << text;
            runCount += part.reports > 0;
            ++(part.reports > 0 ? partsRun : partsMissed);
        }
        EXPECT_EQ(coverage.RunCount(), runCount);
    }
    EXPECT_GT(partsRun, 1000);
    EXPECT_GT(partsMissed, 1000);
}

TEST(TemplateCoverage, ListensToIncludesAndBlocksButNotToEvals) {
    const CoveredRun::Files files = {
        {"A.DAT", "{@IF(x=1)@THEN one@ELSE @INCLUDE([B])@ENDIF}"},
        {"B.DAT", "@DEFER_START(1)@IF(x)@THEN y@ENDIF@DEFER_END@PRINT_DEFERRED(ASC)"}};
    for (const int isScrambled : {0, 1}) {
        const std::string plain =
            "@IF(x<3)@THEN @INCLUDE([A])@ENDIF@EVAL([@IF(x)@THEN 1@ENDIF])"
            "@IF(x>5)@THEN @INCLUDE([A])@ENDIF";
        const std::string text = isScrambled ? scrambled(plain) : plain;
        TemplateCoverage coverage;
        const auto report = [&](int x) {
            VarTable variables;
            variables.AddVar("x", x);
            run(coverage, text, variables, isScrambled, files);
            return std::to_string(coverage.RunCount()) + "/" + std::to_string(coverage.PartCount());
        };
        EXPECT_EQ(report(4), "0/4");
        EXPECT_EQ(report(1), "3/7");
        EXPECT_EQ(partsThatNeverRan(coverage),
                  "main.rtf:1:76: never ran: @THEN\nmain.rtf:1:76: never ran: @INCLUDE\n"
                  "A.DAT:1:25: never ran: @ELSE\nA.DAT:1:25: never ran: @INCLUDE\n")
            << isScrambled;
        EXPECT_EQ(report(2), "7/9");
        EXPECT_EQ(report(9), "9/9");
        EXPECT_EQ(coverage.Templates()[1].parts[0].reports, 1U);
        EXPECT_EQ(partsThatNeverRan(coverage), "");
        EXPECT_EQ(coverage.Percent(), 100);
        EXPECT_EQ(coverage.Templates()[0].text, plain);
    }
}

TEST(TemplateCoverage, PagesShowLinesLettersAndPictures) {
    TemplateCoverage coverage;
    VarTable variables;
    run(coverage,
        "a<&\x80\r\n@IF(0)@THEN no\nnever@IF(1)@THEN inner@ENDIF@ELSE yes@ENDIF \r" +
            std::string(1000, '7') + "@@" + std::string(300, '8'),
        variables);
    const std::string sevens(100, '7');
    const std::string shortened =
        sevens + " \xE2\x80\xA6 800 bytes \xE2\x80\xA6 " + sevens + "@@" + std::string(300, '8');
    EXPECT_EQ(coverageAsText(coverage),
              "1 report: 1 of 3 parts ran (33.3 percent)\n\n"
              "main.rtf: 1 of 3 parts ran (33.3 percent)\n\n"
              "       1  a<&\xE2\x82\xAC\n"
              "!      2  @IF(0)@THEN \xE2\x9F\xA6no\xE2\x9F\xA7\n"
              "!      3  \xE2\x9F\xA6never@IF(1)@THEN inner@ENDIF\xE2\x9F\xA7@ELSE yes@ENDIF \n"
              "       4  " +
                  shortened + "\n");
    const std::string html = coverageAsHtml(coverage);
    EXPECT_TRUE(has(html, "id=\"f0-1\">     1</span>  a&lt;&amp;\xE2\x82\xAC\n")) << html;
    EXPECT_TRUE(has(html, "<mark title=\"never ran\">no</mark>\n")) << html;
    EXPECT_TRUE(
        has(html, "<span class=\"ran\" title=\"@ELSE: ran in 1 of 1 report\">yes</span>@ENDIF"))
        << html;
    EXPECT_TRUE(has(html, "<a href=\"#f0-3\">main.rtf:3</a> @THEN")) << html;
    EXPECT_TRUE(has(html, shortened)) << html;
}

TEST(TemplateCoverage, KeepsThePartsBeforeAFault) {
    TemplateCoverage coverage;
    const std::string text = "@IF(1)@THEN a@ENDIF@IF(1)@THEN b";
    CMemFile file{std::string_view(text)};
    EXPECT_THROW(coverage.AddTemplate(file, 0), ParseException);
    EXPECT_EQ(coverage.PartCount(), 2U);
    EXPECT_EQ(file.GetPosition(), 0U);
    EXPECT_EQ(TemplateCoverage().Percent(), 100);
}

}  // namespace
}  // namespace tessalink::test
