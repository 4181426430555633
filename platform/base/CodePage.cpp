#include "platform/base/CodePage.h"

#include <algorithm>
#include <array>

#include "platform/base/HostServices.h"
#include "platform/base/Utf8.h"
#include "platform/base/detail/CodePageInForce.h"
#include "platform/base/detail/CodePageTables.h"

namespace tessalink {

namespace {

constexpr std::size_t cFirstOfUpperHalf = 0x80;
constexpr unsigned cBlockBits = 7;
constexpr std::size_t cBlock = std::size_t{1} << cBlockBits;
constexpr char32_t cLastOfPlane = 0xFFFF;
constexpr std::size_t cMostBlocks = 12;

/// A code page in both directions.
struct Page {
    int number = 0;
    int charset = 0;
    std::array<char16_t, 256> characters{};
    /// Which of the blocks of bytes a block of characters has; the first one is empty.
    std::array<unsigned char, (cLastOfPlane >> cBlockBits) + 1> blocks{};
    std::array<std::array<char, cBlock>, cMostBlocks> bytes{};
};

constexpr Page pageOf(const detail::CodePageTable& table) {
    Page page;
    page.number = table.number;
    page.charset = table.charset;
    unsigned char blocks = 0;
    for (std::size_t byte = 0; byte < page.characters.size(); ++byte) {
        const auto character = byte < cFirstOfUpperHalf ? static_cast<char16_t>(byte)
                                                        : table.upper[byte - cFirstOfUpperHalf];
        page.characters[byte] = character;
        unsigned char& block = page.blocks[character >> cBlockBits];
        if (block == 0) block = ++blocks;
        page.bytes[block][character % cBlock] = static_cast<char>(byte);
    }
    return page;
}

constexpr auto allPages() {
    std::array<Page, detail::cCodePageTables.size()> pages;
    std::transform(detail::cCodePageTables.begin(), detail::cCodePageTables.end(), pages.begin(),
                   pageOf);
    return pages;
}

constexpr auto cPages = allPages();

constexpr const Page* findPage(CodePage page) {
    for (const Page& each : cPages) {
        if (each.number == static_cast<int>(page)) return &each;
    }
    return nullptr;
}

constinit const Page* inForce = findPage(CodePage::Western);
// Texts may be converted before the host has set anything.
[[maybe_unused]] const bool isRead = (detail::rereadCodePage(), true);

}  // namespace

void detail::rereadCodePage() {
    inForce = findPage(hostServices().codePage.value_or(systemCodePage()));
}

char32_t detail::westernCharacter(char byte) {
    constexpr const Page* western = findPage(CodePage::Western);
    return western->characters[static_cast<unsigned char>(byte)];
}

std::optional<CodePage> codePageOf(int number) {
    const auto page = static_cast<CodePage>(number);
    return findPage(page) != nullptr ? std::optional(page) : std::nullopt;
}

CodePage codePage() {
    return static_cast<CodePage>(inForce->number);
}

std::string codePageName() {
    return "Windows-" + std::to_string(inForce->number);
}

int codePageCharset() {
    return inForce->charset;
}

char32_t toUnicode(char byte) {
    return inForce->characters[static_cast<unsigned char>(byte)];
}

std::optional<char> fromUnicode(char32_t character) {
    if (character < cFirstOfUpperHalf) return static_cast<char>(character);
    if (character > cLastOfPlane) return std::nullopt;
    const char byte = inForce->bytes[inForce->blocks[character >> cBlockBits]][character % cBlock];
    return byte != '\0' ? std::optional(byte) : std::nullopt;
}

std::string toUtf8(std::string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char ch : text) appendUtf8(utf8, toUnicode(ch));
    return utf8;
}

CodePageText fromUtf8(std::string_view utf8) {
    CodePageText result;
    result.text.reserve(utf8.size());
    for (std::string_view rest = utf8; !rest.empty();) {
        const std::size_t place = utf8.size() - rest.size();
        const auto code = takeUtf8(rest);
        const auto byte = code ? fromUnicode(*code) : std::nullopt;
        if (!byte) {
            result.fault = place;
            break;
        }
        result.text += *byte;
    }
    return result;
}

}  // namespace tessalink
