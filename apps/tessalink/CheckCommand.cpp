#include <string>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateUses.h"

namespace tessalink::cli {

int checkTemplates(const CheckOptions& options) {
    TemplateWalk walk;
    walk.Read(options);
    if (walk.ExitCode() != cSuccess) return walk.ExitCode();
    return printResult(std::to_string(walk.FileCount()) +
                       (walk.FileCount() == 1 ? " template" : " templates") +
                       " checked: no faults\n");
}

}  // namespace tessalink::cli
