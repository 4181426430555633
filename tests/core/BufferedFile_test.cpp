#include "core/BufferedFile.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/core/BufferedFileModel.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

constexpr std::size_t cBlock = BufferedFile::cBlockSize;

int causeOf(const std::function<void()>& operation) {
    try {
        operation();
        return CFileException::none;
    } catch (const CFileException& fault) {
        return fault.m_cause;
    }
}

TEST(BufferedFile, AgreesWithAStringUnderRandomOperations) {
    for (const std::size_t size : {0u, 1u, 2u, 4095u, 4096u, 4097u, 8192u, 12288u}) {
        for (const int isScrambled : {0, 1}) {
            Dice dice(size + static_cast<std::size_t>(isScrambled));
            std::string text = dice.Text(size, "ab\r\n@");
            if (isScrambled) scramble(text.data(), text.size());
            BufferedFileModel model(text, isScrambled);
            for (int i = 0; i < 20000; ++i) {
                const auto operation = static_cast<unsigned>(dice.Word() % 16);
                ASSERT_TRUE(model.Do(operation, dice.Word(), dice.Word()))
                    << size << " bytes, step " << i << ", operation " << operation;
            }
        }
    }
}

TEST(BufferedFile, ReadsTheFileABlockAtATime) {
    const std::string text(3 * cBlock, 'x');
    CountingFile file(text);
    BufferedFile reader(&file, 0);
    EXPECT_EQ(file.Reads(), 0);
    for (std::size_t i = 0; i < 2 * cBlock; ++i) reader.GetCh();
    EXPECT_EQ(file.Reads(), 2);
    reader.SetPos(cBlock + 100);
    reader.SavePos();
    for (int i = 0; i < 10; ++i) reader.GetCh();
    reader.RestorePos();
    reader.SetPos(2 * cBlock);
    reader.SetPos(cBlock);
    EXPECT_EQ(reader.GetCh(), 'x');
    EXPECT_EQ(file.Reads(), 2) << "within the block nothing is read again";
    reader.SavePos();
    reader.SetPos(cBlock);
    reader.RestorePos();
    reader.NextCh();
    EXPECT_EQ(file.Reads(), 3) << "a saved position ahead is always loaded again";
    reader.SetPos(0);
    reader.NextCh();
    EXPECT_EQ(file.Reads(), 4);
    reader.Detach();
}

TEST(BufferedFile, OneFullBlockThenTheEnd) {
    const std::string text(cBlock, 'x');
    CMemFile file(text);
    BufferedFile reader(&file, 0);
    for (std::size_t i = 0; i < cBlock; ++i) reader.GetCh();
    EXPECT_TRUE(reader.AtEOF());
    EXPECT_EQ(causeOf([&] { reader.GetCh(); }), CFileException::endOfFile);
    EXPECT_EQ(reader.GetPos(), cBlock);
    reader.Detach();
}

TEST(BufferedFile, AttachesOpensAndClosesItsFile) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.dat", "\x3d\x3e");
    BufferedFile reader;
    EXPECT_FALSE(reader.IsOpen());
    EXPECT_EQ(reader.Detach(), nullptr);
    EXPECT_EQ(causeOf([&] { reader.GetCh(); }), CFileException::endOfFile);
    CFile file;
    {
        CFile other(path.c_str(), CFile::modeRead | CFile::shareDenyNone);
        reader.Attach(&other);
        EXPECT_EQ(reader.GetCh(), 'a');
        EXPECT_EQ(reader.Detach(), &other);
        EXPECT_NE(other.m_hFile, CFile::hFileNull) << "a detached file stays open";
        reader.Attach(&other);
        EXPECT_EQ(reader.GetCh(), 'a') << "from the start";
        reader.Close();
        EXPECT_EQ(other.m_hFile, CFile::hFileNull);
        EXPECT_FALSE(reader.IsOpen());
        reader.Detach();
    }
    CMemFile memory(std::string_view("\x3f"));
    reader.Attach(&memory);
    EXPECT_EQ(reader.NextCh(), 'c');
    CFileException error;
    EXPECT_FALSE(reader.Open(path.c_str(), CFile::modeRead, &error)) << "not by name";
    reader.Detach();

    std::filesystem::resize_file(folder.Write("big", ""), std::uint64_t{1} << 32);
    CFile big(folder.Path("big").c_str(), CFile::modeRead | CFile::shareDenyNone);
    reader.Attach(&big);
    EXPECT_FALSE(reader.AtEOF());
    reader.SetPos(std::uint64_t{1} << 32);
    EXPECT_FALSE(reader.AtEOF()) << "never in a file of 4 GiB";
    EXPECT_EQ(causeOf([&] { reader.GetCh(); }), CFileException::endOfFile);
    EXPECT_TRUE(reader.Open(path.c_str(), CFile::modeRead | CFile::shareDenyNone, nullptr));
    EXPECT_EQ(reader.GetCh(), 'a');
    EXPECT_EQ(reader.GetCh(), 'b');
    EXPECT_TRUE(reader.AtEOF());
    reader.Detach();
}

