// Links the part of the library that draws by the toolkit, and asks it for a measure.
#include <cstdio>

#include "platform/qt/PainterDevice.h"

int main() {
    const tessalink::FaceMetrics& metrics = tessalink::toolkitTextMetrics().MetricsOf(LOGFONTA());
    std::printf("An em of 2048 has an ascent of %d.\n", metrics.ascent);
    return metrics.ascent > metrics.descent ? 0 : 1;
}
