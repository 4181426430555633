#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/InputError.h"
#include "graphs/file/GraphFile.h"
#include "platform/base/CException.h"
#include "platform/base/Export.h"
#include "questionnaire/QuestionnaireModel.h"
#include "scores/NormTable.h"

namespace tessalink {

/// The files of a questionnaire by their names in its folder ("questionnaire.json", "full.rtf",
/// "HEADER.rtf"), with their bytes.
using QuestionnaireFiles = std::map<std::string, std::string, std::less<>>;

/// MD5 of names and bytes of files, in hexadecimal digits.
TESSALINK_API std::string hashOf(const QuestionnaireFiles& files);

/// All that is wrong with a questionnaire, file by file. The message is that of the first fault.
class TESSALINK_API QuestionnaireFaults : public CException {
    DECLARE_DYNAMIC(QuestionnaireFaults)

public:
    /// One fault at least.
    explicit QuestionnaireFaults(std::vector<InputError> faults);

    /// All faults, file by file.
    const std::vector<InputError>& GetFaults() const { return m_faults; }

private:
    std::vector<InputError> m_faults;  ///< one at least
};

/// A questionnaire as a folder of plain files; see docs/questionnaires.md. It is constant once it
/// is read: any number of threads may use it. Copies share what they hold.
class TESSALINK_API Questionnaire {
public:
    /// What a folder must hold.
    static constexpr const char* cFileName = "questionnaire.json";

    /// Reads questionnaire.json in the folder and every file that it names, includes of templates
    /// too, and checks all of them. QuestionnaireFaults names every fault of every file with its
    /// place and what to do. CFileException: the folder or questionnaire.json can't be read.
    static Questionnaire Read(const CString& folder);
    /// The same from memory, for instance from a file of cases; `name` stands for the folder in
    /// messages. Files that nothing names are ignored.
    static Questionnaire Read(const QuestionnaireFiles& files, const CString& name);

    /// What the questionnaire consists of.
    const QuestionnaireModel& Model() const;
    /// The norms; null when it has none.
    const NormTable* Norms() const;
    /// The graphs; null when it has none.
    const GraphFile* Graphs() const;
    /// The files that were read: all that Read(files) needs to make the same questionnaire.
    const QuestionnaireFiles& Files() const;
    /// hashOf these files: the same for the same questionnaire, wherever its folder is.
    const std::string& Hash() const;

    // Positions by id, in letters as they are written.
    /// The position of an item in Model(); nothing when there is none.
    std::optional<std::size_t> FindItem(std::string_view id) const;
    /// The position of a scale in Model(); nothing when there is none.
    std::optional<std::size_t> FindScale(std::string_view id) const;
    /// The position of a field in Model(); nothing when there is none.
    std::optional<std::size_t> FindField(std::string_view id) const;
    /// The position of a report in Model(); nothing when there is none.
    std::optional<std::size_t> FindReport(std::string_view id) const;

    /// The value that an answer to an item counts: nothing when it is missing or has none.
    std::optional<double> ValueOf(std::size_t item, const std::optional<int>& answer) const;

private:
    struct Data;
    explicit Questionnaire(std::shared_ptr<const Data> data) : m_data(std::move(data)) {}

    std::shared_ptr<const Data> m_data;
};

}  // namespace tessalink
