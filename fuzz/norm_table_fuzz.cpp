// Any text as a norm table: a fault has its place in the file. In a table that is read, any person
// has a score or a reason why not, and the groups hold what was promised. What follows a NUL are
// lines of NAME=VALUE about the person; "age" and "raw" are numbers.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "core/InputError.h"
#include "fuzz/detail/require.h"
#include "platform/files/CMemFile.h"
#include "scores/NormTable.h"

namespace {

using tessalink::NormColumn;
using tessalink::NormError;
using tessalink::NormGroup;
using tessalink::NormKeys;
using tessalink::NormName;
using tessalink::NormTable;
using tessalink::fuzz::require;

std::optional<NormTable> read(std::string_view text) {
    CMemFile file(text);
    try {
        return NormTable::Read(file);
    } catch (const tessalink::InputError& fault) {
        const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
        const tessalink::TextPlace& place = fault.GetPlace();
        require(place.line >= 1 && place.line <= static_cast<std::uint64_t>(lines), "a known line");
        require(place.column >= 1 && place.column <= text.size() + 1, "a column in the line");
        require(*fault.what() != '\0', "a message");
    }
    return std::nullopt;
}

struct Person {
    NormKeys keys;
    std::optional<int> age;
    int raw = 0;
};

Person personOf(std::string_view text) {
    Person person;
    while (!text.empty()) {
        const std::string line(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const auto sign = line.find('=');
        if (sign == std::string::npos) continue;
        const std::string name = line.substr(0, sign);
        const std::string value = line.substr(sign + 1);
        if (name == "age") {
            person.age = std::atoi(value.c_str());
        } else if (name == "raw") {
            person.raw = std::atoi(value.c_str());
        } else {
            person.keys[name.c_str()] = value.c_str();
        }
    }
    return person;
}

void checkColumn(const NormGroup& group, const NormColumn& column, int raw) {
    const std::string_view name = column.name.text.View();
    const bool isInside = group.GetLowestRaw() <= raw && raw <= group.GetHighestRaw();
    try {
        const auto score = group.FindIfAny(raw, name);
        require(isInside, "no score outside the range");
        require(!score || std::isfinite(*score), "a finite score");
        require(!score || group.HasScores(name), "the group has scores");
    } catch (const NormError& error) {
        require(!isInside && error.GetReason() == NormError::Reason::RawOutside, "a reason");
        require(error.GetGroupPlace().IsKnown(), "the group's place");
    }
}

void lookUp(const NormTable& norms, const Person& person) {
    try {
        const NormGroup group = norms.FindGroup(person.keys, person.age);
        require(!person.age || group.GetAges().Contains(*person.age), "a group of the age");
        for (const NormColumn& column : norms.GetColumns()) {
            for (const int raw : {person.raw, group.GetLowestRaw(), group.GetHighestRaw()}) {
                checkColumn(group, column, raw);
            }
        }
    } catch (const NormError& error) {
        require(*error.what() != '\0', "a message");
        require(error.GetReason() <= NormError::Reason::AgeOutside, "a reason why no group");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto norms = read(text.substr(0, text.find('\0')));
    if (!norms) return 0;
    Person person = personOf(text.substr(std::min(text.find('\0'), size)));
    lookUp(*norms, person);
    // Somebody whom the table knows, if all keys have values.
    for (const NormName& key : norms->GetKeys()) {
        const auto values = norms->GetValues(key.text.View());
        if (!values.empty()) person.keys[key.text] = values.back().text;
    }
    lookUp(*norms, person);
    return 0;
}
