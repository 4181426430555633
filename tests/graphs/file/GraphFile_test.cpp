// Graph files: what is drawn, and where faults are said to be.
#include "graphs/file/GraphFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <regex>
#include <set>
#include <string>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarHeading.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarRangeGraphic.h"
#include "graphs/bar/BarRangeLegend.h"
#include "graphs/bar/BarScale2.h"
#include "graphs/bar/BarSimpleLegend.h"
#include "graphs/bar/BarValueLegend.h"
#include "graphs/common/ColorMgr.h"
#include "graphs/file/GraphFctTable.h"
#include "graphs/file/GraphPicture.h"
#include "graphs/profile/CircumplexGraph.h"
#include "graphs/profile/HorProfileGraph.h"
#include "graphs/profile/ProfileGraph3.h"
#include "graphs/rtf/MetaFile.h"
#include "platform/base/CodePage.h"
#include "platform/files/CMemFile.h"
#include "platform/graphics/RecordingDevice.h"
#include "platform/graphics/SvgDevice.h"
#include "report/VariablesFile.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

GraphFile fileOf(const std::string& text) {
    CMemFile file(text);
    file.SetFilePath("g.json");
    return GraphFile::Read(file);
}

std::string graphOf(const std::string& members) {
    return R"({"graphs": {"G": {)" + members + "}}}";
}

/// A graph of one scale from 0 to 10 and more.
std::string scaleOf(const std::string& members) {
    return graphOf(R"("sections": [{"scale": {"min": 0, "max": 10, )" + members + "}}]");
}

struct Variables : VarTable {
    Variables() {
        AddVar("Name", "A\\b\xE4");
        AddVar("Score", 7);
        AddVar("Mean", 3.25);
        AddVar("Color", "navy");
        AddVar("None", "");
        AddVar("NaN", std::numeric_limits<double>::quiet_NaN());
    }
};

/// "LINE:COLUMN: MESSAGE" of the fault of reading the file and making G; empty without a fault.
std::string faultOf(const std::string& text) {
    try {
        fileOf(text).Make("G", Variables());
    } catch (const InputError& fault) {
        const TextPlace& place = fault.GetPlace();
        EXPECT_EQ(place.file, "g.json");
        return std::to_string(place.line) + ":" + std::to_string(place.column) + ": " +
               fault.what();
    }
    return "";
}

std::string metafileOf(const std::function<void(CDC&, const CRect&)>& draw) {
    MetaFile picture(6, 4, nullptr);
    draw(picture, CRect(0, 0, 576, 384));
    picture.Close();
    const auto bytes = bytesOf(picture.GetHandle());
    return {bytes.begin(), bytes.end()};
}

std::string metafileOf(const std::string& text) {
    const auto graph = fileOf(text).Make("G", Variables());
    return metafileOf([&](CDC& dc, const CRect& rect) { graph->Draw(dc, rect); });
}

