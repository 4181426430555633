#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "questionnaire/Questionnaire.h"

namespace tessalink::desk {

inline constexpr int cCases = 100'000;
inline constexpr int cAnswers = 50;

inline const Questionnaire& bigFive() {
    static const Questionnaire questionnaire =
        Questionnaire::Read(TESSALINK_SOURCE_DIR "/instruments/bigfive");
    return questionnaire;
}

/// The file, made once for all and removed at the end.
class LargeCaseFile {
public:
    LargeCaseFile() : m_folder(std::filesystem::temp_directory_path() / "tessalink-cases-bench") {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directory(m_folder);
        CaseStore store = CaseStore::Create(Path(), {});
        std::vector<NewCase> cases;
        for (int i = 0; i < cCases; ++i) {
            NewCase added{"Patient " + std::to_string(i * 7919 % cCases)};
            const QuestionnaireModel& model = bigFive().Model();
            for (int item = 0; item < cAnswers; ++item) {
                added.entries.push_back(
                    {{EntryKind::Answer,
                      model.items[static_cast<std::size_t>(item)].id.GetString()},
                     std::to_string(1 + (i + item) % 5)});
            }
            cases.push_back(std::move(added));
        }
        store.AddCases(bigFive(), cases);
    }
    ~LargeCaseFile() { std::filesystem::remove_all(m_folder); }
    LargeCaseFile(const LargeCaseFile&) = delete;
    LargeCaseFile& operator=(const LargeCaseFile&) = delete;

    std::string Path() const { return (m_folder / "a.cases").string(); }

    static LargeCaseFile& Get() {
        static LargeCaseFile file;
        return file;
    }

private:
    std::filesystem::path m_folder;
};

}  // namespace tessalink::desk
