// Any text as a table of responses, in a form that the first byte chooses, in blocks of the size
// that the second one says: a fault of the table has a place, every row has answers that are
// allowed or a reason why not.
#include <cstdint>
#include <string_view>

#include "core/InputError.h"
#include "fuzz/detail/SmallQuestionnaire.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/ResponseTable.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessalink;
    constexpr std::size_t head = 2;
    if (size < head) return 0;
    ResponseTableOptions options;
    const unsigned form = data[0];
    options.hasDecimalComma = (form & 1U) != 0;
    options.hasLabels = (form & 2U) != 0;
    if ((form & 4U) != 0) options.encoding = ResponseTableOptions::Encoding::CodePage;
    options.dateOrder = static_cast<ResponseTableOptions::DateOrder>(form >> 3U & 3U);
    if ((form & 32U) != 0) options.missingCodes = {"-9"};
    options.blockSize = 1 + data[1];
    CMemFile file(std::string_view(reinterpret_cast<const char*>(data + head), size - head));
    try {
        ResponseTable table(file, fuzz::smallQuestionnaire(), options);
        fuzz::readAll(table);
    } catch (const InputError& fault) {
        fuzz::require(fault.GetPlace().IsKnown(), "a place");
    }
    return 0;
}
