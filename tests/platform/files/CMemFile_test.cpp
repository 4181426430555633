#include "platform/files/CMemFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void expectFault(int cause, const std::function<void()>& attempt) {
    try {
        attempt();
        FAIL();
    } catch (const CFileException& error) {
        EXPECT_EQ(error.m_cause, cause);
    }
}

TEST(CMemFile, ReadsATextInPlaceAndNeverChangesIt) {
    const std::string text = "{\\rtf1 text}";
    CMemFile file{std::string_view(text)};
    EXPECT_EQ(file.View().data(), text.data());
    EXPECT_EQ(file.GetLength(), text.size());
    char piece[4];
    file.Seek(-2, CFile::end);
    EXPECT_EQ(file.Read(piece, sizeof(piece)), 2u);
    EXPECT_EQ(std::string(piece, 2), "t}");
    expectFault(CFileException::accessDenied, [&] { file.Write("x", 1); });
    expectFault(CFileException::accessDenied, [&] { file.SetLength(0); });
    EXPECT_EQ(file.Detach(), nullptr);
    EXPECT_EQ(text, "{\\rtf1 text}");
}

TEST(CMemFile, StaysWithinABufferThatMayNotGrow) {
    BYTE buffer[4] = {'a', 'b', 'c', 'd'};
    CMemFile file(buffer, sizeof(buffer));
    EXPECT_EQ(file.View(), "abcd");
    file.Seek(2, CFile::begin);
    expectFault(CFileException::diskFull, [&] { file.Write("xyz", 3); });
    EXPECT_EQ(file.View(), "abcd");
    file.Write("XY", 2);
    EXPECT_EQ(file.View(), "abXY");
    expectFault(CFileException::diskFull, [&] { file.SetLength(5); });
    EXPECT_EQ(file.Detach(), buffer);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CMemFile, LeavesTheCallersBufferWhenItGrows) {
    BYTE buffer[4] = {'a', 'b', 'c', 'd'};
    CMemFile file(buffer, sizeof(buffer), 16);
    EXPECT_EQ(file.GetLength(), 0u);
    file.Write("1234", 4);
    EXPECT_EQ(file.View().data(), reinterpret_cast<char*>(buffer));
    file.Write("5", 1);
    EXPECT_EQ(file.View(), "12345");
    BYTE* const own = file.Detach();
    EXPECT_NE(own, buffer);
    EXPECT_EQ(std::memcmp(own, "12345", 5), 0);
    std::free(own);
    file.Write("again", 5);
    EXPECT_EQ(file.View(), "again");
}

TEST(CMemFile, FillsAGapWithZerosAlsoWhereOldContentsWere) {
    CMemFile file;
    file.Write("secret", 6);
    file.SetLength(1);
    file.Seek(4, CFile::begin);
    char byte;
    EXPECT_EQ(file.Read(&byte, 1), 0u);
    EXPECT_EQ(file.GetLength(), 1u);
    file.Write("x", 1);
    EXPECT_EQ(file.View(), std::string_view("s\0\0\0x", 5));
}

TEST(CMemFile, KeepsItsContentsWhenMemoryCannotHoldMore) {
    CMemFile file;
    file.Write("kept", 4);
    file.Seek(std::numeric_limits<std::int64_t>::max() - 8, CFile::begin);
    EXPECT_THROW(file.Write("x", 1), std::bad_alloc);
    EXPECT_EQ(file.View(), "kept");
    expectFault(CFileException::badSeek, [&] { file.Seek(100, CFile::current); });
    expectFault(CFileException::badSeek, [&] { file.Seek(-5, CFile::end); });
    CFileException error;
    EXPECT_EQ(file.Open("name", CFile::modeRead, &error), 0);
    EXPECT_EQ(error.m_cause, CFileException::accessDenied);
    file.Close();
    EXPECT_EQ(file.GetLength(), 0u);
}

}  // namespace
