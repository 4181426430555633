#pragma once

#include <QString>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

#include "apps/desk/casestore/Case.h"
#include "platform/base/CString.h"
#include "questionnaire/QuestionnaireModel.h"

// Texts of the library and of files of cases as the toolkit has them, and back.
namespace tessalink::desk {

/// UTF-8, as files of cases have it.
QString shown(std::string_view utf8);
/// The code page, as questionnaires and windows of the library have it.
QString shown(const CString& text);
std::string utf8Of(const QString& text);
/// With "?" for each character that the code page lacks.
CString windowText(const QString& text);

/// The name of a file or folder as the library takes it.
CString pathOf(const QString& path);

/// A questionnaire with its version, so that versions can be told apart.
QString titleOf(const StoredQuestionnaire& stored);
QString titleOf(const QuestionnaireModel& model);

/// A moment in the user's time zone and format, short.
QString momentText(std::int64_t secondsUtc);
/// A score: at most so many decimals, in the user's locale.
inline constexpr int cScoreDecimals = 2;
QString numberText(double number, int decimals = cScoreDecimals);
/// What an exception says.
QString messageOf(const std::exception& error);

}  // namespace tessalink::desk
