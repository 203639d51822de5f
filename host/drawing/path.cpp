#include "host/drawing/path.h"

#include "host/base/diagnostics.h"
#include "host/base/host_value.h"
#include "host/drawing/path_image_p.h"
#include "host/drawing/shapes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <numbers>
#include <utility>

namespace wainscot {
namespace {

constexpr int far = 1 << 20;
constexpr IntBox everywhere(-far, -far, far, far);

struct PathStep {
    enum class Kind { move, line, arc, close } kind;
    double x = 0;
    double y = 0;
    double radius = 0;
    double from = 0;
    double to = 0;
};

/// Steps that copies share: saving the state costs nothing however long the path is.
class Path {
public:
    Path() = default;
    Path(Path const&) = default;
    Path(Path&&) noexcept = default;
    Path& operator=(Path other) noexcept {
        last_.swap(other.last_);
        return *this;
    }
    ~Path() { clear(); }

    bool empty() const { return !last_; }
    PathStep const& back() const { return last_->step; }
    void push_back(PathStep const& step) {
        auto node = std::make_shared<Node>(Node{step, std::move(last_)});
        last_ = std::move(node);
    }
    /// Frees the steps one by one, without recursion.
    void clear() {
        while (last_ && last_.use_count() == 1) last_ = std::exchange(last_->before, nullptr);
        last_.reset();
    }
    std::vector<PathStep> steps() const {
        std::vector<PathStep> all;
        for (Node const* node = last_.get(); node; node = node->before.get()) all.push_back(node->step);
        std::reverse(all.begin(), all.end());
        return all;
    }

private:
    struct Node {
        PathStep step;
        std::shared_ptr<Node> before;
    };

