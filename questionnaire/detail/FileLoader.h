#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "questionnaire/Questionnaire.h"

namespace tessalink::detail {

/// Finds the files of a questionnaire, and keeps those that were asked for.
class FileLoader {
public:
    /// The bytes of a file in the folder by its exact name; nothing when there is none. An
    /// InputError says why one can't be read.
    using Load = std::function<std::optional<std::string>(const std::string& name)>;
    /// The names of all files in the folder.
    using List = std::function<std::vector<std::string>()>;

    FileLoader(Load load, List list, CString folder)
        : m_load(std::move(load)), m_list(std::move(list)), m_folder(std::move(folder)) {}

    /// The bytes of a file, or null when there is none. An InputError of Load passes through.
    const std::string* Find(const std::string& name);
    /// What includes of all templates in the folder are called, as FileParser::do_include gets it.
    std::set<CString> Includes() const;
    /// As messages name it.
    CString PathOf(const std::string& name) const;
    QuestionnaireFiles Take() { return std::move(m_files); }

private:
    Load m_load;
    List m_list;
    CString m_folder;
    QuestionnaireFiles m_files;
};

/// The file that an include is in: PART.DAT, scrambled, or else PART.rtf.
struct IncludedFile {
    std::string name;
    const std::string* text = nullptr;  ///< null when there is none
    bool isDoubled = false;             ///< both are there
};

/// The include of that name, as FileParser::do_include gets it ("PART.DAT"), among the files that
/// `find` knows.
IncludedFile findInclude(const CString& include,
                         const std::function<const std::string*(const std::string&)>& find);

}  // namespace tessalink::detail
