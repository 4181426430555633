#pragma once

#include <string>
#include <vector>

#include "graphs/file/DescribedGraph.h"
#include "platform/base/Export.h"
#include "platform/base/Types.h"

class CFile;

/// Described graphs as pictures, in the size that their sheets say. All but what goes to files are
/// the same bytes on every machine.
namespace tessalink {

/// How fine pictures of lines and text are recorded unless said otherwise: as printers draw.
inline constexpr int cPictureDpi = 600;

struct GraphPictureOptions {
    int dpi = cPictureDpi;            ///< units per inch, in which what is drawn is placed
    bool hasTextAlternative = false;  ///< whether the picture says what it shows
};

/// Title and description as one text.
TESSALINK_API CString textAlternative(const DescribedGraph& graph);

/// An enhanced metafile; it has no text alternative. Empty when it is larger than cMaxMetafile.
TESSALINK_API std::vector<BYTE> graphAsMetafile(DescribedGraph& graph, int dpi);

/// SVG, with title and description as its text alternative. Empty when it is larger than cMaxSvg.
TESSALINK_API std::string graphAsSvg(DescribedGraph& graph, const GraphPictureOptions& options);

/// Writes the group of an RTF picture for a report. File faults pass through.
TESSALINK_API void writeGraphAsRTF(DescribedGraph& graph, CFile& file,
                                   const GraphPictureOptions& options);

/// Writes an RTF document of nothing but the graph. File faults pass through.
TESSALINK_API void writeGraphDocument(DescribedGraph& graph, CFile& file,
                                      const GraphPictureOptions& options);

}  // namespace tessalink
