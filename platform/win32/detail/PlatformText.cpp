#include "platform/win32/detail/PlatformText.h"

#include "platform/base/CodePage.h"
#include "platform/base/Types.h"

namespace tessalink::detail {

std::wstring utf8ToPlatform(std::string_view utf8) {
    const int length = static_cast<int>(utf8.size());
    std::wstring text(static_cast<std::size_t>(
                          ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0)),
                      L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, text.data(),
                          static_cast<int>(text.size()));
    return text;
}

std::string platformToUtf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    std::string utf8(static_cast<std::size_t>(::WideCharToMultiByte(CP_UTF8, 0, text.data(), length,
                                                                    nullptr, 0, nullptr, nullptr)),
                     '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(),
                          static_cast<int>(utf8.size()), nullptr, nullptr);
    return utf8;
}

std::wstring toPlatform(std::string_view text) {
    return utf8ToPlatform(toUtf8(text));
}

std::optional<CString> fromPlatform(std::wstring_view text) {
    const CodePageText result = fromUtf8(platformToUtf8(text));
    if (!result.IsWhole()) return std::nullopt;
    return CString(result.text.c_str());
}

}  // namespace tessalink::detail
