#include "questionnaire/detail/FileLoader.h"

#include "report/TemplateStorage.h"

namespace tessalink::detail {

const std::string* FileLoader::Find(const std::string& name) {
    if (const auto known = m_files.find(name); known != m_files.end()) return &known->second;
    std::optional<std::string> text = m_load(name);
    if (!text) return nullptr;
    return &m_files.emplace(name, std::move(*text)).first->second;
}

CString FileLoader::PathOf(const std::string& name) const {
    return m_folder + "/" + CString(std::string_view(name));
}

std::set<CString> FileLoader::Includes() const {
    std::set<CString> includes;
    for (const std::string& name : m_list()) {
        for (const std::string_view ending : {cScrambledEnding, cPlainEnding}) {
            if (!name.ends_with(ending)) continue;
            const std::string_view part =
                std::string_view(name).substr(0, name.size() - ending.size());
            includes.insert(CString(part) + CString(cScrambledEnding));
        }
    }
    return includes;
}

IncludedFile findInclude(const CString& include,
                         const std::function<const std::string*(const std::string&)>& find) {
    const IncludeNames names = includeNames(include.View());
    const std::string scrambled(names.scrambled.View());
    const std::string plain(names.plain.View());
    const std::string* const first = find(scrambled);
    const std::string* const second = find(plain);
    if (first != nullptr) return {scrambled, first, second != nullptr};
    return {plain, second, false};
}

}  // namespace tessalink::detail
