#include "questionnaire/ResponseTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "core/InputError.h"
#include "platform/base/CodePage.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/RespondentId.h"
#include "tests/questionnaire/EveryKey.h"
#include "tests/questionnaire/ShownRespondent.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

std::vector<std::string> readAll(CFile& file, const ResponseTableOptions& options) {
    static const Questionnaire questionnaire = Questionnaire::Read(everyKey(), "q");
    std::vector<std::string> rows;
    try {
        ResponseTable table(file, questionnaire, options);
        for (ResponseBlock block; table.ReadBlock(block);) {
            table.Parse(block, [&](RespondentRow& row) { rows.push_back(shown(row)); });
        }
    } catch (const InputError& fault) {
        rows.push_back("whole: " + std::to_string(fault.GetPlace().line) + ": " + fault.what());
    }
    return rows;
}

std::vector<std::string> readAll(std::string_view text, const ResponseTableOptions& options = {}) {
    CMemFile file(text);
    return readAll(file, options);
}

/// A table that someone still writes: it grows by pieces that end anywhere, one before each time
/// that it is read.
class GrowingFile : public CMemFile {
public:
    GrowingFile(std::string_view text, Dice& dice) : CMemFile(text), m_dice(dice) {}

    std::size_t Read(void* buffer, std::size_t count) override {
        const std::size_t grown = 1 + m_dice.Below(40);
        return CMemFile::Read(buffer, std::min(count, grown));
    }

private:
    Dice& m_dice;
};

std::map<std::string, std::string> columnNames(std::string_view text) {
    CMemFile file(text);
    return readColumnNames(file);
}

/// A table that is written in a way of its own, and what it says.
class RandomTable {
public:
    explicit RandomTable(Dice& dice) : m_dice(dice) {
        m_options.hasDecimalComma = dice.OneIn(2);
        m_delimiter = m_options.hasDecimalComma ? ';' : dice.Pick(std::string(",;\t"));
        m_isInCodePage = dice.OneIn(3);
        if (m_isInCodePage) m_options.encoding = ResponseTableOptions::Encoding::CodePage;
        m_options.hasLabels = dice.OneIn(2);
        m_options.dateOrder = dice.Pick(std::vector{ResponseTableOptions::DateOrder::Iso,
                                                    ResponseTableOptions::DateOrder::DayMonthYear,
                                                    ResponseTableOptions::DateOrder::MonthDayYear,
                                                    ResponseTableOptions::DateOrder::YearMonthDay});
        m_options.missingCodes = {"-9", "?"};
        m_options.blockSize = 1 + dice.Below(300);
        m_lineEnd = dice.OneIn(2) ? "\r\n" : "\n";
        m_columns = {"id",     "Q1",  "Q2",   "Q3",    "Name", "Years",
                     "Weight", "Sex", "Born", "Began", "x"};
        for (std::size_t i = m_columns.size(); i > 1; --i) {
            std::swap(m_columns[i - 1], m_columns[dice.Below(i)]);
        }
        if (dice.OneIn(2)) m_options.columnNames = columnNames("item,column\nQ1,First question\n");
        if (dice.OneIn(2)) m_options.carried = {"x"};
        if (!m_isInCodePage && dice.OneIn(2)) m_text = "\xEF\xBB\xBF";
        std::vector<std::string> header = m_columns;
        if (!m_options.columnNames.empty()) {
            *std::find(header.begin(), header.end(), "Q1") = "First question";
        }
        add_row(header);
        for (std::size_t i = 1; i <= 1 + dice.Below(12); ++i) add_person(i);
        // The last line may have no end.
        if (dice.OneIn(3)) m_text.resize(m_text.size() - m_lineEnd.size());
    }

