// Any text as a graph file: a fault has its place in the file and a message. A graph of a file that
// is read is made from the variables after a NUL, lines of a variables file, or has a fault with a
// place; what is made is drawn, has a size, and says what it shows.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/InputError.h"
#include "fuzz/detail/require.h"
#include "graphs/file/GraphFile.h"
#include "graphs/file/GraphPicture.h"
#include "platform/files/CMemFile.h"
#include "platform/graphics/RecordingDevice.h"
#include "report/VariablesFile.h"

namespace {

using tessalink::DescribedGraph;
using tessalink::GraphFile;
using tessalink::InputError;
using tessalink::fuzz::require;

void checkFault(const InputError& fault, std::string_view text) {
    const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
    const tessalink::TextPlace& place = fault.GetPlace();
    require(place.line >= 1 && place.line <= static_cast<std::uint64_t>(lines), "a known line");
    require(place.column >= 1 && place.column <= text.size() + 1, "a column in the line");
    require(*fault.what() != '\0', "a message");
}

std::optional<GraphFile> read(std::string_view text) {
    CMemFile file(text);
    try {
        return GraphFile::Read(file);
    } catch (const InputError& fault) {
        checkFault(fault, text);
    }
    return std::nullopt;
}

void readTable(std::string_view text, VarTable& variables) {
    CMemFile file(text);
    try {
        tessalink::readVariables(file, variables);
    } catch (const InputError&) {  // what stood before the fault is there
    }
}

void draw(DescribedGraph& graph) {
    constexpr LONG side = 500;
    const tessalink::GraphSheet& sheet = graph.GetSheet();
    require(std::isfinite(sheet.width) && sheet.width > 0, "a width");
    require(std::isfinite(sheet.height) && sheet.height > 0, "a height");
    require(!tessalink::textAlternative(graph).IsEmpty(), "a text");
    tessalink::RecordingDevice device;
    CDC dc(device);
    graph.Draw(dc, CRect(0, 0, side, side));
    require(dc.GetTextAlign() == 0 && dc.GetTextColor() == cBlack, "the context as before");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    const std::string_view text = all.substr(0, all.find('\0'));
    const auto graphs = read(text);
    if (!graphs) return 0;
    VarTable variables;
    readTable(all.substr(std::min(text.size() + 1, size)), variables);
    for (const CString& name : graphs->GetNames()) {
        try {
            draw(*graphs->Make(name.View(), variables));
        } catch (const InputError& fault) {
            checkFault(fault, text);
        }
    }
    return 0;
}
