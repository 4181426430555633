#include "graphs/file/GraphFctTable.h"

namespace tessalink {

int GraphFctTable::Call(const char* name) {
    if (!m_graphs.Has(name)) return 0;
    const auto graph = m_graphs.Make(name, m_variables);
    writeGraphAsRTF(*graph, output(), m_options);
    return 1;
}

}  // namespace tessalink
