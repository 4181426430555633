// The command `graph`, and `report --graphs`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/apps/CommandLine.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class GraphCommand : public CommandLine {
protected:
    GraphCommand() {
        folder.Write("g.json", R"({"graphs": {"Worry": {"width": 2, "height": 0.5, "sections": [
  {"scale": {"min": 20, "max": 80, "left": "Worry", "points": ["@T"]}}]}}})");
        folder.Write("v.tsv", "T\tint\t63\n");
    }
    Finished Graph(Strings arguments) const {
        arguments.insert(arguments.begin(), {"graph", "g.json", "Worry"});
        return Run(arguments);
    }
    Finished Report(const std::string& text, Strings arguments = {}) const {
        folder.Write("t.rtf", "{\\rtf " + text + "}");
        arguments.insert(arguments.begin(), {"report", "t.rtf", "--graphs", "g.json", "-o", "out"});
        return Run(arguments);
    }
};

TEST_F(GraphCommand, DrawsEveryFormat) {
    const struct {
        const char* format;
        const char* start;
    } cases[] = {{"svg", "<?xml"}, {"rtf", "{\\rtf1"}, {"png", "\x89PNG"}, {"pdf", "%PDF"}};
    for (const auto& c : cases) {
        if (!cHasModule && c.format == std::string("png")) continue;
        const Finished drawn = Graph({"--vars", "v.tsv", "-o", "-", "--format", c.format});
        EXPECT_EQ(drawn.exitCode, 0) << drawn.err;
        EXPECT_THAT(drawn.out, StartsWith(c.start));
    }
    EXPECT_EQ(Graph({"--vars", "v.tsv", "-o", "a.emf"}).exitCode, 0);
    EXPECT_THAT(Run({"picture", "a.emf", "-", "--format", "svg"}).out,
                HasSubstr("viewBox=\"0 0 1200 300\""));
    EXPECT_THAT(Graph({"--vars", "v.tsv", "-o", "-", "--format", "svg", "--dpi", "96"}).out,
                HasSubstr("viewBox=\"0 0 192 48\""));
    for (const char* format : {"svg", "rtf", "pdf"}) {
        const Strings plain = {"--vars", "v.tsv", "-o", "-", "--format", format};
        Strings told = plain;
        told.emplace_back("--alt");
        EXPECT_THAT(Graph(plain).out, Not(HasSubstr("on a scale")));
        EXPECT_THAT(Graph(told).out, HasSubstr("Worry: 63, on a scale from 20 to 80."));
    }
}

TEST_F(GraphCommand, PlainTextShowsItsLetters) {
    folder.Write("g.json", R"({"graphs": {"Worry": {"width": 4, "height": 0.5, "sections": [
  {"scale": {"min": 20, "max": 80, "left": "@t", "points": [40]}}]}}})");
    folder.Write("v.tsv", "t\ttext\t{b}\\\\i [@\u0141]\n");
    const Strings arguments = {"--vars", "v.tsv", "--encoding", "utf-8", "-o", "-", "--format"};
    for (const char* format : {"svg", "rtf"}) {
        Strings all = arguments;
        all.insert(all.end(), {format, "--alt"});
        const Finished drawn = Graph(all);
        EXPECT_EQ(drawn.err, "");
        const bool isSvg = format[0] == 's';
        EXPECT_THAT(drawn.out, HasSubstr(isSvg ? "{b}\\i [@L]: 40" : "\\{b\\}\\\\i [@L]: 40"));
    }
}

