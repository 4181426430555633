#include "apps/tessalink/TemplateUses.h"

#include <filesystem>
#include <system_error>

#include "apps/tessalink/BrokenCommand.h"
#include "apps/tessalink/IncludeRules.h"
#include "apps/tessalink/TemplateInput.h"
#include "platform/files/CMemFile.h"
#include "report/TemplateChecker.h"
#include "report/TemplateFile.h"

namespace tessalink::cli {

namespace {

/// A checker that notes the first use of every name.
class TemplateIndex : public TemplateChecker {
public:
    TemplateIndex(CFile& templateFile, CFile& output, VarTable& definitions, int scrambled,
                  TemplateUses& uses)
        : TemplateChecker(templateFile, output, definitions, scrambled), m_uses(uses) {}

protected:
    void note_read(const CString& name, const TemplateChecker& at) override {
        first(variable(name).read, at);
    }
    void note_number(const CString& name, const TemplateChecker&) override {
        variable(name).isNumber = true;
    }
    void note_given(const CString& name, const CString& target, const TemplateChecker&) override {
        variable(name).givenTo.push_back(target);
    }
    void note_define(const CString& name, const TemplateChecker& at) override {
        first(variable(name).defined, at);
    }
    void note_assign(const CString& name, const TemplateChecker& at) override {
        first(variable(name).assigned, at);
    }
    void note_call(const CString& name, const TemplateChecker& at) override {
        NamedUse& use = m_uses.functions[name];
        if (!use.first.IsKnown()) use.first = at.token_place();
        use.isConstant = true;
    }
    void note_include(const CString& name, bool isConstant, const TemplateChecker& at) override {
        NamedUse& use = m_uses.includes[name];
        if (!use.first.IsKnown()) use.first = at.statement_place();
        use.isConstant |= isConstant;
    }

private:
    VariableUse& variable(const CString& name) { return m_uses.variables[name]; }
    static void first(std::optional<TextPlace>& use, const TemplateChecker& at) {
        if (!use) use = at.token_place();
    }

    TemplateUses& m_uses;
};

/// The file itself, however its path is spelt.
std::string fileOf(const TemplateFile& file) {
    const std::string path(file.GetFilePath().View());
    std::error_code error;
    const auto whole = std::filesystem::canonical(path, error);
    return error ? path : whole.generic_string();
}

}  // namespace

void TemplateWalk::Read(const CheckOptions& options) {
    for (const std::string& path : options.templatePaths) {
        try {
            read_template(path, options);
        } catch (const InputError& fault) {
            printFault(fault);
            ++m_faults;
        } catch (const CFileException& error) {
            printTrouble(error.what());
            ++m_troubles;
        }
    }
}

void TemplateWalk::read_template(const std::string& path, const CheckOptions& options) {
    TemplateInput input(path, options.storage);
    if (input.IsDoubtful()) {
        printTrouble((path + ": read as a scrambled template, but it is no RTF; --plain reads it "
                             "as it stands")
                         .c_str());
    }
    setIncludeFolder(path, options.includeFolder);
    m_includeFolder = {};
    m_uses = {};
    read_file(input.File(), input.IsScrambled(), nullptr);
    read_includes();
}

void TemplateWalk::read_includes() {
    // Included templates add their own includes to the end of the list.
    std::size_t next = 0;
    while (next < m_uses.includes.Entries().size()) {
        const NamedUse include = m_uses.includes.Entries()[next++];
        if (include.isConstant) read_include(include);
    }
}

void TemplateWalk::read_include(const NamedUse& include) {
    CString trouble;
    try {
        const IncludedFile& found = m_includeFolder.Find(include.name);
        TemplateFile file(found.path);
        if (!m_filesRead.insert(fileOf(file)).second) return;
        return read_file(file, found.isScrambled, &include.first);
    } catch (const IncludeFault& fault) {
        if (!m_includesMissed.insert(include.name).second) return;
        trouble = fault.what();
    } catch (const CFileException& error) {
        trouble = includeTrouble(include.name, error);
    }
    ParseException fault(trouble);
    fault.SetPlace(include.first);
    fail(fault);
}

void TemplateWalk::read_file(CFile& file, int scrambled, const TextPlace* includedFrom) {
    CMemFile output;
    VarTable definitions;
    TemplateIndex index(file, output, definitions, scrambled, m_uses);
    ++m_files;
    try {
        index.Parse(nullptr);
        if (m_note) m_note(file, scrambled);
    } catch (ParseException& fault) {
        if (includedFrom) fault.AddInclude(*includedFrom);
        fail(fault);
        noteBrokenCommand(file, fault);
    }
}

void TemplateWalk::fail(const ParseException& fault) {
    ++m_faults;
    printFault(fault);
}

}  // namespace tessalink::cli
