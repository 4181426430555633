// Any text as a data dictionary: it is refused with a place, or becomes a questionnaire without
// faults.
#include <cstdint>
#include <string_view>

#include "core/InputError.h"
#include "fuzz/detail/require.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/QuestionnaireImport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessalink;
    CMemFile file(std::string_view(reinterpret_cast<const char*>(data), size));
    try {
        const ImportedQuestionnaire imported = importDictionary(file);
        Questionnaire::Read({{"questionnaire.json", writeQuestionnaire(imported.model)}}, "q");
    } catch (const InputError& fault) {
        fuzz::require(fault.GetPlace().IsKnown(), "a place");
    }
    return 0;
}
