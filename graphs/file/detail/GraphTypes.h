#pragma once

#include <memory>

#include "graphs/file/DescribedGraph.h"
#include "graphs/file/detail/ValueReader.h"

namespace tessalink::detail {

/// Makes a bar graph of an object whose "type" is known; the name is the title when it has none.
/// Without variables the graph is good for nothing, but all faults that need none are found.
std::unique_ptr<DescribedGraph> makeBarGraph(ValueReader& in, const CString& name,
                                             const JsonValue& object);

/// The same for the other types.
std::unique_ptr<DescribedGraph> makeProfileGraph(ValueReader& in, const CString& name,
                                                 const JsonValue& object);
std::unique_ptr<DescribedGraph> makeHorizontalProfile(ValueReader& in, const CString& name,
                                                      const JsonValue& object);
std::unique_ptr<DescribedGraph> makeCircumplex(ValueReader& in, const CString& name,
                                               const JsonValue& object);
std::unique_ptr<DescribedGraph> makeStyleGraph(ValueReader& in, const CString& name,
                                               const JsonValue& object);

}  // namespace tessalink::detail
