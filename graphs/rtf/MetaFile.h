#pragma once

#include <cstddef>

#include "platform/base/CByteArray.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/files/CFile.h"
#include "platform/graphics/CMetaFileDC.h"

/// Records drawing as an enhanced metafile and hands the picture on: as a handle, as bytes, as a
/// file, or as the text of an RTF picture for a report. It is a device context itself: while it is
/// open, what is drawn on it is recorded. The picture is measured by the user's default printer, if
/// the host names one (HostServices::defaultPrinter), otherwise, and when naming it throws, by a
/// fixed screen.
///
/// Sizes are in inches. No operation raises an error for a picture that is missing or can't be
/// made: the results say so.
class TESSALINK_API MetaFile : public CMetaFileDC {
    DECLARE_DYNAMIC(MetaFile)

public:
    /// Empty.
    MetaFile() = default;
    /// The picture of a file; empty when Load fails.
    explicit MetaFile(const char* fileName) { Load(fileName); }
    /// Recording a picture of this size; see Create.
    MetaFile(double width, double height, const char* fileName) { Create(width, height, fileName); }
    /// Clear.
    ~MetaFile() override;

    /// Clears, and starts recording a picture whose frame is that of what is drawn. With a file
    /// name Close stores it there. Returns nonzero, or 0 when the file can't be made or the
    /// printer tells no size.
    int Create(const char* fileName);
    /// The same with a frame of this size. Not-a-numbers count as 0, what is too large as the
    /// largest that the header of a picture can say.
    int Create(double width, double height, const char* fileName);
    /// Nonzero while recording.
    int IsOpen() const { return m_isRecording; }
    /// Ends the recording and keeps the picture. There is none when it could not be stored.
    void Close();

    /// The picture, which stays with the object; null when there is none.
    tessalink::HENHMETAFILE GetHandle() const { return m_handle; }
    /// Closes, and gives the picture to the caller.
    tessalink::HENHMETAFILE Detach();
    /// Clears, and takes the picture over; null is none.
    void Attach(tessalink::HENHMETAFILE picture);
    /// Closes, and drops the picture.
    void Clear();

    /// Clears, and takes the picture of a file. Returns 0 when it can't be read or is damaged.
    int Load(const char* fileName);
    /// Stores the picture, wholly or not at all. Returns 0 when that fails and when there is none.
    int Save(const char* fileName) const;
    /// Fills the array with the metafile's bytes; leaves it as it is when there is no picture.
    void GetBytes(CByteArray& bytes) const;
    /// Draws the picture so that its frame fills the rectangle.
    void Play(CDC& dc, CRect& rect) const;

    /// The picture as RTF that shows it at this size; without a picture the group is empty. The
    /// digits are one line, however long.
    CString GetAsRTF(double width, double height) const;
    /// Writes that text, in pieces. File faults pass through.
    void SaveAsRTF(CFile& file, double width, double height) const;

private:
    int start(const char* fileName, const RECT* frame);
    void release_printer();

    int m_isRecording = 0;
    tessalink::HENHMETAFILE m_handle = nullptr;
    std::shared_ptr<tessalink::DrawingDevice> m_printer;  ///< stays while recording
    CDC m_printerDC;
};

namespace tessalink {

/// Writes each byte as two digits, "0123456789ABCDEF", the higher half first; `digits` has room for
/// twice as many and lies apart from the bytes.
TESSALINK_API void writeHexDigits(const BYTE* bytes, std::size_t count, char* digits);

}  // namespace tessalink
