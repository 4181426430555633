#include "scores/NormTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "core/InputError.h"
#include "platform/files/CMemFile.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Reason = NormError::Reason;

NormTable tableOf(std::string_view text) {
    CMemFile file(text);
    file.SetFilePath("norms.csv");
    return NormTable::Read(file);
}

/// "LINE:COLUMN MESSAGE" of the fault, or nothing.
std::string faultOf(const std::string& text) {
    try {
        tableOf(text);
        return "";
    } catch (const InputError& fault) {
        EXPECT_EQ(fault.GetPlace().file, "norms.csv");
        return std::to_string(fault.GetPlace().line) + ":" +
               std::to_string(fault.GetPlace().column) + " " + fault.what();
    }
}

constexpr const char* cNorms =
    "# Made up.\n"
    "scale,sex,Age,raw,T,IQ,Reliability\n"
    "Anxiety,f,6-8, -3 - 0 ,38,80,0.84\n"
    "Anxiety,f,6-8,2,44.5,-,\n"
    "Anxiety,f,6-8,1,41,90,.84\n"
    "Anxiety,f,9:0-11:5,0-9,50,100,\n"
    "Anxiety,m,6-11,0-9,49,101,\n"
    "Anxiety,*,12+,5-20,20,100,0.9\n"
    "Anxiety,*,12+,21,20,98,0.90\n"
    "Anxiety,f,11:6-11:11,3,1,1,\n"
    "\"H\xC3\xB6he, total\",*,*,1,7,-,1\n";

TEST(NormTable, FindsScores) {
    const NormTable norms = tableOf(cNorms);
    struct Case {
        const char* sex;
        int age;
        int raw;
        const char* column;
        double score;
    };
    const Case cases[] = {
        {"f", ageInMonths(6), -3, "T", 38},      {"f", ageInMonths(8, 11), 0, "IQ", 80},
        {"f", ageInMonths(7), 1, "T", 41},       {"f", ageInMonths(7), 2, "T", 44.5},
        {"f", ageInMonths(9), 2, "T", 50},       {"f", ageInMonths(11, 5), 9, "IQ", 100},
        {"f", ageInMonths(11, 6), 3, "T", 1},    {"m", ageInMonths(8, 11), 2, "IQ", 101},
        {"m", ageInMonths(12), 20, "IQ", 100},   {"x", ageInMonths(99), 21, "IQ", 98},
        {nullptr, ageInMonths(12), 21, "T", 20},
    };
    for (const Case& c : cases) {
        NormKeys keys = {{"scale", "Anxiety"}, {"unused", "?"}};
        if (c.sex) keys["sex"] = c.sex;
        EXPECT_EQ(norms.Find(keys, c.age, c.raw, c.column), c.score) << c.age << " " << c.raw;
    }
    const NormGroup other = norms.FindGroup({{"scale", "H\xF6he, total"}});
    EXPECT_EQ(other.Find(1, "T"), 7);
    EXPECT_EQ(other.FindIfAny(1, "IQ"), std::nullopt);
    EXPECT_FALSE(other.HasScores("IQ"));
    EXPECT_TRUE(other.HasScores("T"));
    EXPECT_EQ(other.GetReliability(), 1);
    EXPECT_TRUE(other.GetAges().IsAny());

    const NormGroup group = norms.FindGroup({{"scale", "Anxiety"}, {"sex", "f"}}, 80);
    EXPECT_EQ(group.GetReliability(), 0.84);
    EXPECT_EQ(group.GetLowestRaw(), -3);
    EXPECT_EQ(group.GetHighestRaw(), 2);
    EXPECT_EQ(group.GetPlace().line, 3u);
    EXPECT_EQ(group.Describe(), "scale Anxiety, sex f, Age 6:0-8:11");
    EXPECT_EQ(norms.FindGroup({{"scale", "Anxiety"}, {"sex", "m"}}, 80).GetReliability(),
              std::nullopt);

    ASSERT_EQ(norms.GetKeys().size(), 2u);
    EXPECT_EQ(norms.GetKeys()[1].text, "sex");
    EXPECT_TRUE(norms.HasAges());
    ASSERT_EQ(norms.GetColumns().size(), 2u);
    EXPECT_FALSE(norms.GetColumns()[0].isWhole);
    EXPECT_TRUE(norms.GetColumns()[1].isWhole);
    EXPECT_EQ(norms.GetColumns()[1].name.place.column, 21u);
    ASSERT_EQ(norms.GetValues("scale").size(), 2u);
    EXPECT_EQ(norms.GetValues("scale")[1].place.line, 11u);
    EXPECT_EQ(norms.GetValues("Scale").size(), 0u);

    const NormTable plain = tableOf("raw;z\n0;-1.5\n");
    EXPECT_EQ(plain.Find({}, 70, 0, "z"), -1.5);
    EXPECT_EQ(plain.FindGroup({}).Describe(), "all persons");
}

