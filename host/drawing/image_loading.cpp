#include "host/drawing/image.h"

#include "host/base/host_value.h"
#include "host/base/recent_map.h"
#include "host/drawing/standard_icons.h"
#include "host/services/atomic_file_p.h"
#include "host/services/data_folders.h"
#include "host/services/file_names.h"

#include <algorithm>
#include <array>
#include <cairo.h>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>

namespace wainscot::Glib {
namespace {

constexpr std::size_t maxFileSize = 64U * 1024 * 1024;
constexpr std::array<std::uint8_t, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
/// Signature, length and name of the first chunk, then width and height.
constexpr std::size_t headerSize = 24;

std::uint32_t bigEndian(std::uint8_t const* bytes) {
    return std::uint32_t(bytes[0]) << 24 | std::uint32_t(bytes[1]) << 16 | std::uint32_t(bytes[2]) << 8 |
           bytes[3];
}

/// Why a file must not be decoded, checked before memory is taken for the pixels; null when it may be.
char const* refusal(std::span<std::uint8_t const> bytes) {
    if (bytes.size() < headerSize || !std::equal(signature.begin(), signature.end(), bytes.begin()) ||
        std::memcmp(bytes.data() + 12, "IHDR", 4) != 0)
        return "not a PNG file";
    std::uint32_t const width = bigEndian(bytes.data() + 16);
    std::uint32_t const height = bigEndian(bytes.data() + 20);
    if (width == 0 || height == 0) return "the picture is empty";
    if (width > Image::maxExtent || height > Image::maxExtent ||
        static_cast<std::int64_t>(width) * height > Image::maxPixels)
        return "the picture is too large";
    return nullptr;
}

cairo_status_t readOn(void* source, unsigned char* target, unsigned int length) {
    auto& rest = *static_cast<std::span<std::uint8_t const>*>(source);
    if (rest.size() < length) return CAIRO_STATUS_READ_ERROR;
    std::copy_n(rest.begin(), length, target);
    rest = rest.subspan(length);
    return CAIRO_STATUS_SUCCESS;
}

/// In pictures without alpha the bits of the alpha are undefined.
std::vector<std::uint32_t> pixelsOf(cairo_surface_t* picture) {
    int const width = cairo_image_surface_get_width(picture);
    int const height = cairo_image_surface_get_height(picture);
    int const stride = cairo_image_surface_get_stride(picture);
    unsigned char const* bytes = cairo_image_surface_get_data(picture);
    cairo_format_t const format = cairo_image_surface_get_format(picture);
    if (!bytes || (format != CAIRO_FORMAT_ARGB32 && format != CAIRO_FORMAT_RGB24)) return {};
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y)
        std::memcpy(pixels.data() + static_cast<std::ptrdiff_t>(y) * width,
                    bytes + static_cast<std::ptrdiff_t>(y) * stride, static_cast<std::size_t>(width) * 4);
    if (format == CAIRO_FORMAT_RGB24)
        for (std::uint32_t& pixel : pixels) pixel |= 0xFF000000U;
    return pixels;
}

/// Converts a picture with 16 bits a component into the usual format.
cairo_surface_t* withUsualFormat(cairo_surface_t* picture) {
    cairo_surface_t* usual = cairo_image_surface_create(
        CAIRO_FORMAT_ARGB32, cairo_image_surface_get_width(picture), cairo_image_surface_get_height(picture));
    cairo_t* path = cairo_create(usual);
    cairo_set_source_surface(path, picture, 0, 0);
    cairo_paint(path);
    cairo_destroy(path);
    cairo_surface_flush(usual);
    return usual;
}

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

bool isUsual(cairo_surface_t* picture) {
    cairo_format_t const format = cairo_image_surface_get_format(picture);
    return format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24;
}

LoadedImage failure(char const* message) {
    return {{}, LightweightString<char>(message)};
}

} // namespace

LoadedImage loadPng(std::span<std::uint8_t const> bytes) {
    if (char const* reason = refusal(bytes)) return failure(reason);
    SurfacePtr picture(cairo_image_surface_create_from_png_stream(readOn, &bytes));
    cairo_status_t const status = cairo_surface_status(picture.get());
    if (status != CAIRO_STATUS_SUCCESS) return failure(cairo_status_to_string(status));
    if (!isUsual(picture.get())) picture.reset(withUsualFormat(picture.get()));
    XY<int> const size(cairo_image_surface_get_width(picture.get()),
                       cairo_image_surface_get_height(picture.get()));
    Qv::Ptr<Image> image = Image::fromPixels(size, pixelsOf(picture.get()));
    return image ? LoadedImage{image, {}} : failure("the picture cannot be used");
}

LoadedImage loadPng(LightweightString<char> const& path) {
    FileBytes const file = readWholeFile(path, maxFileSize);
    if (file.state == FileBytes::State::absent) return failure("the file cannot be opened");
    if (file.state == FileBytes::State::failed) return {{}, file.message};
    return loadPng(std::span(reinterpret_cast<std::uint8_t const*>(file.bytes.begin()), file.bytes.size()));
}

namespace {

constexpr std::size_t mostIcons = 512;

struct Icons {
    std::string folder;
    /// Also names for which there is no icon.
    mutable RecentMap<std::wstring, Qv::Ptr<Image>> known{mostIcons};
    std::unordered_map<std::wstring, Qv::Ptr<Image>> registered;
};

HostValue<Icons>& theIcons() {
    static auto& shared = *new HostValue<Icons>;
    return shared;
}

Icons const& icons() {
    return theIcons().get();
}

/// The file of an icon; only bare names, so that an icon never leads out of its folder.
LightweightString<char> iconPath(LightweightString<wchar_t> const& bareName) {
    if (findFileNameFault(bareName) != FileNameFault::none) return {};
    if (icons().folder.empty()) return fileNameToBytes(getIconPath(bareName));
    return LightweightString<char>(icons().folder + "/") + fileNameToBytes(bareName);
}

} // namespace

Qv::Ptr<Image> loadIcon(LightweightString<wchar_t> const& bareName) {
    std::wstring const name(bareName.view());
    if (auto const made = icons().registered.find(name); made != icons().registered.end())
        return made->second;
    if (Qv::Ptr<Image> const* const known = icons().known.find(name)) return *known;
    LightweightString<char> const path = iconPath(bareName);
    Qv::Ptr<Image> icon = path.empty() ? Qv::Ptr<Image>() : loadPng(path).image;
    if (!icon) icon = makeStandardIcon(name);
    return icons().known.add(name, icon);
}

void setIconFolder(LightweightString<char> const& folder) {
    Icons& changed = theIcons().edit();
    changed.folder = folder.view();
    changed.known.clear();
}

void registerIcon(LightweightString<wchar_t> const& bareName, Qv::Ptr<Image> image) {
    std::wstring const name(bareName.view());
    if (image)
        theIcons().edit().registered[name] = std::move(image);
    else
        theIcons().edit().registered.erase(name);
}

} // namespace wainscot::Glib
