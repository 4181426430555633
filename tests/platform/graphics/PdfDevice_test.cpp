#include "platform/graphics/PdfDevice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "platform/graphics/CDC.h"
#include "platform/graphics/RecordingDevice.h"
#include "tests/support/Dice.h"
#include "tests/support/DrawingProgram.h"
#include "tests/support/PdfPage.h"

namespace {

using tessalink::PdfDevice;
using tessalink::PictureSheet;
using tessalink::RecordingDevice;
using tessalink::test::Dice;
using tessalink::test::DrawingProgram;
using tessalink::test::PdfPage;
using tessalink::test::RecordedPage;
using testing::HasSubstr;
using testing::Not;

// Whether the library was built without zlib, so that pages can be read.
bool isReadable(const std::string& pdf) {
    return pdf.find("/Filter/FlateDecode") == std::string::npos;
}

// The number that stands behind a key.
std::size_t numberAfter(const std::string& pdf, const std::string& key, std::size_t from = 0) {
    return std::stoul(pdf.substr(pdf.find(key, from) + key.size()));
}

// What is wrong with the objects of a file and the table that places them.
std::string faultOf(const std::string& pdf) {
    if (!pdf.starts_with("%PDF-1.4\n") || !pdf.ends_with("\n%%EOF\n")) return "start or end";
    const std::size_t table = numberAfter(pdf, "startxref\n", pdf.rfind("startxref"));
    if (pdf.substr(table, 7) != "xref\n0 ") return "the place of the table";
    const std::size_t count = numberAfter(pdf, "xref\n0 ", table);
    if (count != numberAfter(pdf, "/Size ")) return "the number of objects";
    for (std::size_t object = 1; object < count; ++object) {
        const std::size_t entry = pdf.find('\n', table + 5) + 1 + 20 * object;
        const std::string start = std::to_string(object) + " 0 obj\n";
        if (pdf.substr(numberAfter(pdf, "", entry), start.size()) != start) return start;
        if (pdf.substr(entry + 10, 10) != " 00000 n \n") return "an entry of the table";
    }
    const std::size_t length = numberAfter(pdf, "\n5 0 obj\n");
    const std::size_t page = pdf.find("stream\n") + 7;
    if (pdf.substr(page + length, 11) != "\nendstream\n") return "the length of the page";
    const std::regex reference("([0-9]+) 0 R");
    for (std::sregex_iterator
             at(pdf.begin() + static_cast<long>(page + length), pdf.end(), reference),
         end;
         at != end; ++at) {
        if (std::stoul((*at)[1]) >= count) return "a reference to nothing: " + at->str();
    }
    return "";
}

std::string drawn(const PictureSheet& sheet, const std::function<void(CDC&)>& calls) {
    PdfDevice device(sheet);
    CDC dc(device);
    calls(dc);
    const std::string pdf = device.Finish();
    EXPECT_EQ(faultOf(pdf), "") << pdf;
    return pdf;
}

// The strongest statement: read back, the operators of the page are what was drawn.
TEST(PdfDevice, ShowsWhatWasDrawn) {
    const CRect sheet(0, 0, 300, 250);
    for (const auto coordinates :
         {DrawingProgram::Coordinates::Tame, DrawingProgram::Coordinates::Wild}) {
        const bool isTame = coordinates == DrawingProgram::Coordinates::Tame;
        for (std::uint64_t seed = 0; seed < (isTame ? 150u : 50u); ++seed) {
            Dice dice(seed);
            RecordingDevice recording;
            PdfDevice device({300, 250});
            CDC direct(recording);
            CDC dc(device);
            DrawingProgram([&](std::size_t count) { return dice.Below(count); }, {&direct, &dc},
                           coordinates)
                .Run(dice.Below(120));
            const std::string pdf = device.Finish();
            ASSERT_EQ(faultOf(pdf), "") << seed;
            if (!isTame || !isReadable(pdf)) continue;
            const auto expected = RecordedPage::Lines(recording.Primitives(), sheet);
            const auto lines = PdfPage::Lines(pdf, sheet);
            for (std::size_t i = 0; i < std::min(lines.size(), expected.size()); ++i) {
                ASSERT_EQ(lines[i], expected[i]) << seed << ' ' << i;
            }
            ASSERT_EQ(lines.size(), expected.size()) << seed;
        }
    }
}

TEST(PdfDevice, TheSheetIsThePage) {
    const auto nothing = [](CDC&) {};
    const std::string pdf = drawn({600, 300, 96}, nothing);
    EXPECT_THAT(pdf, HasSubstr("/MediaBox[0 0 450 225]"));
    EXPECT_THAT(drawn({1000, 7, 110}, nothing), HasSubstr("/MediaBox[0 0 654.5455 4.5818]"));
    EXPECT_THAT(drawn({-5, 0, 0}, nothing), HasSubstr("/MediaBox[0 0 72 72]"));
    for (const char* told : {"/Info", "/Lang", "/StructTreeRoot", "/ID", "Date"}) {
        EXPECT_THAT(pdf, Not(HasSubstr(told)));
    }
    if (isReadable(pdf)) {
        EXPECT_THAT(pdf, HasSubstr("stream\n0.75 0 0 -0.75 0 225 cm\n1 j\n\nend"));
    }
    PdfDevice device({5, 5});
    CDC dc(device);
    const std::string first = device.Finish();
    dc.Rectangle(0, 0, 4, 4);
    EXPECT_NE(first, "");
    EXPECT_EQ(device.Finish(), "");
}

TEST(PdfDevice, IsTaggedAsAFigure) {
    const std::string pdf = drawn({600, 300, 96, "Scores (all)", "M\xFCller \x80\x01", "de"},
                                  [](CDC& dc) { dc.TextOut(1, 1, "a"); });
    EXPECT_THAT(pdf, HasSubstr("/Title(Scores \\(all\\))>>"));
    EXPECT_THAT(pdf, HasSubstr("/Alt<FEFF004D00FC006C006C0065007200"
                               "2020AC0020>>>"));
    EXPECT_THAT(pdf, HasSubstr("/Lang(de)>>"));
    EXPECT_THAT(pdf, HasSubstr("/MarkInfo<</Marked true>>/StructTreeRoot 7 0 R"));
    EXPECT_THAT(pdf, HasSubstr("/S/Figure/P 7 0 R/Pg 3 0 R/K 0/"));
    EXPECT_THAT(pdf, HasSubstr("/StructParents 0"));
    if (isReadable(pdf)) {
        EXPECT_THAT(pdf, HasSubstr("stream\n/Figure<</MCID 0>>BDC\n"));
        EXPECT_THAT(pdf, HasSubstr("EMC\n\nendstream"));
    }
    EXPECT_THAT(drawn({9, 9, 96, "Only a title"}, [](CDC&) {}), HasSubstr("/Alt(Only a title)>>"));
}

// The letters of every text, with what each of their codes means.
TEST(PdfDevice, NamesTheLettersOfSymbol) {
    const std::string pdf = drawn({600, 300}, [](CDC& dc) {
        CFont font;
        font.CreateFont(-12, 0, 0, 0, 0, 0, 0, 0, SYMBOL_CHARSET, 0, 0, 0, 0, "Symbol");
        dc.SelectObject(&font);
        dc.TextOut(0, 0,
                   CString("\xB3"
                           "a\x80"));
        dc.SelectStockObject(SYSTEM_FONT);
    });
    EXPECT_THAT(pdf, HasSubstr("3 beginbfchar\n<20><0020>\n<61><03B1>\n<B3><2265>\nendbfchar\n"));
    EXPECT_THAT(pdf, HasSubstr("/BaseFont/Symbol/ToUnicode "));
    EXPECT_THAT(pdf, HasSubstr("/FirstChar 32/LastChar 179/Widths[250 "));
}

}  // namespace
