#include "host/objects/painting_p.h"

#include "host/base/diagnostics.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/drawable.h"
#include "host/drawing/shapes.h"
#include "host/drawing/surface.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/glob_side_p.h"
#include "host/objects/tree.h"

namespace wainscot {

namespace {

constinit std::uint64_t drawnCount = 0;

/// One visit of a subtree. It uses a stack of its own, so that depth costs no call stack.
class Visit {
public:
    Visit(Surface& surface, PaintPhase& phase) : surface_(surface), phase_(phase), outer_(current) {
        current = this;
    }
    ~Visit() { current = outer_; }
    Visit(Visit const&) = delete;
    Visit& operator=(Visit const&) = delete;

    void run(Glob& root);
    bool drawChildrenNow(Glob& glob);

    static constinit Visit* current;

private:
    struct Item {
        HandlerRef<Glob> glob;
        /// On the surface: its lower-left corner, the part of it that may be painted, and the part of the
        /// room round it.
        XY<int> origin;
        IntBox clip;
        IntBox outerClip;
        /// The canvas on which its parent lies, and the place of that canvas.
        Canvas* outerCanvas;
        XY<int> outerOrigin;
        float opacity;
    };

    void drain(std::size_t bottom);
    void drawItem(Item const& item);
    void pushChildren(Item const& item, Glob& glob);
    void enterCanvas(Item const& item, Glob& glob);
    void drawSurround(Item const& item, Glob& glob);
    bool meetsDamage(IntBox const& box) const;
    static XY<int> canvasOrigin(Item const& item, Glob& glob);

