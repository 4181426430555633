// Any text as the definition of both response lists: what they have read, written down plainly, is
// read as the same, an invalid one leaves nothing, and their cells can be painted.
#include <algorithm>
#include <cstdint>
#include <string>
#include <type_traits>

#include "fuzz/detail/require.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"
#include "responselists/ItemListCtl.h"

namespace {

using tessalink::fuzz::require;

constexpr int cItems = 12;
constexpr std::size_t cTyped = 24;

template <class List>
class Opened : public List {
public:
    Opened() : List(0, "", -1) {}

    bool Read(const std::string& text) {
        try {
            return this->SetLegend(cItems, text.c_str(), -1) != 0;
        } catch (const CInvalidArgException&) {
            return false;  // there is no such item
        }
    }
    /// The responses of an item with all their parts.
    std::string Written(int item) const {
        std::string text;
        if (const auto* responses = this->responses_of(item)) {
            for (const auto& one : *responses) {
                text += CString("[" + one.caption + "|" + one.keys + "|").GetString() +
                        std::to_string(one.value) + "]";
            }
        }
        return text;
    }
    std::string Written() const {
        if (std::is_same_v<List, ItemListCtl>) return Written(0);
        std::string text;
        for (int i = 0; i < cItems; ++i) {
            if (Written(i).empty()) continue;
            text += (text.empty() ? "" : ";") + Written(i) + ":" + std::to_string(i);
        }
        return text;
    }
};

template <class List>
void tryOut(const std::string& text) {
    CFrameWnd host;
    host.Create("Host", CRect(0, 0, 400, 300));
    Opened<List> list;
    list.Create(CRect(0, 0, 300, 200), 1, &host);
    const bool isValid = list.Read(text);
    require(list.GetItemCount() == (isValid ? cItems : 0), "items when it is valid");
    if (isValid) {
        Opened<List> again;
        require(again.Read(list.Written()), "what was read can be read");
        for (int i = 0; i < cItems; ++i) {
            require(again.Written(i) == list.Written(i), "the same responses");
        }
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
    tryOut<ItemListCtl>(text);
    tryOut<ItemListCtl2>(text);
    return 0;
}
