#pragma once

#include <deque>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/InputError.h"
#include "platform/base/CString.h"
#include "questionnaire/detail/FileLoader.h"

namespace tessalink::detail {

/// Reads the templates of a questionnaire, and what they include, without running them.
class TemplateCheck {
public:
    using IsName = std::function<bool(std::string_view)>;

    /// Faults are added to `faults`; `isGraph` says which names @CALL may have, `isMade` which
    /// variables the questionnaire makes. Files and faults must outlive it.
    TemplateCheck(FileLoader& files, std::vector<InputError>& faults, IsName isGraph, IsName isMade)
        : m_files(files),
          m_faults(faults),
          m_isGraph(std::move(isGraph)),
          m_isMade(std::move(isMade)) {}

    /// Reads a template and all that it includes by constants, each file once.
    void Read(const std::string& name, const std::string& text);
    /// Reads what templates include by bare names: where the questionnaire or a template makes a
    /// variable of that name, any template of the folder; otherwise the include that has this name.
    void ReadNamed();

    /// The variables that templates define or assign.
    const std::set<CString>& MadeVariables() const { return m_made; }
    /// A fault for the first use of each variable that is not among the known ones.
    void CheckVariables(std::span<const std::string_view> known);

private:
    class Checker;
    /// Finds a place when there is a fault to tell: that reads the template anew.
    using FindPlace = std::function<TextPlace()>;
    struct Use {
        CString name;
        TextPlace place;
    };
    struct Template {
        std::string name;
        const std::string* text;
    };

    void add(const std::string& name, const std::string* text);
    void read_waiting();
    void check(const Template& waiting);
    void include(const CString& name, const FindPlace& place);
    void read_folder(const TextPlace& place);

    FileLoader& m_files;
    std::vector<InputError>& m_faults;
    IsName m_isGraph;
    IsName m_isMade;
    std::set<std::string> m_added;  ///< names of files
    std::deque<Template> m_waiting;
    std::deque<Use> m_named;   ///< includes by bare names
    std::set<CString> m_bare;  ///< such names that are no variables
    bool m_hasReadFolder = false;
    std::set<CString> m_made;
    std::set<CString> m_seen;  ///< names of variables that are read
    std::vector<Use> m_read;   ///< where each of them is read first
};

}  // namespace tessalink::detail
