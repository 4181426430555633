#pragma once

#include <utility>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

namespace tessalink {

/// What every graph of a graph file has.
struct GraphSheet {
    double width = 0;     ///< in inches
    double height = 0;    ///< in inches
    CString title;        ///< what the graph is called
    CString description;  ///< what it shows, for those who can't see it
};

/// A graph made from its description and the variables of a report.
class TESSALINK_API DescribedGraph {
public:
    virtual ~DescribedGraph();
    DescribedGraph(const DescribedGraph&) = delete;
    DescribedGraph& operator=(const DescribedGraph&) = delete;

    /// Size, title and description.
    const GraphSheet& GetSheet() const { return m_sheet; }

    /// Draws the graph as large as the rectangle allows; the context is as before afterwards.
    virtual void Draw(CDC& dc, const CRect& rect) = 0;

protected:
    /// For derived graphs.
    explicit DescribedGraph(GraphSheet sheet) : m_sheet(std::move(sheet)) {}

private:
    GraphSheet m_sheet;
};

}  // namespace tessalink
