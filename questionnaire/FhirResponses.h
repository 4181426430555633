#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/base/Export.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/ResponseSource.h"

class CFile;

namespace tessalink {

/// FHIR R4 `QuestionnaireResponse` resources: one a line (NDJSON), or a `Bundle`. Only those whose
/// status is completed or amended are taken; others fail with that reason. Answers are found by
/// linkId (that of an item or field, or else its id); a coding by system and code, or by code where
/// the set gives no system. The id is that of `subject` (identifier or the last part of reference),
/// or else of the resource.
class TESSALINK_API FhirResponses : public ResponseSource {
public:
    /// Keeps the file, which is read in order. Faults come when blocks are read.
    FhirResponses(CFile& file, const Questionnaire& questionnaire);
    ~FhirResponses() override;

    bool ReadBlock(ResponseBlock& block) override;
    void Parse(const ResponseBlock& block,
               const std::function<void(RespondentRow&)>& use) const override;
    const std::vector<std::string>& CarriedColumns() const override;
    const std::vector<std::string>& Notes() const override;

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

/// A person's answers as a `QuestionnaireResponse` in JSON, status "completed", one line without a
/// line end. FhirResponses reads the same back.
TESSALINK_API std::string writeFhirResponse(const Questionnaire& questionnaire,
                                            const Respondent& respondent);

}  // namespace tessalink