TEST_F(GraphCommand, FaultsLeaveNothing) {
    const struct {
        Strings arguments;
        int exitCode;
        const char* message;
    } cases[] = {
        {{"g.json", "Worry", "-o", "out.svg"},
         1,
         "g.json:2:64: error: /graphs/Worry/sections/0/scale/points/0: there is no variable 'T'\n"},
        {{"g.json", "Wory", "-o", "out.svg"}, 1, "did you mean 'Worry'?"},
        {{"v.tsv", "Worry", "-o", "out.svg"}, 1, "v.tsv:1:1: error: invalid JSON"},
        {{"none.json", "Worry", "-o", "out.svg"}, 2, "none.json: the file does not exist"},
        {{"g.json", "Worry", "-o", "out.gif"},
         2,
         "out.gif: the name ends in none of .emf, .svg, .png, .pdf, .rtf"},
        {{"-", "Worry", "--vars", "-", "-o", "out.svg"}, 2, "standard input is the graph file"},
        {{"g.json", "Worry", "-o", "out.svg", "--dpi", "2401"}, 2, "--dpi"},
    };
    for (const auto& c : cases) {
        Strings arguments = c.arguments;
        arguments.insert(arguments.begin(), "graph");
        const Finished drawn = Run(arguments);
        EXPECT_EQ(drawn.exitCode, c.exitCode);
        EXPECT_THAT(drawn.err, HasSubstr(c.message));
    }
    ExpectOnly({"g.json", "v.tsv"});
}

TEST_F(GraphCommand, ReportsCallGraphs) {
    // The variables as they are at the call; deferred and included calls alike.
    Store("PART.DAT", "{\\rtf @LET(T=40)@CALL(Worry)}");
    const Finished made = Report(
        "@LET(T=30)@CALL(Worry)@DEFER_START(T)@CALL(Worry)@DEFER_END @PRINT_DEFERRED(ASC) "
        "@INCLUDE([part]) @CALL(Other)",
        {"--alt", "--vars", "v.tsv"});
    EXPECT_EQ(made.exitCode, 0);
    EXPECT_EQ(made.err,
              "t.rtf:1:105: warning: no graph has this name, so @CALL(Other) is skipped\n");
    const std::string report = folder.Read("out");
    std::string order;
    for (std::size_t at = 0; (at = report.find("Worry: ", at)) != std::string::npos; ++at) {
        order += report.substr(at + 7, 2) + " ";
    }
    EXPECT_EQ(order, "30 30 40 ");
    EXPECT_THAT(report, HasSubstr("{\\*\\shppict{\\pict{\\*\\picprop"));
}

TEST_F(GraphCommand, PicturesOfReportsAreChosen) {
    const auto report = [&](Strings arguments) {
        arguments.insert(arguments.end(), {"--vars", "v.tsv"});
        return Report("@CALL(Worry)", arguments);
    };
    ASSERT_EQ(report({}).exitCode, 0);
    const std::string metafile = folder.Read("out");
    ASSERT_EQ(report({"--pictures", "emf"}).exitCode, 0);
    EXPECT_EQ(folder.Read("out"), metafile);
    const Finished useless = report({"--dpi", "96"});
    EXPECT_EQ(useless.exitCode, 2);
    EXPECT_THAT(useless.err, HasSubstr("--dpi is for PNG in reports"));
    const Finished noRtf = Graph({"--vars", "v.tsv", "-o", "a.svg", "--pictures", "png"});
    EXPECT_EQ(noRtf.exitCode, 2);
    EXPECT_THAT(noRtf.err, HasSubstr("--pictures is for RTF, and the output is svg"));
    EXPECT_EQ(report({"--pictures", "gif"}).exitCode, 2);
    if (!cHasModule) GTEST_SKIP() << "built without the toolkit";
    const std::string sizes = "\\picw5080\\pich1270\\picwgoal2880\\pichgoal720\\sspicalign0 \r\n";
    ASSERT_EQ(report({"--pictures", "png"}).exitCode, 0);
    const std::string png = folder.Read("out");
    EXPECT_THAT(png, StartsWith("{\\rtf {\\pict\\pngblip" + sizes + "89504E47"));
    // 384 by 96 pixels: 2 by 0.5 inches.
    EXPECT_THAT(png, HasSubstr("494844520000018000000060"));
    ASSERT_EQ(report({"--pictures", "both", "--dpi", "100"}).exitCode, 0);
    const std::string both = folder.Read("out");
    EXPECT_THAT(both, StartsWith(metafile.substr(0, metafile.size() - 1)));
    EXPECT_THAT(both, HasSubstr("}}{\\nonshppict{\\pict\\pngblip" + sizes));
    EXPECT_THAT(both, HasSubstr("49484452000000C800000032"));
    // The document of a graph takes the same choice; its metafile keeps its units.
    const Finished document = Graph(
        {"--vars", "v.tsv", "-o", "-", "--format", "rtf", "--pictures", "both", "--dpi", "100"});
    EXPECT_THAT(document.out, HasSubstr(both.substr(6, both.size() - 7)));
}