    Surface& surface_;
    PaintPhase& phase_;
    Visit* outer_;
    std::vector<Item> stack_;
    std::vector<IntBox> reach_;
    std::vector<Glob*> found_;
    Item const* drawing_ = nullptr;
    bool childrenDrawn_ = false;
    static constexpr int maxNesting = 256;
    int nesting_ = 0;
};

constinit Visit* Visit::current = nullptr;

bool Visit::meetsDamage(IntBox const& box) const {
    for (IntBox const& damaged : phase_.damage())
        if (damaged.intersects(box)) return true;
    return false;
}

XY<int> Visit::canvasOrigin(Item const& item, Glob& glob) {
    if (glob.ownsCanvas()) return item.origin;
    if (glob.canvas() == item.outerCanvas) return item.outerOrigin;
    return glob.canvas()->owner().canvasPlace().origin;
}

void Visit::run(Glob& root) {
    XY<int> const origin = surface_.contentPlace();
    IntBox const clip = surface_.bounds().intersection(root.bounds().translated(origin));
    stack_.push_back({HandlerRef<Glob>(&root), origin, clip, clip, nullptr, origin, 1.0F});
    drain(0);
}

void Visit::drain(std::size_t bottom) {
    while (stack_.size() > bottom) {
        Item const item = stack_.back();
        stack_.pop_back();
        drawItem(item);
    }
}

void Visit::enterCanvas(Item const& item, Glob& glob) {
    CanvasPlace place;
    place.surface = &surface_;
    place.origin = canvasOrigin(item, glob);
    place.visible = item.clip;
    place.mapped = true;
    place.opacity = item.opacity;
    phase_.enter(glob.canvas(), place);
}

/// On the parent's canvas.
void Visit::drawSurround(Item const& item, Glob& glob) {
    CanvasPlace place;
    place.surface = &surface_;
    place.origin = item.outerOrigin;
    place.visible = item.outerClip;
    place.mapped = true;
    place.opacity = item.opacity;
    phase_.enter(item.outerCanvas, place);
    IntBox const box = IntBox::sized(item.origin - item.outerOrigin, glob.size());
    CanvasRenderer renderer(item.outerCanvas, box.inset(-Surround::maxExtent));
    Painting::surroundOf(glob).draw(renderer, box, glob.getPalette());
}

void Visit::drawItem(Item const& item) {
    Glob* const glob = item.glob.get();
    if (!glob || !glob->isVisible() || !glob->canvas()->isMapped()) return;
    bool mayDraw = false;
    runHandler("canDraw", [&] { mayDraw = glob->canDraw(); });
    if (!mayDraw || !item.glob) return;
    if (glob->hasSurround() && item.outerCanvas) drawSurround(item, *glob);
    if (item.clip.isEmpty()) return;
    ++drawnCount;
    enterCanvas(item, *glob);
    Item const* const outerDrawing = drawing_;
    bool const outerChildrenDrawn = childrenDrawn_;
    drawing_ = &item;
    childrenDrawn_ = false;
    glob->makeClean();
    int const holds = Drawable::holdCount();
    runHandler("draw", [&] { glob->draw(); });
    Drawable::restoreHoldCount(holds);
    bool const childrenAreDue = !childrenDrawn_ && item.glob;
    drawing_ = outerDrawing;
    childrenDrawn_ = outerChildrenDrawn;
    if (childrenAreDue) pushChildren(item, *glob);
}

void Visit::pushChildren(Item const& item, Glob& glob) {
    found_.clear();
    reach_.clear();
    for (IntBox const& damaged : phase_.damage()) {
        IntBox const part = damaged.intersection(item.clip);
        if (!part.isEmpty())
            reach_.push_back(part.inset(-Surround::maxExtent).translated(XY<int>() - item.origin));
    }
    Tree::childrenMeeting(glob, reach_, found_);
    XY<int> const origin = canvasOrigin(item, glob);
    for (auto child = found_.rbegin(); child != found_.rend(); ++child) {
        IntBox const box = (*child)->box().translated(item.origin);
        IntBox const clip = box.intersection(item.clip);
        int const extent = (*child)->hasSurround() ? Painting::surroundOf(**child).extent() : 0;
        IntBox const wide = box.inset(-extent).intersection(item.clip);
        if (wide.isEmpty() || !meetsDamage(wide)) continue;
        float const own = (*child)->ownsCanvas() ? (*child)->canvas()->opacity() : 1.0F;
        if (!(own > 0.0F)) continue;
        stack_.push_back({HandlerRef<Glob>(*child), box.bottomLeft(), clip, item.clip, glob.canvas(), origin,
                          item.opacity * own});
    }
}

bool Visit::drawChildrenNow(Glob& glob) {
    if (!drawing_ || drawing_->glob.get() != &glob || childrenDrawn_) return false;
    // Nested too deep: the children are drawn after `draw()`, as without this call.
    if (nesting_ >= maxNesting) return true;
    ++nesting_;
    Item const item = *drawing_;
    std::size_t const bottom = stack_.size();
    pushChildren(item, glob);
    drain(bottom);
    --nesting_;
    childrenDrawn_ = true;
    if (item.glob) enterCanvas(item, glob);
    return true;
}

/// The place of the root's canvas, with the room round the root.
CanvasPlace wholeSurface(Surface& surface) {
    CanvasPlace place;
    place.surface = &surface;
    place.origin = surface.contentPlace();
    place.visible = surface.bounds();
    place.mapped = true;
    return place;
}

/// When the root does not fill its ground, old pixels must not shine through.
void clearGround(Glob& root, Surface& surface, PaintPhase& phase) {
    phase.enter(root.canvas(), wholeSurface(surface));
    CanvasRenderer renderer(root.canvas(), root.bounds());
    renderer.renderPrimitive(Glib::RectDescription(root.bounds(), root.getPalette().window(eWindowNormal)));
}

void makeTransparent(Surface& surface, IntBox const& box) {
    IntBox const part = surface.deviceBox(box);
    for (int y = part.y1; y < part.y2; ++y) {
        std::uint32_t* const row = surface.pixels() + static_cast<std::ptrdiff_t>(y) * surface.stride();
        std::fill(row + part.x1, row + part.x2, 0U);
    }
}

/// The room round the root of a pop-up: its surround on transparent pixels, or an opaque edge when the
/// desktop cannot show what lies below.
void drawRoomRound(Glob& root, Surface& surface, PaintPhase& phase) {
    IntBox const room = surface.bounds().translated(XY<int>() - surface.contentPlace());
    if (room == root.bounds()) return;
    for (IntBox const& box : phase.damage()) makeTransparent(surface, box);
    phase.enter(root.canvas(), wholeSurface(surface));
    CanvasRenderer renderer(root.canvas(), room);
    if (!surface.isTranslucent())
        renderer.renderPrimitive(Glib::RectDescription(room, root.getPalette().mark(eMarkEdge)));
    if (root.hasSurround()) Painting::surroundOf(root).draw(renderer, root.bounds(), root.getPalette());
}

void drawMark(Glob& root, Surface& surface, PaintPhase& phase) {
    phase.enter(root.canvas(), wholeSurface(surface));
    CanvasRenderer renderer(root.canvas(), root.bounds());
    auto const width = static_cast<unsigned short>(std::max<int>(UifStd::getBorder(), 2));
    Glib::drawFrame(renderer, root.getPalette().doIt(), root.bounds(), width);
}

} // namespace

void Painting::paint(Glob& root, Surface& surface) {
    if (surface.toPaint().empty() || surface.isPaintingHeld() || PaintPhase::current()) return;
    std::vector<IntBox> const damage = surface.toPaint().take();
    LifeGuard const life(surface.life());
    {
        DispatchScope const scope;
        PaintPhase phase(damage);
        drawRoomRound(root, surface, phase);
        if (!root.isOpaque() || !root.isVisible()) clearGround(root, surface, phase);
        Visit(surface, phase).run(root);
        if (life.alive() && surface.isMarked() && is_good_glob_ptr(&root)) drawMark(root, surface, phase);
    }
    if (!life.alive()) return;
    for (IntBox const& box : damage) surface.toPresent().add(box);
}

void Painting::drawChildrenNow(Glob& glob) {
    bool const drawn = Visit::current && Visit::current->drawChildrenNow(glob);
    if (!drawn) Diagnostics::count("children drawn outside draw()", "drawWidgets");
}

Surround const& Painting::surroundOf(Glob const& glob) {
    return glob.side_->surround;
}

std::uint64_t Painting::numDrawn() {
    return drawnCount;
}

} // namespace wainscot
