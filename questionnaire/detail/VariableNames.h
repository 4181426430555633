#pragma once

#include <cstddef>
#include <vector>

#include "platform/base/CString.h"
#include "questionnaire/QuestionnaireModel.h"

namespace tessalink::detail {

/// The longest name of a variable that a template reaches as "@Name".
inline constexpr std::size_t cMaxVariableName = 32;

// How the variables of a person are named: the id of what they tell of, and one of these.
inline constexpr const char* cValueSuffix = "_Value";
inline constexpr const char* cLabelSuffix = "_Label";
inline constexpr const char* cTextSuffix = "_Text";
inline constexpr const char* cTitleSuffix = "_Title";
inline constexpr const char* cMissingSuffix = "_Missing";
inline constexpr const char* cCodeSuffix = "_Code";
inline constexpr const char* cYearSuffix = "_Year";
inline constexpr const char* cMonthSuffix = "_Month";
inline constexpr const char* cDaySuffix = "_Day";
inline constexpr const char* cLengthSuffix = "_Length";
inline constexpr const char* cAngleSuffix = "_Angle";
inline constexpr const char* cSectorSuffix = "_Sector";
inline constexpr const char* cLowSuffix = "_Low";
inline constexpr const char* cHighSuffix = "_High";
inline constexpr const char* cRangeSuffix = "_Range";

// Those that every questionnaire has.
inline constexpr const char* cQuestionnaireId = "QuestionnaireID";
inline constexpr const char* cQuestionnaireTitle = "QuestionnaireTitle";
inline constexpr const char* cQuestionnaireVersion = "QuestionnaireVersion";
inline constexpr const char* cRespondentId = "RespondentID";

/// What a variable tells of.
enum class NameOwner { Questionnaire, Item, Scale, Vector, Index, Field, Word };

/// The name of a variable, and the item, scale ... that it tells of.
struct MadeName {
    CString name;
    NameOwner owner = NameOwner::Questionnaire;
    std::size_t index = 0;
};

/// Whether standard scores of that column get confidence intervals.
bool hasInterval(const NormSource& norms, const CString& column);

/// All names that a questionnaire's variables have, in the order in which they are made.
std::vector<MadeName> madeNames(const QuestionnaireModel& model);

}  // namespace tessalink::detail
