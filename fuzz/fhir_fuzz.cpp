// Any text as FHIR responses: a fault of the whole has a place, every resource has answers that are
// allowed or a reason why not. Read as a Questionnaire, it is refused with a place, or becomes a
// questionnaire without faults.
#include <cstdint>
#include <string_view>

#include "core/InputError.h"
#include "fuzz/detail/SmallQuestionnaire.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/FhirResponses.h"
#include "questionnaire/QuestionnaireImport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessalink;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        CMemFile file(text);
        FhirResponses responses(file, fuzz::smallQuestionnaire());
        fuzz::readAll(responses);
    } catch (const InputError& fault) {
        fuzz::require(fault.GetPlace().IsKnown(), "a place");
    }
    try {
        CMemFile file(text);
        const ImportedQuestionnaire imported = importFhirQuestionnaire(file);
        Questionnaire::Read({{"questionnaire.json", writeQuestionnaire(imported.model)}}, "q");
    } catch (const InputError& fault) {
        fuzz::require(fault.GetPlace().IsKnown(), "a place");
    }
    return 0;
}
