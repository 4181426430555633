// Any RTF: scaling it agrees with the states as they are described; encoding it only adds
// backslashes.
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "fuzz/detail/require.h"
#include "report/RTFText.h"
#include "tests/report/RTFScalingModel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tessalink::fuzz::require;
    double factor = 0.5;
    if (size > 0 && data[0] >= 128 && size >= sizeof(factor)) {
        std::memcpy(&factor, data, sizeof(factor));
        data += sizeof(factor);
        size -= sizeof(factor);
    }
    const std::string rtf(reinterpret_cast<const char*>(data), size);
    CString scaled(rtf);
    ScaleRTFText(factor, scaled);
    require(scaled.View() == tessalink::test::scaleByStates(factor, rtf),
            "scaling follows the states");
    std::string expected;
    const char* const text = rtf.c_str();  // up to the first NUL
    for (const char ch : std::string_view(text)) {
        if (ch == '\\' || ch == '{' || ch == '}') expected += '\\';
        expected += ch;
    }
    require(RTFEncode(text).View() == expected, "encoding escapes backslashes and braces");
    return 0;
}