TEST(GraphFile, DrawsWhatTheSameGraphInCodeDraws) {
    BarGraph graph(0, BarGraph::cCenter | BarGraph::cBottom);
    graph.AddSection(
        new BarHeading("A\\\\b\xE4 \\b3.2", 30, BarHeading::cRight, 40, 0xFF, "Times", 0, 0, 5, 6));
    auto* const scale = new BarScale2(20, 80, "Left\nline", "7", 200, 100, 20, 5, 30, 70, 11, 12,
                                      13, 14, 30, 50, 25, 75);
    scale->SetTypeface("Symbol");
    scale->SetLineSize(3);
    scale->SetBoxColor(RGB(1, 2, 3));
    scale->SetMajTickColor(RGB(0, 128, 0));
    scale->SetMinTickColor(RGB(1, 2, 3));
    scale->SetDescColor(ColorMgr::ColorSafePalette()[2]);
    scale->SetBoxFillColor(RGB(0x80, 0x80, 0x80));
    auto* const range = new BarRangeGraphic(30, 40.5, RGB(0, 0, 128), cWhite, -1);
    range->SetHeightFraction(0.25);
    scale->AddGraphic(range);
    scale->AddGraphic(new BarPointGraphic(7, 30));  // six tenths of the bar
    scale->AddGraphic(
        new BarPointGraphic(3.25, 9, RGB(255, 0, 0), BarPointGraphic::HollowTriangle, 4));
    graph.AddSection(scale);
    graph.AddSection(new BarHeading(0, 0, 25, 0));
    auto* const values = new BarValueLegend(scale, "V", "", RGB(255, 255, 0), 0, 11, 12, 1, 2, 24,
                                            20, "Arial", "Times");
    values->SetFirstLabelPos(22);
    values->SetLastLabelPos(77);
    values->SetLabelCalcStart(30);
    values->SetLabelDelta(11);
    values->SetLeftDescAlignment(BarLegend::cCenter | BarLegend::cBottom);
    graph.AddSection(values);
    auto* const texts =
        new BarSimpleLegend(scale, "", "", 0, 0, 11, 12, 4, 4, 24, 24, "Arial", "Arial");
    texts->AddText(50, "mean");
    texts->SetUseLine(1);
    texts->SetLineStyle(PS_DASH);
    texts->SetLineSize(0);
    graph.AddSection(texts);
    auto* const ranges =
        new BarRangeLegend(scale, "", "R", 0, 0, 11, 12, 4, 4, 24, 24, "Arial", "Arial");
    ranges->AddRange(20, 50, "low\n7");
    ranges->SetDirectionUp(0);
    ranges->SetLineColor(RGB(0xAB, 0xCD, 0xEF));
    graph.AddSection(ranges);
    const auto coded = metafileOf([&](CDC& dc, const CRect& rect) { graph.Draw(&dc, rect); });
    const auto described = metafileOf(graphOf(R"(
        "type": "bar", "frame": false, "align": "bottom center", "palette": "safe", "sections": [
        {"heading": {"texts": [{"text": "@Name \\b@{Mean:1}", "position": 30, "align": "right",
            "textSize": 40, "textColor": "#ff0000", "font": "Times"}],
            "marginTop": 5, "marginBottom": 6}},
        {"scale": {"name": "s", "min": 20, "max": 80, "left": "Left\nline", "right": "@Score",
            "leftWidth": 200, "rightWidth": 100, "majorTick": 20, "minorTick": 5, "ticksFrom": 30,
            "ticksTo": 70, "marginLeft": 11, "marginRight": 12, "marginTop": 13,
            "marginBottom": 14, "textSize": 30, "barHeight": 50, "plotMin": 25, "plotMax": 75,
            "font": "Symbol", "lineWidth": 3, "lineColor": "#010203", "majorTickColor": "green",
            "textColor": 2, "fill": "gray",
            "ranges": [{"from": 30, "to": 40.5, "color": "@Color", "borderColor": "white",
                "lineWidth": -1, "height": 0.25}],
            "points": ["@Score", {"at": "@Mean", "size": 9, "color": "red",
                "symbol": "hollow-triangle", "lineWidth": 4}]}},
        {"space": 25},
        {"legend": {"left": "V", "labelColor": "yellow", "marginTop": 1, "marginBottom": 2,
            "labelSize": 20, "labelFont": "Times", "first": 22, "last": 77, "start": 30,
            "step": 11, "leftAlign": "center bottom"}},
        {"legend": {"texts": [{"at": 50, "text": "mean"}], "lines": true, "lineStyle": "dash",
            "lineWidth": 0}},
        {"legend": {"scale": "s", "right": "R", "ranges": [{"from": 20, "to": 50,
            "text": "low\n@Score"}], "direction": "down", "lineColor": "#abcdef"}}])"));
    EXPECT_TRUE(described == coded);
    EXPECT_GT(described.size(), 1000u);
}

TEST(GraphFile, FindsTicksColumnsAndHeight) {
    const auto scale = [](const std::string& left, const std::string& keys) {
        return R"({"scale": {"left": ")" + left + R"(", )" + keys + "}}";
    };
    const auto graph = [](const std::string& sections) {
        return graphOf(R"("sections": [)" + sections + "]");
    };
    for (const auto& [ends, ticks] :
         {std::pair(R"("min": 20, "max": 80)", R"("majorTick": 10, "ticksFrom": 20)"),
          {R"("min": 17, "max": 43)", R"("majorTick": 5, "ticksFrom": 20, "ticksTo": 40)"},
          {R"("min": -3, "max": 997)", R"("majorTick": 100, "ticksFrom": 0, "ticksTo": 900)"},
          {R"("min": 1, "max": 9)", R"("majorTick": 1, "ticksFrom": 1, "ticksTo": 9)"}}) {
        EXPECT_TRUE(metafileOf(graph(scale("", ends))) ==
                    metafileOf(graph(scale("", ends + std::string(", ") + ticks))))
            << ends;
    }
    // The bars of both scales leave room for the longer description.
    const std::string ends = R"("min": 0, "max": 9)";
    const auto found = metafileOf(graph(scale("", ends) + "," + scale("A long name", ends)));
    const auto given = [&](int width) {
        const std::string keys = ends + R"(, "leftWidth": )" + std::to_string(width);
        return metafileOf(graph(scale("", keys) + "," + scale("A long name", keys)));
    };
    int width = 0;
    while (width < 400 && given(width) != found) ++width;
    EXPECT_GT(width, 120);
    EXPECT_LT(width, 160);
    const GraphSheet sheet = fileOf(graphOf(R"("width": 5, "sections": [{"space": 200}])"))
                                 .Make("G", VarTable())
                                 ->GetSheet();
    EXPECT_EQ(sheet.width, 5);
    EXPECT_NEAR(sheet.height, 1.03, 1e-9);
}

TEST(GraphFile, PlacesRanksByTheNormalCurve) {
    const std::string graph = graphOf(
        R"("frame": false, "marginLeft": 0, "marginRight": 0, "sections": [{"scale": {"min": 1,
           "max": 99, "spacing": "normal", "majorTick": 0, "points": [1, 2.27501, 15.86553, 50,
           84.13447, 97.72499, 99, 0.01, 100]}}])");
    RecordingDevice device;
    CDC dc(device);
    fileOf(graph).Make("G", VarTable())->Draw(dc, CRect(0, 0, 10000, 10000));
    std::vector<int> places;
    for (const Primitive& primitive : device.Primitives()) {
        if (primitive.kind == Primitive::Kind::Polygon) places.push_back(primitive.points[0].x);
    }
    // The first percent lies 2.32635 standard deviations below the middle.
    const double deviation = 5000 / 2.32635;
    const double wanted[] = {-2.32635, -2, -1, 0, 1, 2, 2.32635, -2.32635, 2.32635};
    ASSERT_EQ(places.size(), std::size(wanted));
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_NEAR(places[i], 5000 + wanted[i] * deviation, 1) << i;
    }
}

/// Where in the first line of a text the fault is.
constexpr std::string_view cHere = "<<";

/// The fault starts like this, its place included or shown by the text. At the start of a path, G
/// means the graph and S the scale that is its first section.
void expectFault(std::string text, std::string fault) {
    const std::regex graph("^([0-9:]* ?)G(?=[/:])");
    const std::regex scale("^([0-9:]* ?)S(?=[/:])");
    fault = std::regex_replace(fault, graph, "$1/graphs/G");
    fault = std::regex_replace(fault, scale, "$1/graphs/G/sections/0/scale");
    if (const auto at = text.find(cHere); at != std::string::npos) {
        text.erase(at, cHere.size());
        fault = "1:" + std::to_string(at + 1) + ": " + fault;
    }
    EXPECT_THAT(faultOf(text), StartsWith(fault)) << text;
}

