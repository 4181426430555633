#include "apps/tessalink/TemplateInput.h"

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

#include "apps/tessalink/ProgressFile.h"
#include "core/BufferedFile.h"
#include "core/InputError.h"
#include "platform/base/HostServices.h"
#include "platform/files/CMemFile.h"
#include "report/TemplateStorage.h"

namespace tessalink::cli {

namespace {

constexpr int cStandardInput = 0;
constexpr std::string_view cRtfStart = "{\\rtf";

/// What has no length of its own (a pipe, a device) is read before it is used.
/// The library counts the bytes of a template in 32 bits.
void checkLength(const CFile& file) {
    if (file.GetLength() > UINT32_MAX) {
        throw CException(file.GetGivenPath() +
                         ": a template must be smaller than 4 GiB; split it into includes.");
    }
}

std::unique_ptr<CFile> readAhead(std::unique_ptr<CFile> stream) {
    auto text = std::make_unique<CMemFile>();
    text->SetFilePath(stream->GetGivenPath());
    std::vector<char> block(1u << 16);
    while (const std::size_t count = stream->Read(block.data(), block.size())) {
        text->Write(block.data(), count);
        checkLength(*text);
    }
    text->SeekToBegin();
    return text;
}

std::unique_ptr<CFile> withLength(std::unique_ptr<CFile> file) {
    if (file->GetLength() == 0) return readAhead(std::move(file));
    checkLength(*file);
    return file;
}

std::string startOf(CFile& file, std::size_t length) {
    std::string start(length, '\0');
    start.resize(file.Read(start.data(), start.size()));
    file.SeekToBegin();
    return start;
}

}  // namespace

std::unique_ptr<CFile> openInput(const std::string& path) {
    if (path != cStandardStream) {
        return std::make_unique<CFile>(path.c_str(), CFile::modeRead | CFile::shareDenyNone);
    }
    auto input = std::make_unique<CFile>(cStandardInput);
    input->SetFilePath("<stdin>");
    return input;
}

std::unique_ptr<CFile> openTemplate(const std::string& path) {
    if (path == cStandardStream) return withLength(openInput(path));
    return withLength(std::make_unique<ProgressFile>(path.c_str()));
}

TemplateInput::TemplateInput(const std::string& path, Storage storage)
    : m_file(openTemplate(path)) {
    if (storage == Storage::detect) {
        detect_storage();
    } else {
        m_scrambled = storage == Storage::scrambled;
    }
    if (!isStoredOtherwise(*m_file, m_scrambled)) return;
    throw InputError({m_file->GetGivenPath(), 1, 1},
                     m_scrambled ? "this template is plain text: read it with --plain"
                                 : "this template is scrambled: read it without --plain");
}

void TemplateInput::detect_storage() {
    std::string start = startOf(*m_file, cRtfStart.size());
    m_scrambled = start != cRtfStart;
    scramble(start.data(), start.size());
    m_isDoubtful = m_scrambled && start != cRtfStart;
}

void setIncludeFolder(const std::string& templatePath, const std::string& folder) {
    HostServices services = hostServices();
    const std::filesystem::path parent = std::filesystem::path(templatePath).parent_path();
    const std::string chosen = !folder.empty()  ? folder
                               : parent.empty() ? "."
                                                : parent.generic_string();
    services.moduleDirectory = CString(chosen.c_str());
    setHostServices(services);
}

}  // namespace tessalink::cli
