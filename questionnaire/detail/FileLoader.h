#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "questionnaire/Questionnaire.h"

namespace tessalink::detail {

/// Finds the files of a questionnaire, and keeps those that were asked for.
class FileLoader {
public:
    /// The bytes of a file in the folder by its exact name; nothing when there is none.
    using Load = std::function<std::optional<std::string>(const std::string& name)>;

    FileLoader(Load load, CString folder) : m_load(std::move(load)), m_folder(std::move(folder)) {}

    /// The bytes of a file, or null when there is none.
    const std::string* Find(const std::string& name);
    /// As messages name it.
    CString PathOf(const std::string& name) const;
    QuestionnaireFiles Take() { return std::move(m_files); }

private:
    Load m_load;
    CString m_folder;
    QuestionnaireFiles m_files;
};

/// The file that an include is in: PART.DAT, scrambled, or else PART.rtf.
struct IncludedFile {
    std::string name;
    bool isScrambled = false;
    const std::string* text = nullptr;  ///< null when there is none
    bool isDoubled = false;             ///< both are there
};

/// Whether a file of that name is stored scrambled.
bool isScrambledName(std::string_view name);

/// The include of that name, as FileParser::do_include gets it ("PART.DAT"), among the files that
/// `find` knows.
IncludedFile findInclude(std::string_view include,
                         const std::function<const std::string*(const std::string&)>& find);

}  // namespace tessalink::detail