TEST(NormTable, SaysWhyThereIsNoScore) {
    const NormTable norms = tableOf(cNorms);
    struct Case {
        NormKeys keys;
        std::optional<int> age;
        int raw;
        const char* column;
        Reason reason;
        const char* key;
        const char* message;
    };
    const NormKeys girl = {{"scale", "Anxiety"}, {"sex", "f"}};
    const NormKeys other = {{"scale", "H\xF6he, total"}};
    const Case cases[] = {
        {{{"scale", "Angst"}},
         80,
         1,
         "T",
         Reason::UnknownValue,
         "scale",
         "no norms for scale 'Angst': the table has Anxiety, H\xF6he, total"},
        {{}, 80, 1, "T", Reason::MissingKey, "scale", "the norms depend on scale, which is not"},
        {{{"scale", "Anxiety"}, {"sex", "F"}},
         80,
         1,
         "T",
         Reason::AgeOutside,
         "Age",
         "no norms for Age 6:8 with scale Anxiety, sex F: the table has 12:0+"},
        {girl, std::nullopt, 1, "T", Reason::MissingKey, "Age",
         "the norms with scale Anxiety, sex f depend on Age, which is not given: the table has "
         "6:0+"},
        {girl, ageInMonths(5, 11), 1, "T", Reason::AgeOutside, "Age",
         "no norms for Age 5:11 with scale Anxiety, sex f: the table has 6:0+"},
        {girl, -1, 1, "T", Reason::AgeOutside, "Age", "no norms"},
        {girl, 80, -4, "T", Reason::RawOutside, "",
         "raw score -4 is outside the norms of scale Anxiety, sex f, Age 6:0-8:11, which go from "
         "-3 to 2"},
        {girl, 80, 3, "T", Reason::RawOutside, "", "which go from -3 to 2"},
        {girl, 80, 2, "IQ", Reason::NoScore, "", "no IQ for raw score 2 of scale Anxiety, sex f"},
        {other, 80, 1, "IQ", Reason::NoScore, "", "of scale H\xF6he, total, any sex, any Age"},
        {girl, 80, 1, "t", Reason::UnknownColumn, "", "is named 't': the table has T, IQ"},
    };
    for (const Case& c : cases) {
        try {
            norms.Find(c.keys, c.age, c.raw, c.column);
            ADD_FAILURE() << c.message;
        } catch (const NormError& error) {
            EXPECT_EQ(error.GetReason(), c.reason) << error.what();
            EXPECT_EQ(error.GetKey(), c.key);
            EXPECT_THAT(error.what(), HasSubstr(c.message));
            const bool hasGroup = c.reason == Reason::RawOutside || c.reason == Reason::NoScore;
            EXPECT_EQ(error.GetGroupPlace().IsKnown(), hasGroup) << error.what();
        }
    }
    std::string many = "k,raw,T\n";
    for (int i = 0; i < 25; ++i) many += "v" + std::to_string(i) + ",0,50\n";
    try {
        tableOf(many).FindGroup({{"k", "x"}});
        ADD_FAILURE();
    } catch (const NormError& error) {
        EXPECT_THAT(error.what(), testing::EndsWith("v18, v19 and 5 more"));
    }
}

