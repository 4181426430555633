#pragma once

#include <array>
#include <memory>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "report/FctTable.h"
#include "report/FileParser.h"
#include "report/VarTable.h"

class CFile;

/// The base of a host program's reports. It owns the report's variables and a function table bound
/// to the report itself, and runs one of two definition files (scrambled templates), for instance
/// a full report and a short one, into an output file.
///
///     class MyReport : public FileBasedReport {
///     public:
///         MyReport() { AddFct("Graph", &MyReport::draw_graph); }
///         void Write(CFile& out) { Variables().SetValue("Name", "Ann"); DoCreate(out, 0, 0); }
///     protected:
///         CString GetDefFilePath(int) override { return "report.dat"; }
///     private:
///         void draw_graph(CFile& output, void* extraInfo);
///     };
class TESSALINK_API FileBasedReport : public CObject {
    DECLARE_DYNCREATE(FileBasedReport)

public:
    FileBasedReport();
    ~FileBasedReport() override;

    /// The report's variables, and the table of its functions.
    VarTable& Variables() { return m_variables; }
    MemberFctTable<FileBasedReport>& Functions() { return *m_functions; }

protected:
    /// Runs definition file `which` into `output`; `keepOpen` nonzero keeps the template open for
    /// the next run. A template fault is thrown as ParseException (after report_failed), a template
    /// that can't be opened as CFileException; the definition file then stays open. A write fault
    /// of the output is shown in a message box and ends the run, and DoCreate returns: ask the
    /// output whether it is complete (tessalink::WholeFile does not commit after a fault).
    virtual void DoCreate(CFile& output, int which, int keepOpen);
    /// The slot of definition file 0, or for any other number that of definition file 1: null when
    /// closed. The report owns the file in it.
    virtual CFile*& GetDefFile(int which);
    /// The path of a definition file; empty unless a report says otherwise.
    virtual CString GetDefFilePath(int which);
    /// Opens the definition file for reading, sharing allowed, or rewinds it if it is open. Throws
    /// CFileException.
    virtual void GetOpenDefFile(int which);
    /// Closes the definition file, if it is open.
    virtual void ReleaseDefFile(int which);
    /// Makes the parser of a run; the caller owns it.
    virtual FileParser* CreateParser(CFile& definition, CFile& output, VarTable& variables,
                                     FctTable& functions) const;
    /// Is told the message of a template fault before the fault goes on to the caller; does
    /// nothing.
    virtual void report_failed(const char* message);

    /// Makes a member function of a report class callable by "@CALL(name)".
    template <class Report>
    void AddFct(const char* name, void (Report::*function)(CFile&, void*)) {
        m_functions->AddFct(name, static_cast<MemberFctTable<FileBasedReport>::Function>(function));
    }

private:
    /// Room for the message that report_failed gets, its NUL included.
    static constexpr unsigned int cMessageSize = 255;

    VarTable m_variables;
    std::unique_ptr<MemberFctTable<FileBasedReport>> m_functions;
    std::array<CFile*, 2> m_defFiles{};
};