TEST(GraphFile, FaultsHavePlaceAndPath) {
    const struct {
        std::string text;
        const char* fault;  ///< how it starts; with its place when the text does not show it
    } cases[] = {
        // The text.
        {"", "1:1: invalid JSON: the document is empty"},
        {"{\"graphs\": {}\n 7", "2:2: invalid JSON: missing a comma or '}'"},
        {"{\"graphs\": {\"A\": \"\xFF\"}}", "1:19: invalid JSON: invalid encoding"},
        {std::string("{\"graphs\"\0: {}}", 15), "1:10: invalid JSON: null byte"},
        {R"({"graphs": {"A": {"sections": [{"heading": <<"\u0000"}]}}})",
         "the text contains a null"},
        {"{\"graphs\": {\"A\": {},\n\"B\": {}, \"A\": {}}}", "2:10: duplicate key 'A'"},
        {std::string(33, '['), "1:33: nested more than 32 deep"},
        {"\xEF\xBB\xBF[]", "1:4: must be an object, not a list"},
        {graphOf(R"("width": <<-1e999)"), "invalid JSON: number too big"},
        {graphOf("\"width\": <<" + std::string(400, '9')), "invalid JSON: number too big"},
        {graphOf(R"("width": <<1e-999)"), "G/width: 0 is out of range"},
        {"{}", "1:1: 'graphs' is missing"},
        {R"({"graphs": {<<"9": {}}})", "/graphs/9: invalid name of a graph: write up to 32"},
        {R"({"graphs": {<<"a/~": {}}})", "/graphs/a~1~0: invalid name"},
        {R"({"graphs": <<{"H": {"sections": [{"space": 1}]}}})",
         "/graphs: there is no graph 'G'; did you mean 'H'?"},
        // Keys and types.
        {graphOf(R"("type": <<"pie")"), "G/type: unknown type of graph; there are bar"},
        {graphOf(""), "1:18: G: 'sections' is missing"},
        {graphOf(R"("sections": <<[])"), "G/sections: a graph needs at least one section"},
        {graphOf(R"("sections": [<<{"heading": "a", "space": 1}])"),
         "G/sections/0: a section must have one key"},
        {graphOf("\"sections\":\n [{\"heding\": \"a\"}]"),
         "2:4: G/sections/0/heding: unknown key; did you mean 'heading'?"},
        {graphOf(R"("sections": <<{})"), "G/sections: must be a list, not an object"},
        {graphOf(R"("sections": [{"scale": <<{"max": 3}}])"), "S: 'min' is missing"},
        {scaleOf(R"(<<"lines": true)"), "S/lines: unknown key"},
        {scaleOf(R"("points": [<<null])"), "S/points/0: must be a score or an object, not null"},
        {scaleOf(R"("points": [<<{}])"), "S/points/0: 'at' is missing"},
        {graphOf(R"("frame": <<1)"), "G/frame: must be true or false, not a number"},
        {graphOf(R"("title": <<1)"), "G/title: must be a text, not a number"},
        // Values.
        {graphOf(R"("width": <<0.05)"), "G/width: 0.05 is out of range: 0.1 to 200"},
        {scaleOf(R"("textSize": <<1001)"), "S/textSize: 1001 is out of range: 1 to 1000"},
        {scaleOf(R"("leftWidth": <<2.5)"), "S/leftWidth: 2.5 is not a whole number"},
        {scaleOf(R"("leftWidth": 600, "rightWidth": 360)"),
         "1:42: S: margins and text widths take 1000 of 1000"},
        {scaleOf(R"("plotMin": 5, "plotMax": <<5)"), "S/plotMax: must be greater than 'plotMin'"},
        {scaleOf(R"("spacing": "normal")"),
         "1:50: S/min: must be between 1 and 99 with normal spacing"},
        {scaleOf(R"("points": [<<true])"), "S/points/0: must be a score or an object, not true"},
        {graphOf(R"("sections": [{"heading": <<[]}])"),
         "G/sections/0/heading: must be a text or an object, not a list"},
        {scaleOf(R"("spacing": <<"log")"), "S/spacing: "},
        {graphOf(R"("sections": [{"scale": {"min": 5, "max": <<5}}])"),
         "S/max: must be greater than 'min'"},
        {scaleOf(R"("ranges": [{"from": 3, "to": <<2}])"),
         "S/ranges/0/to: must not be less than 'from'"},
        {graphOf(R"("sections": [{"scale": {"min": 0, "max": 1000, "minorTick": <<1}}])"),
         "S/minorTick: more than 1000 ticks"},
        {graphOf(R"("sections": [{"scale": {"min": 0, "max": 10}}, {"legend": <<{"last": 1000}}])"),
         "G/sections/1/legend: more than 1000 labels"},
        {scaleOf(R"("fill": <<"grean")"), "S/fill: 'grean' is not a color"},
        {scaleOf(R"("fill": <<"#12345G")"), "S/fill: '#12345G' is not a color"},
        {scaleOf(R"("fill": <<9)"), "S/fill: 9 is out of range: 0 to 8"},
        {graphOf(R"("align": <<"left right")"), "G/align: 'right' contradicts the word"},
        {graphOf(R"("align": <<"")"), "G/align: '' is not allowed here"},
        {scaleOf(R"("points": [{"at": 1, "symbol": <<"star"}])"),
         "S/points/0/symbol: 'star' is not allowed here; there are circle"},
        {graphOf(R"("palette": <<[])"), "G/palette: the palette needs at least one color"},
        {graphOf(R"("width": 200, "sections": [{"space": 1000}, {"space": <<1}])"),
         "G/sections/1/space: with this section the graph is higher than 200"},
        // Scales of legends.
        {graphOf(R"("sections": [{"legend": <<{}}])"),
         "G/sections/0/legend: there is no scale above"},
        {graphOf(
             R"("sections": [{"scale": {"name": "one", "min": 0, "max": 1}}, {"legend": {"scale": <<"onn"}}])"),
         "G/sections/1/legend/scale: there is no scale of this name; did you mean 'one'?"},
        {graphOf(
             R"("sections": [{"scale": {"name": "a", "min": 0, "max": 1}}, {"scale": {"name": <<"a", "min": 0, "max": 1}}])"),
         "G/sections/1/scale/name: duplicate name of a scale"},
        // Characters and variables.
        {graphOf(R"("title": "a\n\u00e4<<\ud83d\ude00")"),
         "G/title: a character that Windows-1252"},
        {graphOf("\"title\": \"\xC3\xA4\xE2\x86\x92\""),
         "1:31: G/title: a character that Windows-1252"},
        {graphOf(R"("title": <<"a @ b")"),
         "G/title: invalid reference: write @Name for a variable"},
        {graphOf(R"("title": <<"@{Name:16}")"),
         "G/title: invalid reference: write @Name for a variable"},
        {scaleOf(R"("points": [<<"7"])"), "S/points/0: must be a number, or a variable"},
        {scaleOf(R"("left": <<"a @Scor b")"),
         "S/left: there is no variable 'Scor'; did you mean 'Score'?"},
        {scaleOf(R"("points": [<<"@Name"])"), "S/points/0: the variable 'Name' is not a number"},
        {scaleOf(R"("textSize": <<"@Mean")"), "S/textSize: 3.25 is not a whole number"},
        {graphOf(R"("sections": [{"scale": {"min": 7, "max": <<"@Score"}}])"),
         "S/max: must be greater than 'min'"},
        {scaleOf(R"("fill": <<"@Name")"), "S/fill: 'A"},
    };
    for (const auto& c : cases) expectFault(c.text, c.fault);
}

TEST(GraphFile, ChecksAllGraphsWithoutVariables) {
    const std::string good = R"({"min": "@A", "max": "@B", "points": ["@A"], "fill": "@C",
        "majorTick": "@A", "left": "@{A:2}", "lineWidth": "@A"})";
    const std::string text = R"({"graphs": {"A": {"align": "@C", "sections": [{"scale": )" + good +
                             R"(}, {"legend": {"step": "@A"}}]}, "B": {"sections": [{"space": )";
    EXPECT_EQ(fileOf(text + "1}]}}}").GetNames(), (std::vector<CString>{"A", "B"}));
    EXPECT_THAT(faultOf(text + "-1}]}}}"),
                HasSubstr("/graphs/B/sections/0/space: -1 is out of range"));
}

