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
/// Templates are stored scrambled, by `tessalink scramble` or tessalink::scramble. For plain ones
/// override CreateParser and make the parser with 0; for plain includes, too, let it be of a class
/// whose create_parser makes all parsers with 0.
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

    /// The report's variables. What templates change stays changed from run to run.
    VarTable& Variables() { return m_variables; }
    /// The table of the report's functions: for the extra pointer that they are called with
    /// (SetExtraInfo), and to ask what there is (Exists). AddFct is the way to fill it.
    MemberFctTable<FileBasedReport>& Functions() { return *m_functions; }

protected:
    /// Runs definition file `which` into `output`; `keepOpen` nonzero keeps the template open for
    /// the next run. A template fault is thrown as ParseException (after report_failed), a template
    /// that can't be opened as CFileException; the definition file then stays open. A write fault
    /// of the output is shown in a message box and ends the run, and DoCreate returns: ask the
    /// output whether it is complete (tessalink::WholeFile does not commit after a fault).
    ///
    /// A host function may call DoCreate for the same report, with either definition file. The run
    /// within opens the file anew when a run around it reads it, and closes it whatever `keepOpen`
    /// says; functions write to its output, and afterwards to that of the outer run again, or to
    /// none. A template must not make such runs without end.
    virtual void DoCreate(CFile& output, int which, int keepOpen);
    /// The slot of definition file 0, or for any other number that of definition file 1: null when
    /// closed. The report owns the file in it.
    virtual CFile*& GetDefFile(int which);
    /// The path of a definition file; empty unless a report says otherwise. A relative path counts
    /// from the current folder of the process; includes are looked up in that of the program.
    virtual CString GetDefFilePath(int which);
    /// Opens the definition file for reading, sharing allowed, or rewinds it if it is open. Throws
    /// CFileException.
    virtual void GetOpenDefFile(int which);
    /// Closes the definition file, if it is open and no run reads it. CFileException passes
    /// through; the slot is empty even then.
    virtual void ReleaseDefFile(int which);
    /// Makes the parser of a run; the caller owns it.
    virtual FileParser* CreateParser(CFile& definition, CFile& output, VarTable& variables,
                                     FctTable& functions) const;
    /// Is told the message of a template fault before the fault goes on to the caller; does
    /// nothing.
    virtual void report_failed(const char* message);

    /// Makes a member function of a report class callable by "@CALL(name)". `Report` must be the
    /// class of this object or a base of it. The function gets the output of the run and the extra
    /// pointer of Functions(); it may read and change the variables.
    template <class Report>
    void AddFct(const char* name, void (Report::*function)(CFile&, void*)) {
        m_functions->AddFct(name, static_cast<MemberFctTable<FileBasedReport>::Function>(function));
    }

private:
    class RunningFile;
    class SetAside;

    /// Room for the message that report_failed gets, its NUL included.
    static constexpr unsigned int cMessageSize = 255;

    void run(CFile& output, int which);

    VarTable m_variables;
    std::unique_ptr<MemberFctTable<FileBasedReport>> m_functions;
    std::array<CFile*, 2> m_defFiles{};
    const RunningFile* m_running = nullptr;  ///< the innermost run
};
