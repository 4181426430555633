#include <string>

#include "apps/tessalink/CheckLog.h"
#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateUses.h"

namespace tessalink::cli {

namespace {

std::string textOf(const CheckLog& log, FaultFormat format) {
    switch (format) {
        case FaultFormat::json:
            return jsonOf(log) + "\n";
        case FaultFormat::sarif:
            return sarifOf(log) + "\n";
        default:
            return std::to_string(log.FileCount()) +
                   (log.FileCount() == 1 ? " template" : " templates") + " checked: no faults\n";
    }
}

}  // namespace

int checkTemplates(const CheckOptions& options) {
    const bool isText = options.format == FaultFormat::text;
    TemplateWalk walk(isText);
    walk.Read(options);
    const int found = walk.Log().ExitCode();
    if (isText && found != cSuccess) return found;  // its faults are printed already
    const int printed = printResult(textOf(walk.Log(), options.format));
    return printed == cSuccess ? found : printed;
}

}  // namespace tessalink::cli