TEST(GraphFile, LimitsOfLists) {
    const auto repeated = [](const std::string& text, int count) {
        std::string list = text;
        for (int i = 1; i < count; ++i) list += "," + text;
        return "[" + list + "]";
    };
    const auto sections = [&](int count) {
        return graphOf(R"("sections": )" + repeated(R"({"space": 1})", count));
    };
    EXPECT_EQ(faultOf(sections(1000)), "");
    EXPECT_THAT(faultOf(sections(1001)), HasSubstr("/sections/1000: too many: at most 1000"));
    const auto points = [&](int count) { return scaleOf(R"("points": )" + repeated("1", count)); };
    EXPECT_EQ(faultOf(points(100000)), "");
    EXPECT_THAT(faultOf(points(100001)), HasSubstr("/points/100000: too many"));
    const auto title = [](std::size_t length) {
        return graphOf(R"("sections": [{"space": 1}], "title": ")" + std::string(length, 'x') +
                       "\"");
    };
    EXPECT_EQ(faultOf(title(32767)), "");
    EXPECT_THAT(faultOf(title(32768)), HasSubstr("/title: the text is longer than 32767"));
}

TEST(GraphFile, FillsVariablesIntoTexts) {
    for (const auto& [text, filled] : {std::pair("@Name, @@ @Score.", "A\\b\xE4, @ 7."),
                                       {"@{Score}th @Mean @{Mean:1}", "7th 3.25 3.2"},
                                       {"@{Score:2}@{Name:2}@Color", "7.00A\\b\xE4navy"},
                                       {"", ""}}) {
        const auto graph =
            fileOf(graphOf(R"("sections": [{"space": 1}], "title": ")" + std::string(text) + "\""))
                .Make("G", Variables());
        EXPECT_EQ(graph->GetSheet().title, filled);
    }
}

TEST(GraphPicture, SaysWhatItShowsOnRequest) {
    const std::string text = graphOf(R"("title": "\u00e4{", "sections": [
        {"scale": {"min": 0, "max": 10, "left": "\\bWorry\n\\\\", "points": ["@Score"],
            "ranges": [{"from": "@Mean", "to": 8.5, "name": "90%"}, {"from": -0.001, "to": 1}]}},
        {"scale": {"min": 0, "max": 5, "right": "B", "points": [{"at": 1, "name": "before"}, 2]}},
        {"scale": {"min": 0, "max": 5}}])");
    const auto graph = fileOf(text).Make("G", Variables());
    EXPECT_EQ(graph->GetSheet().description,
              "Worry \\: 7, 90% 3.25 to 8.5, range 0 to 1, on a scale from 0 to 10. "
              "B: before 1, 2, on a scale from 0 to 5. "
              "no score, on a scale from 0 to 5.");
    const auto rtf = [&](bool hasText) {
        CMemFile file;
        writeGraphAsRTF(*graph, file, {cPictureDpi, hasText});
        return std::string(file.View());
    };
    const std::string property =
        "{\\*\\picprop{\\sp{\\sn wzDescription}{\\sv \\'e4\\{. Worry \\\\: 7, 90%";
    EXPECT_THAT(rtf(true), StartsWith("{\\*\\shppict{\\pict" + property));
    std::string without = rtf(true);
    const auto start = without.find("{\\*\\picprop");
    without.erase(start, without.find("}}}", start) + 3 - start);
    EXPECT_EQ(without, rtf(false));
    EXPECT_THAT(graphAsSvg(*graph, {96, true}), HasSubstr("<title>\xC3\xA4{</title>\n<desc>Worry"));
    EXPECT_THAT(graphAsSvg(*graph, {96, false}), Not(HasSubstr("<title>")));
    // The author's own words instead.
    const auto told =
        fileOf(graphOf(R"("description": "Score @Score", "sections": [{"space": 1}])"))
            .Make("G", Variables());
    EXPECT_EQ(textAlternative(*told), "G. Score 7");
    const std::string many = scaleOf(R"("points": [1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1])");
    EXPECT_THAT(std::string(fileOf(many).Make("G", VarTable())->GetSheet().description),
                HasSubstr("1, 1, 2 more, on a scale"));
}

