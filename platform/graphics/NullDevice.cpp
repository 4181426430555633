#include "platform/graphics/NullDevice.h"

namespace tessalink {

const DeviceCaps& fixedScreen() {
    static constexpr DeviceCaps caps = {96, 96, 1920, 1440, 508, 381, false};
    return caps;
}

NullDevice::NullDevice() : m_caps(fixedScreen()) {}

}  // namespace tessalink
