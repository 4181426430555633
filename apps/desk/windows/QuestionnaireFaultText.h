#pragma once

#include <QString>

#include "questionnaire/Questionnaire.h"

namespace tessalink::desk {

/// All faults, one a line, with file, line and column.
QString faultText(const QuestionnaireFaults& faults);

}  // namespace tessalink::desk