    std::shared_ptr<Node> last_;
};

struct DrawingState {
    Canvas* canvas = nullptr;
    LifeGuard guard{nullptr, IdStamp()};
    double offsetX = 0;
    double offsetY = 0;
    Colour colour;
    double lineWidth = 1;
    Path path;
};

/// Lives for ever: savers may end while the program does.
DrawingState& state() {
    static auto& current = *new HostValue<DrawingState>;
    return current.edit();
}

std::vector<DrawingState>& savedStates() {
    static auto& saved = *new std::vector<DrawingState>;
    return saved;
}

struct RootCanvas {
    Canvas* canvas = nullptr;
    LifeGuard guard{nullptr, IdStamp()};
};

RootCanvas& root() {
    static auto& current = *new RootCanvas;
    return current;
}

/// NaN and numbers that are too large become drawable numbers.
double usable(double value) {
    return std::isfinite(value) ? std::clamp(value, -double(far), double(far)) : 0.0;
}

void add(PathStep step) {
    DrawingState& now = state();
    step.x = usable(step.x + now.offsetX);
    step.y = usable(step.y + now.offsetY);
    now.path.push_back(step);
}

/// Of many turns only one is kept, with the rest: outline and end are the same, and the cost is small.
void addArc(double x, double y, double radius, double fromDegrees, double toDegrees) {
    double const from = usable(fromDegrees);
    double const sweep = usable(toDegrees) - from;
    double const turned = std::abs(sweep) > 720 ? std::copysign(360, sweep) + std::fmod(sweep, 360) : sweep;
    add({PathStep::Kind::arc, x, y, std::max(0.0, usable(radius)), from, from + turned});
}

constexpr double radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

/// Follows the path in device pixels.
void follow(cairo_t* path, RenderTarget const& target, std::vector<PathStep> const& steps) {
    double const scale = target.scale();
    XY<int> const origin = target.onSurface({0, 0});
    double const height = target.surface().deviceSize().y;
    auto const x = [&](PathStep const& step) { return (origin.x + step.x) * scale; };
    auto const y = [&](PathStep const& step) { return height - (origin.y + step.y) * scale; };
    for (PathStep const& step : steps) {
        switch (step.kind) {
        case PathStep::Kind::move:
            cairo_move_to(path, x(step), y(step));
            break;
        case PathStep::Kind::line:
            cairo_line_to(path, x(step), y(step));
            break;
        case PathStep::Kind::close:
            cairo_close_path(path);
            break;
        case PathStep::Kind::arc: {
            // The image's y axis grows downwards, so the other sense gives counter-clockwise.
            auto const arc = step.to >= step.from ? cairo_arc_negative : cairo_arc;
            arc(path, x(step), y(step), step.radius * scale, -radians(step.from), -radians(step.to));
            break;
        }
        }
    }
}

using Finish = void (*)(cairo_t*);

void drawPath(std::vector<PathStep> const& steps, Finish finish) {
    CanvasRenderer renderer(glib_currentcanvas(), everywhere);
    if (!renderer.isDrawing() || steps.empty()) return;
    RenderTarget const target(renderer);
    double const alpha = target.opacity(1.0);
    double margin = 1;
    {
        PathImage image(target);
        image.setColour(state().colour, alpha);
        cairo_set_line_width(image.get(), std::max(1.0, state().lineWidth * target.scale()));
        follow(image.get(), target, steps);
        margin += state().lineWidth;
        finish(image.get());
    }
    IntBox touched;
    for (PathStep const& step : steps) {
        double const reach = step.radius + margin;
        touched = touched.unitedWith(
            IntBox(static_cast<int>(std::floor(step.x - reach)), static_cast<int>(std::floor(step.y - reach)),
                   static_cast<int>(std::ceil(step.x + reach)), static_cast<int>(std::ceil(step.y + reach))));
    }
    target.painted(touched);
}

} // namespace

void glib_setcanvas(Canvas* canvas) {
    state().canvas = canvas;
    state().guard = canvas ? LifeGuard(canvas->life()) : LifeGuard(nullptr, IdStamp());
}

Canvas* glib_currentcanvas() {
    return state().canvas && state().guard.alive() ? state().canvas : nullptr;
}

Canvas* glib_rootcanvas() {
    return root().canvas && root().guard.alive() ? root().canvas : nullptr;
}

void glib_setrootcanvas(Canvas* canvas) {
    root().canvas = canvas;
    root().guard = canvas ? LifeGuard(canvas->life()) : LifeGuard(nullptr, IdStamp());
}

void glib_setcolour(Colour const& colour) {
    state().colour = colour;
}

void glib_setlinewidth(double width) {
    state().lineWidth = std::clamp(usable(width), 0.0, 1000.0);
}

void glib_newpath() {
    state().path.clear();
}

void glib_moveto(double x, double y) {
    add({PathStep::Kind::move, x, y});
}

void glib_lineto(double x, double y) {
    add({state().path.empty() ? PathStep::Kind::move : PathStep::Kind::line, x, y});
}

void glib_addrect(double x, double y, double width, double height) {
    glib_moveto(x, y);
    glib_lineto(x + width, y);
    glib_lineto(x + width, y + height);
    glib_lineto(x, y + height);
    glib_closepath();
}

void glib_addsoftrect(double x, double y, double width, double height, double radius) {
    double const r = std::clamp(radius, 0.0, std::max(0.0, std::min(width, height) / 2));
    glib_moveto(x + r, y);
    addArc(x + width - r, y + r, r, -90, 0);
    addArc(x + width - r, y + height - r, r, 0, 90);
    addArc(x + r, y + height - r, r, 90, 180);
    addArc(x + r, y + r, r, 180, 270);
    glib_closepath();
}

void glib_arc1(double x, double y, double radius, double fromDegrees, double toDegrees) {
    addArc(x, y, radius, fromDegrees, toDegrees);
}

void glib_closepath() {
    if (state().path.empty()) return;
    PathStep close = state().path.back();
    close.kind = PathStep::Kind::close;
    state().path.push_back(close);
}

void glib_fill() {
    drawPath(state().path.steps(), cairo_fill);
}

void glib_stroke() {
    drawPath(state().path.steps(), cairo_stroke);
}

void glib_rect(double x, double y, double width, double height) {
    Path kept = std::exchange(state().path, {});
    glib_addrect(x, y, width, height);
    glib_fill();
    state().path = std::move(kept);
}

void glib_roundedRectOutline(IntBox const& box, unsigned int radius, int edgeWidth) {
    CanvasRenderer renderer(glib_currentcanvas(), everywhere);
    XY<int> const offset(static_cast<int>(std::lround(state().offsetX)),
                         static_cast<int>(std::lround(state().offsetY)));
    Glib::drawRoundedRectOutline(renderer, state().colour, box.translated(offset), edgeWidth, radius);
}

void glib_translate(double x, double y) {
    state().offsetX = usable(state().offsetX + usable(x));
    state().offsetY = usable(state().offsetY + usable(y));
}

void glib_gsave() {
    savedStates().push_back(state());
}

void glib_grestore() {
    if (savedStates().empty()) {
        Diagnostics::count("drawing state", "glib_grestore without glib_gsave");
        return;
    }
    state() = std::move(savedStates().back());
    savedStates().pop_back();
}

namespace {

void copyPixels(Surface& surface, IntBox const& from, IntBox const& to) {
    std::size_t const bytes = static_cast<std::size_t>(to.width()) * sizeof(std::uint32_t);
    bool const downwards = to.y1 > from.y1;
    for (int i = 0; i < to.height(); ++i) {
        int const row = downwards ? to.height() - 1 - i : i;
        std::uint32_t* pixels = surface.pixels();
        std::ptrdiff_t const stride = surface.stride();
        std::memmove(pixels + (to.y1 + row) * stride + to.x1, pixels + (from.y1 + row) * stride + from.x1,
                     bytes);
    }
}

} // namespace

void glib_copy(IntBox const& from, XY<int> const& to) {
    CanvasRenderer renderer(glib_currentcanvas(), everywhere);
    if (!renderer.isDrawing() || from.isEmpty()) return;
    RenderTarget const target(renderer);
    XY<int> const offset(static_cast<int>(std::lround(state().offsetX)),
                         static_cast<int>(std::lround(state().offsetY)));
    IntBox const source = target.deviceBox(from.translated(offset));
    IntBox const wanted = target.deviceBox(IntBox::sized(to + offset, from.size()));
    XY<int> const distance(wanted.x1 - source.x1, wanted.y1 - source.y1);
    pixman_box32_t const* limits = pixman_region32_extents(target.clip());
    IntBox const visible(limits->x1, limits->y1, limits->x2, limits->y2);
    // Both boxes must lie on the canvas, and have the same size although rounding may have made them differ.
    IntBox const readable = source.intersection(visible).translated(distance);
    IntBox const copied =
        IntBox::sized({wanted.x1, wanted.y1}, source.size()).intersection(visible).intersection(readable);
    if (copied.isEmpty()) return;
    copyPixels(target.surface(), copied.translated(XY<int>() - distance), copied);
    target.painted(IntBox::sized(to + offset, from.size()));
}

namespace Glib {

struct StateSaver::Saved {
    DrawingState state;
    std::size_t depth;
};

StateSaver::StateSaver() : saved_(new Saved{state(), savedStates().size()}) {}

/// Also drops states that were saved and not restored in the scope.
StateSaver::~StateSaver() {
    if (savedStates().size() > saved_->depth) savedStates().resize(saved_->depth);
    state() = std::move(saved_->state);
}

} // namespace Glib
} // namespace wainscot
