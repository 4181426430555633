#include "questionnaire/RespondentReports.h"

#include <cmath>
#include <string>
#include <vector>

#include "graphs/file/GraphFctTable.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/detail/FileLoader.h"
#include "questionnaire/detail/NamedText.h"
#include "questionnaire/detail/VariableFiller.h"
#include "report/FileParser.h"
#include "report/VarTable.h"

namespace tessalink {

namespace {

constexpr UINT cOutputGrowth = 64 * 1024;

/// The variables of a person, and what they were before templates changed them.
class PersonVariables {
public:
    VarTable& Table() { return m_table; }

    /// Remembers a variable that is about to change.
    void Remember(const CString& name) {
        const VariantVar* const value = m_table.Find(name.View());
        m_changes.push_back({name, value != nullptr, value != nullptr ? *value : VariantVar()});
    }
    std::size_t Mark() const { return m_changes.size(); }
    /// Takes back what was changed since the mark.
    void Undo(std::size_t mark) {
        for (; m_changes.size() > mark; m_changes.pop_back()) {
            const Change& change = m_changes.back();
            if (change.existed) {
                m_table.SetAt(change.name, change.value);
            } else {
                m_table.RemoveKey(change.name);
            }
        }
    }

private:
    struct Change {
        CString name;
        bool existed;
        VariantVar value;
    };

    VarTable m_table;
    std::vector<Change> m_changes;
};

bool isMissing(const VariantVar* variable) {
    return variable != nullptr && variable->IsDouble() && std::isnan(variable->GetAsDouble());
}

/// Runs a template of a questionnaire. A number that is missing is a NaN: what is computed from it
/// is missing, too, comparisons with it are false, and it prints nothing.
class PersonParser : public FileParser {
public:
    /// What all parsers of a run share.
    struct Run {
        const QuestionnaireFiles& files;
        PersonVariables& variables;
        GraphFctTable* graphs;  ///< null: none
    };

    PersonParser(CFile& text, CFile& output, int scrambled, Run& run)
        : FileParser(text, output, run.variables.Table(), scrambled), m_run(run) {}

protected:
    int do_include(const CString& name) override {
        const detail::IncludedFile part =
            detail::findInclude(name.View(), [this](const std::string& wanted) {
                const auto found = m_run.files.find(wanted);
                return found != m_run.files.end() ? &found->second : nullptr;
            });
        if (part.text == nullptr) {
            return handle_error("Include '%s' is no file of the questionnaire!", name);
        }
        detail::NamedText file(*part.text, CString(std::string_view(part.name)));
        return run_include(file, part.isScrambled ? 1 : 0);
    }

    int call_function(const CString& name) override {
        if (m_run.graphs == nullptr || !m_run.graphs->Exists(name)) {
            return handle_error("There is no graph %s!", name);
        }
        m_run.graphs->Attach(&output());
        return m_run.graphs->Call(name);
    }

    int get_var(const Token& token, int execute) override {
        return FileParser::get_var(token, execute && !isMissing(variables().Find(token.Name())));
    }

    int get_str_exp_var(const Token& token, CString& result, int execute) override {
        return FileParser::get_str_exp_var(token, result,
                                           execute && !isMissing(variables().Find(token.Name())));
    }

    int get_assigned_value(const Token& token, const CString& name, int execute) override {
        if (execute) m_run.variables.Remember(name);
        return FileParser::get_assigned_value(token, name, execute);
    }

    int write_number(const Operand& value, int width, int decimals) override {
        if (!value.isInteger && std::isnan(value.real)) return 1;
        return FileParser::write_number(value, width, decimals);
    }

    int define_variable(const CString& name) override {
        if (!variables().Exists(name)) m_run.variables.Remember(name);
        return FileParser::define_variable(name);
    }

    std::unique_ptr<FileParser> create_parser(CFile& text, CFile& outputFile,
                                              int scrambled) override {
        return std::make_unique<PersonParser>(text, outputFile, scrambled, m_run);
    }

private:
    Run& m_run;
};

}  // namespace

class RespondentReports::Run {
public:
    explicit Run(const Questionnaire& questionnaire)
        : m_questionnaire(questionnaire), m_filler(questionnaire) {
        if (const GraphFile* const graphs = questionnaire.Graphs()) {
            m_graphs.emplace(*graphs, m_variables.Table());
        }
    }

    void SetRespondent(const Respondent& respondent, const Scores& scores) {
        m_variables.Undo(0);
        m_filler.Fill(respondent, scores, m_variables.Table());
        const std::string& derived = m_questionnaire.Model().derivedFile;
        if (!derived.empty()) run_template(derived);
        m_mark = m_variables.Mark();
    }

    void Write(std::size_t report, CFile& output) {
        m_variables.Undo(m_mark);
        run_template(m_questionnaire.Model().reports[report].file);
        const std::string_view text = m_output.View();
        output.Write(text.data(), text.size());
    }

private:
    /// Leaves the text in m_output, so that no file gets half a report.
    void run_template(const std::string& name) {
        m_output.SetLength(0);
        m_output.SeekToBegin();
        const std::string& text = m_questionnaire.Files().find(name)->second;
        detail::NamedText file(text, CString(std::string_view(name)));
        PersonParser::Run run = {m_questionnaire.Files(), m_variables,
                                 m_graphs ? &*m_graphs : nullptr};
        PersonParser(file, m_output, detail::isScrambledName(name) ? 1 : 0, run).Parse(nullptr);
    }

    Questionnaire m_questionnaire;
    detail::VariableFiller m_filler;
    PersonVariables m_variables;
    std::optional<GraphFctTable> m_graphs;
    CMemFile m_output{cOutputGrowth};
    std::size_t m_mark = 0;  ///< of the changes made by the template of derived values
};

RespondentReports::RespondentReports(const Questionnaire& questionnaire)
    : m_run(std::make_unique<Run>(questionnaire)) {}

RespondentReports::~RespondentReports() = default;

void RespondentReports::SetRespondent(const Respondent& respondent, const Scores& scores) {
    m_run->SetRespondent(respondent, scores);
}

void RespondentReports::Write(std::size_t report, CFile& output) {
    m_run->Write(report, output);
}

}  // namespace tessalink
