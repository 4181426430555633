#include "questionnaire/RespondentReports.h"

#include <string>
#include <vector>

#include "graphs/file/GraphFctTable.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/detail/NamedText.h"
#include "questionnaire/detail/VariableFiller.h"
#include "report/TemplateStorage.h"

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

/// Functions that there are none of.
class NoFunctions : public FctTable {
public:
    NoFunctions() : FctTable(nullptr, nullptr) {}

    int Call(const char* /*name*/) override { return 0; }
    int Exists(const char* /*name*/) const override { return 0; }
};

/// Remembers what a template changes.
class PersonParser : public QuestionnaireParser {
public:
    PersonParser(CFile& text, CFile& output, PersonVariables& variables, FctTable& functions,
                 const Questionnaire& questionnaire, int scrambled)
        : QuestionnaireParser(text, output, variables.Table(), functions, questionnaire, scrambled),
          m_variables(variables) {}

protected:
    /// Graphs stand where they are called, in the text of an @EVAL, too.
    int call_function(const CString& name) override {
        functions().Attach(&output());
        return QuestionnaireParser::call_function(name);
    }

    int get_assigned_value(const Token& token, const CString& name, int execute) override {
        if (execute) m_variables.Remember(name);
        return QuestionnaireParser::get_assigned_value(token, name, execute);
    }

    int define_variable(const CString& name) override {
        if (!variables().Exists(name)) m_variables.Remember(name);
        return QuestionnaireParser::define_variable(name);
    }

    std::unique_ptr<FileParser> create_parser(CFile& text, CFile& outputFile,
                                              int scrambled) override {
        return std::make_unique<PersonParser>(text, outputFile, m_variables, functions(),
                                              questionnaire(), scrambled);
    }

private:
    PersonVariables& m_variables;
};

}  // namespace

class RespondentReports::Run {
public:
    Run(const Questionnaire& questionnaire, const GraphPictureOptions& pictures)
        : m_questionnaire(questionnaire), m_filler(questionnaire) {
        if (const GraphFile* const graphs = questionnaire.Graphs()) {
            m_graphs.emplace(*graphs, m_variables.Table(), pictures);
        }
    }

    void SetRespondent(const Respondent& respondent, const Scores& scores) {
        m_variables.Undo(0);
        m_filler.Fill(respondent, scores, m_variables.Table());
        const std::string& derived = m_questionnaire.Model().derivedFile;
        if (!derived.empty()) run_template(derived);
        m_mark = m_variables.Mark();
    }

    const VarTable& Variables() {
        m_variables.Undo(m_mark);
        return m_variables.Table();
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
        FctTable& functions = m_graphs ? static_cast<FctTable&>(*m_graphs) : m_noFunctions;
        PersonParser(file, m_output, m_variables, functions, m_questionnaire,
                     isScrambledName(name) ? 1 : 0)
            .Parse(nullptr);
    }

    Questionnaire m_questionnaire;
    detail::VariableFiller m_filler;
    PersonVariables m_variables;
    std::optional<GraphFctTable> m_graphs;
    NoFunctions m_noFunctions;
    CMemFile m_output{cOutputGrowth};
    std::size_t m_mark = 0;  ///< of the changes made by the template of derived values
};

RespondentReports::RespondentReports(const Questionnaire& questionnaire,
                                     const GraphPictureOptions& pictures)
    : m_run(std::make_unique<Run>(questionnaire, pictures)) {}

RespondentReports::~RespondentReports() = default;

void RespondentReports::SetRespondent(const Respondent& respondent, const Scores& scores) {
    m_run->SetRespondent(respondent, scores);
}

const VarTable& RespondentReports::GetVariables() {
    return m_run->Variables();
}

void RespondentReports::Write(std::size_t report, CFile& output) {
    m_run->Write(report, output);
}

}  // namespace tessalink
