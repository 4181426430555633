// The cards of the gallery as metafiles: played by the platform's own calls and by ours.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "examples/gallery/BarGraphs.h"
#include "examples/gallery/Cards.h"
#include "examples/gallery/CircleGraphs.h"
#include "examples/gallery/ProfileGraphs.h"
#include "graphs/rtf/MetaFile.h"
#include "platform/win32/Win32Images.h"
#include "platform/win32/Win32Metafiles.h"

namespace tessalink::test {
namespace {

constexpr int cCardDpi = 96;
// A pixel counts as different when no pixel of the other picture within one unit of it has about
// its color: fonts are hinted in one picture and not in the other.
constexpr int cNear = 112;
constexpr double cMostPercent = 2.0;

struct Numbers {
    explicit Numbers(const MemoryBitmap& bitmap)
        : width(bitmap.Width()), height(bitmap.Height()), pixels(bitmap.Pixels()) {}
    std::uint32_t At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }

    int width;
    int height;
    std::vector<std::uint32_t> pixels;
};

bool isNear(std::uint32_t a, std::uint32_t b) {
    const auto differs = [&](int shift) {
        return std::abs(static_cast<int>(a >> shift & 0xFF) -
                        static_cast<int>(b >> shift & 0xFF)) >= cNear;
    };
    return !differs(0) && !differs(8) && !differs(16);
}

bool hasLike(const Numbers& other, std::uint32_t color, int x, int y) {
    for (int v = std::max(0, y - 1); v <= std::min(other.height - 1, y + 1); ++v) {
        for (int u = std::max(0, x - 1); u <= std::min(other.width - 1, x + 1); ++u) {
            if (isNear(other.At(u, v), color)) return true;
        }
    }
    return false;
}

int lonely(const Numbers& one, const Numbers& other) {
    int count = 0;
    for (int y = 0; y < one.height; ++y) {
        for (int x = 0; x < one.width; ++x) {
            count += hasLike(other, one.At(x, y), x, y) ? 0 : 1;
        }
    }
    return count;
}

double percentApart(const MemoryBitmap& a, const MemoryBitmap& b) {
    const Numbers one(a);
    const Numbers other(b);
    return 50.0 * (lonely(one, other) + lonely(other, one)) / (one.width * one.height);
}

struct Played {
    explicit Played(const gallery::Card& card)
        : byPlatform(card.width, card.height, cCardDpi), byUs(card.width, card.height, cCardDpi) {
        MetaFile metafile;
        metafile.Create(double{1} * card.width / cCardDpi, double{1} * card.height / cCardDpi,
                        nullptr);
        card.draw(metafile);
        metafile.Close();
        const ::HENHMETAFILE picture = toPlatformMetafile(metafile.GetHandle());
        const RECT whole = {0, 0, card.width, card.height};
        EXPECT_NE(::PlayEnhMetaFile(byPlatform.Context(), picture, &whole), 0) << card.name;
        ::DeleteEnhMetaFile(picture);
        byUs.Draw([&](CDC& dc) {
            CRect rect(whole);
            metafile.Play(dc, rect);
        });
    }

    MemoryBitmap byPlatform;
    MemoryBitmap byUs;
};

void compareAll(std::span<const gallery::Card> cards) {
    ASSERT_FALSE(cards.empty());
    for (const gallery::Card& card : cards) {
        const Played played(card);
        EXPECT_LE(percentApart(played.byPlatform, played.byUs), cMostPercent) << card.name;
        const MemoryBitmap empty(card.width, card.height, cCardDpi);
        EXPECT_GT(percentApart(played.byPlatform, empty), 0.1) << card.name;
    }
}

TEST(GalleryMetafiles, Cards) {
    compareAll(gallery::cards());
}

TEST(GalleryMetafiles, BarGraphs) {
    compareAll(gallery::barGraphs());
}

TEST(GalleryMetafiles, ProfileGraphs) {
    compareAll(gallery::profileGraphs());
}

TEST(GalleryMetafiles, CircleGraphs) {
    compareAll(gallery::circleGraphs());
}

}  // namespace
}  // namespace tessalink::test
