#include "core/CsvReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/files/CMemFile.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

std::string at(std::uint64_t line, std::uint64_t column) {
    return std::to_string(line) + ":" + std::to_string(column) + " ";
}

/// Each cell as "LINE:COLUMN TEXT|", or the fault as "!LINE:COLUMN MESSAGE".
std::string read(const std::string& text, bool withPlaces) {
    CMemFile file(text);
    file.SetFilePath("norms.csv");
    std::string cells;
    const auto add = [&](const std::vector<CsvCell>& row) {
        for (const CsvCell& cell : row) {
            if (withPlaces) cells += at(cell.line, cell.column);
            cells += std::string(cell.text.View()) + "|";
        }
        cells += "/";
    };
    try {
        CsvReader reader(file);
        add(reader.GetHeader());
        for (std::vector<CsvCell> row; reader.ReadRow(row);) add(row);
    } catch (const InputError& fault) {
        EXPECT_EQ(fault.GetPlace().file, "norms.csv");
        cells += "!" + at(fault.GetPlace().line, fault.GetPlace().column) + fault.what();
    }
    return cells;
}

TEST(CsvReader, ReadsCells) {
    struct Case {
        std::string text;
        std::string cells;
    };
    const Case cases[] = {
        {"a", "a|/"},
        {"a,b\r\n1,2\r\n", "a|b|/1|2|/"},
        {"a,b\n,\n 1 ,\n , \n", "a|b|/ 1 ||/"},
        {"\xEF\xBB\xBF"
         "a,b\n\n# c,\"\n1,2",
         "a|b|/1|2|/"},
        {"\n# only\n\r\na;b\n1,5;2\n", "a|b|/1,5|2|/"},
        {"a;b,c\n1;2,3", "a;b|c|/1;2|3|/"},
        {"\"a\",\"b\"\n\"\",\"1,2\r\n3\"\n", "a|b|/|1,2\r\n3|/"},
        {"a,b\n\"\"\"1\"\"\",\"\"\"\"\n\"x\"\"\"\"y\",z", "a|b|/\"1\"|\"|/x\"\"y|z|/"},
        {"a,b\n\"# comment, quoted\",\n1,#2", "a|b|/1|#2|/"},
        {"\xC3\xA4\xE2\x82\xAC,\xC2\xB5\n\"\xC3\x9F\",x", "\xE4\x80|\xB5|/\xDF|x|/"},
        {"# no end", "!1:9 the file is empty: its first line must name the columns"},
    };
    for (const Case& c : cases) EXPECT_EQ(read(c.text, false), c.cells) << c.text;
    EXPECT_EQ(read("\xEF\xBB\xBF"
                   "a,\xC3\xA4,c\n\"x\n\ny\",2,\"\"\n#\n4,\"\",",
                   true),
              "1:1 a|1:3 \xE4|1:6 c|/2:1 x\n\ny|4:4 2|4:6 |/6:1 4|6:3 |6:6 |/");
}

TEST(CsvReader, NamesPlaceAndKindOfAFault) {
    struct Case {
        std::string row;
        const char* place;
        const char* message;
    };
    const Case cases[] = {
        {"1", "3:1 ", "the row has 1 cells, but the header 2"},
        {"1,2,3,4", "3:5 ", "the row has 4 cells, but the header 2"},
        {"1,\"2", "3:3 ", "is not closed"},
        {"1,\"2\"\"\n\n", "3:3 ", "is not closed"},
        {"1,\"2\" ", "3:6 ", "behind the closing quote"},
        {"\"1\"x,2", "3:4 ", "behind the closing quote"},
        {"1, \"2\"", "3:4 ", "inside a cell"},
        {"1\r,2", "3:2 ", "carriage return"},
        {"1,2\r", "3:4 ", "carriage return"},
        {std::string("1,a\0", 4), "3:4 ", "NUL"},
        {std::string("1,\"\n\xC3\xA4\0\"", 8), "4:3 ", "NUL"},
        {"1,\xC3\xA4\xE2\x89\xA5", "3:5 ", "Windows-1252, the code page"},
        {"1,\"\"\"\n\xE2\x89\xA5\"", "4:1 ", "Windows-1252, the code page"},
        {"1,\xE4 ", "3:3 ", "no UTF-8"},
        {"1,\x80", "3:3 ", "no UTF-8"},
        {"1,\xC3", "3:3 ", "no UTF-8"},
    };
    for (const Case& c : cases) {
        const std::string found = read("a,b\n#\xFF\n" + c.row, false);
        const auto fault = found.find('!');
        ASSERT_NE(fault, std::string::npos) << c.row;
        EXPECT_EQ(found.substr(fault + 1, 4), c.place) << c.row << ": " << found;
        EXPECT_NE(found.find(c.message), std::string::npos) << c.row << ": " << found;
    }
}

TEST(CsvReader, HoldsItsLimits) {
    const std::string commas(CsvReader::cMaxColumns - 1, ',');
    EXPECT_EQ(read("a" + commas, false).find('!'), std::string::npos);
    EXPECT_NE(read("a,b\na" + commas + ",", false).find("!2:1002 more than 1000 columns"),
              std::string::npos);
    std::string large(CsvReader::cMaxFileSize, 'x');
    EXPECT_EQ(read(large, false).find('!'), std::string::npos);
    large += 'x';
    EXPECT_EQ(read(large, false).find("!1:1 the file has more than 16777216 bytes"), 0u);
}

TEST(CsvReader, ReadsWhatWasQuoted) {
    Dice dice(7);
    for (int round = 0; round < 2000; ++round) {
        const std::size_t width = 1 + dice.Below(4);
        std::string text = "\"x\"";
        std::string cells = "x|";
        for (std::size_t i = 1; i < width; ++i) text += ",", cells += "|";
        cells += "/";
        for (std::size_t row = dice.Below(4); row > 0; --row) {
            text += dice.OneIn(2) ? "\n" : "\r\n";
            for (std::size_t i = 0; i < width; ++i) {
                const std::string cell =
                    (i == 0 ? "." : "") + dice.Text(dice.Below(5), "\",\r\n a");
                text += i == 0 ? "\"" : ",\"";
                for (const char ch : cell) text += ch == '"' ? "\"\"" : std::string(1, ch);
                text += "\"";
                cells += cell + "|";
            }
            cells += "/";
        }
        ASSERT_EQ(read(text, false), cells) << text;
    }
}

}  // namespace
}  // namespace tessalink::test
