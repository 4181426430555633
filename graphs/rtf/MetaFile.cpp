#include "graphs/rtf/MetaFile.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <string_view>
#include <utility>

#include "graphs/rtf/PictureText.h"
#include "graphs/rtf/detail/PictureGroup.h"
#include "platform/base/HostServices.h"

IMPLEMENT_DYNAMIC(MetaFile, CMetaFileDC)

namespace {

using tessalink::detail::cHundredthsPerInch;
using tessalink::detail::cShownPicture;
using tessalink::detail::rounded;

/// Of the picture, and of what it stands in.
constexpr std::string_view cEnds = "}}";

constexpr char hexDigit(int half) {
    constexpr int fromNineToA = 'A' - '9' - 1;
    return static_cast<char>(half + '0' + (half > 9 ? fromNineToA : 0));
}

/// A device for the default printer; null when there is none. The application has one printer
/// selection for all threads. A printer that can't be opened is none.
std::shared_ptr<tessalink::DrawingDevice> printerDevice() {
    static std::mutex selection;
    const auto& source = tessalink::hostServices().defaultPrinter;
    if (!source) return nullptr;
    const std::lock_guard lock(selection);
    try {
        return source();
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace

MetaFile::~MetaFile() {
    Clear();
}

int MetaFile::Create(const char* fileName) {
    return start(fileName, nullptr);
}

int MetaFile::Create(double width, double height, const char* fileName) {
    const RECT frame = {0, 0, rounded(width * cHundredthsPerInch),
                        rounded(height * cHundredthsPerInch)};
    return start(fileName, &frame);
}

int MetaFile::start(const char* fileName, const RECT* frame) {
    Clear();
    m_printer = printerDevice();
    if (m_printer) m_printerDC.AttachDevice(m_printer.get());
    m_isRecording = CreateEnhanced(m_printer ? &m_printerDC : nullptr, fileName, frame, "");
    if (!m_isRecording) {
        release_printer();
    } else if (m_printer) {
        SetAttribDC(&m_printerDC);
    }
    return m_isRecording;
}

void MetaFile::Close() {
    if (!m_isRecording) return;
    m_handle = CloseEnhanced();
    release_printer();
    m_isRecording = 0;
}

void MetaFile::release_printer() {
    m_printerDC.DeleteDC();
    m_printer.reset();
}

tessalink::HENHMETAFILE MetaFile::Detach() {
    Close();
    return std::exchange(m_handle, nullptr);
}

void MetaFile::Attach(tessalink::HENHMETAFILE picture) {
    if (picture != nullptr && picture == m_handle) return;
    Clear();
    m_handle = picture;
}

void MetaFile::Clear() {
    Close();
    DeleteEnhMetaFile(std::exchange(m_handle, nullptr));
}

int MetaFile::Load(const char* fileName) {
    Clear();
    m_handle = tessalink::GetEnhMetaFile(fileName);
    return m_handle != nullptr;
}

int MetaFile::Save(const char* fileName) const {
    if (m_handle == nullptr || fileName == nullptr) return 0;
    return DeleteEnhMetaFile(CopyEnhMetaFile(m_handle, fileName));
}

void MetaFile::GetBytes(CByteArray& bytes) const {
    if (m_handle == nullptr) return;
    const auto all = tessalink::bytesOf(m_handle);
    bytes.SetSize(static_cast<int>(all.size()));
    std::copy(all.begin(), all.end(), bytes.GetData());
}

void MetaFile::Play(CDC& dc, CRect& rect) const {
    PlayEnhMetaFile(&dc, m_handle, &rect);
}

CString MetaFile::GetAsRTF(double width, double height) const {
    const auto picture = tessalink::bytesOf(m_handle);
    const CString header = CString(cShownPicture) +
                           tessalink::detail::pictureStart({"emfblip", picture, width, height});
    const std::size_t start = header.View().size();
    const std::size_t length = start + 2 * picture.size() + cEnds.size();
    CString text;
    char* const buffer = text.GetBufferSetLength(static_cast<int>(length));
    std::copy(header.View().begin(), header.View().end(), buffer);
    tessalink::writeHexDigits(picture.data(), picture.size(), buffer + start);
    std::copy(cEnds.begin(), cEnds.end(), buffer + length - cEnds.size());
    text.ReleaseBuffer(static_cast<int>(length));
    return text;
}

void MetaFile::SaveAsRTF(CFile& file, double width, double height) const {
    tessalink::savePictureAsRTF(*this, file, width, height, {});
}

namespace tessalink {

// Arithmetic instead of a table: compilers make vector code of it, as fast as copying the digits.
void writeHexDigits(const BYTE* __restrict bytes, std::size_t count, char* __restrict digits) {
    for (std::size_t i = 0; i < count; ++i) {
        digits[2 * i] = hexDigit(bytes[i] >> 4);
        digits[2 * i + 1] = hexDigit(bytes[i] & 0xF);
    }
}

}  // namespace tessalink
