#include "apps/tessalink/TemplateInput.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

#include "apps/tessalink/ProgressFile.h"
#include "platform/base/HostServices.h"
#include "platform/files/CMemFile.h"

namespace tessalink::cli {

namespace {

constexpr int cStandardInput = 0;
constexpr std::string_view cRtfStart = "{\\rtf";

std::unique_ptr<CFile> readStandardInput() {
    CFile input(cStandardInput);
    auto text = std::make_unique<CMemFile>();
    std::vector<char> block(1u << 16);
    while (const std::size_t count = input.Read(block.data(), block.size())) {
        text->Write(block.data(), count);
    }
    text->SeekToBegin();
    text->SetFilePath("<stdin>");
    return text;
}

std::unique_ptr<CFile> openTemplate(const std::string& path) {
    if (path == cStandardStream) return readStandardInput();
    return std::make_unique<ProgressFile>(path.c_str());
}

/// The library counts the bytes of a template in 32 bits.
std::unique_ptr<CFile> checkSize(std::unique_ptr<CFile> file) {
    if (file->GetLength() > UINT32_MAX) {
        throw CException(file->GetGivenPath() +
                         ": a template must be smaller than 4 GiB; split it into includes.");
    }
    return file;
}

bool startsAsRtf(CFile& file) {
    std::array<char, cRtfStart.size()> start{};
    const std::size_t count = file.Read(start.data(), start.size());
    file.SeekToBegin();
    return std::string_view(start.data(), count) == cRtfStart;
}

}  // namespace

TemplateInput::TemplateInput(const std::string& path, Storage storage)
    : m_file(checkSize(openTemplate(path))),
      m_scrambled(storage == Storage::scrambled ||
                  (storage == Storage::detect && !startsAsRtf(*m_file))) {}

void setIncludeFolder(const std::string& templatePath, const std::string& folder) {
    HostServices services = hostServices();
    const std::filesystem::path parent = std::filesystem::path(templatePath).parent_path();
    const std::string chosen = !folder.empty() ? folder : parent.empty() ? "." : parent.string();
    services.moduleDirectory = CString(chosen.c_str());
    setHostServices(services);
}

}  // namespace tessalink::cli
