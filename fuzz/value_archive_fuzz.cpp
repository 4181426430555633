// Any bytes as an archived time and date: either they raise an archive exception and leave the
// value as it was, or they are stored again as they were, but that an empty value has no more
// fields.
#include <string>
#include <string_view>

#include "core/Date.h"
#include "core/Time.h"
#include "fuzz/detail/require.h"
#include "platform/files/CArchive.h"
#include "platform/files/CMemFile.h"

namespace {

using tessalink::fuzz::require;

bool load(CObject& value, std::string_view bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    try {
        value.Serialize(archive);
        return true;
    } catch (const CArchiveException&) {
        return false;
    }
}

std::string store(CObject& value) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    value.Serialize(archive);
    archive.Close();
    return std::string(file.View());
}

/// `mark` is how the bytes of an empty value begin, `filled` those of some other.
void check(CObject& value, std::string_view bytes, std::string_view mark, std::string_view filled) {
    require(load(value, filled) && store(value) == filled, "a value is loaded");
    if (!load(value, bytes)) {
        require(store(value) == filled, "what raises leaves the value as it was");
        return;
    }
    std::string expected(bytes.substr(0, filled.size()));
    if (expected.starts_with(mark)) expected.replace(mark.size(), std::string::npos, 2, '\0');
    require(store(value) == expected, "what was loaded is stored the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Time time;
    check(time, bytes, "\xFF", "\x07\x08\x09");
    (void)time.GetAsStr(0);
    Date date;
    check(date, bytes, "\xFF\xFF", "\xD1\x07\x03\x07");
    (void)date.GetAsLocalStr();
    int years, months, days;
    date.Minus(Date(2000, 2, 29), years, months, days);
    return 0;
}