    const ResponseTableOptions& Options() const { return m_options; }
    const std::string& Text() const { return m_text; }
    const std::vector<std::string>& Expected() const { return m_expected; }

private:
    std::string cell(std::string utf8) {
        const bool mustQuote =
            utf8.find_first_of(std::string("\"\r\n") + m_delimiter) != std::string::npos;
        if (m_isInCodePage) utf8 = fromUtf8(utf8).text;
        if (!mustQuote && !m_dice.OneIn(4)) return utf8;
        std::string quoted = "\"";
        for (const char letter : utf8) {
            if (letter == '"') quoted += '"';
            quoted += letter;
        }
        return quoted + '"';
    }
    void add_row(const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (i > 0) m_text += m_delimiter;
            const std::string text = cell(cells[i]);
            m_line += static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
            m_text += text;
        }
        m_text += m_lineEnd;
        ++m_line;
    }
    std::string date(int year, int month, int day) const {
        const auto two = [](int number) {
            return std::string(number < 10 ? "0" : "") + std::to_string(number);
        };
        using Order = ResponseTableOptions::DateOrder;
        const std::string y = std::to_string(year);
        if (m_options.dateOrder == Order::DayMonthYear)
            return two(day) + "." + two(month) + "." + y;
        if (m_options.dateOrder == Order::MonthDayYear)
            return two(month) + "/" + two(day) + "/" + y;
        if (m_options.dateOrder == Order::YearMonthDay)
            return y + "." + two(month) + "." + two(day);
        return y + "-" + two(month) + "-" + two(day);
    }
    std::string missing() { return m_dice.Pick(std::vector<std::string>{"", "NA", "-9", "?"}); }

    void add_person(std::size_t number) {
        RespondentRow row;
        row.number = number;
        row.line = m_line;
        row.respondent.id = "p " + std::to_string(number);
        row.respondent.answers.resize(3);
        row.respondent.fields.resize(7);
        std::map<std::string, std::string> cells = {{"id", row.respondent.id}, {"x", "any, \"x\""}};
        if (!m_options.carried.empty()) row.carried = {cells["x"]};
        for (std::size_t item = 0; item < 3; ++item) {
            const std::string name = "Q" + std::to_string(item + 1);
            if (m_dice.OneIn(4)) {
                cells[name] = missing();
                continue;
            }
            const int answer = item < 2 ? 1 + static_cast<int>(m_dice.Below(2))
                                        : static_cast<int>(m_dice.Below(11)) - 5;
            row.respondent.answers[item] = answer;
            cells[name] = item == 2             ? std::to_string(answer)
                          : m_options.hasLabels ? (answer == 1 ? "no" : "yes")
                                                : std::to_string(answer - 1);
        }
        std::vector<FieldValue>& fields = row.respondent.fields;
        const auto put = [&](const char* name, std::size_t index, const std::string& text,
                             FieldValue value) {
            if (m_dice.OneIn(4)) return cells[name] = missing(), void();
            cells[name] = text;
            fields[index] = std::move(value);
        };
        const std::string person =
            m_dice.Pick(std::vector<std::string>{"Ann", "\"Z\"; o,e\n2", "J\xC3\xBCrg {x} @y"});
        put("Name", 0, person, person);
        const int years = static_cast<int>(m_dice.Below(121));
        put("Years", 1, std::to_string(years), years);
        const int weight = 2 + static_cast<int>(m_dice.Below(1000));
        put("Weight", 2,
            std::to_string(weight / 4) + (m_options.hasDecimalComma ? "," : ".") +
                std::vector<std::string>{"00", "25", "5",
                                         "75"}[static_cast<std::size_t>(weight % 4)],
            weight / 4.0);
        put("Sex", 3, m_options.hasLabels ? "female" : "f", 1);
        const int day = 1 + static_cast<int>(m_dice.Below(28));
        put("Born", 4, date(1999, 2, day), Date(1999, 2, day));
        put("Began", 6, "09:05", Time(9, 5, 0));
        std::vector<std::string> ordered;
        for (const std::string& column : m_columns) ordered.push_back(cells[column]);
        m_expected.push_back(shown(row));
        add_row(ordered);
    }

    Dice& m_dice;
    ResponseTableOptions m_options;
    char m_delimiter = ',';
    bool m_isInCodePage = false;
    std::string m_lineEnd;
    std::vector<std::string> m_columns;
    std::string m_text;
    std::size_t m_line = 1;
    std::vector<std::string> m_expected;
};

TEST(ResponseTable, ReadsTablesAsPeopleHaveThem) {
    Dice dice(11);
    for (int round = 0; round < 400; ++round) {
        const RandomTable table(dice);
        ASSERT_EQ(readAll(table.Text(), table.Options()), table.Expected()) << table.Text();
        GrowingFile growing(table.Text(), dice);
        ASSERT_EQ(readAll(growing, table.Options()), table.Expected()) << table.Text();
    }
}

TEST(ResponseTable, FailsRowByRow) {
    const std::string good = "a,0,1,3\n";
    const std::string header = "id,Q1,Q2,Q3\n";
    const std::string known = "1@2 a|1|2|3|||||||";
    const struct {
        std::string row;
        std::string failure;
    } cases[] = {
        {"b,2,1,3\n", "2@3 b !Q1! is not a code; there are 0, 1"},
        {"b,0,1,6\n", "2@3 b !Q3! is not a whole number from -5 to 5"},
        {"b,0,1\n", "2@3 b !! the row has 3 cells, but the header 4: add or remove some"},
        {"b,0,1,2,3\n", "2@3 b !! the row has 5 cells, but the header 4: add or remove some"},
        {"../b,0,1,2\n", "2@3  !id! / can't be part of an id, which names files: replace it"},
        {"b,\"0\"x,1,2\n",
         "2@3 b !Q1! text behind the closing quote: move it inside, with the quotes in it doubled"},
        {"b,\xFF,1,2\n", "2@3 b !Q1! a byte that is no UTF-8: save the file as UTF-8"},
    };
    for (const auto& test : cases) {
        const std::vector<std::string> rows = readAll(header + good + test.row + good);
        ASSERT_EQ(rows.size(), 3U);
        EXPECT_EQ(rows[0], known);
        EXPECT_EQ(rows[1], test.failure);
        EXPECT_EQ(rows[2], "3@4" + known.substr(3));
    }
    // A quote that is never closed: the rows before it count, the rest is one failure.
    const std::vector<std::string> open = readAll(header + good + "b,\"0,1,2\n" + good + good);
    ASSERT_EQ(open.size(), 2U);
    EXPECT_EQ(open[0], known);
    EXPECT_EQ(open[1].substr(0, 4), "2@3 ");
    EXPECT_NE(open[1].find("quote"), std::string::npos) << open[1];
}

