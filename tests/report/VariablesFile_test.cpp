#include "report/VariablesFile.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <string>

#include "platform/files/CMemFile.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

/// "LINE:COLUMN MESSAGE" of the fault, or nothing.
std::string faultOf(std::string_view text, VarTable& variables,
                    VariablesEncoding encoding = VariablesEncoding::CodePage) {
    CMemFile file(text);
    file.SetFilePath("vars.tsv");
    try {
        const auto doubt = readVariables(file, variables, nullptr, encoding);
        if (!doubt) return "";
        return "doubt at " + std::to_string(doubt->line) + ":" + std::to_string(doubt->column);
    } catch (const VariablesError& fault) {
        EXPECT_EQ(fault.GetPlace().file, "vars.tsv");
        return std::to_string(fault.GetPlace().line) + ":" +
               std::to_string(fault.GetPlace().column) + " " + fault.what();
    }
}

TEST(VariablesFile, ReadsItsLines) {
    VarTable variables;
    variables.SetValue("old", 1);
    EXPECT_EQ(faultOf("# comment\tx\n\nName\tstring\tAnn \\n\\r\\t\\\\ \xe4 # no comment\r\n"
                      "i\tint\t-2147483648\nplus\tint\t+7\nd\tdouble\t-2.5e-3\nold\tstring\t\n"
                      "_x1\tdouble\t1",
                      variables),
              "");
    EXPECT_EQ(variables.GetStr("Name"), "Ann \n\r\t\\ \xe4 # no comment");
    EXPECT_EQ(variables.GetInt("i"), std::numeric_limits<int>::min());
    EXPECT_EQ(variables.GetInt("plus"), 7);
    EXPECT_EQ(variables.GetDouble("d"), -0.0025);
    EXPECT_TRUE(variables.GetVar("old").IsString());
    EXPECT_TRUE(variables.GetVar("_x1").IsDouble());
    EXPECT_EQ(variables.GetCount(), 6);
    EXPECT_EQ(faultOf("", variables), "");

    CMemFile file(std::string_view("# c\na\tint\t1\n\nb2\tstring\t\n"));
    file.SetFilePath("vars.tsv");
    VariablePlaces places;
    readVariables(file, variables, &places);
    ASSERT_EQ(places.size(), 2u);
    EXPECT_EQ(places["a"].column, 7u);
    EXPECT_EQ(places["b2"].line, 4u);
    EXPECT_EQ(places["b2"].column, 11u);
    EXPECT_EQ(places["b2"].file, "vars.tsv");
}

TEST(VariablesFile, NamesPlaceAndKindOfAFault) {
    struct Case {
        std::string line;
        int column;
        const char* message;
    };
    const Case cases[] = {
        {"x", 2, "missing"},
        {"x int 5", 1, "not a variable name"},
        {"x\tint", 6, "missing"},
        {"x\tint 5", 3, "not a type"},
        {"\tint\t5", 1, "not a variable name"},
        {"1x\tint\t5", 1, "not a variable name"},
        {"x-y\tint\t5", 1, "not a variable name"},
        {std::string(33, 'n') + "\tint\t5", 1, "not a variable name"},
        {"x\tInt\t5", 3, "not a type"},
        {"x\t\t5", 3, "not a type"},
        {"x\tint\t", 7, "whole number"},
        {"x\tint\t5 ", 7, "whole number"},
        {"x\tint\t5.0", 7, "whole number"},
        {"x\tint\t2147483648", 7, "whole number"},
        {"x\tint\t0x10", 7, "whole number"},
        {"x\tint\t+-5", 7, "whole number"},
        {"x\tdouble\t", 10, "number"},
        {"x\tdouble\t1,5", 10, "number"},
        {"x\tdouble\tinf", 10, "number"},
        {"x\tdouble\tnan", 10, "number"},
        {"x\tdouble\t1e999", 10, "number"},
        {"x\tstring\tab\\x", 12, "escape"},
        {"x\tstring\t\\", 10, "escape"},
        {"x\tstring\t" + std::string(1, '\0'), 10, "NUL"},
        {"first\tint\t5", 1, "duplicate"},
    };
    for (const Case& c : cases) {
        for (const char* end : {"", "\n", "\r\nlast\tint\t1\n"}) {
            VarTable variables;
            const std::string fault = faultOf("# c\nfirst\tint\t1\n" + c.line + end, variables);
            const std::string place = "3:" + std::to_string(c.column) + " ";
            EXPECT_EQ(fault.substr(0, place.size()), place) << c.line << ": " << fault;
            EXPECT_NE(fault.find(c.message), std::string::npos) << c.line << ": " << fault;
            EXPECT_EQ(variables.GetCount(), 1) << "what came before it";
            EXPECT_EQ(variables.GetInt("first"), 1);
        }
    }
}