TEST(GraphFctTable, WritesAPictureOrNothing) {
    const GraphFile file = fileOf(scaleOf(R"("points": ["@Late"])"));
    VarTable table;
    CMemFile output;
    GraphFctTable functions(file, table, {}, &output);
    EXPECT_EQ(functions.Call("H"), 0);
    EXPECT_THROW(functions.Call("G"), InputError);
    EXPECT_EQ(output.GetLength(), 0u);
    table.AddVar("Late", 3);
    EXPECT_NE(functions.Call("G"), 0);
    EXPECT_THAT(std::string(output.View()), StartsWith("{\\*\\shppict{\\pict\\emfblip"));
}

std::string contentsOf(const std::string& path) {
    std::ifstream file(TESSALINK_SOURCE_DIR "/docs/" + path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> blocksOf(const std::string& text, const std::string& kind) {
    std::vector<std::string> blocks;
    const std::string fence = "```" + kind + "\n";
    for (auto at = text.find(fence); at != std::string::npos; at = text.find(fence, at)) {
        at += fence.size();
        blocks.push_back(text.substr(at, text.find("```", at) - at));
    }
    return blocks;
}

TEST(GraphManual, PicturesAreThoseOfItsExamples) {
    const std::string manual = contentsOf("graph-files.md");
    const auto files = blocksOf(manual, "json");
    const auto tables = blocksOf(manual, "text");
    const char* const names[] = {"Anxiety", "Progress", "Clinical", "Circle"};
    const char* const pictures[] = {"images/graph-anxiety.svg", "images/graph-progress.svg",
                                    "images/graph-clinical.svg", "images/graph-circle.svg"};
    ASSERT_EQ(files.size(), std::size(names));
    ASSERT_EQ(tables.size(), std::size(names));
    for (std::size_t i = 0; i < std::size(names); ++i) {
        // The manual has blanks where the file has tabs.
        const std::string lines = std::regex_replace(tables[i], std::regex(" {2,}"), "\t");
        CMemFile file(lines);
        VarTable table;
        readVariables(file, table);
        const auto graph = fileOf(files[i]).Make(names[i], table);
        EXPECT_EQ(graphAsSvg(*graph, {cPictureDpi, true}), contentsOf(pictures[i])) << pictures[i];
    }
}

/// The keys that a fault at an unknown one lists.
std::set<std::string> listedKeys(const std::string& text) {
    const std::string fault = faultOf(text);
    std::set<std::string> keys;
    const std::regex word("[a-zA-Z]+");
    const std::string list = fault.substr(fault.find("there are ") + 10);
    for (std::sregex_iterator at(list.begin(), list.end(), word), end; at != end; ++at) {
        keys.insert(at->str());
    }
    return keys;
}

/// The properties of a definition of the schema.
std::set<std::string> schemaKeys(const std::string& schema, const std::string& definition) {
    const auto start = schema.find("\n    \"" + definition + "\": {");
    const auto end = schema.find("\n    }", start);
    const std::string text = schema.substr(start, end - start);
    std::set<std::string> keys;
    const std::regex property("\n        \"([a-zA-Z]+)\":");
    for (std::sregex_iterator at(text.begin(), text.end(), property), last; at != last; ++at) {
        keys.insert((*at)[1]);
    }
    return keys;
}

std::string textOf(const std::string& members) {
    return textAlternative(*fileOf(graphOf(members)).Make("G", Variables())).GetString();
}

TEST(GraphFile, FurtherTypesSayWhatTheyShow) {
    const std::pair<const char*, const char*> cases[] = {
        {R"("type": "profile", "min": 0, "max": 10, "scales": ["A", {"text": "B", "texts": ["1"]}],
            "profiles": [{"name": "P", "values": ["@Score", null]}], "lines": [5],
            "bands": [{"from": [1, 2], "to": [3, 4], "name": "N"}], "breaks": [1])",
         "G. P: A 7, no score for B, on a scale from 0 to 10. N: A 1 to 3, B 2 to 4. Line at 5."},
        {R"("type": "horizontal-profile", "title": "T", "columns": ["Raw"],
            "scales": [{"group": "X"}, {"text": "A", "texts": ["3"]}],
            "profiles": [{"values": ["@Mean"]}])",
         "T. A 3.25, on a scale from 0 to 100."},
        {R"("type": "circumplex", "range": 8, "titles": ["C"],
            "sectors": [{"from": 120, "to": 180, "text": "\\bcold"}, {"from": -60, "to": 60,
            "text": "warm"}],
            "points": [{"angle": 90, "length": "@Score", "name": "Q"}, {"x": 1, "y": 0}],
            "profiles": [{"name": "@Name", "start": 0, "lengths": [2, null, 3, 4]}])",
         "G. C: x from -8 to 8, y from -8 to 8. Q: x 0, y 7, angle 90, length 7. x 1, y 0, angle "
         "0, length 1. A\\b\xE4, warm: x 2, y 0, angle 0, length 2. A\\b\xE4, cold: x -3, y 0, "
         "angle 180, length 3. A\\b\xE4: x 0, y -4, angle 270, length 4."},
        {R"("type": "style", "titles": ["S"])", "G. S: x from -10 to 10, y from -10 to 10."}};
    for (const auto& [members, text] : cases) EXPECT_EQ(textOf(members), text);
}

CStringArray* newTexts(std::initializer_list<const char*> texts) {
    auto* const array = new CStringArray;
    for (const char* const text : texts) array->Add(text);
    return array;
}

double* newScores(std::initializer_list<double> scores) {
    return std::copy(scores.begin(), scores.end(), new double[scores.size()]) - scores.size();
}

template <class Graph>
std::string metafileOfGraph(Graph& graph) {
    return metafileOf([&](CDC& dc, const CRect& rect) { graph.Draw(&dc, rect); });
}

constexpr double cNoScore = ProfileGraph3::cDefaultMissingValue;

