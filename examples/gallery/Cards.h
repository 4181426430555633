#pragma once

#include <span>

#include "platform/graphics/CDC.h"

class CFile;

// The test cards: everything that can be drawn, each with a caption, for a look at every device.
namespace gallery {

struct Card {
    const char* name;   // of its files
    const char* title;  // for people
    const char* description;
    int width;  // in units of a screen of 96 dpi
    int height;
    void (*draw)(CDC& dc);
    // The same as RTF drawing objects, if it can be had so: what stands between the ends of an RTF
    // document.
    void (*writeObjects)(CFile& output) = nullptr;
};

std::span<const Card> cards();

}  // namespace gallery
