#pragma once

#include <functional>
#include <string>

#include "platform/files/CFile.h"

namespace tessalink::test {

inline void write(CFile& file, const std::string& text) {
    file.Write(text.data(), text.size());
}

inline CFileException faultOf(const std::function<void()>& attempt) {
    try {
        attempt();
    } catch (const CFileException& error) {
        return error;
    }
    return CFileException();
}

}  // namespace tessalink::test
