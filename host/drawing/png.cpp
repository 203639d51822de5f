#include "host/drawing/png.h"

#include "host/drawing/surface.h"

#include <cairo.h>
#include <memory>

namespace wainscot {
namespace {

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

/// Reads only; the library has no type for pixels that it must not change.
SurfacePtr viewOf(Surface const& surface) {
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(surface.pixels()));
    return SurfacePtr(cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, surface.deviceSize().x,
                                                          surface.deviceSize().y, surface.stride() * 4));
}

LightweightString<char> messageOf(cairo_status_t status) {
    if (status == CAIRO_STATUS_SUCCESS) return {};
    return LightweightString<char>(cairo_status_to_string(status));
}

cairo_status_t append(void* target, unsigned char const* data, unsigned int length) {
    auto& bytes = *static_cast<std::vector<std::uint8_t>*>(target);
    bytes.insert(bytes.end(), data, data + length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

LightweightString<char> writePng(Surface const& surface, LightweightString<char> const& path) {
    return messageOf(cairo_surface_write_to_png(viewOf(surface).get(), path.c_str()));
}

LightweightString<char> writePng(Surface const& surface, std::vector<std::uint8_t>& out) {
    out.clear();
    cairo_status_t const status = cairo_surface_write_to_png_stream(viewOf(surface).get(), append, &out);
    if (status != CAIRO_STATUS_SUCCESS) out.clear();
    return messageOf(status);
}

} // namespace wainscot
