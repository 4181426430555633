// Makes a one-line report in memory and prints it.
#include <cstdio>
#include <cstring>

#include "platform/files/CMemFile.h"
#include "report/FileParser.h"
#include "report/ParseException.h"
#include "report/VarTable.h"

int main() {
    const char text[] = "Dear @Name, @IF(Score > 50)@THEN above @ELSE below @ENDIF the average.\n";
    CMemFile definition;
    definition.Write(text, static_cast<unsigned>(std::strlen(text)));
    definition.SeekToBegin();

    VarTable vars;
    vars.AddVar("Name", "Ada");
    vars.AddVar("Score", 61);

    CMemFile output;
    FileParser parser(definition, output, vars, 0);
    ParseException error;
    if (!parser.Parse(&error)) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }

    char report[200] = "";
    output.SeekToBegin();
    output.Read(report, sizeof report - 1);
    std::fputs(report, stdout);
    return std::strcmp(report, "Dear Ada, above the average.\n") == 0 ? 0 : 1;
}
