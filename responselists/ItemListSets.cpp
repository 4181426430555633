// The responses of item lists: what definitions say, and which items have which.
#include <algorithm>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/NumberText.h"
#include "responselists/ItemListCtl.h"

IMPLEMENT_DYNAMIC(ItemListCtl2, ItemListCtl)

bool ItemListCtl::parse_responses(std::string_view& text, ResponseList& responses) {
    while (!text.empty() && text.front() == '[') {
        const auto read = tessalink::readResponse(text);
        if (!read) return false;
        const int value = read->value.value_or(static_cast<int>(responses.size()));
        responses.push_back({read->caption, read->keys, static_cast<std::uint16_t>(value), 0});
    }
    return true;
}

bool ItemListCtl::parse_def_str(std::string_view definition, int) {
    m_sets.emplace_back();
    return parse_responses(definition, m_sets.front()) && definition.empty();
}

const ItemListCtl::ResponseList* ItemListCtl::responses_of(int) const {
    return m_sets.empty() ? nullptr : &m_sets.front();
}

// Whether all sets have the response, or none is wanted.
bool ItemListCtl::is_default(int response) const {
    const auto has = [response](const ResponseList& responses) {
        return response < static_cast<int>(responses.size());
    };
    return response < 0 || (!m_sets.empty() && std::all_of(m_sets.begin(), m_sets.end(), has));
}

bool ItemListCtl::cell_is_keyed(int index) const {
    const ResponseList* responses = responses_of(index);
    return responses != nullptr && !responses->empty();
}

// The caption of the response with this code; empty without one.
CString ItemListCtl::cell_reading(int index, int value) const {
    if (const ResponseList* responses = responses_of(index)) {
        for (const Response& response : *responses) {
            if (response.value == value) return response.caption;
        }
    }
    return {};
}

// Several response sets.

ItemListCtl2::ItemListCtl2(int count, const char* definition, int defaultResponse) {
    SetLegend(count, definition, defaultResponse);
}

void ItemListCtl2::SetFirstItemNumber(int number) {
    m_firstNumber = number;
    RecalcLayout();
    scroll_into_view(m_current);
    Invalidate();
}

namespace {

// Takes a number off the front; -1 when there is none.
int takeNumber(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    if (end == 0) return -1;
    const int number = tessalink::readInt(text.substr(0, end));
    text.remove_prefix(end);
    return number;
}

bool takeChar(std::string_view& text, char ch) {
    if (text.empty() || text.front() != ch) return false;
    text.remove_prefix(1);
    return true;
}

}  // namespace

bool ItemListCtl2::assign_items(std::string_view& text, int set) {
    do {
        const int first = takeNumber(text);
        const int last = takeChar(text, '-') ? takeNumber(text) : first;
        if (first < 0 || last < 0) return false;
        const auto count = static_cast<int>(m_setOfItem.size());
        if (first >= count || last >= count) {
            Clear();
            AfxThrowInvalidArgException();
        }
        for (int i = first; i <= last; ++i) m_setOfItem[static_cast<std::size_t>(i)] = set;
    } while (takeChar(text, ','));
    return true;
}

bool ItemListCtl2::parse_def_str(std::string_view definition, int count) {
    m_setOfItem.assign(static_cast<std::size_t>(count), -1);
    if (definition.empty()) return true;
    do {
        m_sets.emplace_back();
        if (definition.empty() || definition.front() != '[') return false;
        if (!parse_responses(definition, m_sets.back())) return false;
        if (!takeChar(definition, ':')) return false;
        if (!assign_items(definition, static_cast<int>(m_sets.size()) - 1)) return false;
    } while (takeChar(definition, ';'));
    return definition.empty();
}

const ItemListCtl::ResponseList* ItemListCtl2::responses_of(int index) const {
    const int set = m_setOfItem[static_cast<std::size_t>(index)];
    return set < 0 ? nullptr : &m_sets[static_cast<std::size_t>(set)];
}
