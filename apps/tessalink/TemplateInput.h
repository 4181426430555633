#pragma once

#include <memory>
#include <string>

#include "platform/base/CString.h"
#include "platform/files/CFile.h"

namespace tessalink::cli {

/// The name that stands for standard input or output.
inline constexpr const char* cStandardStream = "-";

/// How a template is stored; `detect` takes one that starts as RTF as plain, any other as
/// scrambled.
enum class Storage { detect, plain, scrambled };

/// A template that the user names.
class TemplateInput {
public:
    /// Opens the file, or reads all of standard input. Throws CFileException, and InputError for a
    /// template that is not stored as `storage` says.
    explicit TemplateInput(const std::string& path, Storage storage = Storage::detect);

    /// Whether the template was taken as scrambled but is no RTF in that form either.
    bool IsDoubtful() const { return m_isDoubtful; }

    CFile& File() { return *m_file; }
    int IsScrambled() const { return m_scrambled; }

private:
    void detect_storage();

    std::unique_ptr<CFile> m_file;
    int m_scrambled = 0;
    bool m_isDoubtful = false;
};

/// Opens a file for reading, or standard input. Throws CFileException.
std::unique_ptr<CFile> openInput(const std::string& path);

/// Opens a template for reading, with its length known: a stream is read first. Throws
/// CFileException, and CException for one that is too long.
std::unique_ptr<CFile> openTemplate(const std::string& path);

/// Makes `folder`, or when that is empty the folder of the template, the one where includes are
/// looked up.
void setIncludeFolder(const std::string& templatePath, const std::string& folder);

}  // namespace tessalink::cli
