#include "questionnaire/detail/TemplateCheck.h"

#include <utility>

#include "json/NameHint.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/detail/NamedText.h"
#include "report/TemplateStorage.h"
#include "report/check/FaultFinder.h"

namespace tessalink::detail {

/// Reads one template and notes what it uses.
class TemplateCheck::Checker : public FaultFinder {
public:
    Checker(CFile& file, CFile& output, VarTable& definitions, int scrambled, TemplateCheck& check)
        : FaultFinder(file, output, definitions, scrambled), m_check(check) {}

protected:
    void note_read(const CString& name, const TemplateChecker& at) override {
        if (m_check.m_isMade(name.View()) || m_check.m_made.contains(name)) return;
        if (!m_check.m_seen.insert(name).second) return;
        m_check.m_read.push_back({name, at.token_place()});
    }
    void note_define(const CString& name, const TemplateChecker& /*at*/) override {
        m_check.m_made.insert(name);
    }
    void note_assign(const CString& name, const TemplateChecker& /*at*/) override {
        m_check.m_made.insert(name);
    }
    void note_call(const CString& name, const TemplateChecker& at) override {
        if (m_check.m_isGraph(name.View())) return;
        m_check.m_faults.emplace_back(at.token_place(),
                                      "there is no graph " + CString(inQuotes(name.View())));
    }
    void note_include(const CString& name, bool isConstant, const TemplateChecker& at) override {
        if (isConstant) {
            m_check.include(name, [&at] { return at.statement_place(); });
        } else {
            m_check.m_named.push_back({name, at.statement_place()});
        }
    }

private:
    TemplateCheck& m_check;
};

void TemplateCheck::Read(const std::string& name, const std::string& text) {
    add(name, &text);
    read_waiting();
}

void TemplateCheck::ReadNamed() {
    // What is read adds names, and may make variables of names that were taken for files before.
    while (!m_named.empty()) {
        const Use use = m_named.front();
        m_named.pop_front();
        const CString name = includeNames(use.name.View()).part;
        if (m_made.contains(name) || m_isMade(name.View())) {
            read_folder(use.place);
        } else if (m_bare.insert(name).second) {
            include(use.name, [&use] { return use.place; });
        }
        read_waiting();
    }
}

void TemplateCheck::add(const std::string& name, const std::string* text) {
    if (m_added.insert(name).second) m_waiting.push_back({name, text});
}

void TemplateCheck::read_waiting() {
    while (!m_waiting.empty()) {
        const Template waiting = m_waiting.front();
        m_waiting.pop_front();
        check(waiting);
    }
}

void TemplateCheck::check(const Template& waiting) {
    const CString path = m_files.PathOf(waiting.name);
    NamedText file(*waiting.text, path);
    const int scrambled = isScrambledName(waiting.name) ? 1 : 0;
    if (isStoredOtherwise(file, scrambled)) {
        constexpr const char* messages[] = {
            "this template is scrambled: call it .DAT, or store it with 'tessalink unscramble'",
            "this template is plain text: call it .rtf, or store it with 'tessalink scramble'"};
        m_faults.emplace_back(TextPlace{path, 1, 1}, messages[scrambled]);
        return;
    }
    CMemFile output;
    VarTable definitions;
    Checker checker(file, output, definitions, scrambled, *this);
    for (const TemplateFault& fault : checker.FindFaults()) {
        m_faults.emplace_back(fault.place, fault.message);
    }
}

/// Adds the file of an include.
void TemplateCheck::include(const CString& name, const FindPlace& place) {
    if (name.View().find('\\') != std::string_view::npos) {
        m_faults.emplace_back(place(), "Include '" + name +
                                           "' leaves the questionnaire's folder: name a file "
                                           "in it!");
        return;
    }
    try {
        const IncludedFile part =
            findInclude(name, [this](const std::string& wanted) { return m_files.Find(wanted); });
        if (part.isDoubled) {
            m_faults.emplace_back(place(), doubledInclude(includeNames(name.View())));
        } else if (part.text == nullptr) {
            m_faults.emplace_back(place(), "Include '" + name + "' is not there, and neither is " +
                                               CString(std::string_view(part.name)) + "!");
        } else {
            add(part.name, part.text);
        }
    } catch (const InputError& fault) {
        m_faults.emplace_back(place(), "Include '" + name + "' " + fault.what());
    }
}

/// Adds every template of the folder as an include.
void TemplateCheck::read_folder(const TextPlace& place) {
    if (std::exchange(m_hasReadFolder, true)) return;
    for (const CString& name : m_files.Includes()) include(name, [&place] { return place; });
}

void TemplateCheck::CheckVariables(std::span<const std::string_view> known) {
    std::set<std::string_view> told(known.begin(), known.end());
    for (const CString& name : m_bare) told.insert(name.View());
    for (const Use& read : m_read) {
        if (!told.insert(read.name.View()).second) continue;
        m_faults.emplace_back(read.place, "unknown variable " +
                                              CString(inQuotes(read.name.View())) +
                                              CString(nameHint(read.name.View(), known)));
    }
}

}  // namespace tessalink::detail