TEST(GraphFile, DrawsWhatTheSameProfilesInCodeDraw) {
    // 6 by 4 inches with texts of 9 points.
    ProfileGraph3 upright(-7, 42, 5, 2, 0, 1, 336, 224);
    upright.SetTypeface("Arial");
    upright.SetXLegend(newTexts({"H", "A", "\\bB", "7"}));
    upright.SetYRange(-7, 42, 5, 2, -10, -8);
    upright.ScaleHorzLines(true);
    upright.SetYLabelStart(-5);
    upright.SetYLabelEnd(40);
    upright.SetYLegend("T");
    upright.AddBand(10.5, 20, RGB(0, 0, 128), "norm");
    const double lows[] = {1, 2, 3};
    const double highs[] = {4, 7, 3};
    upright.AddBand(lows, highs, RGB(255, 0, 0), nullptr);
    upright.AddBreak(1);
    upright.AddBreak(2, ProfileGraph3::cDoubleBreak);
    upright.AddHorzLine(15);
    upright.AddSkyLine(newScores({1, 2, 3.25}), RGB(0, 128, 0));
    upright.AddProfile("A\\b\xE4", newScores({7, cNoScore, 50}), RGB(255, 255, 0), 0,
                       ProfileGraph3::PointType::SymbolAndValue, PS_DASH, 1);
    upright.AddProfile("", newScores({1, 2, 3}), ColorMgr::ColorSafePalette()[1], 1,
                       ProfileGraph3::PointType::LineOnly, PS_SOLID, 0);
    upright.SetPointScale(150);
    upright.ShowLegend(ProfileGraph3::LegendType::Inside);
    upright.SetLegendPosition(60, 10);
    EXPECT_TRUE(metafileOf(graphOf(R"(
        "type": "profile", "palette": "safe", "min": -7, "max": 42, "minorTick": 2,
        "font": "Arial",
        "leftAxis": false, "rightAxis": true, "rows": ["H"], "scales": ["A", "\\bB", "@Score"],
        "labelsFrom": -5, "labelsTo": 40, "axisTitle": "T", "bands": [
            {"from": 10.5, "to": 20, "color": "@Color", "name": "norm"},
            {"from": [1, 2, 3], "to": [4, "@Score", 3], "color": "red"}],
        "breaks": [1, {"after": 2, "kind": "double"}], "lines": [15],
        "skyLine": {"values": [1, 2, "@Mean"], "color": "green"}, "profiles": [
            {"name": "@Name", "values": ["@Score", null, 50], "color": "yellow", "line": "dash",
             "points": "value", "decimals": 1}, {"values": [1, 2, 3], "points": "none"}],
        "pointSize": 150, "legend": "inside", "legendX": 60, "legendY": 10)")) ==
                metafileOfGraph(upright));

    HorProfileGraph horizontal(20, 80, 10, 0, 336, 224);
    horizontal.SetTypeface("Arial");
    horizontal.SetXLegend("T");
    horizontal.AddHeaderRow("G");
    horizontal.AddRow("A");
    horizontal.AddRow("B");
    horizontal.SetScoreColsHeading("S");
    horizontal.AddScoreCol("Raw", newTexts({"7", ""}));
    horizontal.AddScoreCol("", newTexts({"1", ""}));
    horizontal.AddBand(40, 60, RGB(222, 232, 240));
    horizontal.AddVertLine(65);
    horizontal.AddProfile("P", newScores({30, 70}), cBlack, 0);
    horizontal.ShowLegend(HorProfileGraph::LegendType::Below);
    EXPECT_TRUE(metafileOf(graphOf(R"(
        "type": "horizontal-profile", "min": 20, "max": 80, "axisTitle": "T", "columns": ["Raw"],
        "font": "Arial",
        "columnsHeading": "S", "scales": [{"group": "G"}, {"text": "A", "texts": ["@Score", "1"]},
        "B"], "bands": [{"from": 40, "to": 60}], "lines": [65],
        "profiles": [{"name": "P", "values": [30, 70]}])")) == metafileOfGraph(horizontal));
}

TEST(GraphFile, DrawsWhatTheSameCircleInCodeDraws) {
    CircumplexGraph graph(-8, 8, -8, 8, 4, 1, 14, 10, 9, 9, 8, 8, 7, 8);
    graph.SetTypeface("Arial");
    graph.SetTitle("C", "7", "").SetNAxisText("N").SetSAxisText("S").SetEAxisText("E");
    graph.SetWAxisText("W").SetNWText("1", "2", "3").SetNEText("4", "", "").SetSWText("5", "", "");
    graph.SetSEText("6", "", "").SetLegendPlacement(CircumplexGraph::LegendRight);
    // The design of 6.5 by 5 inches, on a sheet of twice that width and height.
    graph.SetAdvancedOptions(11, 10, 1, 1, 2, 1, 1, 7, 1.5, 0.16);
    graph.AddCircle(8, RGB(0, 0, 128));
    graph.AddCircle(3.25, cWhite);
    graph.AddSector(45, 90, "in");
    graph.AddArc(0, 90, 2, 5, RGB(255, 0, 0), true);
    graph.AddPoint(3, 7, 0, "A\\\\b\xE4", ColorMgr::ColorSafePalette()[0],
                   CircumplexGraph::HollowDiamond, CircumplexGraph::NameInBoth);
    graph.AddPoint(Polar{200, 7}, 1, "", ColorMgr::ColorSafePalette()[1],
                   CircumplexGraph::AnySymbol, CircumplexGraph::NameBeside);
    int id = 2;
    for (const Polar& place : {Polar{30, 1}, {120, 2}, {300, 3}}) {
        graph.AddPoint(place, id, id == 2 ? "P" : "", RGB(0, 128, 0), CircumplexGraph::Disc,
                       id == 2 ? CircumplexGraph::NameInLegend : CircumplexGraph::NoName);
        ++id;
    }
    graph.AddConnection(std::vector<int>{4, 2, 3}, RGB(0, 128, 0), PS_DOT, false);
    EXPECT_TRUE(metafileOf(graphOf(R"(
        "type": "circumplex", "font": "Arial",
        "palette": "safe", "range": 8, "labelStep": 4, "gridDots": 1,
        "width": 13, "height": 10, "titles": ["C", "@Score"], "north": "N", "south": "S",
        "east": "E", "west": "W", "northWest": ["1", "2", "3"], "northEast": ["4"],
        "southWest": ["5"], "southEast": ["6"], "legend": "right",
        "rings": [{"radius": 8, "color": "@Color"}, {"radius": "@Mean", "color": "white"}],
        "sectors": [{"from": 45, "to": 90, "text": "in"}],
        "arcs": [{"from": 0, "to": 90, "inner": 2, "outer": 5, "color": "red", "filled": true}],
        "points": [{"x": 3, "y": "@Score", "name": "@Name", "symbol": "hollow-diamond",
            "show": "both"}, {"angle": 200, "length": "@Score"}],
        "profiles": [{"name": "P", "color": "green", "symbol": "circle", "line": "dot", "start": 30,
            "lengths": [1, 2, null, 3]}])")) == metafileOfGraph(graph));
}

TEST(GraphFile, LeavesOutWhatHasNoValue) {
    const auto typed = [](const char* type, const char* members) {
        return graphOf(std::string(R"("type": ")") + type + "\", " + members);
    };
    const std::pair<std::string, std::string> cases[] = {
        {scaleOf(R"("points": ["@None", 3, {"at": "@{NaN}", "name": "N"}, "@Score"],
                    "ranges": [{"from": "@None", "to": 1}, {"from": 2, "to": 4, "name": "R"},
                               {"from": 2, "to": "@None"}])"),
         scaleOf(R"("points": [3, 7], "ranges": [{"from": 2, "to": 4, "name": "R"}])")},
        {typed("profile", R"("scales": ["A", "B"], "profiles": [{"values": ["@None", 2]}])"),
         typed("profile", R"("scales": ["A", "B"], "profiles": [{"values": [null, 2]}])")},
        {typed("circumplex", R"("points": [{"x": 1, "y": "@None"}, {"angle": "@None", "length": 1}],
                                "profiles": [{"lengths": [1, "@NaN", 2], "color": "red"}])"),
         typed("circumplex", R"("profiles": [{"lengths": [1, null, 2], "color": "red",
                                              "symbol": "auto"}])")},
    };
    for (const auto& [text, same] : cases) {
        EXPECT_TRUE(metafileOf(text) == metafileOf(same)) << text;
        const auto sentences = [](const std::string& description) {
            return fileOf(description).Make("G", Variables())->GetSheet().description;
        };
        EXPECT_EQ(sentences(text), sentences(same));
    }
}

TEST(GraphFile, FaultsOfFurtherTypes) {
    const auto profile = [](const std::string& members) {
        return graphOf(R"("type": "profile", "scales": ["A", "B"], )" + members);
    };
    const std::pair<std::string, const char*> cases[] = {
        {graphOf(R"("type": "profile", "scales": <<[])"),
         "G/scales: a profile needs at least one scale"},
        {graphOf(R"("type": "horizontal-profile", "scales": <<[{"group": "A"}])"),
         "G/scales: a profile needs at least one scale"},
        {graphOf(R"("type": "horizontal-profile", "scales": ["A"], "bands": [{"from": <<0.5, "to":
         1}])"),
         "G/bands/0/from: 0.5 is not a whole number"},
        {graphOf(R"("type": "profile", "scales": [{<<"group": "A"}])"),
         "G/scales/0/group: unknown key"},
        {graphOf(R"("type": "profile", "scales": [{"text": "A", "texts": ["", "", "", <<""]}])"),
         "G/scales/0/texts/3: too many: at most 3"},
        {profile(R"("profiles": [{"values": <<[1]}])"),
         "G/profiles/0/values: there must be a score for each of the 2 scales, not 1"},
        {profile(R"("profiles": [{"values": [1, <<"@Name"]}])"),
         "G/profiles/0/values/1: the variable 'Name' is not a number"},
        {profile(R"("min": 5, "max": <<5)"), "G/max: must be greater than 'min'"},
        {profile(R"("min": <<100)"), "G/min: 'max' must be greater than 'min'; they are 0 and 100"},
        {profile(R"("max": <<-3)"), "G/max: 'max' must be greater than 'min'"},
        {profile(R"("labelsTo": <<101)"), "G/labelsTo: must not lie outside 'min' and 'max'"},
        {profile(R"("legend": <<"left")"), "G/legend: 'left' is not allowed here"},
        {profile(R"("breaks": [<<2])"), "G/breaks/0: there is no scale after this break"},
        {profile(R"("breaks": [1, <<{"after": 1}])"),
         "G/breaks/1: breaks must be in ascending order"},
        {profile(R"("bands": [{"from": 3, "to": <<2}])"),
         "G/bands/0/to: must not be less than 'from'"},
        {profile(R"("bands": [{"from": [1, 3], "to": [1, <<2]}])"),
         "G/bands/0/to/1: must not be less than the same score in 'from'"},
        {profile(R"("bands": [{"from": [1, 3], "to": <<2}])"),
         "G/bands/0/to: must be a list, not a number"},
        {profile(R"("skyLine": {"values": [1, <<null]})"),
         "G/skyLine/values/1: must be a number, not null"},
        {graphOf(R"("type": "circumplex", "points": [<<{"angle": 1}])"),
         "G/points/0: 'length' is missing"},
        {graphOf(R"("type": "style", "range": 3, "rings": [{"radius": <<3.5}])"),
         "G/rings/0/radius: the ring is larger than the circle"},
        {graphOf(R"("type": "style", <<"points": [])"), "G/points: unknown key"},
        {graphOf(R"("type": <<"circle")"), "G/type: unknown type of graph; there are bar"},
    };
    for (const auto& [text, fault] : cases) expectFault(text, fault);
    // What waits for variables is no fault.
    EXPECT_EQ(fileOf(profile(R"("min": "@A", "max": "@B", "majorTick": "@A", "breaks": ["@C"],
        "bands": [{"from": ["@A", 2], "to": [1, "@B"]}, {"from": 3, "to": "@B"}])"))
                  .GetNames()
                  .size(),
              1u);
}

TEST(GraphManual, SchemaHasTheKeysThatAreRead) {
    const std::string schema = contentsOf("graph-file.schema.json");
    const std::string none = R"("_________________": 0)";
    const auto section = [](const std::string& kind, const std::string& members) {
        return graphOf(R"("sections": [{"scale": {"min": 0, "max": 1}}, {")" + kind + "\": {" +
                       members + "}}]");
    };
    const auto typed = [](const std::string& type, const std::string& members) {
        return graphOf(R"("type": ")" + type + "\", " + members);
    };
    const auto scaled = [&](const std::string& members) {
        return typed("profile", R"("scales": ["A"], )" + members);
    };
    const std::pair<const char*, std::string> places[] = {
        {"graph", graphOf(none)},
        {"section", graphOf("\"sections\": [{" + none + "}]")},
        {"heading", section("heading", none)},
        {"headingOfTexts", section("heading", R"("texts": [], )" + none)},
        {"textItem", section("heading", R"("texts": [{)" + none + "}]")},
        {"scale", section("scale", none)},
        {"point", scaleOf(R"("points": [{)" + none + "}]")},
        {"range", scaleOf(R"("ranges": [{)" + none + "}]")},
        {"valueLegend", section("legend", none)},
        {"textLegend", section("legend", R"("texts": [], )" + none)},
        {"textLabel", section("legend", R"("texts": [{)" + none + "}]")},
        {"rangeLegend", section("legend", R"("ranges": [], )" + none)},
        {"rangeLabel", section("legend", R"("ranges": [{)" + none + "}]")},
        {"profileGraph", typed("profile", none)},
        {"horizontalProfile", typed("horizontal-profile", none)},
        {"profileScale", typed("profile", R"("scales": [{)" + none + "}]")},
        {"profileGroup",
         typed("horizontal-profile", R"("scales": [{"group": "G", )" + none + "}]")},
        {"profile", scaled(R"("profiles": [{)" + none + "}]")},
        {"profileBand", scaled(R"("bands": [{)" + none + "}]")},
        {"plainBand", typed("horizontal-profile", R"("scales": ["A"], "bands": [{)" + none + "}]")},
        {"skyLine", scaled(R"("skyLine": {)" + none + "}")},
        {"profileBreak", scaled(R"("breaks": [{)" + none + "}]")},
        {"style", typed("style", none)},
        {"circumplex", typed("circumplex", none)},
        {"circleRing", typed("style", R"("rings": [{)" + none + "}]")},
        {"circleSector", typed("circumplex", R"("sectors": [{)" + none + "}]")},
        {"circleArc", typed("circumplex", R"("arcs": [{)" + none + "}]")},
        {"circlePoint", typed("circumplex", R"("points": [{)" + none + "}]")},
        {"polarPoint", typed("circumplex", R"("points": [{"angle": 1, )" + none + "}]")},
        {"circleProfile", typed("circumplex", R"("profiles": [{)" + none + "}]")},
    };
    for (const auto& [definition, text] : places) {
        EXPECT_EQ(schemaKeys(schema, definition), listedKeys(text)) << definition;
    }
}

/// A text as records of a metafile have it.
std::string utf16Of(std::string_view text) {
    std::string units;
    for (const char ch : text) {
        const auto character = toUnicode(ch);
        units += {static_cast<char>(character & 0xFF), static_cast<char>(character >> 8)};
    }
    return units;
}

TEST(GraphFile, DrawsTheLettersOfTheCodePage) {
    const struct {
        CodePage page;
        const char* title;  // ".", three letters, "."
        const char* bytes;
        const char* start;
        const char* alternative;
    } cases[] = {
        {CodePage::Cyrillic, ".\u0416\u0443\u044F.", ".\xC6\xF3\xFF.",
         "\\ansicpg1251\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset204 Arial;}}", ".\\'c6\\'f3\\'ff."},
        {CodePage::Greek, ".\u03A8\u03AC\u03C2.", ".\xD8\xDC\xF2.",
         "\\ansicpg1253\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset161 Arial;}}", ".\\'d8\\'dc\\'f2."},
        {CodePage::CentralEuropean, ".\u0141\u017C\u0151.", ".\xA3\xBF\xF5.",
         "\\ansicpg1250\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset238 Arial;}}", ".\\'a3\\'bf\\'f5."},
        {CodePage::Western, ".\u0152\u00F1\u0178.", ".\x8C\xF1\x9F.",
         "\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Arial;}}", ".\\'8c\\'f1\\'9f."},
    };
    for (const auto& test : cases) {
        HostServices services;
        services.codePage = test.page;
        const HostServicesScope scope(services);
        const auto graph = fileOf(graphOf(std::string(R"("title": ")") + test.title +
                                          R"(", "sections": [{"heading": {"texts": [{"text": ")" +
                                          test.title + R"(", "position": 50}]}}])"))
                               .Make("G", Variables());
        EXPECT_EQ(graph->GetSheet().title, test.bytes);
        GraphPictureOptions options;
        options.hasTextAlternative = true;
        const std::string svg = graphAsSvg(*graph, options);
        EXPECT_THAT(svg, HasSubstr(std::string(">") + test.title + "</text>"));
        EXPECT_THAT(svg, HasSubstr(std::string("<title>") + test.title + "</title>"));
        const std::vector<BYTE> metafile = graphAsMetafile(*graph, 96);
        EXPECT_THAT(std::string(metafile.begin(), metafile.end()), HasSubstr(utf16Of(test.bytes)));
        // Played again, the texts are what they were.
        HENHMETAFILE played = makeEnhMetaFile(metafile);
        ASSERT_NE(played, nullptr);
        SvgDevice device({600, 400});
        CDC dc(device);
        PlayEnhMetaFile(&dc, played, CRect(0, 0, 600, 400));
        DeleteEnhMetaFile(played);
        EXPECT_THAT(device.Finish(), HasSubstr(std::string(">") + test.title + "</text>"));
        CMemFile file;
        writeGraphDocument(*graph, file, options);
        EXPECT_THAT(std::string(file.View()), HasSubstr(test.start));
        EXPECT_THAT(std::string(file.View()), HasSubstr(test.alternative));
        if (test.page == CodePage::Western) continue;
        try {
            graphAsPdf(*graph, options);
            ADD_FAILURE() << "PDF has no letters of " << codePageName();
        } catch (const CException& fault) {
            EXPECT_THAT(fault.what(), HasSubstr("texts are in " + codePageName()));
        }
        EXPECT_THAT(faultOf(graphOf(R"("title": "\u4E2D")")),
                    HasSubstr("a character that " + codePageName()));
    }
}

}  // namespace
}  // namespace tessalink::test