TEST(NormTable, NamesPlaceAndKindOfAFault) {
    struct Case {
        std::string text;  ///< from the line after "scale,age,raw,T,IQ" on, or the whole
        const char* place;
        const char* message;
    };
    const std::string start = "scale,age,raw,T,IQ\n";
    const Case cases[] = {
        {"", "1:1 ", "no rows"},
        {"A,6,0,x,1", "2:7 ", "'x' is not a standard score"},
        {"A,6,0,,1", "2:7 ", "or - where there is none"},
        {"A,6,0,\"1,5\",1", "2:7 ", "full stop"},
        {"A,6,0,1,inf", "2:9 ", "not a standard score"},
        {"A,6,0,1,1e5", "2:9 ", "not a standard score"},
        {"A,6,,1,1", "2:5 ", "'' is not a raw score"},
        {"A,6,1.5,1,1", "2:5 ", "not a raw score"},
        {"A,6,3-,1,1", "2:5 ", "not a raw score"},
        {"A,6,--3,1,1", "2:5 ", "not a raw score"},
        {"A,6,1-2-3,1,1", "2:5 ", "not a raw score"},
        {"A,6,2147483648,1,1", "2:5 ", "not a raw score"},
        {"A,6,7-4,1,1", "2:5 ", "'7-4' is reversed"},
        {"A,6,-1--3,1,1", "2:5 ", "reversed"},
        {"A,,0,1,1", "2:3 ", "not an age span"},
        {"A,6:12,0,1,1", "2:3 ", "not an age span"},
        {"A,6:,0,1,1", "2:3 ", "not an age span"},
        {"A,151,0,1,1", "2:3 ", "not an age span"},
        {"A,-6,0,1,1", "2:3 ", "not an age span"},
        {"A,6.Aug,0,1,1", "2:3 ", "not an age span"},
        {"A,+,0,1,1", "2:3 ", "not an age span"},
        {"A,8-6,0,1,1", "2:3 ", "reversed"},
        {"A,6:3-6:2,0,1,1", "2:3 ", "reversed"},
        {"  ,6,0,1,1", "2:1 ", "no value of 'scale'"},
        // Rows of one group
        {"A,6,0,1,1\nA,6,0,1,1", "3:5 ", "raw score 0 is in line 2 too"},
        {"A,6,4-7,1,1\nB,6,0,1,1\nA,6,0-5,1,1", "4:5 ", "raw scores 4 to 5 are in line 2 too"},
        {"A,6,0-9,1,1\nA,6,3,1,1", "3:5 ", "raw score 3 is in line 2 too"},
        {"A,6,0-2,1,1\nA,6:0-6:11,4,1,1", "3:12 ", "raw score 3 is missing between line 2"},
        {"A,6,9,1,1\nA,6,-2147483648-2,1,1", "2:5 ", "raw scores 3 to 8 are missing"},
        {"A,6,0,1,9\nA,6,1,2,8\nA,6,2,2,9", "4:9 ", "'IQ' changes its direction after line 3"},
        {"A,6,2,1,1\nA,6,1,-,1\nA,6,0,2,1\nA,6,3,1.5,1", "5:7 ", "'T' changes its direction after"},
        // Groups
        {"A,6-8,0,1,1\nA,8:11-9,0,1,1", "3:1 ", "may belong to that of line 2 too"},
        {"A,6-8,0,1,1\n*,7,0,1,1", "3:1 ", "group, any scale, age 7:0-7:11, may belong"},
        {"A,6-8,0,1,1\n*,8:11-9,0,1,1", "3:1 ", "group, any scale, age 8:11-9:11, may belong"},
        {"*,*,0,1,1\nA,65+,0,1,1", "3:1 ", "line 2 too, any scale, any age"},
        {"A,6-8,0,1,1\nB,1-9,0,1,1\nA,9:1+,0,1,1", "4:1 ", "ages are missing from 9:0 on"},
        {"A,9+,0,1,1\nA,6-7,0,1,1", "3:1 ", "age 6:0-7:11 (line 3) and age 9:0+ (line 2)"},
        {"A,6,0,1,1\nA,9,0,1,1\n*,7,0,1,1", "3:1 ", "ages are missing from 8:0 on"},
        // Whole tables
        {"scale,sex,raw,T\nA,*,0,1\n*,m,0,1\nB,f,0,1", "3:1 ",
         "any scale, sex m, may belong to that of line 2 too, scale A, any sex: part them"},
        {"scale,sex,age,raw,T\nA,*,6-20,0,1\nB,*,7,0,1\n*,m,10,0,1", "4:1 ",
         "any scale, sex m, age 10:0-10:11, may belong to that of line 2 too, scale A, any sex"},
        {"scale,T\nA,1", "1:1 ", "no column is named 'raw'"},
        {"scale\traw\tT\nA\t0\t1", "1:1 ", "commas between them"},
        {"scale,raw\nA,0", "1:7 ", "no standard score"},
        {"raw,Reliability\n0,1", "1:1 ", "no standard score"},
        {"a,a,raw,T\nx,x,0,1", "1:3 ", "duplicate column 'a'"},
        {"raw,T, T\n0,1,1", "1:7 ", "duplicate column 'T'"},
        {"raw,Raw,T\n0,0,1", "1:5 ", "duplicate column 'Raw'"},
        {"age,AGE,raw,T\n6,6,0,1", "1:5 ", "duplicate column 'age'"},
        {"raw,T,reliability,RELIABILITY\n0,1,1,1", "1:19 ", "duplicate column 'reliability'"},
        {"reliability,raw,T\n1,0,1", "1:1 ", "behind 'raw'"},
        {"raw,T, \n0,1,1", "1:7 ", "without a name"},
        {"a,b,c,d,e,f,g,h,age,i,raw,T", "1:21 ", "more than 8 keys"},
        {"raw,T,reliability\n0,1,1.01", "2:5 ", "not a reliability"},
        {"raw,T,reliability\n0,1,nan", "2:5 ", "not a reliability"},
        {"raw,T,reliability\n0,1,0.8\n1,1,\n2,1,0.81", "4:5 ",
         "another reliability than in line 2"},
        {"raw,T\n0", "2:1 ", "the row has 1 cells"},
    };
    for (const Case& c : cases) {
        const bool isWhole = c.text.find("raw") != std::string::npos || c.text.starts_with("sc");
        const std::string fault = faultOf(isWhole ? c.text : start + c.text);
        EXPECT_THAT(fault, StartsWith(c.place)) << c.text;
        EXPECT_THAT(fault, HasSubstr(c.message)) << c.text;
    }
}

