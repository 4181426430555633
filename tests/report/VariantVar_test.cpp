#include "report/VariantVar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "platform/files/CArchive.h"
#include "platform/files/CMemFile.h"
#include "report/VarTable.h"
#include "tests/support/OddNumbers.h"

namespace tessalink::test {
namespace {

TEST(VariantVar, ConvertsToWhateverIsAskedFor) {
    struct Case {
        VariantVar value;
        int asInt;
        double asDouble;
        const char* asStr;
    };
    const Case cases[] = {
        {VariantVar(), 0, 0.0, ""},
        {7, 7, 7.0, "7"},
        {std::numeric_limits<int>::min(), std::numeric_limits<int>::min(), -2147483648.0,
         "-2147483648"},
        {2.5, 2, 2.5, "2.50"},
        {-2.7, -2, -2.7, "-2.70"},
        {3.14159, 3, 3.14159, "3.14"},
        {1e17, std::numeric_limits<int>::max(), 1e17, "100000000000000000.00"},
        {-cInfinity, std::numeric_limits<int>::min(), -cInfinity, "-inf"},
        {0.125, 0, 0.125, "0.12"},
        {"12abc", 12, 12.0, "12abc"},
        {"abc", 0, 0.0, "abc"},
        {" -3.75e1x", -3, -37.5, " -3.75e1x"},
        {"99999999999", std::numeric_limits<int>::max(), 99999999999.0, "99999999999"},
        {CString("x"), 0, 0.0, "x"},
        {static_cast<const char*>(nullptr), 0, 0.0, ""},
        {reinterpret_cast<CObject*>(0x1234abcdu), 0x1234abcd, 0.0, "0x1234ABCD"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.asStr);
        EXPECT_EQ(c.value.GetAsInt(), c.asInt);
        EXPECT_EQ(static_cast<int>(c.value), c.asInt);
        EXPECT_EQ(c.value.GetAsDouble(), c.asDouble);
        EXPECT_EQ(c.value.GetAsStr(), c.asStr);
        EXPECT_EQ(c.value.GetAsPtr() != nullptr, c.value.IsPtr() != 0);
        EXPECT_EQ(c.value.IsNumber(), c.value.IsInt() || c.value.IsDouble());
    }
    EXPECT_EQ(VariantVar(std::nan("")).GetAsInt(), 0);
}

TEST(VariantVar, FormatsInFields) {
    struct Case {
        VariantVar value;
        int decimals;
        int width;
        const char* text;
    };
    const Case cases[] = {
        {5, 2, 8, "      05"},
        {-5, 3, 0, "-005"},
        {0, 0, 3, "   "},
        {12345, 1, 2, "12345"},
        {3.14159, 2, 8, "    3.14"},
        {2.5, 0, 0, "2"},
        {-1.005, 1, -7, "-1.0   "},
        {"ab", 2, 8, "      ab"},
        {"ab", 0, -4, "ab  "},
        {"abcdef", 2, 3, "abcdef"},
        {VariantVar(), 2, 3, "   "},
        {reinterpret_cast<CObject*>(0xbu), 0, 12, "  0x0000000B"},
    };
    for (const Case& c : cases) EXPECT_EQ(c.value.GetAsStr(c.decimals, c.width), c.text);
}

TEST(VariantVar, ConvertsInPlace) {
    CObject* const object = reinterpret_cast<CObject*>(0x10u);
    const std::vector<VariantVar> values = {VariantVar(), 7, 2.5, "2.5x", object};
    using V = VariantVar;
    // For each target the success with each of the values, and the text afterwards.
    struct Case {
        int target;
        std::vector<int> results;
        std::vector<const char*> texts;
    };
    const Case cases[] = {
        {V::vtEmpty, {1, 0, 0, 0, 0}, {"", "7", "2.50", "2.5x", "0x00000010"}},
        {V::vtInt, {1, 1, 1, 1, 1}, {"0", "7", "2", "2", "16"}},
        {V::vtDouble, {1, 1, 1, 1, 0}, {"0.00", "7.00", "2.50", "2.50", "0x00000010"}},
        {V::vtString, {1, 1, 1, 1, 1}, {"", "7", "2.50", "2.5x", "0x00000010"}},
        {V::vtPtr, {0, 0, 0, 0, 1}, {"", "7", "2.50", "2.5x", "0x00000010"}},
        {5, {1, 1, 1, 1, 1}, {"", "7", "2.50", "2.5x", "0x00000010"}},
    };
    for (const Case& c : cases) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            VariantVar value = values[i];
            EXPECT_EQ(value.ConvertTo(static_cast<V::Type>(c.target)) != 0, c.results[i] != 0);
            EXPECT_EQ(value.GetAsStr(), c.texts[i]) << c.target;
            const bool changes = c.results[i] && c.target >= V::vtInt && c.target <= V::vtString;
            EXPECT_EQ(value.GetType(), changes ? c.target : values[i].GetType());
        }
    }
}

