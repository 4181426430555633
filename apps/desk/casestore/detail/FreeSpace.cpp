#include "apps/desk/casestore/detail/FreeSpace.h"

#include <algorithm>
#include <vector>

namespace tessalink::desk::detail {

namespace {

using Byte = unsigned char;

/// The header of the file on its first page, before that of the page.
constexpr std::size_t cFileHeader = 100;
constexpr std::size_t cLeafHeader = 8;
constexpr std::size_t cInteriorHeader = 12;
constexpr std::size_t cWholePage = 65536;
/// From here on the number of a page, with which other kinds of pages begin, could look like the
/// kind of a page of a tree.
constexpr std::int64_t cMostPages = 0x02000000;

/// Bytes of a page from `from` up to and without `to`.
struct Span {
    std::size_t from = 0;
    std::size_t to = 0;
};

std::size_t number16(const std::vector<Byte>& page, std::size_t place) {
    return static_cast<std::size_t>(page[place]) << 8U | page[place + 1];
}

/// How long the header of a page of a tree is; 0 for other pages.
std::size_t headerOf(Byte kind) {
    constexpr Byte interiorIndex = 2;
    constexpr Byte interiorTable = 5;
    constexpr Byte leafIndex = 10;
    constexpr Byte leafTable = 13;
    if (kind == leafIndex || kind == leafTable) return cLeafHeader;
    return kind == interiorIndex || kind == interiorTable ? cInteriorHeader : 0;
}

/// The room between the list of cells and the cells; empty when the page is no sound page of a
/// tree.
Span gapOf(const std::vector<Byte>& page, std::size_t start) {
    const std::size_t header = headerOf(page[start]);
    if (header == 0) return {};
    const std::size_t cells = number16(page, start + 3);
    std::size_t content = number16(page, start + 5);
    if (content == 0) content = cWholePage;
    const std::size_t list = start + header;
    const std::size_t end = list + 2 * cells;
    if (end > content || content > page.size()) return {};
    for (std::size_t i = 0; i < cells; ++i) {
        const std::size_t cell = number16(page, list + 2 * i);
        if (cell < content || cell >= page.size()) return {};
    }
    return {end, content};
}

/// The file below a connection, read and written page by page.
class PageFile {
public:
    explicit PageFile(Database& database)
        : m_database(database),
          m_page(static_cast<std::size_t>(database.Number("PRAGMA page_size"))) {
        sqlite3_file_control(database.Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &m_file);
    }

    void Clear(std::int64_t number) {
        const auto size = static_cast<std::int64_t>(m_page.size());
        const std::int64_t place = number * size;
        check(m_file->pMethods->xRead(m_file, m_page.data(), static_cast<int>(size), place));
        const Span gap = gapOf(m_page, number == 0 ? cFileHeader : 0);
        const auto first = m_page.begin() + static_cast<std::ptrdiff_t>(gap.from);
        const auto last = m_page.begin() + static_cast<std::ptrdiff_t>(gap.to);
        const auto isUsed = [](Byte byte) { return byte != 0; };
        if (std::none_of(first, last, isUsed)) return;
        std::fill(first, last, Byte{0});
        check(m_file->pMethods->xWrite(m_file, &*first, static_cast<int>(gap.to - gap.from),
                                       place + static_cast<std::int64_t>(gap.from)));
        m_isChanged = true;
    }
    void Sync() {
        if (m_isChanged) check(m_file->pMethods->xSync(m_file, SQLITE_SYNC_NORMAL));
    }

private:
    void check(int code) const {
        if (code != SQLITE_OK) m_database.Fail(code);
    }

    Database& m_database;
    std::vector<Byte> m_page;
    sqlite3_file* m_file = nullptr;
    bool m_isChanged = false;
};

}  // namespace

void clearFreeSpace(Database& database) {
    if (database.Number("PRAGMA auto_vacuum") != 0) {
        // Another program's wish. Such files have pages that look like those of trees and are none,
        // so the whole is written anew, as files of cases are.
        database.Run("PRAGMA auto_vacuum = NONE; VACUUM");
    }
    {
        // Only that nobody else writes meanwhile: readers don't look at what is cleared here.
        Transaction transaction(database);
        const std::int64_t pages = database.Number("PRAGMA page_count");
        if (pages >= cMostPages) return;
        PageFile file(database);
        for (std::int64_t number = 0; number < pages; ++number) file.Clear(number);
        file.Sync();
        transaction.Commit();
    }
    // Pages in memory still have what was cleared, and would bring it back when they are written.
    sqlite3_db_release_memory(database.Handle());
}

}  // namespace tessalink::desk::detail
