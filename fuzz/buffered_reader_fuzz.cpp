// Random operations on a reader and on a string: the first two bytes give the size and kind of the
// file, every three further ones an operation.
#include <cstdint>
#include <string>

#include "fuzz/detail/require.h"
#include "tests/core/BufferedFileModel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t header = 2;
    constexpr std::size_t step = 3;
    constexpr std::uint64_t stride = 67;  // spreads the arguments over some blocks
    if (size < header) return 0;
    const std::size_t fileSize = static_cast<std::size_t>(data[0]) * 48;
    std::string text(fileSize, '\r');
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((i * 7 + data[1]) % 5 > 1) text[i] = static_cast<char>(i % 3 == 0 ? '\n' : i);
    }
    tessalink::test::BufferedFileModel model(text, data[1] & 1);
    for (std::size_t i = header; i + step <= size; i += step) {
        tessalink::fuzz::require(
            model.Do(data[i], data[i + 1] * stride + data[i + 2], data[i + 2] * stride),
            "reader and string agree");
    }
    return 0;
}
