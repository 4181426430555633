#include "report/FileBasedReport.h"

#include <utility>

#include "platform/files/CFile.h"

IMPLEMENT_DYNCREATE(FileBasedReport, CObject)

namespace {

/// Closes and deletes the file of a slot, which is empty afterwards whatever closing raises.
void closeSlot(CFile*& slot) {
    const std::unique_ptr<CFile> file(std::exchange(slot, nullptr));
    if (file) file->Close();
}

void closeSilently(CFile*& slot) {
    try {
        closeSlot(slot);
    } catch (const CException&) {
        // Where this is called there is nobody to tell.
    }
}

/// Attaches a run's output to the functions. That of the run around it comes back afterwards.
class AttachedOutput {
public:
    AttachedOutput(FctTable& functions, CFile& output)
        : m_functions(functions), m_before(functions.GetOutput()) {
        m_functions.Attach(&output);
    }
    ~AttachedOutput() { m_functions.Attach(m_before); }
    AttachedOutput(const AttachedOutput&) = delete;
    AttachedOutput& operator=(const AttachedOutput&) = delete;

private:
    FctTable& m_functions;
    CFile* m_before;
};

}  // namespace

/// The definition file that a run reads, known to the runs within it.
class FileBasedReport::RunningFile {
public:
    RunningFile(const RunningFile*& innermost, const CFile* file)
        : m_innermost(innermost), m_outer(innermost), m_file(file) {
        m_innermost = this;
    }
    ~RunningFile() { m_innermost = m_outer; }
    RunningFile(const RunningFile&) = delete;
    RunningFile& operator=(const RunningFile&) = delete;

    static bool IsRead(const RunningFile* run, const CFile* file) {
        while (run && run->m_file != file) run = run->m_outer;
        return run != nullptr;
    }

private:
    const RunningFile*& m_innermost;
    const RunningFile* m_outer;
    const CFile* m_file;
};

/// Keeps the file that a run around this one reads out of its slot, where this run puts its own.
class FileBasedReport::SetAside {
public:
    SetAside(const RunningFile* runs, CFile*& slot)
        : m_slot(slot),
          m_file(RunningFile::IsRead(runs, slot) ? std::exchange(slot, nullptr) : nullptr) {}
    ~SetAside() {
        if (!m_file) return;
        closeSilently(m_slot);
        m_slot = m_file;
    }
    SetAside(const SetAside&) = delete;
    SetAside& operator=(const SetAside&) = delete;

private:
    CFile*& m_slot;
    CFile* m_file;
};

FileBasedReport::FileBasedReport()
    : m_functions(std::make_unique<MemberFctTable<FileBasedReport>>(this, nullptr, nullptr)) {}

FileBasedReport::~FileBasedReport() {
    m_functions.reset();
    for (CFile*& file : m_defFiles) closeSilently(file);
}

void FileBasedReport::DoCreate(CFile& output, int which, int keepOpen) {
    const SetAside outer(m_running, GetDefFile(which));
    GetOpenDefFile(which);
    run(output, which);
    if (!keepOpen) ReleaseDefFile(which);
}

void FileBasedReport::run(CFile& output, int which) {
    CFile& definition = *GetDefFile(which);
    const RunningFile running(m_running, &definition);
    const AttachedOutput attached(*m_functions, output);
    try {
        const std::unique_ptr<FileParser> parser(
            CreateParser(definition, output, m_variables, *m_functions));
        parser->Parse(nullptr);
    } catch (const ParseException& fault) {
        char message[cMessageSize];
        fault.GetErrorMessage(message, cMessageSize);
        report_failed(message);
        throw;
    }
}

CFile*& FileBasedReport::GetDefFile(int which) {
    return m_defFiles[which == 0 ? 0 : 1];
}

CString FileBasedReport::GetDefFilePath(int) {
    return CString();
}

void FileBasedReport::GetOpenDefFile(int which) {
    CFile*& file = GetDefFile(which);
    if (file) {
        file->SeekToBegin();
    } else {
        file = new CFile(GetDefFilePath(which),
                         CFile::modeRead | CFile::typeBinary | CFile::shareDenyNone);
    }
}

void FileBasedReport::ReleaseDefFile(int which) {
    CFile*& file = GetDefFile(which);
    if (!RunningFile::IsRead(m_running, file)) closeSlot(file);
}

FileParser* FileBasedReport::CreateParser(CFile& definition, CFile& output, VarTable& variables,
                                          FctTable& functions) const {
    return new FileParser(definition, output, variables, functions, 1);
}

void FileBasedReport::report_failed(const char*) {}
