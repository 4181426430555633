#include <vector>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "core/BufferedFile.h"
#include "platform/files/WholeFile.h"

namespace tessalink::cli {

int scrambleFile(const ScrambleOptions& options) {
    constexpr std::size_t blockSize = 1u << 16;
    const auto input = openInput(options.inputPath);
    WholeFile output(options.outputPath.c_str());
    std::vector<char> block(blockSize);
    while (const std::size_t count = input->Read(block.data(), block.size())) {
        scramble(block.data(), count);
        output.Write(block.data(), count);
    }
    input->Close();  // the output may have its name
    output.Commit();
    return cSuccess;
}

}  // namespace tessalink::cli
