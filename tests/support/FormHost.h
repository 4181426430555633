#pragma once

#include <functional>
#include <string>
#include <vector>

#include "dataentry/DataEntryCtl.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"

namespace tessalink::test {

/// A window that holds a form and notes what it is told: code and item index.
class FormHost : public CFrameWnd {
public:
    struct Note {
        int code;
        int index;

        bool operator==(const Note&) const = default;
    };

    explicit FormHost(CRect rect = CRect(0, 0, 900, 700)) { Create("Host", rect); }
    ~FormHost() override { DestroyWindow(); }

    BOOL OnNotify(WPARAM, LPARAM lParam, LRESULT* result) override {
        const auto& told = *reinterpret_cast<DATAENTRYCTL_NOTIFICATION*>(lParam);
        notes.push_back({static_cast<int>(told.hdr.code), told.itemIndex});
        *result = answer ? answer(told) : 0;
        return 1;
    }
    std::vector<Note> Taken() { return std::exchange(notes, {}); }

    std::vector<Note> notes;
    std::function<LRESULT(const DATAENTRYCTL_NOTIFICATION&)> answer;
};

inline std::ostream& operator<<(std::ostream& out, const FormHost::Note& note) {
    return out << note.code << "@" << note.index;
}

/// An interface whose items have the sizes that a table tells, and that draws nothing.
class SizedItemUI : public DataEntryItemUI {
public:
    explicit SizedItemUI(std::vector<CSize> sizes) : m_sizes(std::move(sizes)) {}

    void OnMeasureItem(const DataEntryItem* item, CDC*, CSize& size) override {
        size = m_sizes[item->GetIndex() % m_sizes.size()];
    }

protected:
    void draw_item(CDC&, DataEntryItem&, const CRect&, bool) override {}

private:
    std::vector<CSize> m_sizes;
};

}  // namespace tessalink::test
