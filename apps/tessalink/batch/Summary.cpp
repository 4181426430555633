#include "apps/tessalink/batch/Summary.h"

#include <cinttypes>
#include <cstdio>

#include "apps/tessalink/Messages.h"

namespace tessalink::cli {

int exitCodeOf(const BatchRecord& record) {
    return record.failed > 0 ? cInputFault : cSuccess;
}

void printSummary(const BatchRecord& record, const std::string& failedPath) {
    std::fprintf(stderr, "tessalink: %" PRIu64 " respondents done, %" PRIu64 " failed%s%s\n",
                 record.done, record.failed, record.failed > 0 ? ": see " : "",
                 record.failed > 0 ? failedPath.c_str() : "");
}

}  // namespace tessalink::cli
