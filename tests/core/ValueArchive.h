#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/files/CArchive.h"
#include "platform/files/CMemFile.h"

namespace tessalink::test {

inline std::string stored(CObject& value) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    value.Serialize(archive);
    archive.Close();
    return std::string(file.View());
}

/// The cause of the fault that loading raises.
inline int load(CObject& value, std::string_view bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    try {
        value.Serialize(archive);
    } catch (const CArchiveException& fault) {
        return fault.m_cause;
    }
    archive.Close();
    return file.GetPosition() == bytes.size() ? CArchiveException::none : -1;
}

/// What every value does: its bytes load to the same value, a part of them raises endOfFile, and
/// each of `refused` genericException; a value that can't be loaded stays as it was.
template <class VALUE>
void checkArchive(VALUE value, std::string_view bytes, std::initializer_list<const char*> refused) {
    EXPECT_EQ(stored(value), bytes);
    VALUE loaded;
    EXPECT_EQ(load(loaded, bytes), CArchiveException::none);
    EXPECT_TRUE(loaded == value);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const std::string part = std::string(length, '\1');
        EXPECT_EQ(load(loaded, part), CArchiveException::endOfFile) << length;
        EXPECT_TRUE(loaded == value) << length;
    }
    for (const char* const text : refused) {
        const std::string_view other(text, bytes.size());
        EXPECT_EQ(load(loaded, other), CArchiveException::genericException)
            << testing::PrintToString(other);
        EXPECT_TRUE(loaded == value);
    }
}

}  // namespace tessalink::test
