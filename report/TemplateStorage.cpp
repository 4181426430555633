#include "report/TemplateStorage.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "core/BufferedFile.h"
#include "core/FileText.h"
#include "platform/files/CFile.h"

namespace tessalink {

namespace {

/// Whether a text has control characters other than white space: scrambled, "@", "\" and most
/// capital letters become such.
bool hasControls(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char ch) {
        const auto code = static_cast<unsigned char>(ch);
        return (code < ' ' && (code < '\t' || code > '\r')) || code == 0x7F;
    });
}

bool isLetter(char ch) {
    return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z');
}

bool hasBlanksOrLetters(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char ch) { return ch == ' ' || isLetter(ch); });
}

/// Whether a text has blanks, and a word that is not just a letter or two.
bool hasWords(std::string_view text) {
    constexpr int shortWord = 3;
    const auto letters = std::search_n(text.begin(), text.end(), shortWord, true,
                                       [](char ch, bool) { return isLetter(ch); });
    return letters != text.end() && text.find(' ') != std::string_view::npos;
}

}  // namespace

IncludeNames includeNames(std::string_view name) {
    if (isScrambledName(name)) name.remove_suffix(cScrambledEnding.size());
    return {name, CString(name) + CString(cScrambledEnding), CString(name) + CString(cPlainEnding)};
}

bool isScrambledName(std::string_view name) {
    return name.ends_with(cScrambledEnding);
}

bool isStoredOtherwise(CFile& file, int scrambled) {
    constexpr std::size_t sampleSize = 4096;
    file.SeekToBegin();
    std::string text = readText(file, sampleSize - 1);
    file.SeekToBegin();
    std::string other = text;
    scramble(scrambled ? text.data() : other.data(), text.size());
    if (hasControls(text) || hasControls(other)) return !hasControls(other);
    // Words become digits and signs when they are scrambled, the blanks between them bars.
    return hasWords(other) && !hasBlanksOrLetters(text);
}

CString doubledInclude(const IncludeNames& names) {
    return "Include '" + names.scrambled + "' is there twice, scrambled and plain as '" +
           names.plain + "': remove one!";
}

}  // namespace tessalink
