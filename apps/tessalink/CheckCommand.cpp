#include <cstdio>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateUses.h"

namespace tessalink::cli {

int checkTemplates(const CheckOptions& options) {
    TemplateWalk walk;
    walk.Read(options.templatePaths, options.includeFolder);
    if (walk.FaultCount() != 0) return cInputFault;
    std::printf("%d template%s checked: no faults\n", walk.FileCount(),
                walk.FileCount() == 1 ? "" : "s");
    return cSuccess;
}

}  // namespace tessalink::cli
