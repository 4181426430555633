#pragma once

#include <string>
#include <vector>

#include "graphs/file/DescribedGraph.h"
#include "graphs/rtf/ReportPictures.h"
#include "platform/base/Export.h"
#include "platform/base/Types.h"

class CFile;

/// Described graphs as pictures, in the size that their sheets say. A graph gives the same bytes on
/// every machine.
namespace tessalink {

/// The usual resolution, in which printers draw.
inline constexpr int cPictureDpi = 600;

/// How a graph becomes a picture.
struct GraphPictureOptions {
    int dpi = cPictureDpi;            ///< units per inch, to which places are rounded
    bool hasTextAlternative = false;  ///< whether the picture says what it shows, for the blind
    ReportPictures pictures = {};     ///< what RTF has of it
};

/// Title and description as one text: "Anxiety. Worry: 63, on a scale from 20 to 80."
TESSALINK_API CString textAlternative(const DescribedGraph& graph);

/// An enhanced metafile; it has no text alternative. Empty when it is larger than cMaxMetafile.
TESSALINK_API std::vector<BYTE> graphAsMetafile(DescribedGraph& graph, int dpi);

/// SVG, with title and description as its text alternative. Empty when it is larger than
/// cMaxPicture.
TESSALINK_API std::string graphAsSvg(DescribedGraph& graph, const GraphPictureOptions& options);

/// PDF in the base fonts, likewise.
TESSALINK_API std::string graphAsPdf(DescribedGraph& graph, const GraphPictureOptions& options);

/// Writes a graph for a report: RTF picture groups, usually one with a metafile. Throws
/// CFileException, and what savePictureAsRTF does.
TESSALINK_API void writeGraphAsRTF(DescribedGraph& graph, CFile& file,
                                   const GraphPictureOptions& options);

/// Writes an RTF document with nothing but the graph, likewise.
TESSALINK_API void writeGraphDocument(DescribedGraph& graph, CFile& file,
                                      const GraphPictureOptions& options);

}  // namespace tessalink
