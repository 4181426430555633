#include "platform/graphics/SvgDevice.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/graphics/CDC.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/Xml.h"

namespace {

using tessalink::SvgDevice;
using tessalink::test::XmlCheck;

// The elements that the calls add to an empty picture.
std::string elements(const std::function<void(CDC&)>& calls) {
    SvgDevice device({100, 80});
    CDC dc(device);
    CFont font;
    font.CreateFont(-16, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    dc.SelectObject(&font);
    dc.SetBkMode(TRANSPARENT);
    calls(dc);
    dc.AttachDevice(nullptr);
    const std::string svg = device.Finish();
    EXPECT_EQ(XmlCheck::Fault(svg), "") << svg;
    const std::size_t start = svg.find(">\n", svg.find("<svg")) + 2;
    return svg.substr(start, svg.rfind("</svg>") - start);
}

std::string withPen(UINT style, int width, const std::function<void(CDC&)>& calls) {
    CPen pen(style, width, RGB(255, 0, 0));
    return elements([&](CDC& dc) {
        dc.SelectObject(&pen);
        dc.SelectStockObject(NULL_BRUSH);
        calls(dc);
    });
}

TEST(SvgDevice, WritesTheSheet) {
    SvgDevice device({300, 200, 96, "Scores <A&B>\x01", "The profile of \"M\xFCller\""});
    const std::string expected =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
        "version=\"1.1\" width=\"300\" height=\"200\" viewBox=\"0 0 300 200\" "
        "xml:space=\"preserve\" shape-rendering=\"crispEdges\" stroke-linejoin=\"round\" "
        "font-family=\"Arial,Liberation Sans,Helvetica,sans-serif\">\n"
        "<title>Scores &lt;A&amp;B&gt; </title>\n"
        "<desc>The profile of &quot;M\xC3\xBCller&quot;</desc>\n</svg>\n";
    EXPECT_EQ(device.Finish(), expected);
    EXPECT_EQ(device.Finish(), "");
    SvgDevice printed({6000, 3000, 600});
    EXPECT_EQ(printed.Caps().widthMm, 254);
    const std::string svg = printed.Finish();
    EXPECT_NE(svg.find("width=\"254mm\" height=\"127mm\" viewBox=\"0 0 6000 3000\""), svg.npos);
    EXPECT_EQ(XmlCheck::Fault(SvgDevice({-5, 0, 0}).Finish()), "");
}

// Lines cover their first unit and not their last, whichever way they run.
TEST(SvgDevice, DrawsLinesThroughTheMiddleOfUnits) {
    struct Case {
        POINT from, to;
        const char* points;
    };
    const Case cases[] = {{{10, 5}, {20, 5}, "10,5.5 20,5.5"},
                          {{20, 5}, {10, 5}, "21,5.5 11,5.5"},
                          {{5, 10}, {5, 20}, "5.5,10 5.5,20"},
                          {{5, 20}, {5, 10}, "5.5,21 5.5,11"},
                          {{-3, 0}, {4, 9}, "-2.5,0.5 4.5,9.5"}};
    for (const Case& c : cases) {
        EXPECT_EQ(
            withPen(PS_SOLID, 0,
                    [&](CDC& dc) {
                        dc.MoveTo(c.from);
                        dc.LineTo(c.to);
                        dc.LineTo(c.to);
                    }),
            std::string("<polyline points=\"") + c.points + "\" fill=\"none\" stroke=\"#f00\"/>\n");
    }
    EXPECT_EQ(withPen(PS_DASH, 4,
                      [](CDC& dc) {
                          dc.MoveTo(10, 5);
                          dc.LineTo(10, 5);
                      }),
              "<polyline points=\"10,5 10,5\" stroke-linecap=\"round\" fill=\"none\" "
              "stroke=\"#f00\" stroke-width=\"4\"/>\n");
}

TEST(SvgDevice, DrawsShapes) {
    const POINT corners[] = {{0, 0}, {9, 0}, {4, 8}};
    struct Case {
        UINT style;
        int width;
        std::function<void(CDC&)> calls;
        const char* expected;
    };
    const Case cases[] = {
        {PS_SOLID, 1, [](CDC& dc) { dc.Rectangle(10, 20, 31, 42); },
         "<rect x=\"10.5\" y=\"20.5\" width=\"20\" height=\"21\" fill=\"none\" "
         "stroke=\"#f00\"/>\n"},
        {PS_SOLID, 2, [](CDC& dc) { dc.Rectangle(10, 20, 31, 42); },
         "<rect x=\"10\" y=\"20\" width=\"20\" height=\"21\" "
         "fill=\"none\" stroke=\"#f00\" stroke-width=\"2\"/>\n"},
        {PS_INSIDEFRAME, 5, [](CDC& dc) { dc.Ellipse(10, 20, 31, 42); },
         "<ellipse cx=\"20.5\" cy=\"31\" rx=\"8\" ry=\"8.5\" fill=\"none\" stroke=\"#f00\" "
         "stroke-width=\"5\"/>\n"},
        {PS_SOLID, 1, [](CDC& dc) { dc.Ellipse(10, 20, 31, 41); },
         "<ellipse cx=\"20.5\" cy=\"30.5\" rx=\"10\" ry=\"10\" fill=\"none\" "
         "stroke=\"#f00\"/>\n"},
        {PS_SOLID, 1, [](CDC& dc) { dc.Rectangle(10, 20, 11, 42); },
         "<rect x=\"10\" y=\"20\" width=\"1\" height=\"22\" fill=\"#f00\"/>\n"},
        {PS_NULL, 1, [](CDC& dc) { dc.Rectangle(10, 20, 31, 42); }, ""},
        {PS_NULL, 1,
         [](CDC& dc) {
             dc.SelectStockObject(GRAY_BRUSH);
             dc.Rectangle(10, 20, 31, 42);
             dc.Rectangle(10, 20, 11, 42);
         },
         "<rect x=\"10\" y=\"20\" width=\"20\" height=\"21\" fill=\"#808080\"/>\n"},
        {PS_DOT, 1,
         [&](CDC& dc) {
             dc.SelectStockObject(WHITE_BRUSH);
             dc.SetBkMode(OPAQUE);
             dc.SetBkColor(RGB(0, 0x12, 0));
             dc.Polygon(corners, 3);
         },
         "<polygon points=\"0.5,0.5 9.5,0.5 4.5,8.5\" fill-rule=\"evenodd\" fill=\"#fff\" "
         "stroke=\"#001200\"/>\n"
         "<polygon points=\"0.5,0.5 9.5,0.5 4.5,8.5\" fill-rule=\"evenodd\" fill=\"none\" "
         "stroke=\"#f00\" stroke-dasharray=\"3 3\"/>\n"},
        {PS_NULL, 1,
         [&](CDC& dc) {
             dc.SelectStockObject(BLACK_BRUSH);
             dc.SetPolyFillMode(WINDING);
             dc.Polygon(corners, 3);
             dc.SetPixel(1, 2, 0xFF00FF);
         },
         "<polygon points=\"0,0 9,0 4,8\"/>\n"
         "<rect x=\"1\" y=\"2\" width=\"1\" height=\"1\" fill=\"#f0f\"/>\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(withPen(c.style, c.width, c.calls), c.expected);
    }
}

// A clip or a hatch is defined once.
TEST(SvgDevice, DefinesClipsAndHatchesOnce) {
    CBrush hatched(HS_HORIZONTAL, RGB(0, 0, 255));
    CBrush none;
    const LOGBRUSH hollow = {BS_HOLLOW, 0, 0};
    none.CreateBrushIndirect(&hollow);
    const CRect box(0, 0, 9, 9);
    const std::string drawn = elements([&](CDC& dc) {
        dc.FillRect(&box, &none);
        for (int i = 0; i < 2; ++i) {
            dc.SaveDC();
            dc.IntersectClipRect(1, 2, 5, 7);
            dc.FillRect(&box, &hatched);
            dc.FillSolidRect(&box, cBlack);
            dc.RestoreDC(-1);
            dc.FillSolidRect(&box, cWhite);
        }
        dc.IntersectClipRect(5, 5, 5, 5);
        dc.FillSolidRect(&box, cWhite);
    });
    const std::string clipped = "<g clip-path=\"url(#c1)\">\n";
    const std::string fills =
        "<rect x=\"0\" y=\"0\" width=\"9\" height=\"9\" fill=\"url(#h1)\"/>\n"
        "<rect x=\"0\" y=\"0\" width=\"9\" height=\"9\"/>\n</g>\n"
        "<rect x=\"0\" y=\"0\" width=\"9\" height=\"9\" fill=\"#fff\"/>\n";
    EXPECT_EQ(drawn, "<clipPath id=\"c1\"><path d=\"M1 2h4v5h-4z\"/></clipPath>\n" + clipped +
                         "<pattern id=\"h1\" width=\"8\" height=\"8\" "
                         "patternUnits=\"userSpaceOnUse\"><path d=\"M0 3.5h8\" "
                         "stroke=\"#00f\"/></pattern>\n" +
                         fills + clipped + fills);
}

// However many there are, what is kept for use again is bounded and no number is given twice.
TEST(SvgDevice, GoesOnWithManyClipsAndHatches) {
    const std::string drawn = elements([](CDC& dc) {
        dc.SetBkMode(OPAQUE);
        for (int i = 0; i < 300; ++i) {
            const CBrush brush(i % 6, RGB(i % 100, 0, 0));
            CRgn clip;
            clip.CreateRectRgn(0, 0, 1 + i % 100, 9);
            dc.SelectClipRgn(&clip);
            dc.SelectObject(const_cast<CBrush*>(&brush));
            dc.Ellipse(0, 0, 9, 9);
            dc.SelectStockObject(WHITE_BRUSH);
        }
    });
    EXPECT_NE(drawn.find("id=\"c300\""), drawn.npos);
}

TEST(SvgDevice, PlacesEveryCharacter) {
    CFont other;
    struct Case {
        std::function<void(CDC&)> calls;
        const char* expected;
    };
    const Case cases[] = {
        {[](CDC& dc) { dc.TextOut(1, 2, CString("i<\xE4\x80\x01 ")); },
         "<text x=\"1 5 14 23 32\" y=\"16\" font-size=\"16\">i&lt;\xC3\xA4\xE2\x82\xAC </text>\n"},
        {[](CDC& dc) { dc.TextOut(1, 2, CString("\x01\x02")); }, ""},
        {[&](CDC& dc) {
             other.CreateFont(16, 0, 0, 0, FW_BOLD, 1, 1, 0, 0, 0, 0, 0, 0, "Caf\xE9's <x>");
             dc.SelectObject(&other);
             dc.SetTextColor(RGB(0, 0, 128));
             dc.SetBkMode(OPAQUE);
             dc.TextOut(10, 20, "W");
         },
         "<rect x=\"10\" y=\"20\" width=\"14\" height=\"16\" fill=\"#fff\"/>\n"
         "<text x=\"10\" y=\"33\" font-size=\"14.32\" font-family=\"'Caf\xC3\xA9s "
         "&lt;x&gt;',Arial,Liberation Sans,Helvetica,sans-serif\" font-weight=\"bold\" "
         "font-style=\"italic\" fill=\"#000080\">W</text>\n"
         "<rect x=\"10\" y=\"34\" width=\"14\" height=\"1\" fill=\"#000080\"/>\n"},
        {[&](CDC& dc) {
             other.CreateFont(-10, 0, 0, 0, FW_NORMAL, 0, 0, 0, 2, 0, 0, 0, 0, "Symbol");
             dc.SelectObject(&other);
             dc.SetTextAlign(TA_BASELINE);
             dc.TextOut(0, 9,
                        CString("\xB3"
                                "a"));
         },
         "<text x=\"0 5\" y=\"9\" font-size=\"10\" font-family=\"Times New Roman,Liberation "
         "Serif,Times,DejaVu Sans,serif\">\xE2\x89\xA5\xCE\xB1</text>\n"},
        {[](CDC& dc) {
             CRect room(0, 0, 4, 99);
             dc.DrawText("i", -1, &room, 0);
             dc.DrawText("m", -1, &room, 0);
         },
         "<text x=\"0\" y=\"14\" font-size=\"16\">i</text>\n"
         "<clipPath id=\"c1\"><path d=\"M0 0h4v80h-4z\"/></clipPath>\n<g "
         "clip-path=\"url(#c1)\">\n<text x=\"0\" y=\"14\" font-size=\"16\">m</text>\n</g>\n"},
    };
    for (const Case& c : cases) EXPECT_EQ(elements(c.calls), c.expected);
}

TEST(SavePicture, StoresTheWholeTextOrNothing) {
    const TemporaryFolder folder;
    const std::string name = folder.Write("out.svg", "old");
    const std::string text(100'000, 'x');
    EXPECT_EQ(tessalink::savePicture(text, nullptr), 0);
    EXPECT_EQ(tessalink::savePicture(text, folder.Path("no/such").c_str()), 0);
    for (std::size_t room = 0; room < text.size(); room += 12'345) {
        const tessalink::test::FileSizeLimit fullDisk(room);
        EXPECT_EQ(tessalink::savePicture(text, name.c_str()), 0);
    }
    EXPECT_EQ(folder.Read("out.svg"), "old");
    EXPECT_NE(tessalink::savePicture(text, name.c_str()), 0);
    EXPECT_EQ(folder.Read("out.svg"), text);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"out.svg"});
}

}  // namespace
