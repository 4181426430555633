#include "apps/tessalink/batch/OutputTable.h"

#include <filesystem>

namespace tessalink::cli {

namespace {

void open(CFile& file, const std::string& path, UINT flags) {
    CFileException error;
    if (!file.Open(path.c_str(), flags | CFile::modeWrite | CFile::shareDenyWrite, &error)) {
        throw error;
    }
}

}  // namespace

void OutputTable::Begin(std::string_view header) {
    open(m_file, part(), CFile::modeCreate);
    Append(header);
}

void OutputTable::Continue(std::uint64_t length) {
    open(m_file, part(), 0);
    if (m_file.GetLength() < length) {
        throw CException(CString(std::string_view(part())) +
                         ": is shorter than the record of the run says: remove the results and "
                         "start anew without --resume.");
    }
    m_file.SetLength(length);
    m_length = length;
}

std::uint64_t OutputTable::Flush() {
    // After a fault the same is written once more, at the same place.
    m_file.Seek(static_cast<std::int64_t>(m_length), CFile::begin);
    m_file.Write(m_buffer.data(), m_buffer.size());
    m_length += m_buffer.size();
    m_buffer.clear();
    return m_length;
}

void OutputTable::Finish() {
    if (m_file.m_hFile != CFile::hFileNull) {
        Flush();
        m_file.Close();
    }
    if (std::filesystem::exists(part())) CFile::Rename(part().c_str(), m_path.c_str());
}

}  // namespace tessalink::cli
