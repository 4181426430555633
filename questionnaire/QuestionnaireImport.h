#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/TextPlace.h"
#include "platform/base/Export.h"
#include "questionnaire/QuestionnaireModel.h"

class CFile;

/// Questionnaires that other programs describe, as models to go on with: items with their response
/// sets and entries of the form come over, scales are added by hand. docs/questionnaire-import.md
/// is the manual.
namespace tessalink {

/// Something that did not come over as it was.
struct ImportNote {
    TextPlace place;   ///< where it stands in the file that was read
    std::string name;  ///< the field or linkId in question, UTF-8; empty: the whole
    std::string text;  ///< what happened to it, and what to do, UTF-8
};

/// What was made of a file of another program.
struct ImportedQuestionnaire {
    QuestionnaireModel model;       ///< without scales and reports
    std::vector<ImportNote> notes;  ///< what did not come over as it was
    /// Columns of the other program's tables whose items or fields have other names here, as
    /// ResponseTableOptions takes them.
    std::map<std::string, std::string> columnNames;
};

/// Reads a REDCap data dictionary: CSV in UTF-8, with its headings or the names that REDCap's
/// programming interface gives them. What is no dictionary is an InputError; what can't come over
/// is noted. CFileException passes through.
TESSALINK_API ImportedQuestionnaire importDictionary(CFile& file);

/// Reads a FHIR R4 `Questionnaire`, JSON, likewise.
TESSALINK_API ImportedQuestionnaire importFhirQuestionnaire(CFile& file);

/// The text of questionnaire.json for a model; Questionnaire::Read reads the same back.
TESSALINK_API std::string writeQuestionnaire(const QuestionnaireModel& model);

}  // namespace tessalink
