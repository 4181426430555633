#include "platform/base/CodePage.h"

#include <algorithm>
#include <array>

#include "platform/base/HostServices.h"
#include "platform/base/Utf8.h"
#include "platform/base/detail/CodePageInForce.h"
#include "platform/base/detail/CodePageTables.h"

namespace tessalink {

namespace {

constexpr std::size_t cFirstUpper = 0x80;

/// A code page in both directions.
struct Page {
    struct Upper {
        char16_t character;
        unsigned char byte;
    };
    int number = 0;
    int charset = 0;
    std::array<char16_t, 256> characters{};
    std::array<Upper, 128> uppers{};  ///< by their characters
};

constexpr Page pageOf(const detail::CodePageTable& table) {
    Page page;
    page.number = table.number;
    page.charset = table.charset;
    for (std::size_t byte = 0; byte < page.characters.size(); ++byte) {
        page.characters[byte] =
            byte < cFirstUpper ? static_cast<char16_t>(byte) : table.upper[byte - cFirstUpper];
    }
    for (std::size_t i = 0; i < page.uppers.size(); ++i) {
        page.uppers[i] = {table.upper[i], static_cast<unsigned char>(cFirstUpper + i)};
    }
    std::sort(page.uppers.begin(), page.uppers.end(),
              [](const Page::Upper& a, const Page::Upper& b) { return a.character < b.character; });
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
    const auto& characters = inForce->characters;
    if (character < characters.size() && characters[character] == character)
        return static_cast<char>(character);
    const auto& uppers = inForce->uppers;
    const auto place = std::lower_bound(
        uppers.begin(), uppers.end(), character,
        [](const Page::Upper& upper, char32_t wanted) { return upper.character < wanted; });
    if (place == uppers.end() || place->character != character) return std::nullopt;
    return static_cast<char>(place->byte);
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
