#include "host/drawing/image.h"

#include "host/drawing/scaled_images_p.h"

#include <algorithm>
#include <cairo.h>

namespace wainscot::Glib {

namespace {

bool hasUsableSides(XY<int> size) {
    return size.x >= 1 && size.y >= 1 && size.x <= Image::maxExtent && size.y <= Image::maxExtent;
}

bool isUsable(XY<int> size) {
    return hasUsableSides(size) && static_cast<std::int64_t>(size.x) * size.y <= Image::maxPixels;
}

std::size_t pixelCount(XY<int> size) {
    return static_cast<std::size_t>(size.x) * static_cast<std::size_t>(size.y);
}

} // namespace

Image::Image(XY<int> size, std::vector<std::uint32_t> pixels, Painter paint)
    : size_(size), pixels_(std::move(pixels)), paint_(std::move(paint)),
      scaled_(std::make_unique<ScaledImages>()) {}

Image::~Image() = default;

Qv::Ptr<Image> Image::fromPixels(XY<int> size, std::vector<std::uint32_t> pixels) {
    if (!isUsable(size) || pixels.size() != pixelCount(size)) return {};
    return Qv::Ptr<Image>(new Image(size, std::move(pixels)));
}

Qv::Ptr<Image> Image::fromPainter(XY<int> size, Painter paint) {
    if (!isUsable(size) || !paint) return {};
    std::vector<std::uint32_t> pixels(pixelCount(size));
    paint(size, pixels);
    return Qv::Ptr<Image>(new Image(size, std::move(pixels), std::move(paint)));
}

std::uint32_t Image::pixelAt(XY<int> place) const {
    if (place.x < 0 || place.y < 0 || place.x >= size_.x || place.y >= size_.y) return 0;
    return pixels_[static_cast<std::size_t>(size_.y - 1 - place.y) * static_cast<std::size_t>(size_.x) +
                   static_cast<std::size_t>(place.x)];
}

namespace {

/// The pixels are only read; the libraries have no type for that.
unsigned char* bytesOf(Image const& image) {
    return reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(image.pixels()));
}

pixman_image_t* unscaled(Image const& image) {
    return pixman_image_create_bits(PIXMAN_a8r8g8b8, image.size().x, image.size().y,
                                    reinterpret_cast<std::uint32_t*>(bytesOf(image)), image.size().x * 4);
}

/// Draws the image into new pixels of another size with the path library's averaging filter.
pixman_image_t* resampled(Image const& image, XY<int> size) {
    pixman_image_t* result = pixman_image_create_bits(PIXMAN_a8r8g8b8, size.x, size.y, nullptr, 0);
    if (!result) return nullptr;
    cairo_surface_t* target = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixman_image_get_data(result)), CAIRO_FORMAT_ARGB32, size.x, size.y,
        pixman_image_get_stride(result));
    cairo_surface_t* source = cairo_image_surface_create_for_data(
        bytesOf(image), CAIRO_FORMAT_ARGB32, image.size().x, image.size().y, image.size().x * 4);
    cairo_t* path = cairo_create(target);
    cairo_scale(path, static_cast<double>(size.x) / image.size().x,
                static_cast<double>(size.y) / image.size().y);
    cairo_set_source_surface(path, source, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(path), CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(cairo_get_source(path), CAIRO_EXTEND_PAD);
    cairo_set_operator(path, CAIRO_OPERATOR_SOURCE);
    cairo_paint(path);
    cairo_destroy(path);
    cairo_surface_destroy(source);
    cairo_surface_destroy(target);
    return result;
}

/// The picture as its painter draws it at that size.
pixman_image_t* drawnAnew(Image const& image, XY<int> size) {
    pixman_image_t* result = pixman_image_create_bits(PIXMAN_a8r8g8b8, size.x, size.y, nullptr, 0);
    if (!result) return nullptr;
    try {
        image.painter()(size, {pixman_image_get_data(result), pixelCount(size)});
    } catch (...) {
        pixman_image_unref(result);
        throw;
    }
    return result;
}

pixman_image_t* made(Image const& image, XY<int> size) {
    if (size == image.size()) return unscaled(image);
    return image.painter() ? drawnAnew(image, size) : resampled(image, size);
}

} // namespace

ScaledImages::~ScaledImages() {
    for (Entry const& entry : entries_) pixman_image_unref(entry.image);
}

pixman_image_t* ScaledImages::at(Image const& image, XY<int> deviceSize) {
    if (!hasUsableSides(deviceSize)) return nullptr;
    for (Entry const& entry : entries_)
        if (entry.size == deviceSize) return entry.image;
    pixman_image_t* const picture = made(image, deviceSize);
    if (!picture) return nullptr;
    if (entries_.size() == most) {
        pixman_image_unref(entries_.front().image);
        entries_.erase(entries_.begin());
    }
    entries_.push_back({deviceSize, picture});
    return picture;
}

} // namespace wainscot::Glib
