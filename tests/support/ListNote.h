#pragma once

#include <string>
#include <vector>

#include "responselists/ItemListCtl.h"

namespace tessalink::test {

/// What a list tells, message boxes and bells, all in their order.
using Log = std::vector<std::string>;

/// What a list with an id tells as one text: "code item value" or "3 answered/missing/total".
inline std::string listNote(const NMHDR& header, UINT_PTR id) {
    if (header.code == ITEMLIST_COUNTS) {
        const auto& counts = reinterpret_cast<const ITEMLIST_COUNTS_NOTIFICATION&>(header);
        return "3 " + std::to_string(counts.answered) + "/" + std::to_string(counts.missing) + "/" +
               std::to_string(counts.total);
    }
    const auto& note = reinterpret_cast<const LISTCTL_NOTIFICATION&>(header);
    const bool isFromList = header.idFrom == id && header.hwndFrom != nullptr;
    return (isFromList ? "" : "stranger ") + std::to_string(static_cast<int>(header.code)) + " " +
           std::to_string(note.itemIndex) + " " + std::to_string(note.value);
}

}  // namespace tessalink::test
