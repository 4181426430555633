#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "core/InputError.h"
#include "graphs/file/DescribedGraph.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "report/VarTable.h"

class CFile;

namespace tessalink {

/// Descriptions of graphs in JSON, UTF-8, under names: docs/graph-files.md says how they are
/// written. Numbers and texts in it may name variables of a report.
///
/// Every fault is an InputError with line and column (in bytes) and, in its message, the path of
/// the value, "/graphs/Anxiety/sections/2/scale/max".
class TESSALINK_API GraphFile {
public:
    /// Reads the file from its position on, and checks all of it that needs no variables. Throws
    /// InputError and CFileException.
    static GraphFile Read(CFile& file);
    ~GraphFile();
    /// The other file can't be used any more.
    GraphFile(GraphFile&&) noexcept;
    GraphFile& operator=(GraphFile&&) noexcept;  ///< the other file can't be used any more

    /// The names in the order of the file. They are words, as @CALL takes them.
    std::vector<CString> GetNames() const;
    /// Whether the file has a graph of this name.
    bool Has(std::string_view name) const;

    /// Makes a graph. Throws InputError when the file has none of that name, when a variable is
    /// missing or of the wrong type, and when its value is not allowed where it is named.
    std::unique_ptr<DescribedGraph> Make(std::string_view name, const VarTable& variables) const;

    /// The variables that the graphs name, in the order of the file, each once.
    std::vector<CString> GetVariables() const;

    /// A fault for each place that names a variable which is not among the known ones.
    std::vector<InputError> FindUnknownVariables(std::span<const std::string_view> known) const;

private:
    class Graphs;

    explicit GraphFile(CFile& file);

    std::unique_ptr<Graphs> m_graphs;
};

}  // namespace tessalink