TEST_F(GraphCommand, PicturesThatCantBeMadeLeaveNothing) {
    folder.Write("g.json", R"({"graphs": {"Worry": {"width": 100, "height": 0.5, "sections": [
  {"scale": {"min": 20, "max": 80, "left": "Worry", "points": [40]}}]}}})");
    if (!cIsWindows) {
        std::filesystem::copy_file(TESSALINK_CLI, folder.Path("tessalink"));
        folder.Write("t.rtf", "{\\rtf @CALL(Worry)}");
        Setting setting;
        setting.folder = folder.Path("");
        const Finished alone = runProgram({folder.Path("tessalink"), "report", "t.rtf", "--graphs",
                                           "g.json", "--pictures", "both", "-o", "out"},
                                          setting);
        std::filesystem::remove(folder.Path("tessalink"));
        EXPECT_EQ(alone.exitCode, 2);
        EXPECT_THAT(alone.err, StartsWith("tessalink: --pictures both: PNG"));
        EXPECT_THAT(alone.err, HasSubstr("install it, or take --pictures emf"));
    }
    if (cHasModule) {
        const Finished large = Report("\n@CALL(Worry)", {"--pictures", "png"});
        EXPECT_EQ(large.exitCode, 1);
        EXPECT_EQ(
            large.err,
            "t.rtf:2:7: error: Graph Worry is too large for PNG of 192 pixels to the inch!\n");
        EXPECT_EQ(Report("@CALL(Worry)", {"--pictures", "png", "--dpi", "96"}).exitCode, 0);
        std::filesystem::remove(folder.Path("out"));
        const Finished document = Graph({"-o", "a.rtf", "--pictures", "png", "--dpi", "2400"});
        EXPECT_EQ(document.exitCode, 2);
        EXPECT_THAT(document.err, HasSubstr("Worry: the picture is too large"));
    }
    EXPECT_FALSE(std::filesystem::exists(folder.Path("out")));
    EXPECT_FALSE(std::filesystem::exists(folder.Path("a.rtf")));
}

TEST_F(GraphCommand, AFaultInAReportHasBothPlaces) {
    const std::string fault =
        "g.json:2:64: error: /graphs/Worry/sections/0/scale/points/0: there is no variable 'T'\n";
    const Finished direct = Report("\n  @CALL(Worry)");
    EXPECT_EQ(direct.exitCode, 1);
    EXPECT_EQ(direct.err, fault + "t.rtf:2:9: error: Graph Worry can't be drawn!\n");
    Store("PART.DAT", "{\\rtf @CALL(Worry)}");
    const Finished included = Report(cIsWindows ? "@INCLUDE([PART])" : "@INCLUDE([part])");
    EXPECT_EQ(included.exitCode, 1);
    EXPECT_THAT(included.err, StartsWith(fault));
    EXPECT_THAT(included.err, HasSubstr("PART.DAT:1:13: error: Graph Worry can't be drawn!\n"
                                        "t.rtf:1:7: note: included from here\n"));
    folder.Write("g.json", "{\"graphs\": [}");
    EXPECT_EQ(Report("").exitCode, 1);
    ExpectOnly({"PART.DAT", "g.json", "t.rtf", "v.tsv"});
}

}  // namespace
}  // namespace tessalink::test