TEST(NormTable, TakesWhatOnlyLooksLikeAFault) {
    const char* const tables[] = {
        "scale,age,raw,T\nA,6-8,0,1\n*,9-11,0,1\nA,12+,0,1\n",  // "*" fills the gap
        "scale,age,raw,T\nA,6\x2D\x37,0,1\nA,8 - 9,0,1\nA,10 +,0,1\n",
        "age,raw,T\n6\342\200\2238,0\342\200\2233,1\n",  // en dashes
        "raw,T\n-2147483648-2147483647,1\n",
        "raw,T,U\n0,1,2\n1,-,2\n2,1,1\n3,0,1\n4,0,-\n",
        "raw,age\n0,6\n1,6.5\n",
    };
    for (const char* table : tables) EXPECT_EQ(faultOf(table), "") << table;
}

/// A table of random groups, as text and as a plain list.
struct RandomTable {
    struct Row {
        std::string scale, sex;
        AgeSpan ages;
        int from, to;
        double score;
    };
    std::vector<Row> rows;
    std::string text = "scale,sex,age,raw,T\n";

    explicit RandomTable(Dice& dice) {
        for (const std::string scale : {"A", "B", "C"}) {
            const bool isBySex = dice.OneIn(2);
            for (const std::string sex : {"f", "m"}) {
                if (isBySex || sex == "f") add_ages(dice, scale, isBySex ? sex : "*");
            }
        }
        for (std::size_t i = rows.size(); i > 1; --i) std::swap(rows[i - 1], rows[dice.Below(i)]);
        for (const Row& row : rows) {
            text += row.scale + "," + row.sex + ",";
            text += row.ages.IsAny() ? "*" : std::string(row.ages.Format().View());
            text += "," + std::to_string(row.from);
            if (row.to != row.from) text += "-" + std::to_string(row.to);
            text += "," + std::to_string(static_cast<int>(row.score)) + "\n";
        }
    }

    void add_ages(Dice& dice, const std::string& scale, const std::string& sex) {
        if (dice.OneIn(4)) return add_raws(dice, scale, sex, {});
        int from = static_cast<int>(dice.Below(30));
        for (std::size_t count = 1 + dice.Below(4); count > 0; --count) {
            const int to = from + static_cast<int>(dice.Below(20));
            add_raws(dice, scale, sex, {from, dice.OneIn(9) ? AgeSpan::cOpenEnd : to});
            if (rows.back().ages.to == AgeSpan::cOpenEnd) break;
            from = to + 1;
        }
    }

