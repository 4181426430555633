#include "platform/files/CArchive.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/base/CByteArray.h"
#include "platform/base/CMap.h"
#include "platform/base/CStringArray.h"
#include "platform/files/CMemFile.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/Environment.h"
#include "tests/support/FileSizeLimit.h"

namespace {

using namespace std::string_literals;

using Store = std::function<void(CArchive&)>;

std::string stored(const Store& store, int bufferSize = CArchive::cDefaultBufferSize) {
    CMemFile file;
    CArchive archive(&file, CArchive::store, bufferSize);
    store(archive);
    archive.Close();
    return std::string(file.View());
}

int archiveCauseOf(const std::function<void()>& attempt) {
    try {
        attempt();
    } catch (const CArchiveException& error) {
        return error.m_cause;
    }
    return CArchiveException::none;
}

template <class VALUE>
VALUE loaded(std::string_view bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    VALUE value{};
    archive >> value;
    EXPECT_EQ(file.GetLength(), bytes.size());
    archive.Close();
    EXPECT_EQ(file.GetPosition(), bytes.size());
    return value;
}

TEST(CArchive, WritesTheDocumentedBytes) {
    const auto text = [](std::size_t length) {
        return [=](CArchive& a) { a << CString('t', static_cast<int>(length)); };
    };
    const auto count = [](std::size_t value) { return [=](CArchive& a) { a.WriteCount(value); }; };
    CStringArray texts;
    texts.Add("ab");
    texts.Add("");
    CByteArray bytes;
    bytes.Add(7);
    bytes.Add(255);
    CMap<CString, const char*, int, int> map;
    map["b"] = 1;
    map["a"] = -2;
    const std::pair<Store, std::string> cases[] = {
        {[](CArchive& a) { a << BYTE{0x12} << WORD{0x3456} << DWORD{0x789ABCDE}; },
         "\x12\x56\x34\xDE\xBC\x9A\x78"s},
        {[](CArchive& a) { a << 'c' << short{-2} << -3 << true; }, "c\xFE\xFF\xFD\xFF\xFF\xFF\1"s},
        {[](CArchive& a) { a << std::int64_t{-2} << std::uint64_t{1}; },
         "\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\1\0\0\0\0\0\0\0"s},
        {[](CArchive& a) { a << 1.0f << 2.5; }, "\0\0\x80\x3F\0\0\0\0\0\0\4\x40"s},
        {text(0), "\0"s},
        {text(254), "\xFE"s + std::string(254, 't')},
        {text(255), "\xFF\xFF\0"s + std::string(255, 't')},
        {text(65533), "\xFF\xFD\xFF"s + std::string(65533, 't')},
        {text(65534), "\xFF\xFF\xFF\xFE\xFF\0\0"s + std::string(65534, 't')},
        {text(65535), "\xFF\xFF\xFF\xFF\xFF\0\0"s + std::string(65535, 't')},
        {[](CArchive& a) { a << CString("a\0b", 3); }, "\3a\0b"s},
        {count(0), "\0\0"s},
        {count(65534), "\xFE\xFF"s},
        {count(65535), "\xFF\xFF\xFF\xFF\0\0"s},
        {count(0x12345678), "\xFF\xFF\x78\x56\x34\x12"s},
        {[&](CArchive& a) { texts.Serialize(a); }, "\2\0\2ab\0"s},
        {[&](CArchive& a) { bytes.Serialize(a); }, "\2\0\7\xFF"s},
        {[&](CArchive& a) { map.Serialize(a); }, "\2\0\1b\1\0\0\0\1a\xFE\xFF\xFF\xFF"s},
    };
    int index = 0;
    for (const auto& [store, expected] : cases) {
        EXPECT_EQ(stored(store), expected) << "case " << index;
        EXPECT_EQ(stored(store, 0), expected) << "case " << index++;
    }
}

TEST(CArchive, ReadsBackWhatItWrote) {
    for (const int length : {0, 1, 254, 255, 4095, 4096, 65533, 65534, 70000, 3000000}) {
        const CString text('t', length);
        EXPECT_EQ(loaded<CString>(stored([&](CArchive& a) { a << text; })), text);
    }
    EXPECT_EQ(loaded<double>(stored([](CArchive& a) { a << -0.1; })), -0.1);
    EXPECT_EQ(loaded<std::int64_t>(stored([](CArchive& a) { a << INT64_MIN; })), INT64_MIN);
    EXPECT_TRUE(loaded<bool>("\x02"));
    for (const std::size_t count : {0u, 65534u, 65535u, 0xFFFFFFFFu}) {
        const std::string bytes = stored([&](CArchive& a) { a.WriteCount(count); });
        CMemFile file{std::string_view(bytes)};
        EXPECT_EQ(CArchive(&file, CArchive::load).ReadCount(), count);
    }
}

void storeMixture(CArchive& archive) {
    CStringArray texts;
    texts.Add("first");
    texts.Add(CString('x', 300));
    CMap<CString, const char*, double, double> map;
    map["one"] = 1.0;
    map["two"] = 2.0;
    archive << 7;
    texts.Serialize(archive);
    map.Serialize(archive);
}

void loadMixture(CArchive& archive) {
    CStringArray texts;
    CMap<CString, const char*, double, double> map;
    map["two"] = 5.0;
    map["kept"] = 6.0;
    int number = 0;
    archive >> number;
    texts.Serialize(archive);
    map.Serialize(archive);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(texts.GetSize(), 2);
    EXPECT_EQ(texts[1].GetLength(), 300);
    EXPECT_EQ(map.GetCount(), 3);
    EXPECT_EQ(map["two"], 2.0);
    EXPECT_EQ(map["kept"], 6.0);
}

TEST(CArchive, TellsTheEndOfTheFileWhereverItIsCut) {
    const std::string whole = stored(storeMixture);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        CMemFile file(std::string_view(whole).substr(0, length));
        CArchive archive(&file, CArchive::load, 128);
        EXPECT_EQ(archiveCauseOf([&] { loadMixture(archive); }),
                  length < whole.size() ? CArchiveException::endOfFile : CArchiveException::none)
            << length;
    }
}