TEST(VariantVar, TakesTheTypeOfWhatIsAssigned) {
    VariantVar value("text");
    value = *&value;
    EXPECT_EQ(value.GetAsStr(), "text");
    value = 3;
    EXPECT_TRUE(value.IsInt());
    EXPECT_EQ(value.Text(), "");
    value = 2.0;
    EXPECT_TRUE(value.IsDouble());
    value = "again";
    EXPECT_TRUE(value.IsString());
    value.SetEmpty();
    EXPECT_TRUE(value.IsEmpty() && value.IsUndefined());
    EXPECT_EQ(value.GetAsStr(), "");
    value = VariantVar(1.5);
    EXPECT_EQ(static_cast<double>(value), 1.5);
}

std::string stored(CObject& object) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    object.Serialize(archive);
    archive.Close();
    return std::string(file.View());
}

void load(CObject& object, std::string_view bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    object.Serialize(archive);
}

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) text += static_cast<char>(value);
    return text;
}

TEST(VariantVar, IsArchivedByteForByte) {
    struct Case {
        VariantVar value;
        std::string archive;
    };
    const Case cases[] = {
        {VariantVar(), bytes({0})},
        {-2, bytes({1, 0xFE, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0})},
        {2.5, bytes({2, 0, 0, 0, 0, 0, 0, 4, 0x40})},
        {"ab", bytes({3, 2, 'a', 'b'})},
        {CString('x', 300), bytes({3, 0xFF, 0x2C, 1}) + std::string(300, 'x')},
        {reinterpret_cast<CObject*>(0x1122334455667788u),
         bytes({4, 0x88, 0x77, 0x66, 0x55, 0, 0, 0, 0})},
    };
    for (Case c : cases) {
        EXPECT_EQ(stored(c.value), c.archive);
        VariantVar loaded("before");
        load(loaded, c.archive);
        EXPECT_EQ(loaded.GetType(), c.value.GetType());
        EXPECT_EQ(loaded.GetAsStr(), c.value.IsPtr() ? CString("0x00000000") : c.value.GetAsStr());
        EXPECT_EQ(loaded.GetAsPtr(), nullptr);
        for (std::size_t cut = 0; cut < c.archive.size(); ++cut) {
            VariantVar kept(7);
            EXPECT_THROW(load(kept, c.archive.substr(0, cut)), CArchiveException) << cut;
            EXPECT_EQ(kept.GetAsStr(), "7");
        }
    }
    // An integer keeps what the eight bytes held before.
    VariantVar number(-1.5);
    number = 1;
    EXPECT_EQ(stored(number), bytes({1, 1, 0, 0, 0, 0, 0, 0xF8, 0xBF}));
    VariantVar loaded;
    load(loaded, stored(number));
    EXPECT_EQ(stored(loaded), stored(number));
    // A type of a later time.
    for (const int type : {5, 255}) {
        VariantVar unknown;
        const std::string archive = bytes({type, 1, 2, 3, 4, 5, 6, 7, 8});
        load(unknown, archive);
        EXPECT_FALSE(unknown.IsEmpty() || unknown.IsNumber() || unknown.IsString());
        EXPECT_EQ(unknown.GetAsInt(), 0);
        EXPECT_EQ(unknown.GetAsDouble(), 0.0);
        EXPECT_EQ(unknown.GetAsStr(), "");
        EXPECT_EQ(unknown.GetAsStr(2, 5), "");
        EXPECT_EQ(unknown.GetAsPtr(), nullptr);
        EXPECT_EQ(stored(unknown), archive);
    }
}

TEST(VarTable, BridgesTypesAndMissingNames) {
    VarTable table;
    CObject* const object = &table;
    table.SetValue("i", 7);
    table.AddVar("d", 2.5);
    table.AddVar("s", "12abc");
    table.SetValue("p", object);
    table.SetValue("S", CString("other"));
    EXPECT_EQ(table.GetInt("s"), 12);
    EXPECT_EQ(table.GetDouble("i"), 7.0);
    EXPECT_EQ(table.GetStr("d"), "2.50");
    EXPECT_EQ(table.GetStr("S"), "other");
    EXPECT_EQ(table.GetPtr("p"), object);
    EXPECT_EQ(table.GetPtr("i"), nullptr);
    EXPECT_EQ(table.GetInt("no"), 0);
    EXPECT_EQ(table.GetDouble("no"), 0.0);
    EXPECT_EQ(table.GetStr("no"), "");
    EXPECT_EQ(table.GetPtr("no"), nullptr);
    EXPECT_TRUE(table.GetVar("no").IsEmpty());
    EXPECT_FALSE(table.Exists("no"));
    EXPECT_FALSE(table.Exists(nullptr));
    table.AddVar("i", "text");
    EXPECT_TRUE(table.GetVar("i").IsString());
    table.SetAt("e", VariantVar());
    EXPECT_TRUE(table.Exists("e")) << "an empty value is there";
    table.RemoveAll();
    EXPECT_TRUE(table.IsEmpty());
}