TEST(BufferedFile, OpensAFileObjectThatWasNotOpen) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a", "a");
    CFile file;
    CFileException error;
    BufferedFile reader(&file, 0);
    EXPECT_FALSE(reader.IsOpen());
    EXPECT_EQ(reader.GetTextBlock(0, 0), "");
    EXPECT_FALSE(reader.Open(folder.Path("none").c_str(), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_TRUE(reader.Open(path.c_str(), CFile::modeRead, nullptr));
    EXPECT_EQ(reader.GetCh(), 'a');
    reader.Close();
    reader.Attach(&file);
    EXPECT_FALSE(reader.IsOpen());
    BufferedFile none;
    EXPECT_FALSE(none.Open(path.c_str(), CFile::modeRead, nullptr));
}

TEST(BufferedFile, IsClosedWhenItsFileFailsToClose) {
    class FailingFile : public CMemFile {
    public:
        void Close() override { AfxThrowFileException(CFileException::diskFull); }
    };
    FailingFile file;
    BufferedFile reader(&file, 0);
    EXPECT_EQ(causeOf([&] { reader.Close(); }), CFileException::diskFull);
    EXPECT_FALSE(reader.IsOpen());
    reader.Close();
}

TEST(BufferedFile, TextBlocksEndWithTheFile) {
    CMemFile file(std::string_view("0123456789"));
    BufferedFile reader(&file, 1);
    reader.GetCh();
    for (const std::uint64_t last :
         {std::uint64_t{9}, std::uint64_t{10}, std::uint64_t{0xFFFFFFFF}, std::uint64_t{0x80000010},
          std::numeric_limits<std::uint64_t>::max() - 1}) {
        EXPECT_EQ(reader.GetTextBlock(7, last), "789") << last;
    }
    EXPECT_EQ(reader.GetTextBlock(10, 20), "");
    EXPECT_EQ(reader.GetTextBlock(5, 4), "");
    EXPECT_EQ(reader.GetCh(), '1' ^ 0x5c) << "and leave the reader where it was";
    reader.Detach();

    CMemFile growing;
    reader.Attach(&growing);
    growing.Write("abc", 3);
    EXPECT_EQ(reader.GetTextBlock(1, 5), "bc") << "also of what came later";
    reader.Detach();
}

TEST(BufferedFile, PassesFaultsOfTheFileThrough) {
    class FailingFile : public CMemFile {
    public:
        using CMemFile::CMemFile;
        std::size_t Read(void*, std::size_t) override {
            AfxThrowFileException(CFileException::hardIO);
        }
    };
    FailingFile file(std::string_view("x"));
    BufferedFile reader(&file, 0);
    EXPECT_EQ(causeOf([&] { reader.GetCh(); }), CFileException::hardIO);
    EXPECT_EQ(causeOf([&] { reader.NextCh(); }), CFileException::hardIO);
    EXPECT_EQ(reader.GetPos(), 0u);
    reader.Detach();
}

}  // namespace
}  // namespace tessalink::test
