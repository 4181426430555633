#include "apps/tessalink/TemplateUses.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "apps/tessalink/IncludeRules.h"
#include "apps/tessalink/TemplateInput.h"
#include "core/InputError.h"
#include "platform/files/CMemFile.h"
#include "report/TemplateFile.h"
#include "report/check/FaultFinder.h"

namespace tessalink::cli {

/// A checker that notes the first use of every name.
class TemplateWalk::Index : public FaultFinder {
public:
    Index(CFile& templateFile, CFile& output, VarTable& definitions, int scrambled,
          TemplateWalk& walk)
        : FaultFinder(templateFile, output, definitions, scrambled),
          m_uses(walk.m_uses),
          m_walk(walk) {}

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
        const CString why = isConstant ? m_walk.why_missing(name) : CString();
        if (!why.IsEmpty()) tell_include(at, why);
    }

private:
    VariableUse& variable(const CString& name) { return m_uses.variables[name]; }
    static void first(std::optional<TextPlace>& use, const TemplateChecker& at) {
        if (!use) use = at.token_place();
    }

    TemplateUses& m_uses;
    TemplateWalk& m_walk;
};

namespace {

/// The file itself, however its path is spelt.
std::string fileOf(const CFile& file) {
    const std::string path(file.GetFilePath().View());
    std::error_code error;
    const auto whole = std::filesystem::canonical(path, error);
    return error ? path : whole.generic_string();
}

TemplateFault faultAt(const TextPlace& place, const CString& message) {
    return {message, message, place, {}, {}};
}

}  // namespace

void TemplateWalk::Read(const CheckOptions& options) {
    for (const std::string& path : options.templatePaths) {
        try {
            read_template(path, options);
        } catch (const InputError& fault) {
            m_log.Add({faultAt(fault.GetPlace(), fault.what()), {}});
        } catch (const CFileException& error) {
            m_log.Add({path.c_str(), error.what(), true});
        }
    }
}

void TemplateWalk::read_template(const std::string& path, const CheckOptions& options) {
    TemplateInput input(path, options.storage);
    if (input.IsDoubtful()) {
        m_log.Add({path.c_str(), path + ": read as a scrambled template, but it is no RTF; --plain "
                                        "reads it as it stands"});
    }
    setIncludeFolder(path, options.includeFolder);
    m_includeFolder = {};
    m_uses = {};
    m_filesRead.insert(fileOf(input.File()));
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

/// Why an include can't be used; empty if it can, or when that has been told.
CString TemplateWalk::why_missing(const CString& name) {
    if (m_includesMissed.contains(name)) return {};
    try {
        m_includeFolder.Find(name);
        return {};
    } catch (const IncludeFault& fault) {
        m_includesMissed.insert(name);
        return fault.what();
    }
}

void TemplateWalk::read_include(const NamedUse& include) {
    try {
        const IncludedFile& found = m_includeFolder.Find(include.name);
        TemplateFile file(found.path);
        if (m_filesRead.insert(fileOf(file)).second) {
            read_file(file, found.isScrambled, &include.first);
        }
    } catch (const IncludeFault&) {
        // Told where it is included.
    } catch (const CFileException& error) {
        m_log.Add({faultAt(include.first, includeTrouble(include.name, error)), {}});
    }
}

void TemplateWalk::read_file(CFile& file, int scrambled, const TextPlace* includedFrom) {
    CMemFile output;
    VarTable definitions;
    Index index(file, output, definitions, scrambled, *this);
    m_log.AddFile();
    std::vector<TemplateFault> faults = index.FindFaults();
    if (faults.empty() && m_note) m_note(file, scrambled);
    for (TemplateFault& fault : faults) {
        CheckedFault checked{std::move(fault), {}};
        if (includedFrom) checked.includes.push_back(*includedFrom);
        m_log.Add(std::move(checked));
    }
    if (index.IsComplete()) return;
    const CString& path = file.GetGivenPath();
    m_log.Add({path, std::string(path.View()) + ": too many faults: the rest of it was not read"});
}

}  // namespace tessalink::cli
