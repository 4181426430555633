#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/files/CFile.h"

namespace tessalink::cli {

/// What ends a row of the tables that are written.
inline constexpr std::string_view cRowEnd = "\r\n";

/// A table that grows during a run: until it is finished its name ends in ".part".
class OutputTable {
public:
    explicit OutputTable(std::string path) : m_path(std::move(path)) {}

    const std::string& Path() const { return m_path; }

    /// A new table, in place of an unfinished one.
    void Begin(std::string_view header);
    /// Goes on behind the first bytes of an unfinished one. A CException when it has fewer.
    void Continue(std::uint64_t length);
    void Append(std::string_view rows) {
        m_buffer += rows;
        if (m_buffer.size() >= cBufferSize) Flush();
    }
    /// Hands everything to the system; returns the length.
    std::uint64_t Flush();
    /// Closes the table and gives it its name, unless it has it already.
    void Finish();

private:
    static constexpr std::size_t cBufferSize = std::size_t{256} << 10;

    std::string part() const { return m_path + ".part"; }

    std::string m_path;
    CFile m_file;
    std::uint64_t m_length = 0;  ///< of what the system has
    std::string m_buffer;
};

}  // namespace tessalink::cli
