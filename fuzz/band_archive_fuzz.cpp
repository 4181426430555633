// Any bytes as archived bands of a profile graph: either they raise an exception, or they are
// stored again as they were, and the graph that has them can be drawn.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/detail/require.h"
#include "graphs/profile/ProfileGraph.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/files/CArchive.h"
#include "platform/files/CMemFile.h"
#include "platform/graphics/NullDevice.h"

namespace {

constexpr std::size_t cRecordSize = 12;
/// More records than a count of 16 bits can tell need another form of the count.
constexpr std::size_t cMaxRecords = 0xFFFE;

bool load(ProfileGraph& graph, std::string_view bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    try {
        graph.SerializeBands(archive);
        return true;
    } catch (const CArchiveException&) {
        return false;
    } catch (const CInvalidArgException&) {  // a count that no array has
        return false;
    }
}

std::string store(ProfileGraph& graph) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    graph.SerializeBands(archive);
    archive.Close();
    return std::string(file.View());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tessalink::fuzz::require;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ProfileGraph graph(0, 100, 10, 5, 1, 1, 200, 100);
    const std::size_t count = size < 2 ? 0 : data[0] + 256U * data[1];
    const bool isShort = size >= 2 && count <= cMaxRecords;
    const bool loaded = load(graph, bytes);
    if (isShort) {
        require(loaded == (size >= 2 + count * cRecordSize), "what is whole is loaded");
    }
    if (loaded && isShort) {
        require(store(graph) == bytes.substr(0, 2 + count * cRecordSize), "and stored the same");
    }
    tessalink::NullDevice device;
    CDC dc(device);
    graph.Draw(&dc, CRect(0, 0, 400, 300));
    return 0;
}