TEST(VarTable, TakesNumbersAndTextsOfOtherTypes) {
    VarTable table;
    table.AddVar("v", 7L);
    EXPECT_TRUE(table.GetVar("v").IsInt() && table.GetInt("v") == 7);
    table.SetValue("v", std::size_t{8});
    EXPECT_TRUE(table.GetVar("v").IsInt() && table.GetInt("v") == 8);
    table.AddVar("v", 3000000000u);
    EXPECT_EQ(table.GetStr("v"), "3000000000.00");
    table.SetValue("v", std::string("text"));
    EXPECT_EQ(table.GetStr("v"), "text");
}

template <class VALUE>
concept Streamed = requires(CArchive& archive, const VALUE& value) {
    archive << value;
};
static_assert(Streamed<CString> && !Streamed<VariantVar>, "it would lose its type");

TEST(VarTable, IsArchivedInItsOrder) {
    VarTable table;
    EXPECT_EQ(stored(table), bytes({0, 0}));
    table.SetValue("a", 1);
    EXPECT_EQ(stored(table), bytes({1, 0, 1, 'a', 1, 1, 0, 0, 0, 0, 0, 0, 0}));
    table.SetValue("name", "Ann");
    table.SetValue("real", 0.1);
    table.SetAt("empty", VariantVar());
    std::string expected = bytes({4, 0});
    for (POSITION position = table.GetStartPosition(); position;) {
        CString key;
        VariantVar value;
        table.GetNextAssoc(position, key, value);
        expected += static_cast<char>(key.GetLength()) + std::string(key.View()) + stored(value);
    }
    const std::string archive = stored(table);
    EXPECT_EQ(archive, expected);

    VarTable filled;
    filled.SetValue("a", "before");
    filled.SetValue("stays", 3);
    load(filled, archive);
    EXPECT_EQ(filled.GetCount(), 5);
    EXPECT_TRUE(filled.GetVar("a").IsInt());
    EXPECT_EQ(filled.GetStr("name"), "Ann");
    EXPECT_EQ(filled.GetDouble("real"), 0.1);
    EXPECT_TRUE(filled.Exists("empty") && filled.Exists("stays"));
    for (std::size_t cut = 0; cut < archive.size(); ++cut) {
        VarTable partly;
        EXPECT_THROW(load(partly, archive.substr(0, cut)), CArchiveException) << cut;
        EXPECT_LE(partly.GetCount(), 3) << "what came before the cut";
    }
    VarTable twice;
    load(twice, bytes({2, 0, 1, 'x', 0, 1, 'x', 3, 1, 'y'}));
    EXPECT_EQ(twice.GetStr("x"), "y");
    EXPECT_EQ(twice.GetCount(), 1);
}

TEST(VarTable, ArchivesCountsBeyond16Bits) {
    VarTable table;
    for (int i = 0; i < 65535; ++i) table.SetValue(std::to_string(i).c_str(), i);
    const std::string archive = stored(table);
    EXPECT_EQ(archive.substr(0, 6), bytes({0xFF, 0xFF, 0xFF, 0xFF, 0, 0}));
    VarTable loaded;
    load(loaded, archive);
    EXPECT_EQ(loaded.GetCount(), 65535);
    EXPECT_EQ(loaded.GetInt("65534"), 65534);
    // A count that the archive does not hold takes no memory before the end is met.
    VarTable none;
    EXPECT_THROW(load(none, bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF})), CArchiveException);
    EXPECT_TRUE(none.IsEmpty());
}

TEST(VarTable, ComesFromItsRuntimeClass) {
    for (const CRuntimeClass* one : {RUNTIME_CLASS(VarTable), RUNTIME_CLASS(VariantVar)}) {
        const std::unique_ptr<CObject> object(const_cast<CRuntimeClass*>(one)->CreateObject());
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->GetRuntimeClass(), one);
    }
}

}  // namespace
}  // namespace tessalink::test
