#pragma once

#include <string>

#include "examples/bigfive/AnswersFile.h"
#include "report/FileBasedReport.h"

namespace bigfive {

// Fills the table with everything that the templates know about the person: the variables are
// listed in README.md. What the table held before is removed.
void fillVariables(const Person& person, VarTable& vars);

// The report on one person, in a full and a short form, from the templates full.DAT and short.DAT
// in the program's folder.
//
// The templates can call PROFILE (all scales as bars), PROFILE_LINE (the same as a line), CIRCLE
// (the interpersonal circle), SCALE_BAR (the bar of the scale that the variable "code" names),
// ANSWER_COUNTS (how often each answer was given) and ITEM_TABLE (the answers to all statements).
// The functions use the paragraph formats that the template keeps in its variables.
class BigFiveReport : public FileBasedReport {
public:
    enum Form { Full = 0, Short = 1 };

    explicit BigFiveReport(const Person& person);

    // Writes the report to `output`. Throws ParseException for a fault in the template and
    // CFileException for one that can't be read.
    void Create(CFile& output, Form form);

protected:
    CString GetDefFilePath(int which) override;

private:
    void writeProfile(CFile& output, void* extraInfo);
    void writeLine(CFile& output, void* extraInfo);
    void writeCircle(CFile& output, void* extraInfo);
    void writeScaleBar(CFile& output, void* extraInfo);
    void writeAnswerCounts(CFile& output, void* extraInfo);
    void writeItemTable(CFile& output, void* extraInfo);
    // The text of one of the template's variables, for instance a paragraph format.
    std::string variable(const char* name) { return Variables().GetStr(name).GetString(); }
    std::string itemHeadRow(const std::string& label);
    std::string itemRow(std::size_t item);

    Person m_person;
};

}  // namespace bigfive
