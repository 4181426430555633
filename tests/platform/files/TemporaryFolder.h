#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "platform/files/PathText.h"

// A folder of its own for one test, removed with all its contents.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            m_path = std::filesystem::path(testing::TempDir()) /
                     ("tessalink-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(m_path));
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string Path(const std::string& name) const {
        const std::u8string path = (m_path / tessalink::pathOf(name)).generic_u8string();
        return {path.begin(), path.end()};
    }

    std::string Write(const std::string& name, const std::string& contents) const {
        std::ofstream(tessalink::pathOf(Path(name)), std::ios::binary) << contents;
        return Path(name);
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(tessalink::pathOf(Path(name)), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path m_path;
};
