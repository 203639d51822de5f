#include "host/drawing/symbols_p.h"

#include <algorithm>
#include <array>
#include <cairo.h>
#include <cmath>
#include <numbers>
#include <span>

namespace wainscot {
namespace Symbols {
namespace {

/// A point of the unit square, y downwards.
struct Point {
    float x;
    float y;
};

/// How a symbol is made from its points.
enum class Kind { area, line, twoLines, disc, ring, squareOutline, lens, dots };

struct Shape {
    QvTTF::eGlyph glyph;
    Kind kind;
    std::span<Point const> points;
};

constexpr Point up[] = {{0.5F, 0.28F}, {0.82F, 0.7F}, {0.18F, 0.7F}};
constexpr Point down[] = {{0.18F, 0.3F}, {0.82F, 0.3F}, {0.5F, 0.72F}};
constexpr Point left[] = {{0.28F, 0.5F}, {0.7F, 0.18F}, {0.7F, 0.82F}};
constexpr Point right[] = {{0.3F, 0.18F}, {0.72F, 0.5F}, {0.3F, 0.82F}};
constexpr Point chevronUp[] = {{0.2F, 0.65F}, {0.5F, 0.35F}, {0.8F, 0.65F}};
constexpr Point chevronDown[] = {{0.2F, 0.35F}, {0.5F, 0.65F}, {0.8F, 0.35F}};
constexpr Point chevronLeft[] = {{0.65F, 0.2F}, {0.35F, 0.5F}, {0.65F, 0.8F}};
constexpr Point chevronRight[] = {{0.35F, 0.2F}, {0.65F, 0.5F}, {0.35F, 0.8F}};
constexpr Point tick[] = {{0.16F, 0.52F}, {0.4F, 0.76F}, {0.86F, 0.24F}};
constexpr Point cross[] = {{0.22F, 0.22F}, {0.78F, 0.78F}, {0.78F, 0.22F}, {0.22F, 0.78F}};
constexpr Point plus[] = {{0.5F, 0.14F}, {0.5F, 0.86F}, {0.14F, 0.5F}, {0.86F, 0.5F}};
constexpr Point minus[] = {{0.14F, 0.5F}, {0.86F, 0.5F}};
constexpr Point smallUp[] = {{0.5F, 0.36F}, {0.74F, 0.64F}, {0.26F, 0.64F}};
constexpr Point smallDown[] = {{0.26F, 0.36F}, {0.74F, 0.36F}, {0.5F, 0.64F}};
constexpr Point square[] = {{0.2F, 0.2F}, {0.8F, 0.2F}, {0.8F, 0.8F}, {0.2F, 0.8F}};
constexpr Point pin[] = {{0.34F, 0.12F}, {0.66F, 0.12F}, {0.62F, 0.46F}, {0.76F, 0.6F}, {0.54F, 0.6F},
                         {0.5F, 0.92F},  {0.46F, 0.6F},  {0.24F, 0.6F},  {0.38F, 0.46F}};

constexpr Point star[] = {{0.50F, 0.07F}, {0.61F, 0.38F}, {0.94F, 0.39F}, {0.68F, 0.59F}, {0.77F, 0.90F},
                          {0.50F, 0.72F}, {0.23F, 0.90F}, {0.32F, 0.59F}, {0.06F, 0.39F}, {0.39F, 0.38F}};

constexpr std::array shapes{
    Shape{QvTTF::eArrowUp, Kind::area, up},
    Shape{QvTTF::eArrowDown, Kind::area, down},
    Shape{QvTTF::eArrowLeft, Kind::area, left},
    Shape{QvTTF::eArrowRight, Kind::area, right},
    Shape{QvTTF::eChevronUp, Kind::line, chevronUp},
    Shape{QvTTF::eChevronDown, Kind::line, chevronDown},
    Shape{QvTTF::eChevronLeft, Kind::line, chevronLeft},
    Shape{QvTTF::eChevronRight, Kind::line, chevronRight},
    Shape{QvTTF::eTick, Kind::line, tick},
    Shape{QvTTF::eCross, Kind::twoLines, cross},
    Shape{QvTTF::ePlus, Kind::twoLines, plus},
    Shape{QvTTF::eMinus, Kind::line, minus},
    Shape{QvTTF::eDot, Kind::disc, {}},
    Shape{QvTTF::eSquare, Kind::area, square},
    Shape{QvTTF::eRing, Kind::ring, {}},
    Shape{QvTTF::eBranchClosed, Kind::line, chevronRight},
    Shape{QvTTF::eBranchOpen, Kind::line, chevronDown},
    Shape{QvTTF::eSortAscending, Kind::area, smallUp},
    Shape{QvTTF::eSortDescending, Kind::area, smallDown},
    Shape{QvTTF::eSubMenu, Kind::line, chevronRight},
    Shape{QvTTF::ePin, Kind::area, pin},
    Shape{QvTTF::eMaximise, Kind::squareOutline, square},
    Shape{QvTTF::eSearch, Kind::lens, {}},
    Shape{QvTTF::eGrip, Kind::dots, {}},
    Shape{QvTTF::ePlay, Kind::area, right},
    Shape{QvTTF::eStar, Kind::area, star},
    Shape{QvTTF::eFoldClosed, Kind::area, right},
    Shape{QvTTF::eFoldOpen, Kind::area, down},
    Shape{QvTTF::eDropDown, Kind::line, chevronDown},
};

Shape const* find(std::uint32_t glyph) {
    auto const found = std::find_if(shapes.begin(), shapes.end(), [glyph](Shape const& shape) {
        return static_cast<std::uint32_t>(shape.glyph) == glyph;
    });
    return found == shapes.end() ? nullptr : &*found;
}

/// How far a symbol reaches below the baseline, as a share of its size: it stands in the middle of capitals.
constexpr double below = 0.14;

/// Draws symbols into a square of device pixels.
class Drawer {
public:
    Drawer(cairo_t* path, int extent)
        : path_(path), extent_(extent), thickness_(std::max(1.0, std::round(extent * 0.12))) {
        cairo_set_line_width(path_, thickness_);
        cairo_set_line_cap(path_, CAIRO_LINE_CAP_SQUARE);
        cairo_set_line_join(path_, CAIRO_LINE_JOIN_MITER);
    }

