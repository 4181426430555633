#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "questionnaire/Questionnaire.h"

class QComboBox;

namespace tessalink::desk {

/// The choice of a questionnaire: those that a file of cases holds, and any folder.
class QuestionnaireChooser : public QWidget {
    Q_OBJECT

public:
    /// `chosen` is the hash of the one to begin with; may be empty. The store must outlive the
    /// chooser. CaseStoreErrors pass through.
    QuestionnaireChooser(CaseStore& store, const std::string& chosen, QWidget* parent = nullptr);

    /// Reads the folder of a questionnaire and chooses it; false when it has faults, which `faulty`
    /// tells.
    bool AddFolder(const QString& folder);
    bool HasChoice() const;
    /// The questionnaire that was chosen, read when it is asked for; there must be one.
    /// CaseStoreErrors pass through.
    Questionnaire Chosen() const;

Q_SIGNALS:
    /// Another one was chosen, or a folder was read.
    void changed();
    /// All faults of a folder, in lines.
    void faulty(const QString& faults);

private:
    struct Source {
        std::string hash;
        std::optional<Questionnaire> read;  ///< from a folder
    };

    void choose_folder();

    CaseStore& m_store;
    std::vector<Source> m_sources;  ///< beside the entries of the box
    QComboBox* m_questionnaires;
};

}  // namespace tessalink::desk
