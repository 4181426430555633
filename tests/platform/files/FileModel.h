#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <random>
#include <string>

#include "platform/files/CFile.h"

namespace tessalink::test {

inline int causeOf(const std::function<void()>& attempt) {
    try {
        attempt();
    } catch (const CFileException& error) {
        return error.m_cause;
    }
    return CFileException::none;
}

// What a file is expected to do, on a text.
struct FileModel {
    std::string contents;
    std::size_t position = 0;

    std::string Read(std::size_t count) {
        if (position >= contents.size()) return {};
        const std::string piece = contents.substr(position, count);
        position += piece.size();
        return piece;
    }
    void Write(const std::string& piece) {
        if (piece.empty()) return;
        if (contents.size() < position + piece.size()) contents.resize(position + piece.size());
        contents.replace(position, piece.size(), piece);
        position += piece.size();
    }
    void SetLength(std::size_t length) {
        contents.resize(length);
        position = length;
    }
};

inline void expectSame(CFile& file, FileModel& model) {
    ASSERT_EQ(file.GetPosition(), model.position);
    ASSERT_EQ(file.GetLength(), model.contents.size());
}

inline void doSomething(CFile& file, FileModel& model, std::mt19937& random) {
    const std::size_t size = random() % 300;
    std::string piece(size, static_cast<char>(random()));
    const std::size_t target = random() % (model.contents.size() + 50);
    switch (random() % 8) {
        case 0:
            file.Seek(static_cast<std::int64_t>(target), CFile::begin);
            break;
        case 1:
            file.Seek(static_cast<std::int64_t>(target) - static_cast<std::int64_t>(model.position),
                      CFile::current);
            break;
        case 2:
            file.Seek(static_cast<std::int64_t>(target) -
                          static_cast<std::int64_t>(model.contents.size()),
                      CFile::end);
            break;
        case 3:
            if (random() % 4 != 0) return;
            file.SetLength(target);
            return model.SetLength(target);
        case 4:
        case 5:
            file.Write(piece.data(), piece.size());
            return model.Write(piece);
        default: {
            const std::string expected = model.Read(size);
            ASSERT_EQ(file.Read(piece.data(), size), expected.size());
            ASSERT_EQ(piece.substr(0, expected.size()), expected);
            return;
        }
    }
    model.position = target;
}

inline void compareAtRandom(CFile& file) {
    std::mt19937 random(7);
    FileModel model;
    for (int i = 0; i < 20'000; ++i) {
        ASSERT_NO_FATAL_FAILURE(doSomething(file, model, random)) << i;
        ASSERT_NO_FATAL_FAILURE(expectSame(file, model)) << i;
    }
    std::string all(model.contents.size(), '\0');
    file.SeekToBegin();
    EXPECT_EQ(file.Read(all.data(), all.size()), all.size());
    EXPECT_EQ(all, model.contents);
    EXPECT_EQ(file.SeekToEnd(), all.size());
}

}  // namespace tessalink::test