    void draw(Shape const& shape) {
        switch (shape.kind) {
        case Kind::area:
            return fill(shape.points);
        case Kind::line:
            return stroke(shape.points, false);
        case Kind::twoLines:
            stroke(shape.points.first(2), false);
            return stroke(shape.points.subspan(2), false);
        case Kind::squareOutline:
            return stroke(shape.points, true);
        case Kind::disc:
            return disc(0.5, 0.5, 0.22);
        case Kind::ring:
            return circle(0.5, 0.5, 0.3);
        case Kind::lens:
            return lens();
        case Kind::dots:
            return dots();
        }
    }

private:
    void follow(std::span<Point const> points, double offset) {
        for (Point const& point : points)
            cairo_line_to(path_, snapped(point.x, offset), snapped(point.y, offset));
    }

    /// Moves areas onto pixel edges; lines of an odd thickness half a pixel beside them.
    double snapped(double share, double offset) const {
        return std::round(share * extent_ - offset) + offset;
    }

    void fill(std::span<Point const> points) {
        cairo_new_path(path_);
        for (Point const& point : points)
            cairo_line_to(path_, static_cast<double>(point.x) * extent_,
                          static_cast<double>(point.y) * extent_);
        cairo_close_path(path_);
        cairo_fill(path_);
    }

    void stroke(std::span<Point const> points, bool closed) {
        double const offset = static_cast<int>(thickness_) % 2 ? 0.5 : 0.0;
        cairo_new_path(path_);
        follow(points, offset);
        if (closed) cairo_close_path(path_);
        cairo_stroke(path_);
    }

    void arc(double x, double y, double radius) {
        cairo_new_path(path_);
        cairo_arc(path_, x * extent_, y * extent_, radius * extent_, 0, 2 * std::numbers::pi);
    }

    void disc(double x, double y, double radius) {
        arc(x, y, radius);
        cairo_fill(path_);
    }

    void circle(double x, double y, double radius) {
        arc(x, y, radius);
        cairo_stroke(path_);
    }

    void lens() {
        circle(0.42, 0.42, 0.26);
        cairo_move_to(path_, 0.62 * extent_, 0.62 * extent_);
        cairo_line_to(path_, 0.84 * extent_, 0.84 * extent_);
        cairo_stroke(path_);
    }

    void dots() {
        for (double const x : {0.35, 0.65})
            for (double const y : {0.2, 0.5, 0.8}) disc(x, y, 0.09);
    }

    cairo_t* path_;
    int extent_;
    double thickness_;
};

} // namespace

bool isSymbol(std::uint32_t character) {
    return glyphOf(character) < static_cast<std::uint32_t>(QvTTF::codePointCount) && find(glyphOf(character));
}

GlyphPicture draw(std::uint32_t glyph, double deviceSize) {
    Shape const* shape = find(glyph);
    int const extent = std::max(1, static_cast<int>(std::lround(deviceSize)));
    if (!shape) return {};
    cairo_surface_t* target = cairo_image_surface_create(CAIRO_FORMAT_A8, extent, extent);
    cairo_t* path = cairo_create(target);
    Drawer(path, extent).draw(*shape);
    cairo_destroy(path);
    cairo_surface_flush(target);
    int const top = extent - static_cast<int>(std::lround(below * extent));
    GlyphPicture picture = makePicture({0, top}, {extent, extent}, cairo_image_surface_get_data(target),
                                       cairo_image_surface_get_stride(target));
    cairo_surface_destroy(target);
    return picture;
}

} // namespace Symbols

LightweightString<wchar_t> getString(QvTTF::eGlyph glyph) {
    auto const character =
        static_cast<std::uint32_t>(QvTTF::firstCodePoint) + static_cast<std::uint32_t>(glyph);
    if (!Symbols::isSymbol(character)) return {};
    return LightweightString<wchar_t>(1, static_cast<wchar_t>(character));
}

} // namespace wainscot
