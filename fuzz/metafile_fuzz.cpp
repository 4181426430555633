// Any bytes as a metafile: it is refused, or played without a fault, in memory within four times
// the file.
#include <algorithm>
#include <memory>

#include "fuzz/detail/require.h"
#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/NullDevice.h"

// Only where the sanitizer tells what is allocated.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/allocator_interface.h>
#define TESSALINK_COUNTS_MEMORY
#endif
#endif

using tessalink::fuzz::require;

namespace {

std::size_t inUse = 0;
std::size_t most = 0;

#ifdef TESSALINK_COUNTS_MEMORY

void onMalloc(const volatile void*, std::size_t size) {
    inUse += size;
    most = std::max(most, inUse);
}

void onFree(const volatile void* place) {
    if (place != nullptr) inUse -= __sanitizer_get_allocated_size(const_cast<const void*>(place));
}

[[maybe_unused]] const int installed = __sanitizer_install_malloc_and_free_hooks(onMalloc, onFree);

#endif

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t times = 4;
    constexpr std::size_t room = 200'000;  // saved states and what is made on first use
    const std::size_t before = inUse;
    most = inUse;
    {
        const std::unique_ptr<tessalink::EnhMetaFile, BOOL (*)(tessalink::HENHMETAFILE)> picture(
            tessalink::SetEnhMetaFileBits(static_cast<UINT>(size), data), DeleteEnhMetaFile);
        if (picture) {
            tessalink::NullDevice device;
            CDC dc(device);
            const RECT rect = {-3, 5, 700, 300};
            require(PlayEnhMetaFile(&dc, picture.get(), &rect) != 0, "what is taken is played");
        }
    }
    require(most - before <= times * size + room, "memory within four times the file");
    return 0;
}
