#pragma once

#include "graphs/file/GraphFile.h"
#include "graphs/file/GraphPicture.h"
#include "platform/base/Export.h"
#include "report/FctTable.h"

namespace tessalink {

/// Makes the graphs of a file callable in templates: "@CALL(Anxiety)" writes the picture of the
/// graph Anxiety, drawn from the report's variables as they are at that moment. File, variables and
/// output are not owned and must outlive the table.
class TESSALINK_API GraphFctTable : public FctTable {
public:
    /// `output` is where the pictures go; it may be given later, when a report is run.
    GraphFctTable(const GraphFile& graphs, const VarTable& variables,
                  const GraphPictureOptions& options = {}, CFile* output = nullptr)
        : FctTable(output, nullptr), m_graphs(graphs), m_variables(variables), m_options(options) {}

    /// A fault of the graph file or its variables is an InputError, a graph that is too large for
    /// PNG a ParseException; nothing is written then.
    int Call(const char* name) override;
    int Exists(const char* name) const override { return m_graphs.Has(name); }

private:
    const GraphFile& m_graphs;
    const VarTable& m_variables;
    GraphPictureOptions m_options;
};

}  // namespace tessalink
