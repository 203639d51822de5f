#pragma once

#include "host/base/lightweight_string.h"
#include "host/drawing/palette.h"

namespace wainscot {

class Canvas;

/// The arguments from which a `Glob` is made; construction records of widgets derive from it.
class GlobCreationInfo {
public:
    GlobCreationInfo(unsigned short w, unsigned short h) : width(w), height(h) {}
    GlobCreationInfo(GlobCreationInfo const& other, unsigned short w, unsigned short h)
        : GlobCreationInfo(other) {
        width = w;
        height = h;
    }
    GlobCreationInfo(GlobCreationInfo const&) = default;
    GlobCreationInfo& operator=(GlobCreationInfo const&) = default;
    virtual ~GlobCreationInfo() = default;

    unsigned short width;
    unsigned short height;
    Palette palette;
    /// A canvas to share; null = one of its own.
    Canvas* canvas = nullptr;
    /// Whether it fills its box before anything is drawn in it.
    bool opaque = true;
    /// A name by which drivers and `GlobManager::find` know it.
    LightweightString<char> name;
};

} // namespace wainscot
