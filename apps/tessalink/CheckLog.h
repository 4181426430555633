#pragma once

#include <string>
#include <vector>

#include "core/TextPlace.h"
#include "platform/base/CString.h"
#include "report/check/TemplateFault.h"

namespace tessalink::cli {

/// A fault, and where the template that has it is included.
struct CheckedFault {
    TemplateFault fault;
    std::vector<TextPlace> includes;  ///< innermost first
};

/// What reading a file came to, beside its faults.
struct FileRemark {
    CString file;
    std::string text;        ///< names the file
    bool isTrouble = false;  ///< the file can't be used
};

/// What was found in templates.
class CheckLog {
public:
    /// With `isPrinted`, each fault is printed as soon as it is added. Remarks always are.
    explicit CheckLog(bool isPrinted) : m_isPrinted(isPrinted) {}

    void Add(CheckedFault fault);
    void Add(FileRemark remark);
    void AddFile() { ++m_files; }

    const std::vector<CheckedFault>& Faults() const { return m_faults; }
    const std::vector<FileRemark>& Remarks() const { return m_remarks; }
    int FileCount() const { return m_files; }
    /// The exit code for what was found.
    int ExitCode() const;

private:
    bool m_isPrinted;
    int m_files = 0;
    std::vector<CheckedFault> m_faults;
    std::vector<FileRemark> m_remarks;
};

/// All that was found, for programs: in the form that docs/command-line.md describes, and in
/// SARIF 2.1.0.
std::string jsonOf(const CheckLog& log);
std::string sarifOf(const CheckLog& log);

}  // namespace tessalink::cli
