#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/InputError.h"
#include "graphs/file/GraphFile.h"
#include "json/JsonReader.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/detail/FileLoader.h"
#include "questionnaire/detail/ModelReader.h"
#include "scores/NormTable.h"

namespace tessalink::detail {

/// Reads all files of a questionnaire and gathers what is wrong with them.
class QuestionnaireCheck {
public:
    explicit QuestionnaireCheck(FileLoader& files) : m_files(files) {}

    /// Reads questionnaire.json and all that it names.
    void Read();

    const std::vector<InputError>& Faults() const { return m_faults; }
    QuestionnaireModel TakeModel() { return std::move(m_model); }
    std::optional<NormTable> TakeNorms() { return std::move(m_norms); }
    std::optional<GraphFile> TakeGraphs() { return std::move(m_graphs); }

private:
    void read_norms(ModelReader& reader, const JsonReader& in);
    void check_norm_keys(ModelReader& reader, const JsonReader& in);
    void check_key_values(const Field& field, const NormName& column);
    void check_norm_scales(ModelReader& reader, const JsonReader& in);
    void read_graphs(ModelReader& reader, const JsonReader& in);
    void read_templates(ModelReader& reader, const JsonReader& in, bool isModelGood);
    const std::string& need(const std::string& name, const JsonValue& place, const JsonReader& in);

    FileLoader& m_files;
    std::vector<InputError> m_faults;
    QuestionnaireModel m_model;
    std::optional<NormTable> m_norms;
    std::optional<GraphFile> m_graphs;
};

}  // namespace tessalink::detail
