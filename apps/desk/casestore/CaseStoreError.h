#pragma once

#include <stdexcept>
#include <string>

namespace tessalink::desk {

/// Why a file of cases can't be used, or something in it not be done. The message, UTF-8, names the
/// file and says what to do. Whatever was kept before the call is kept after it.
class CaseStoreError : public std::runtime_error {
public:
    enum class Kind {
        NotFound,      ///< there is no such file
        Exists,        ///< there is one already where a new one was to be
        NotACaseFile,  ///< a file of another kind
        NewerVersion,  ///< written by a newer version of this program
        OlderVersion,  ///< of an older version, and can't be written, so not be brought up to date
        Damaged,       ///< what was asked for can't be read any more
        Busy,          ///< another program uses the file
        DiskFull,      ///< nothing of the act was kept; it may be tried again
        ReadOnly,      ///< the file is open for reading only; see CaseStore::GetNotice
        Vanished,      ///< the file was moved or deleted, or its share has gone
        NoSuchCase,    ///< the case was deleted
        NoQuestionnaire,  ///< the file has no copy of the case's questionnaire
        FileTrouble,      ///< anything else that the system says
    };

    CaseStoreError(Kind kind, const std::string& path, const std::string& message)
        : std::runtime_error(path + ": " + message), m_kind(kind), m_path(path) {}

    Kind GetKind() const { return m_kind; }
    const std::string& GetPath() const { return m_path; }

private:
    Kind m_kind;
    std::string m_path;
};

}  // namespace tessalink::desk
