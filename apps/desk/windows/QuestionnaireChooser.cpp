#include "apps/desk/windows/QuestionnaireChooser.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>

#include "apps/desk/session/CaseContents.h"
#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/QuestionnaireFaultText.h"

namespace tessalink::desk {

QuestionnaireChooser::QuestionnaireChooser(CaseStore& store, const std::string& chosen,
                                           QWidget* parent)
    : QWidget(parent), m_store(store), m_questionnaires(new QComboBox(this)) {
    m_questionnaires->setObjectName("questionnaire");
    m_questionnaires->setAccessibleName(tr("Questionnaire"));
    m_questionnaires->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    setFocusProxy(m_questionnaires);
    auto* const folder = new QPushButton(tr("From a &folder..."), this);
    folder->setObjectName("questionnaireFolder");
    folder->setAutoDefault(false);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_questionnaires, 1);
    row->addWidget(folder);
    for (const StoredQuestionnaire& stored : store.Questionnaires()) {
        m_sources.push_back({stored.hash, std::nullopt});
        m_questionnaires->addItem(titleOf(stored));
        if (stored.hash == chosen) m_questionnaires->setCurrentIndex(m_questionnaires->count() - 1);
    }
    connect(folder, &QPushButton::clicked, this, &QuestionnaireChooser::choose_folder);
    connect(m_questionnaires, &QComboBox::currentIndexChanged, this,
            &QuestionnaireChooser::changed);
}

void QuestionnaireChooser::choose_folder() {
    const QString folder =
        QFileDialog::getExistingDirectory(this, tr("Folder of the questionnaire"));
    if (!folder.isEmpty()) AddFolder(folder);
}

bool QuestionnaireChooser::AddFolder(const QString& folder) {
    try {
        Questionnaire read = Questionnaire::Read(pathOf(folder));
        const auto known = std::find_if(m_sources.begin(), m_sources.end(),
                                        [&](const Source& one) { return one.hash == read.Hash(); });
        const auto position = static_cast<int>(known - m_sources.begin());
        if (known == m_sources.end()) {
            m_sources.push_back({read.Hash(), read});
            m_questionnaires->addItem(titleOf(read.Model()));
        }
        m_questionnaires->setCurrentIndex(position);
    } catch (const QuestionnaireFaults& faults) {
        Q_EMIT faulty(faultText(faults));
        return false;
    } catch (const std::exception& error) {
        Q_EMIT faulty(folder + ": " + messageOf(error));
        return false;
    }
    Q_EMIT changed();
    return true;
}

bool QuestionnaireChooser::HasChoice() const {
    return m_questionnaires->currentIndex() >= 0;
}

Questionnaire QuestionnaireChooser::Chosen() const {
    const Source& source = m_sources[static_cast<std::size_t>(m_questionnaires->currentIndex())];
    return source.read ? *source.read : readQuestionnaire(m_store, source.hash);
}

}  // namespace tessalink::desk
