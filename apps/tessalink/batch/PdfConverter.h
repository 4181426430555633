#pragma once

#include <string>
#include <vector>

#include "apps/tessalink/batch/RunFolder.h"

namespace tessalink::cli {

/// Makes PDF of reports by LibreOffice, many for one start of it.
class PdfConverter {
public:
    static constexpr std::size_t cFilesAtOnce = 32;

    /// The program, for what needs it. A CException when it is not installed.
    static std::string FindProgram(const std::string& needer);

    /// One object for each worker: `name` tells them apart.
    PdfConverter(const RunFolder& folder, std::string program, const std::string& name);

    /// Makes NAME.pdf of NAME.rtf in the folder for each of the names; returns those of which none
    /// was made.
    std::vector<std::string> Convert(const std::vector<std::string>& names) const;

private:
    const RunFolder& m_folder;
    std::string m_program;
    std::string m_profile;  ///< names in the run's own folder
    std::string m_output;
};

}  // namespace tessalink::cli
