// Looks a raw score up in a norm table, makes a one-line report of it in memory and prints it.
#include <cstdio>

#include "core/Date.h"
#include "platform/files/CMemFile.h"
#include "report/FileParser.h"
#include "report/VarTable.h"
#include "scores/NormTable.h"
#include "scores/ScoreScale.h"

namespace {

constexpr const char* cNorms =
    "age,raw,T\n"
    "6-8,0-9,41\n"
    "6-8,10-20,61\n"
    "9+,0-20,50\n";
constexpr const char* cLetter =
    "Dear @Name, @IF(T > 50)@THEN above @ELSE below @ENDIF the average: @T, rank @Rank.\n";

double scoreOf(int raw) {
    CMemFile file(cNorms);
    int years = 0, months = 0, days = 0;
    Date(2023, 12, 10).Minus(Date("3/15/2015"), years, months, days);
    const auto norms = tessalink::NormTable::Read(file);
    return norms.Find({}, tessalink::ageInMonths(years, months), raw, "T");
}

void writeReport(CFile& output) {
    const tessalink::TScore score = scoreOf(17);
    VarTable vars;
    vars.AddVar("Name", "Ada");
    vars.AddVar("T", static_cast<int>(score.GetValue()));
    vars.AddVar("Rank",
                KOVStandardScores::PercentileRank(KOVStandardScores::ZScore(score.GetAsZScore()))
                    .Format1());
    CMemFile letter(cLetter);
    FileParser(letter, output, vars, 0).Parse(nullptr);
}

}  // namespace

int main() {
    CMemFile output;
    try {
        writeReport(output);
    } catch (const CException& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    const CString report(output.View());
    std::fputs(report, stdout);
    return report == "Dear Ada, above the average: 61, rank 86.\n" ? 0 : 1;
}
