#include "examples/gallery/NativePictures.h"
#include "graphs/rtf/MetaFile.h"
#include "platform/files/WholeFile.h"
#include "platform/win32/Win32Images.h"
#include "platform/win32/Win32Metafiles.h"

namespace gallery {

namespace {

constexpr int cUnitsPerInch = 96;

void store(const std::string& name, const std::vector<BYTE>& png) {
    tessalink::WholeFile file(name.c_str());
    file.Write(png.data(), png.size());
    file.Commit();
}

}  // namespace

void writeNativePictures(const Card& card, const std::string& start) {
    tessalink::savePng((start + ".png").c_str(), card.width, card.height, cUnitsPerInch, card.draw);
    MetaFile metafile;
    metafile.Create(double{1} * card.width / cUnitsPerInch, double{1} * card.height / cUnitsPerInch,
                    nullptr);
    card.draw(metafile);
    metafile.Close();
    const ::HENHMETAFILE picture = tessalink::toPlatformMetafile(metafile.GetHandle());
    tessalink::MemoryBitmap played(card.width, card.height, cUnitsPerInch);
    const RECT whole = {0, 0, card.width, card.height};
    ::PlayEnhMetaFile(played.Context(), picture, &whole);
    ::DeleteEnhMetaFile(picture);
    store(start + "-played.png", played.Png());
}

}  // namespace gallery