struct Damage {
    std::string bytes;
    int cause;
};

TEST(CArchive, RejectsDamageWithoutTakingMemoryForIt) {
    const long memoryBefore = tessalink::test::peakMemory();
    const Damage cases[] = {
        {"", CArchiveException::endOfFile},
        {"\5abcd", CArchiveException::endOfFile},
        {"\xFF", CArchiveException::endOfFile},
        {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s + "abc", CArchiveException::endOfFile},
        {"\xFF\xFF\xFF\x00\x00\x00\x80"s + std::string(5000, 'x'), CArchiveException::endOfFile},
        {"\xFF\xFE\xFF\3a\0b\0"s, CArchiveException::badSchema},
    };
    for (const Damage& entry : cases) {
        CMemFile file{std::string_view(entry.bytes)};
        CArchive archive(&file, CArchive::load);
        CString text = "kept";
        EXPECT_EQ(archiveCauseOf([&] { archive >> text; }), entry.cause);
        EXPECT_EQ(text, "kept");
        file.SeekToBegin();
    }
    const std::string hugeCount = "\xFF\xFF\xFF\xFF\xFF\x7F"s + std::string(5000, 'x');
    CMemFile file{std::string_view(hugeCount)};
    CArchive archive(&file, CArchive::load);
    CByteArray bytes;
    EXPECT_EQ(archiveCauseOf([&] { bytes.Serialize(archive); }), CArchiveException::endOfFile);
    EXPECT_LT(bytes.GetSize(), 100'000);
    EXPECT_LT(tessalink::test::peakMemory() - memoryBefore, 64 * 1024);
}

TEST(CArchive, KnowsItsDirection) {
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    CArchive loading(&file, CArchive::load);
    int number = 0;
    EXPECT_TRUE(storing.IsStoring() && loading.IsLoading());
    EXPECT_EQ(archiveCauseOf([&] { storing >> number; }), CArchiveException::writeOnly);
    EXPECT_EQ(archiveCauseOf([&] { storing.Read(&number, 1); }), CArchiveException::writeOnly);
    EXPECT_EQ(archiveCauseOf([&] { loading << 1; }), CArchiveException::readOnly);
    EXPECT_EQ(archiveCauseOf([&] { loading.Write("", 0); }), CArchiveException::readOnly);
    EXPECT_EQ(archiveCauseOf([&] { storing.WriteCount(std::size_t{1} << 32); }),
              CArchiveException::badIndex);
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CArchive, LeavesTheFileBehindWhatItLoaded) {
    CMemFile file(std::string_view("\1\0\2\0tail", 8));
    CArchive archive(&file, CArchive::load);
    WORD word = 0;
    archive >> word;
    archive.Flush();
    EXPECT_EQ(file.GetPosition(), 2u);
    archive >> word;
    EXPECT_EQ(word, 2);
    archive.Close();
    EXPECT_EQ(file.GetPosition(), 4u);
    EXPECT_EQ(archiveCauseOf([&] { archive >> word; }), CArchiveException::genericException);
}

TEST(CArchive, PassesFaultsOfTheFile) {
    const TemporaryFolder folder;
    CFile full(folder.Path("full").c_str(), CFile::modeCreate | CFile::modeWrite);
    const tessalink::test::FileSizeLimit fullDisk(0);
    {
        CArchive archive(&full, CArchive::store);
        archive << 1;
        EXPECT_THROW(archive.Close(), CFileException);
    }
    {
        CArchive archive(&full, CArchive::store, 128);
        const std::string big(1000, 'b');
        EXPECT_THROW(archive.Write(big.data(), big.size()), CFileException);
    }
    CArchive forgotten(&full, CArchive::store);
    forgotten << 1;  // its destructor loses the fault
}

TEST(CArchive, StoresNothingWhenAnExceptionIsOnItsWay) {
    CMemFile file;
    try {
        CArchive archive(&file, CArchive::store);
        archive << 1;
        throw 5;
    } catch (int) {
    }
    EXPECT_EQ(file.GetLength(), 0u);
    { CArchive(&file, CArchive::store | CArchive::bNoFlushOnDelete) << 1; }
    EXPECT_EQ(file.GetLength(), 0u);
    { CArchive(&file, CArchive::store) << 1; }
    EXPECT_EQ(file.GetLength(), 4u);
}

}  // namespace
