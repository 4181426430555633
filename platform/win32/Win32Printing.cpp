#include "platform/win32/Win32Printing.h"

// Behind the header that comes with ours.
#include <commdlg.h>
#include <winspool.h>

#include <cstring>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/graphics/NullDevice.h"
#include "platform/win32/CPrinterException.h"
#include "platform/win32/DcDevice.h"
#include "platform/win32/detail/GdiHandle.h"
#include "platform/win32/detail/PlatformText.h"

namespace tessalink {

using detail::ContextHandle;

namespace {

// A printer by its name, with its settings: bytes of a DEVMODEW, or none.
struct PrinterChoice {
    std::wstring name;
    std::vector<BYTE> mode;
};

std::mutex& choiceMutex() {
    static std::mutex mutex;
    return mutex;
}

std::optional<PrinterChoice>& chosen() {
    static std::optional<PrinterChoice> choice;
    return choice;
}

class LockedMemory {
public:
    explicit LockedMemory(HANDLE memory)
        : m_memory(memory), m_bytes(memory != nullptr ? ::GlobalLock(memory) : nullptr) {}
    ~LockedMemory() {
        if (m_bytes != nullptr) ::GlobalUnlock(m_memory);
    }
    LockedMemory(const LockedMemory&) = delete;
    LockedMemory& operator=(const LockedMemory&) = delete;

    const void* Bytes() const { return m_bytes; }
    std::size_t Size() const { return m_bytes != nullptr ? ::GlobalSize(m_memory) : 0; }

private:
    HANDLE m_memory;
    void* m_bytes;
};

// The name of the printer in a DEVNAMES; empty when it is damaged.
std::wstring nameIn(const LockedMemory& names) {
    if (names.Size() < sizeof(DEVNAMES)) return {};
    DEVNAMES header;
    std::memcpy(&header, names.Bytes(), sizeof(header));
    const auto* const characters = static_cast<const wchar_t*>(names.Bytes());
    const std::size_t count = names.Size() / sizeof(wchar_t);
    std::wstring name;
    for (std::size_t i = header.wDeviceOffset; i < count; ++i) {
        if (characters[i] == L'\0') return name;
        name += characters[i];
    }
    return {};
}

// The settings; nothing when they are damaged.
std::optional<std::vector<BYTE>> modeIn(const LockedMemory& mode) {
    if (mode.Bytes() == nullptr) return std::vector<BYTE>();
    if (mode.Size() < sizeof(DEVMODEW)) return std::nullopt;
    DEVMODEW header;
    std::memcpy(&header, mode.Bytes(), sizeof(header));
    const std::size_t size = std::size_t{header.dmSize} + header.dmDriverExtra;
    if (header.dmSize < sizeof(DEVMODEW) || size > mode.Size()) return std::nullopt;
    const auto* const bytes = static_cast<const BYTE*>(mode.Bytes());
    return std::vector<BYTE>(bytes, bytes + size);
}

// That which was chosen, or the user's default; without a name there is none.
PrinterChoice currentPrinter() {
    const std::lock_guard lock(choiceMutex());
    if (chosen()) return *chosen();
    DWORD length = 0;
    ::GetDefaultPrinterW(nullptr, &length);
    std::wstring name(length, L'\0');
    if (length == 0 || ::GetDefaultPrinterW(name.data(), &length) == 0) return {};
    name.resize(length - 1);
    return {name, {}};
}

const DEVMODEW* modeOf(const PrinterChoice& choice) {
    return choice.mode.empty() ? nullptr : reinterpret_cast<const DEVMODEW*>(choice.mode.data());
}

class PrinterMeasures final : public NullDevice {
public:
    using NullDevice::NullDevice;
    const TextMetricsSource& TextMetrics() const override { return platformTextMetrics(); }
};

}  // namespace

BOOL selectApplicationPrinter(HANDLE deviceMode, HANDLE deviceNames) {
    std::optional<PrinterChoice> choice;
    if (deviceNames != nullptr) {
        std::optional<std::vector<BYTE>> mode = modeIn(LockedMemory(deviceMode));
        choice = PrinterChoice{nameIn(LockedMemory(deviceNames)), {}};
        if (!mode || choice->name.empty()) return 0;
        choice->mode = std::move(*mode);
    }
    const std::lock_guard lock(choiceMutex());
    chosen() = std::move(choice);
    return 1;
}

std::shared_ptr<DrawingDevice> applicationPrinter() {
    const PrinterChoice printer = currentPrinter();
    if (printer.name.empty()) return nullptr;
    const ContextHandle context(
        ::CreateICW(L"WINSPOOL", printer.name.c_str(), nullptr, modeOf(printer)));
    if (!context) return nullptr;
    return std::make_shared<PrinterMeasures>(capsOf(context.get()));
}

struct PrintJob::Document {
    ContextHandle context;
    std::unique_ptr<DcDevice> device;
    std::unique_ptr<CDC> page;
    std::string printer;
    bool isFinished = false;

    [[noreturn]] void Fail(const char* what) const {
        CString message;
        message.Format("The printer %s %s. Try another one, or look at its queue.", printer.c_str(),
                       what);
        throw CPrinterException(message);
    }
    void Start(const char* name, const wchar_t* file) {
        const PrinterChoice choice = currentPrinter();
        if (choice.name.empty()) {
            throw CPrinterException("There is no printer. Add one in the settings of the system.");
        }
        printer = detail::platformToUtf8(choice.name);
        context.reset(::CreateDCW(L"WINSPOOL", choice.name.c_str(), nullptr, modeOf(choice)));
        if (!context) Fail("can't be opened");
        const std::wstring title = detail::utf8ToPlatform(name);
        DOCINFOW info = {};
        info.cbSize = sizeof(info);
        info.lpszDocName = title.c_str();
        info.lpszOutput = file;
        if (::StartDocW(context.get(), &info) <= 0) Fail("takes no document");
    }
    void EndPage() {
        page.reset();
        if (device == nullptr) return;
        device.reset();
        if (::EndPage(context.get()) <= 0) Fail("has refused a page");
    }
};

PrintJob::PrintJob(const char* name) : m_document(std::make_unique<Document>()) {
    m_document->Start(name, nullptr);
}

PrintJob::PrintJob(const char* name, const char* file) : m_document(std::make_unique<Document>()) {
    m_document->Start(name, detail::utf8ToPlatform(file).c_str());
}

PrintJob::~PrintJob() {
    m_document->page.reset();
    m_document->device.reset();
    if (!m_document->isFinished) ::AbortDoc(m_document->context.get());
}

CDC& PrintJob::BeginPage() {
    Document& document = *m_document;
    document.EndPage();
    if (::StartPage(document.context.get()) <= 0) document.Fail("takes no page");
    document.device = std::make_unique<DcDevice>(document.context.get());
    document.page = std::make_unique<CDC>(*document.device);
    return *document.page;
}

CRect PrintJob::PageRect() const {
    const DeviceCaps caps = capsOf(m_document->context.get());
    return {0, 0, caps.width, caps.height};
}

void PrintJob::Finish() {
    m_document->EndPage();
    if (::EndDoc(m_document->context.get()) <= 0) m_document->Fail("has refused the document");
    m_document->isFinished = true;
}

}  // namespace tessalink
