#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "questionnaire/Questionnaire.h"
#include "questionnaire/ResponseSource.h"

namespace tessalink::detail {

/// Where the answers to a FHIR question go.
struct LinkTarget {
    bool isField = false;
    std::size_t index = 0;
};

/// Reads single `QuestionnaireResponse` resources.
class ResponseReader {
public:
    explicit ResponseReader(Questionnaire questionnaire);

    /// Reads a resource whose first byte stands in that line. What is wrong becomes the row's
    /// failure.
    void Read(std::string_view json, std::uint64_t line, RespondentRow& row) const;

    const QuestionnaireModel& Model() const { return m_questionnaire.Model(); }
    const Questionnaire& GetQuestionnaire() const { return m_questionnaire; }
    /// Null for a question that is not the questionnaire's.
    const LinkTarget* Find(const std::string& linkId) const;

private:
    Questionnaire m_questionnaire;
    std::map<std::string, LinkTarget> m_targets;
};

/// The linkId of an item or field.
template <class QUESTION>
std::string linkIdOf(const QUESTION& question) {
    return question.linkId.empty() ? std::string(question.id.View()) : question.linkId;
}

}  // namespace tessalink::detail
