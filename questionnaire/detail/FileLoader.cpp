#include "questionnaire/detail/FileLoader.h"

namespace tessalink::detail {

namespace {

constexpr std::string_view cScrambled = ".DAT";
constexpr std::string_view cPlain = ".rtf";

}  // namespace

const std::string* FileLoader::Find(const std::string& name) {
    if (const auto known = m_files.find(name); known != m_files.end()) return &known->second;
    std::optional<std::string> text = m_load(name);
    if (!text) return nullptr;
    return &m_files.emplace(name, std::move(*text)).first->second;
}

CString FileLoader::PathOf(const std::string& name) const {
    return m_folder + "/" + CString(std::string_view(name));
}

bool isScrambledName(std::string_view name) {
    return name.ends_with(cScrambled);
}

IncludedFile findInclude(std::string_view include,
                         const std::function<const std::string*(const std::string&)>& find) {
    const std::string_view part = include.ends_with(cScrambled)
                                      ? include.substr(0, include.size() - cScrambled.size())
                                      : include;
    const std::string scrambled = std::string(part).append(cScrambled);
    const std::string plain = std::string(part).append(cPlain);
    const std::string* const first = find(scrambled);
    const std::string* const second = find(plain);
    if (first != nullptr) return {scrambled, true, first, second != nullptr};
    return {plain, false, second, false};
}

}  // namespace tessalink::detail
