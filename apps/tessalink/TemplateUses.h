#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "apps/tessalink/CheckLog.h"
#include "apps/tessalink/Commands.h"
#include "apps/tessalink/IncludeRules.h"
#include "platform/base/CString.h"

class CFile;

namespace tessalink::cli {

/// Where a variable is first read, defined and given a value.
struct VariableUse {
    CString name;
    std::optional<TextPlace> read;
    std::optional<TextPlace> defined;
    std::optional<TextPlace> assigned;
    bool isNumber = false;              ///< its value has to be one
    std::vector<CString> givenTo = {};  ///< variables that get its value
};

/// A host function or an include, and its first use.
struct NamedUse {
    CString name;
    TextPlace first;
    bool isConstant = false;
};

/// Uses by name, in the order in which they were added.
template <class Use>
class UseList {
public:
    /// The use of that name, added if it is new.
    Use& operator[](const CString& name) {
        const auto [found, added] = m_numbers.try_emplace(name, m_entries.size());
        if (added) m_entries.emplace_back().name = name;
        return m_entries[found->second];
    }
    const std::vector<Use>& Entries() const { return m_entries; }

private:
    std::vector<Use> m_entries;
    std::map<CString, std::size_t> m_numbers;
};

/// What templates use.
struct TemplateUses {
    UseList<VariableUse> variables;
    UseList<NamedUse> functions;
    UseList<NamedUse> includes;
};

/// Reads templates without running them, and every include that is named by a constant once.
class TemplateWalk {
public:
    /// With `isPrinted`, faults are printed as they are found.
    explicit TemplateWalk(bool isPrinted) : m_log(isPrinted) {}

    /// Reads the templates, each to its end, whatever their faults.
    void Read(const CheckOptions& options);
    /// Calls `note` for each file that is read, too.
    void NoteFiles(std::function<void(CFile&, int scrambled)> note) { m_note = std::move(note); }

    const CheckLog& Log() const { return m_log; }
    /// What the template that was read last uses, with its includes.
    const TemplateUses& Uses() const { return m_uses; }

private:
    class Index;

    void read_template(const std::string& path, const CheckOptions& options);
    void read_includes();
    void read_include(const NamedUse& include);
    void read_file(CFile& file, int scrambled, const TextPlace* includedFrom);
    CString why_missing(const CString& name);

    CheckLog m_log;
    TemplateUses m_uses;
    std::function<void(CFile&, int)> m_note;
    IncludeFolder m_includeFolder;
    std::set<CString> m_includesMissed;
    std::set<std::string> m_filesRead;
};

}  // namespace tessalink::cli
