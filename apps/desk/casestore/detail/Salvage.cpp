#include "apps/desk/casestore/detail/Salvage.h"

#include <algorithm>
#include <cctype>

#include "apps/desk/casestore/CaseStoreError.h"
#include "apps/desk/casestore/detail/Schema.h"
#include "core/FileText.h"
#include "platform/files/CFile.h"
#include "platform/files/CFileException.h"

namespace tessalink::desk::detail {

namespace {

// Where the file's header has what differs from file to file, big-endian numbers of four bytes.
constexpr std::size_t cPageCount = 28;
constexpr std::size_t cFreePages = 32;
constexpr std::size_t cFreePageCount = 36;

constexpr std::size_t cHashDigits = 32;

void put(std::string& bytes, std::size_t place, std::size_t number) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[place + i] = static_cast<char>(number >> (8 * (3 - i)) & 0xFFU);
    }
}

/// A new file with the tables.
std::string newFile(std::span<const std::string> steps) {
    Database database;
    runSteps(database, steps);
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, void (*)(void*)> bytes(
        sqlite3_serialize(database.Handle(), "main", &size, 0), sqlite3_free);
    if (bytes == nullptr) throw std::bad_alloc();
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
}

/// Whether every page that the tables begin with is one of a tree.
bool haveTrees(const std::string& bytes, std::size_t pages) {
    constexpr std::string_view kinds = "\x02\x05\x0A\x0D";
    for (std::size_t page = 1; page < pages; ++page) {
        if (kinds.find(bytes[page * cPageSize]) == std::string_view::npos) return false;
    }
    return true;
}

bool isHash(const std::string& text) {
    return text.size() == cHashDigits && std::all_of(text.begin(), text.end(), [](char ch) {
               return std::isxdigit(static_cast<unsigned char>(ch)) != 0;
           });
}

/// Whether a table holds what it should, so that its page is the right one.
bool fits(Database& database) {
    Query query(database, "SELECT hash FROM questionnaires");
    bool isAny = false;
    while (query.Next()) {
        if (!isHash(query.Text(0))) return false;
        isAny = true;
    }
    return isAny;
}

}  // namespace

std::unique_ptr<Database> salvage(const std::string& path, std::span<const std::string> steps) {
    try {
        CFile file(path.c_str(), CFile::modeRead | CFile::shareDenyNone);
        std::string bytes = readText(file);
        const std::string fresh = newFile(steps);
        if (bytes.size() < fresh.size()) return nullptr;
        // Pages that were cut off in the middle are lost.
        bytes.resize(bytes.size() / cPageSize * cPageSize);
        bytes.replace(0, cPageSize, fresh, 0, cPageSize);
        put(bytes, cPageCount, bytes.size() / cPageSize);
        put(bytes, cFreePages, 0);
        put(bytes, cFreePageCount, 0);
        if (!haveTrees(bytes, fresh.size() / cPageSize)) return nullptr;
        auto database = std::make_unique<Database>(path, bytes);
        return fits(*database) ? std::move(database) : nullptr;
    } catch (const CFileException&) {
        return nullptr;
    } catch (const CaseStoreError&) {
        return nullptr;
    }
}

}  // namespace tessalink::desk::detail
