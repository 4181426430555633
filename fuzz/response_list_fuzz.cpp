// Any text as the definition of both response lists: they read what a second reader reads, and
// their cells can be painted.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/detail/require.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"
#include "responselists/ItemListCtl.h"
#include "tests/support/ResponseGrammar.h"

namespace {

using tessalink::fuzz::require;
using tessalink::test::ResponseGrammar;
using Verdict = ResponseGrammar::Verdict;

constexpr int cItems = 12;
constexpr int cTyped = 24;

template <class List>
class Opened : public List {
public:
    Opened() : List(0, "", -1) {}

    Verdict Read(const std::string& text) {
        try {
            return this->SetLegend(cItems, text.c_str(), -1) != 0 ? Verdict::Valid
                                                                  : Verdict::Invalid;
        } catch (const CInvalidArgException&) {
            return Verdict::NoSuchItem;
        }
    }
    bool HasRead(int item, const ResponseGrammar::Responses& expected) const {
        ResponseGrammar::Responses all;
        if (const auto* responses = this->responses_of(item)) {
            for (const auto& one : *responses) {
                all.push_back({one.caption.GetString(), one.keys.GetString(), one.value});
            }
        }
        return all == expected;
    }
};

template <class List>
void compare(const std::string& text, const ResponseGrammar& expected) {
    CFrameWnd host;
    host.Create("Host", CRect(0, 0, 400, 300));
    Opened<List> list;
    list.Create(CRect(0, 0, 300, 200), 1, &host);
    require(list.Read(text) == expected.verdict, "the same verdict");
    require(list.GetItemCount() == (expected.verdict == Verdict::Valid ? cItems : 0),
            "items when it is valid");
    for (int i = 0; i < list.GetItemCount(); ++i) {
        require(list.HasRead(i, expected.items[static_cast<std::size_t>(i)]), "the same responses");
    }
    list.SetFocus();
    auto& system = tessalink::HeadlessSystem::Default();
    system.Type(text.substr(0, cTyped));
    system.Pump();
    system.ToldEvents().clear();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    text.resize(std::min(text.find('\0'), text.size()));  // definitions end at a NUL
    compare<ItemListCtl>(text, ResponseGrammar::OfOne(text, cItems));
    compare<ItemListCtl2>(text, ResponseGrammar::OfSeveral(text, cItems));
    return 0;
}
