#include "graphs/file/GraphFctTable.h"

#include "report/ParseException.h"

namespace tessalink {

namespace {

void checkSize(const char* name, const GraphSheet& sheet, const ReportPictures& pictures) {
    const bool isPng = pictures.kinds != PictureKinds::Metafile;
    if (!isPng || pngSize(sheet.width, sheet.height, pictures.pngDpi)) return;
    CString message;
    message.Format("Graph %s is too large for PNG of %d pixels to the inch!", name,
                   pictures.pngDpi);
    throw ParseException(message.GetString());
}

}  // namespace

int GraphFctTable::Call(const char* name) {
    if (!m_graphs.Has(name)) return 0;
    const auto graph = m_graphs.Make(name, m_variables);
    checkSize(name, graph->GetSheet(), m_options.pictures);
    writeGraphAsRTF(*graph, output(), m_options);
    return 1;
}

}  // namespace tessalink
