#pragma once

#include "host/base/convert.h"
#include "host/base/lightweight_string.h"
#include "host/base/xy.h"
#include "host/drawing/palette.h"

namespace wainscot {

class Canvas;

/// The arguments from which a `Glob` is made; construction records of widgets derive from it.
class GlobCreationInfo {
public:
    GlobCreationInfo(unsigned short w, unsigned short h) : width(w), height(h) {}
    /// The size is clamped to 0 to 65535.
    explicit GlobCreationInfo(XY<int> const& size) { setSize(size); }
    /// The same for a size in braces.
    explicit GlobCreationInfo(int const (&size)[2]) { setSize({size[0], size[1]}); }
    GlobCreationInfo(GlobCreationInfo const& other, unsigned short w, unsigned short h)
        : GlobCreationInfo(other) {
        width = w;
        height = h;
    }
    GlobCreationInfo(GlobCreationInfo const&) = default;
    GlobCreationInfo& operator=(GlobCreationInfo const&) = default;
    virtual ~GlobCreationInfo() = default;

    void setSize(XY<int> const& size) {
        width = toSize16(size.x);
        height = toSize16(size.y);
    }

    unsigned short width = 0;
    unsigned short height = 0;
    Palette palette;
    /// A canvas to share; null = one of its own.
    Canvas* canvas = nullptr;
    /// Whether it fills its box with its ground first.
    bool opaque = true;
    /// A name by which drivers and `GlobManager::find` know it.
    LightweightString<char> name;
};

} // namespace wainscot
