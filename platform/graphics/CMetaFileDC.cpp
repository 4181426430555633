#include "platform/graphics/CMetaFileDC.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/files/CFileException.h"
#include "platform/files/WholeFile.h"
#include "platform/graphics/NullDevice.h"

IMPLEMENT_DYNAMIC(CMetaFileDC, CDC)

namespace {

// A description's two texts, with the NUL between them.
std::string_view descriptionOf(const char* text) {
    if (text == nullptr || *text == '\0') return {};
    const std::size_t first = std::strlen(text) + 1;
    return {text, first + std::strlen(text + first) + 1};
}

const tessalink::DrawingDevice& fixedReference() {
    static const tessalink::NullDevice screen;
    return screen;
}

// Whether the sizes that a header tells, and the units in an inch, make sense.
bool canMeasure(const tessalink::DeviceCaps& caps) {
    return std::min({caps.width, caps.height, caps.widthMm, caps.heightMm, caps.dpiX, caps.dpiY}) >
           0;
}

}  // namespace

CMetaFileDC::CMetaFileDC() = default;

CMetaFileDC::~CMetaFileDC() {
    AttachDevice(nullptr);
}

BOOL CMetaFileDC::CreateEnhanced(CDC* reference, const char* fileName, const RECT* frame,
                                 const char* description) {
    DeleteDC();
    const bool hasDevice = reference != nullptr && reference->Device() != nullptr;
    const tessalink::DrawingDevice& device = hasDevice ? *reference->Device() : fixedReference();
    if (!canMeasure(device.Caps())) return 0;
    if (fileName != nullptr) {
        try {
            m_file = std::make_unique<tessalink::WholeFile>(fileName);
        } catch (const CFileException&) {
            return 0;
        }
    }
    m_recording = std::make_unique<tessalink::MetafileDevice>(
        device, frame != nullptr ? std::optional(*frame) : std::nullopt,
        descriptionOf(description));
    AttachDevice(m_recording.get());
    return 1;
}

tessalink::HENHMETAFILE CMetaFileDC::CloseEnhanced() {
    if (!m_recording) return nullptr;
    std::vector<BYTE> bytes = m_recording->Finish();
    const auto file = std::exchange(m_file, nullptr);
    DeleteDC();
    if (bytes.empty()) return nullptr;
    if (file) {
        try {
            file->Write(bytes.data(), bytes.size());
            file->Commit();
        } catch (const CFileException&) {
            return nullptr;
        }
    }
    return tessalink::makeEnhMetaFile(std::move(bytes));
}

BOOL CMetaFileDC::DeleteDC() {
    m_file.reset();
    const BOOL was = CDC::DeleteDC();
    m_recording.reset();
    return was;
}
