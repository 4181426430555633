#include "questionnaire/QuestionnaireParser.h"

#include <cmath>

#include "questionnaire/detail/FileLoader.h"
#include "questionnaire/detail/NamedText.h"
#include "report/TemplateStorage.h"
#include "report/VarTable.h"

namespace tessalink {

IMPLEMENT_DYNAMIC(QuestionnaireParser, FileParser)

QuestionnaireParser::QuestionnaireParser(CFile& templateFile, CFile& output, VarTable& variables,
                                         FctTable& functions, const Questionnaire& questionnaire,
                                         int scrambled)
    : FileParser(templateFile, output, variables, functions, scrambled),
      m_tableOfFunctions(functions),
      m_questionnaire(questionnaire) {}

/// Whether the token names a number that is missing.
bool QuestionnaireParser::is_missing(const Token& token) {
    const VariantVar* const variable = variables().Find(token.Name());
    return variable != nullptr && variable->IsDouble() && std::isnan(variable->GetAsDouble());
}

int QuestionnaireParser::get_var(const Token& token, int execute) {
    return FileParser::get_var(token, execute && !is_missing(token));
}

int QuestionnaireParser::get_str_exp_var(const Token& token, CString& result, int execute) {
    return FileParser::get_str_exp_var(token, result, execute && !is_missing(token));
}

int QuestionnaireParser::write_number(const Operand& value, int width, int decimals) {
    if (!value.isInteger && std::isnan(value.real)) return 1;
    return FileParser::write_number(value, width, decimals);
}

int QuestionnaireParser::do_include(const CString& name) {
    const QuestionnaireFiles& files = m_questionnaire.Files();
    const detail::IncludedFile part =
        detail::findInclude(name, [&files](const std::string& wanted) {
            const auto found = files.find(wanted);
            return found != files.end() ? &found->second : nullptr;
        });
    if (part.text == nullptr) {
        return handle_error("Include '%s' is no file of the questionnaire!", name);
    }
    detail::NamedText file(*part.text, CString(std::string_view(part.name)));
    return run_include(file, isScrambledName(part.name) ? 1 : 0);
}

std::unique_ptr<FileParser> QuestionnaireParser::create_parser(CFile& templateFile, CFile& output,
                                                               int scrambled) {
    return std::make_unique<QuestionnaireParser>(templateFile, output, variables(),
                                                 m_tableOfFunctions, m_questionnaire, scrambled);
}

}  // namespace tessalink
