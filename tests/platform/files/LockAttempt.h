#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/files/CFileException.h"
#include "platform/files/LockFile.h"

namespace tessalink::test {

/// The lock; nothing when another has it.
inline std::optional<LockFile> takeLock(const std::string& path) {
    try {
        return LockFile(path.c_str());
    } catch (const CFileException& error) {
        EXPECT_EQ(error.m_cause, CFileException::sharingViolation);
        return std::nullopt;
    }
}

}  // namespace tessalink::test
