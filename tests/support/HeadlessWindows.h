#pragma once

#include "platform/windows/HeadlessSystem.h"

namespace tessalink::test {

/// The windows of tests without a screen, and the keyboard and mouse for them.
inline HeadlessSystem& windows() {
    return HeadlessSystem::Default();
}

}  // namespace tessalink::test