    void add_raws(Dice& dice, const std::string& scale, const std::string& sex, AgeSpan ages) {
        int from = static_cast<int>(dice.Below(9)) - 5;
        int score = static_cast<int>(dice.Below(90));
        const int step = dice.OneIn(2) ? 1 : -1;
        for (std::size_t count = 1 + dice.Below(6); count > 0; --count) {
            const int to = from + static_cast<int>(dice.Below(3));
            rows.push_back({scale, sex, ages, from, to, static_cast<double>(score)});
            from = to + 1;
            score += step * static_cast<int>(dice.Below(3));
        }
    }

    std::optional<double> Find(const std::string& scale, const std::string& sex,
                               std::optional<int> age, int raw) const {
        for (const Row& row : rows) {
            const bool isAge = age ? row.ages.Contains(*age) : row.ages.IsAny();
            if (row.scale == scale && (row.sex == "*" || row.sex == sex) && isAge &&
                row.from <= raw && raw <= row.to) {
                return row.score;
            }
        }
        return std::nullopt;
    }
};

TEST(NormTable, FindsWhatAPlainSearchFinds) {
    Dice dice(11);
    int found = 0;
    for (int round = 0; round < 300; ++round) {
        const RandomTable plain(dice);
        ASSERT_EQ(faultOf(plain.text), "") << plain.text;
        const NormTable norms = tableOf(plain.text);
        for (int i = 0; i < 200; ++i) {
            const std::string scale = dice.Text(1, "ABCD");
            const std::string sex = dice.Text(1, "fm*");
            const auto age =
                dice.OneIn(9) ? std::nullopt : std::optional(static_cast<int>(dice.Below(120)));
            const int raw = static_cast<int>(dice.Below(30)) - 8;
            std::optional<double> score;
            try {
                score = norms.Find({{"scale", scale.c_str()}, {"sex", sex.c_str()}}, age, raw, "T");
                ++found;
            } catch (const NormError&) {
            }
            const std::string wanted = sex == "*" ? "?" : sex;
            ASSERT_EQ(score, plain.Find(scale, wanted, age, raw)) << plain.text << scale << sex;
        }
        // One more row, which is there already.
        const RandomTable::Row& row = dice.Pick(plain.rows);
        const CString twice = CString(plain.text) + row.scale + "," + row.sex + "," +
                              (row.ages.IsAny() ? "*" : row.ages.Format()) + "," +
                              std::to_string(row.to) + ",1\n";
        ASSERT_THAT(faultOf(std::string(twice.View())), HasSubstr(" is in line ")) << twice;
    }
    EXPECT_GT(found, 3000);
}

TEST(NormTable, ReadsAndFindsInLargeTablesFast) {
    std::string text = "scale,sex,age,raw,T,IQ,reliability\n";
    for (int scale = 0; scale < 60; ++scale) {
        for (int group = 0; group < 40; ++group) {
            const std::string start = "scale" + std::to_string(scale) +
                                      (group < 20 ? ",f," : ",m,") +
                                      std::to_string(6 + group % 20) + ",";
            for (int raw = 0; raw < 30; ++raw) {
                text += start + std::to_string(raw) + "," + std::to_string(raw + scale) + "," +
                        std::to_string(90 + raw + group) + ",0.9\n";
            }
        }
    }
    const auto seconds = [start = std::chrono::steady_clock::now()] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    const NormTable norms = tableOf(text);
    const double reading = seconds();
    double sum = 0;
    constexpr int lookups = 100000;
    NormKeys keys = {{"scale", "scale0"}, {"sex", "m"}};
    for (int i = 0; i < lookups; ++i) {
        keys["scale"] = CString("scale" + std::to_string(i % 60));
        sum += norms.Find(keys, ageInMonths(6 + i % 20, 5), i % 30, "T") - i % 60 - i % 30;
    }
    EXPECT_EQ(sum, 0);
    RecordProperty("nanoseconds_a_lookup", std::to_string((seconds() - reading) / lookups * 1e9));
    std::printf("reading %.3f s, a lookup %.0f ns\n", reading,
                (seconds() - reading) / lookups * 1e9);
    EXPECT_LT(seconds(), 20);
}

}  // namespace
}  // namespace tessalink::test
