#pragma once

#include <memory>

#include "graphs/file/DescribedGraph.h"
#include "graphs/file/detail/GraphReader.h"

namespace tessalink::detail {

/// Makes a graph of an object that has the type already; the name is the title when it has none.
/// Without variables the graph is good for nothing, but all faults that need none are found.
using GraphMaker = std::unique_ptr<DescribedGraph> (*)(GraphReader& in, const CString& name,
                                                       const JsonValue& object);

std::unique_ptr<DescribedGraph> makeBarGraph(GraphReader& in, const CString& name,
                                             const JsonValue& object);
std::unique_ptr<DescribedGraph> makeProfileGraph(GraphReader& in, const CString& name,
                                                 const JsonValue& object);
std::unique_ptr<DescribedGraph> makeHorizontalProfile(GraphReader& in, const CString& name,
                                                      const JsonValue& object);
std::unique_ptr<DescribedGraph> makeCircumplex(GraphReader& in, const CString& name,
                                               const JsonValue& object);
std::unique_ptr<DescribedGraph> makeStyleGraph(GraphReader& in, const CString& name,
                                               const JsonValue& object);

}  // namespace tessalink::detail
