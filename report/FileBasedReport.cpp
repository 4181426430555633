#include "report/FileBasedReport.h"

#include "platform/files/CFile.h"

IMPLEMENT_DYNCREATE(FileBasedReport, CObject)

FileBasedReport::FileBasedReport()
    : m_functions(std::make_unique<MemberFctTable<FileBasedReport>>(this, nullptr, nullptr)) {}

FileBasedReport::~FileBasedReport() {
    m_functions.reset();
    for (const CFile* file : m_defFiles) delete file;
}

void FileBasedReport::DoCreate(CFile& output, int which, int keepOpen) {
    GetOpenDefFile(which);
    m_functions->Attach(&output);
    try {
        const std::unique_ptr<FileParser> parser(
            CreateParser(*GetDefFile(which), output, m_variables, *m_functions));
        parser->Parse(nullptr);
    } catch (const ParseException& fault) {
        char message[cMessageSize];
        fault.GetErrorMessage(message, cMessageSize);
        report_failed(message);
        throw;
    }
    if (!keepOpen) ReleaseDefFile(which);
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
    delete file;
    file = nullptr;
}

FileParser* FileBasedReport::CreateParser(CFile& definition, CFile& output, VarTable& variables,
                                          FctTable& functions) const {
    return new FileParser(definition, output, variables, functions, 1);
}

void FileBasedReport::report_failed(const char*) {}
