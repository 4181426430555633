#include "apps/tessalink/PictureModule.h"

#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/files/LoadedModule.h"
#include "platform/files/ModuleDir.h"

namespace tessalink::cli {

namespace {

constexpr const char* cModuleName = TESSALINK_PICTURE_MODULE;
constexpr const char* cNeeded =
    "PNG, and PDF with --embed-fonts, need the module of a build with Qt 6";

constexpr const char* cInstalledFolder = "../" TESSALINK_LIBRARY_FOLDER "/tessalink";
// Where it may lie, from the program's folder on.
constexpr const char* cFolders[] = {".", "../lib/tessalink", cInstalledFolder};

[[noreturn]] void fail(const std::string& cause) {
    throw std::runtime_error(std::string(cNeeded) + ": " + cause);
}

std::string findModule() {
    const std::filesystem::path program = GetModuleDir().GetString();
    for (const char* folder : cFolders) {
        const std::filesystem::path path = program / folder / cModuleName;
        std::error_code ignored;
        if (std::filesystem::exists(path, ignored)) return path.generic_string();
    }
    fail(std::string(cModuleName) + " is neither beside this program nor in ../lib/tessalink");
}

// Stays loaded until the process ends: the toolkit can't be taken out again.
LoadedModule loadModule() {
    const std::string path = findModule();
    try {
        return LoadedModule(path);
    } catch (const std::runtime_error& fault) {
        fail(fault.what());
    }
}

template <class Function>
Function functionOf(const LoadedModule& module, const char* name) {
    void* const symbol = module.Find(name);
    if (symbol == nullptr) fail(std::string(cModuleName) + " is of another version");
    return reinterpret_cast<Function>(symbol);
}

}  // namespace

PictureModule::PictureModule() {
    const LoadedModule module = loadModule();
    m_render = functionOf<TessalinkRenderPicture>(module, cRenderPictureName);
    m_free = functionOf<TessalinkFreePicture>(module, cFreePictureName);
}

std::vector<BYTE> PictureModule::Render(std::span<const BYTE> metafile,
                                        const PictureTarget& target) const {
    const TessalinkPictureJob job = {metafile.data(), metafile.size(), target.format,
                                     target.width,    target.height,   target.dpi};
    TessalinkPictureFile file;
    if (!m_render(&job, &file)) throw std::runtime_error(file.message);
    std::vector<BYTE> bytes(file.bytes, file.bytes + file.size);
    m_free(&file);
    return bytes;
}

std::vector<BYTE> renderByModule(std::span<const BYTE> metafile, const PictureTarget& target) {
    return PictureModule().Render(metafile, target);
}

}  // namespace tessalink::cli
