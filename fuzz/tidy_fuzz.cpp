// Any text as a template to be tidied: what is shown stays the same to the character, the markup
// stands in the same order, groups stay closed, and a second time there is nothing left to do,
// unless something was left to its author: which names are variables is read from whole commands,
// and a second time there are more of them.
#include <cstdint>
#include <string>

#include "fuzz/detail/require.h"
#include "tests/report/tidy/PlainRtf.h"
#include "tests/report/tidy/TidyText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tessalink::fuzz::require;
    using tessalink::test::PlainRtf;
    const std::string rtf =
        "{\\rtf1" + std::string(reinterpret_cast<const char*>(data), size) + "}";
    const auto tidied = tessalink::test::tidy(rtf);
    const PlainRtf before(rtf);
    if (!tidied.fault.empty()) return 0;
    const PlainRtf after(tidied.text);
    require(before.isBalanced, "groups that are not closed are told");
    require(after.isBalanced, "groups stay closed");
    require(after.text == before.text, "what is shown stays the same");
    require(after.HasMarkupOf(before), "markup keeps its order");
    require(tidied.isChanged == (tidied.text != rtf), "a change is told");
    require(tidied.isChanged == !tidied.findings.empty() || tidied.IsLeft(), "with its place");
    if (tidied.IsLeft()) return 0;
    const auto again = tessalink::test::tidy(tidied.text);
    require(!again.isChanged && again.text == tidied.text, "a second time nothing changes");
    return 0;
}