TEST(VariablesFile, ReadsUtf8AndPlainText) {
    constexpr auto utf8 = VariablesEncoding::Utf8;
    constexpr auto ansi = VariablesEncoding::CodePage;
    const std::string lines = "# \u2264\ns\tstring\t{\u00EB}\nt\ttext\t{\u00EB}\\\\ \u0141@\n";
    const struct {
        std::string text;
        VariablesEncoding encoding;
        const char* outcome;
        const char* string;
        const char* plain;
    } table[] = {
        {lines, utf8, "", "{\xEB}", "\\{\xEB\\}\\\\ \\u321L\\'40"},
        {"\xEF\xBB\xBF" + lines, ansi, "", "{\xEB}", "\\{\xEB\\}\\\\ \\u321L\\'40"},
        {lines, ansi, "doubt at 1:3", "{\xC3\xAB}", "\\{\xC3\xAB\\}\\\\ \xC5\x81\\'40"},
        {lines + "#\xEB\n", ansi, "", "{\xC3\xAB}", "\\{\xC3\xAB\\}\\\\ \xC5\x81\\'40"},
        {"s\tstring\t\\\\\u0141", utf8, "1:12 a character that Windows-1252", "", ""},
        {"\xEF\xBB\xBFs\tstring\t\u0141", ansi, "1:10 a character that Windows-1252", "", ""},
        {"i\tint\t1\nt\ttext\t\u0141\xEB", utf8, "2:10 a byte that is no UTF-8", "", ""},
        {std::string("t\ttext\tx\0", 9), utf8, "1:9 a text can't hold a NUL", "", ""},
    };
    for (const auto& row : table) {
        VarTable variables;
        const std::string outcome = faultOf(row.text, variables, row.encoding);
        EXPECT_EQ(outcome.substr(0, std::string_view(row.outcome).size()), row.outcome);
        EXPECT_EQ(outcome.empty(), *row.outcome == '\0') << outcome;
        EXPECT_EQ(variables.GetStr("s"), row.string) << row.text;
        EXPECT_EQ(variables.GetStr("t"), row.plain) << row.text;
    }
}

TEST(VariablesFile, GivesBackWhatWasWritten) {
    Dice dice(3);
    VarTable written;
    for (int i = 0; i < 3000; ++i) {
        const std::string name = "v" + std::to_string(i);
        switch (dice.Below(3)) {
            case 0:
                written.SetValue(name.c_str(), static_cast<int>(dice.Word()));
                break;
            case 1: {
                const double value = std::bit_cast<double>(dice.Word());
                written.SetValue(name.c_str(), std::isfinite(value) ? value : -0.0);
                break;
            }
            default:
                written.SetValue(name.c_str(), dice.Text(dice.Below(9), "a\\\t\r\n#\xff").c_str());
        }
    }
    CMemFile file;
    writeVariables(written, file);
    file.SeekToBegin();
    VarTable again;
    readVariables(file, again);
    EXPECT_EQ(again.GetCount(), written.GetCount());
    for (POSITION position = written.GetStartPosition(); position;) {
        CString name;
        VariantVar value;
        written.GetNextAssoc(position, name, value);
        const VariantVar other = again.GetVar(name);
        EXPECT_EQ(other.GetType(), value.GetType());
        EXPECT_EQ(other.GetAsStr(), value.GetAsStr());
        EXPECT_EQ(std::bit_cast<std::uint64_t>(other.GetAsDouble()),
                  std::bit_cast<std::uint64_t>(value.GetAsDouble()));
    }
    const VariantVar unwritable[] = {VariantVar(), VariantVar(&again),
                                     std::numeric_limits<double>::infinity()};
    for (const VariantVar& value : unwritable) {
        VarTable table;
        table.SetAt("x", value);
        CMemFile none;
        EXPECT_THROW(writeVariables(table, none), VariablesError);
    }
}

}  // namespace
}  // namespace tessalink::test
