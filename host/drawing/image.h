#pragma once

#include "host/base/lightweight_string.h"
#include "host/base/ptr.h"
#include "host/base/xy.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace wainscot::Glib {

class ScaledImages;

/// A picture: premultiplied ARGB pixels, the top row first. Shared; never changes.
class WAINSCOT_API Image : public Qv::InternalRefCount {
public:
    /// No picture is larger than this on either side, and none has more than `maxPixels`.
    static constexpr int maxExtent = 8192;
    static constexpr std::int64_t maxPixels = 32 * 1024 * 1024;

    /// Draws the whole picture at some size into pixels that are all 0.
    using Painter = std::function<void(XY<int> size, std::span<std::uint32_t> pixels)>;

    /// From pixels; null when the size does not fit them or is refused.
    static Qv::Ptr<Image> fromPixels(XY<int> size, std::vector<std::uint32_t> pixels);
    /// A picture that is drawn anew for each size at which it is shown, instead of scaled; `size` is its
    /// natural size. Null when the size is refused or there is no painter.
    static Qv::Ptr<Image> fromPainter(XY<int> size, Painter paint);

    XY<int> size() const { return size_; }
    std::uint32_t const* pixels() const { return pixels_.data(); }
    /// 0 outside; y upwards from the bottom row.
    std::uint32_t pixelAt(XY<int> place) const;
    /// The picture at other sizes, for the renderer.
    ScaledImages& scaled() const { return *scaled_; }
    /// Empty for a picture made from pixels.
    Painter const& painter() const { return paint_; }

    ~Image() override;

private:
    Image(XY<int> size, std::vector<std::uint32_t> pixels, Painter paint = {});

    XY<int> size_;
    std::vector<std::uint32_t> pixels_;
    Painter paint_;
    std::unique_ptr<ScaledImages> scaled_;
};

/// An image, or the message that says why there is none.
struct LoadedImage {
    Qv::Ptr<Image> image;
    LightweightString<char> message;
};

/// Reads a PNG file (UTF-8 path). Files that are damaged, too large or of another kind are refused.
WAINSCOT_API LoadedImage loadPng(LightweightString<char> const& path);
WAINSCOT_API LoadedImage loadPng(std::span<std::uint8_t const> bytes);

/// The icon of a bare file name ("folder.png"), read once: the registered icon, else the file, else the
/// standard icon (host/drawing/standard_icons.h). Null when there is none, which is not counted as misuse.
WAINSCOT_API Qv::Ptr<Image> loadIcon(LightweightString<wchar_t> const& bareName);
/// Where icons are looked for instead of `getIconsDirectory()`; empty = there again. Forgets all icons that
/// were read.
WAINSCOT_API void setIconFolder(LightweightString<char> const& folder);
/// Registers an icon that is made in code; null takes it away again.
WAINSCOT_API void registerIcon(LightweightString<wchar_t> const& bareName, Qv::Ptr<Image> image);

} // namespace wainscot::Glib