TEST(ResponseTable, RefusesMappingsThatCanNotBeRead) {
    for (const auto& [text, line] : {std::pair("a,item\nx,Q1\n", 1U),
                                     {"column,item\nx,Q1\ny,Q2\nx,Q3\n", 4U},
                                     {"column,item\nx\n", 2U}}) {
        try {
            columnNames(text);
            ADD_FAILURE() << text;
        } catch (const InputError& fault) {
            EXPECT_EQ(fault.GetPlace().line, line) << fault.what();
        }
    }
    const auto mapped = [](const char* column, const char* item) {
        ResponseTableOptions options;
        options.columnNames = {{column, item}};
        return readAll("id,a,Q1\n", options).at(0);
    };
    EXPECT_EQ(mapped("b", "Q1"), "whole: 1: no column 'b'; did you mean 'a'?");
    EXPECT_EQ(mapped("a", "Q9"), "whole: 1: the questionnaire has no item or field 'Q9'");
    EXPECT_EQ(mapped("a", "Q1"),
              "whole: 1: 'Q1' holds Q1, as the column 'a' does: rename or remove one");
}

TEST(ResponseTable, RefusesHeadersThatCanNotBeRead) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "whole: 1: "},
        {"id,Q1,Q1\n", "whole: 1: "},
        {"a,b,c\n1,2,3\n", "whole: 1: no column has the name of an item"},
        {"\"id,Q1\n", "whole: 1: "},
    };
    for (const auto& [text, fault] : cases) {
        const std::vector<std::string> rows = readAll(text);
        ASSERT_EQ(rows.size(), 1U) << text;
        EXPECT_EQ(rows[0].substr(0, fault.size()), fault) << rows[0];
    }
}

/// Rows before the damage are what they were, whatever becomes of the rest.
TEST(ResponseTable, DamageCostsNoRowBeforeIt) {
    Dice dice(12);
    for (int round = 0; round < 8; ++round) {
        const RandomTable table(dice);
        const std::string& text = table.Text();
        const std::size_t header = text.find('\n');
        for (std::size_t i = header + 1; i < text.size(); ++i) {
            std::string damaged = text;
            damaged[i] = static_cast<char>(text[i] ^ (1 << dice.Below(8)));
            const std::vector<std::string> rows = readAll(damaged, table.Options());
            const std::vector<std::string> cut = readAll(text.substr(0, i), table.Options());
            for (std::size_t row = 0; row + 1 < table.Expected().size(); ++row) {
                const std::string& next = table.Expected()[row + 1];
                const std::size_t line = std::stoul(next.substr(next.find('@') + 1));
                const auto before =
                    std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(i), '\n');
                if (static_cast<std::size_t>(before) + 1 < line) break;
                ASSERT_EQ(rows.at(row), table.Expected()[row]) << damaged;
                ASSERT_EQ(cut.at(row), table.Expected()[row]) << damaged;
            }
        }
    }
}

TEST(RespondentId, NamesNoFileElsewhere) {
    for (const char* bad :
         {"",   ".",  "..",  "a/b",     "a\\b", "a:b",  "a\tb",      "a\x7F", "a ", " a",
          "a.", ".a", "con", "NUL.txt", "lpt1", "\xFF", "a\xC2\x85", "x*",    "\"", "|"}) {
        EXPECT_NE(respondentIdFault(bad), "") << bad;
    }
    EXPECT_NE(respondentIdFault(std::string(300, 'x')), "");
    for (const char* good :
         {"a", "0", "A-1_b", "\xC5\x81ukasz", "a b", "a.b", "=1", "consul", "com10"}) {
        EXPECT_EQ(respondentIdFault(good), "") << good;
    }
    EXPECT_EQ(foldRespondentId("A\xC3\x84\xC5\x81\xCE\xA3\xD0\x96"),
              foldRespondentId("a\xC3\xA4\xC5\x82\xCF\x83\xD0\xB6"));
}

}  // namespace
}  // namespace tessalink::test
