#pragma once

#include <memory>
#include <string>

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/DrawingDevice.h"

/// Printing by the platform. Names of printers and documents are UTF-8.
namespace tessalink {

/// Takes over what the platform's dialog for printers has chosen, by its handles (`hDevMode`,
/// `hDevNames`), which stay the caller's; null handles go back to the user's default printer. From
/// the next picture on it is recorded against this printer, and Print prints on it. Nonzero unless
/// a handle is damaged; then all stays as it was.
TESSALINK_API BOOL selectApplicationPrinter(HANDLE deviceMode, HANDLE deviceNames);

/// A device that measures like the application's printer, by its resolution and page, and draws
/// nothing; null when there is none.
TESSALINK_API std::shared_ptr<DrawingDevice> applicationPrinter();

/// A document on the application's printer. Its pages are drawn one after another, each on the
/// context that BeginPage returns:
///
///     tessalink::PrintJob job("Profile");
///     graph.Draw(&job.BeginPage(), job.PageRect());
///     job.Finish();
///
/// Without Finish, nothing is printed. Faults of the printer raise CPrinterException.
class TESSALINK_API PrintJob {
public:
    explicit PrintJob(const char* name);
    /// The same into a file, in the printer's language.
    PrintJob(const char* name, const char* file);
    ~PrintJob();
    PrintJob(const PrintJob&) = delete;
    PrintJob& operator=(const PrintJob&) = delete;

    /// Ends the page before and starts one.
    CDC& BeginPage();
    /// What can be printed on, in units of the printer.
    CRect PageRect() const;
    /// Ends the last page and sends the document to the printer.
    void Finish();

private:
    struct Document;

    std::unique_ptr<Document> m_document;
};

}  // namespace tessalink
