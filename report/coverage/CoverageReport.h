#pragma once

#include <string>

#include "platform/base/Export.h"
#include "report/coverage/TemplateCoverage.h"

/// What templates cover, for people. All texts are UTF-8; characters of templates are those of the
/// program's code page. Long stretches without a command, such as pictures, are shortened.
namespace tessalink {

/// A line for each part that never ran: "letter.rtf:12:5: never ran: @ELSE".
TESSALINK_API std::string partsThatNeverRan(const TemplateCoverage& coverage);

/// "2 reports: 3 of 4 parts ran (75.0 percent)", with a line end.
TESSALINK_API std::string coverageSummary(const TemplateCoverage& coverage);

/// The templates in numbered lines. "!" stands before a line in which something never ran, and
/// U+27E6 and U+27E7, double square brackets, around that.
TESSALINK_API std::string coverageAsText(const TemplateCoverage& coverage);

/// The same as an HTML page that needs nothing else.
TESSALINK_API std::string coverageAsHtml(const TemplateCoverage& coverage);

}  // namespace tessalink
