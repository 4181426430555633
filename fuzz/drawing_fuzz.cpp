// Bytes as a program of drawing calls on all devices at once: the SVG is well-formed, the PDF shows
// what was drawn, the metafile is taken, and played it draws what was drawn directly.
#include <algorithm>
#include <memory>

#include "fuzz/detail/FuzzedBytes.h"
#include "fuzz/detail/require.h"
#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/MetafileDevice.h"
#include "platform/graphics/PdfDevice.h"
#include "platform/graphics/SvgDevice.h"
#include "tests/support/DrawingProgram.h"
#include "tests/support/PdfPage.h"
#include "tests/support/ShownPrimitives.h"
#include "tests/support/Xml.h"

using tessalink::fuzz::require;
using tessalink::test::DrawingProgram;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr RECT wholeFrame = {0, 0, 50800, 38100};
    constexpr RECT wholeScreen = {0, 0, 1920, 1440};
    constexpr std::size_t mostSteps = 400;
    tessalink::fuzz::FuzzedBytes bytes(data, size);
    const bool isTame = bytes.TakeByte() % 2 == 0;
    const auto choose = [&](std::size_t count) {
        std::size_t choice = static_cast<std::size_t>(bytes.TakeByte());
        if (count > 256) choice = choice << 8 | static_cast<std::size_t>(bytes.TakeByte());
        return choice % count;
    };
    tessalink::NullDevice screen;
    tessalink::RecordingDevice recording;
    tessalink::SvgDevice svg({1920, 1440});
    tessalink::PdfDevice pdf({1920, 1440});
    tessalink::MetafileDevice metafile(screen, wholeFrame);
    CDC nothing(screen);
    CDC direct(recording);
    CDC drawing(svg);
    CDC printing(pdf);
    CDC recorded(metafile);
    DrawingProgram(choose, {&nothing, &direct, &drawing, &printing, &recorded},
                   isTame ? DrawingProgram::Coordinates::Tame : DrawingProgram::Coordinates::Wild)
        .Run(std::min(size / 4, mostSteps));

    require(tessalink::test::XmlCheck::Fault(svg.Finish()).empty(), "a well-formed picture");
    const std::string page = pdf.Finish();
    if (isTame && page.find("/Filter") == std::string::npos) {
        require(tessalink::test::PdfPage::Lines(page, wholeScreen) ==
                    tessalink::test::RecordedPage::Lines(recording.Primitives(), wholeScreen),
                "the page shows what was drawn");
    }
    const std::unique_ptr<tessalink::EnhMetaFile, BOOL (*)(tessalink::HENHMETAFILE)> picture(
        tessalink::makeEnhMetaFile(metafile.Finish()), DeleteEnhMetaFile);
    require(picture != nullptr, "what was recorded is taken");
    tessalink::RecordingDevice target;
    CDC dc(target);
    require(PlayEnhMetaFile(&dc, picture.get(), &wholeScreen) != 0, "and played");
    if (isTame) {
        require(tessalink::test::shown(target.Primitives()) ==
                    tessalink::test::shown(recording.Primitives()),
                "what was drawn is played");
    }
    return 0;
}
