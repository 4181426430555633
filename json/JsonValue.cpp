#include "json/JsonValue.h"

#include <algorithm>

namespace tessalink {

const JsonValue* JsonValue::Find(std::string_view key) const {
    const auto member = std::find_if(members.begin(), members.end(),
                                     [&](const JsonMember& m) { return m.key == key; });
    return member != members.end() ? &member->value : nullptr;
}

}  // namespace tessalink
