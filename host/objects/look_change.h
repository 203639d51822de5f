#pragma once

namespace wainscot {

/// Which parts of the look have changed; combined by `|`.
enum class LookChange : unsigned char {
    none = 0,
    /// `Palette::currentTheme()`.
    theme = 1,
    /// `Look::deviceScale()`: pictures may be wanted with more or fewer pixels. No logical size changes.
    deviceScale = 2,
    /// `UifStd::getScale()`.
    textSize = 4,
    /// `UifStd::metrics()`.
    metrics = 8,
    /// The faces that are installed or preferred (`Glib::getDefaultFontName()`).
    fonts = 16,
    all = 31,
};

constexpr LookChange operator|(LookChange a, LookChange b) {
    return LookChange(static_cast<unsigned char>(a) | static_cast<unsigned char>(b));
}
/// Whether `changes` has any part of `asked`.
constexpr bool includes(LookChange changes, LookChange asked) {
    return (static_cast<unsigned char>(changes) & static_cast<unsigned char>(asked)) != 0;
}

} // namespace wainscot
