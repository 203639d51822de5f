#include "host/drawing/damage.h"
#include "host/objects/glob.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/surface.h"
#include "host/objects/glob_side_p.h"
#include "host/objects/painting_p.h"
#include "host/objects/placement_p.h"
#include "host/objects/tree.h"

#include <algorithm>

namespace wainscot {

void Glob::draw() {
    drawBackground();
    drawBorder();
}

void Glob::drawBackground() {
    if (!isOpaque()) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getCol()));
}

void Glob::drawBorder() {}

void Glob::drawWidgets() {
    Painting::drawChildrenNow(*this);
}

bool Glob::canDraw() {
    return width_ > 0 && height_ > 0;
}

void Glob::reshapeCanvas() {}

IntBox Glob::canvasArea() const {
    return ownsCanvas() ? bounds() : IntBox::sized(placeOnCanvas(), size());
}

void Glob::makeDirty() {
    setFlag(dirtyFlag, true);
    damage(bounds());
}

bool Glob::liesOnParent() const {
    return !parent_ || ownsCanvas() || canvas_ == parent_->canvas_;
}

/// An object that is damaged as a whole already, by itself or with its parent, is not damaged again: building
/// or changing a deep tree does not cost the way to the root each time.
void Glob::damage(IntBox const& part) {
    std::uint32_t const now = Damage::numTaken();
    if (wholeDamaged_ == now || part.isEmpty() || !isVisible()) return;
    bool const isOnParent = liesOnParent();
    bool const coveredByParent = isOnParent && parent_ && parent_->wholeDamaged_ == now;
    // Trees are mostly built before they are shown.
    bool const isUnseen = ownsCanvas() && !getRootParent(this)->ownCanvas_.surface();
    if (!coveredByParent && !isUnseen)
        canvas_->damage(part.intersection(bounds()).translated(canvasArea().bottomLeft()));
    if (isOnParent && part.contains(bounds())) wholeDamaged_ = now;
}

/// Objects between it and the parent whose canvas it takes over may share the dying canvas too.
void Glob::sharedCanvasDying(Canvas const& canvas) {
    std::vector<Glob*> homeless;
    Glob* glob = this;
    for (; glob && glob->canvas_ == &canvas; glob = glob->parent_) homeless.push_back(glob);
    if (homeless.empty()) return;
    Canvas* const heir = glob ? glob->canvas_ : &homeless.back()->ownCanvas_;
    for (Glob* sharer : homeless) {
        sharer->canvas_ = heir;
        sharer->wholeDamaged_ = 0;
        if (heir != &sharer->ownCanvas_) heir->share(*sharer);
    }
    for (auto sharer = homeless.rbegin(); sharer != homeless.rend(); ++sharer) (*sharer)->makeDirty();
}

void Glob::moveToCanvas(Canvas& canvas) {
    Canvas const* const before = canvas_;
    std::vector<Glob*> const moved =
        Tree::subtree(*this, [before](Glob& glob) { return glob.canvas_ == before && !glob.ownsCanvas(); });
    for (Glob* sharer : moved) {
        sharer->leaveSharedCanvas();
        sharer->canvas_ = &canvas;
        sharer->wholeDamaged_ = 0;
        canvas.share(*sharer);
    }
}

void Glob::leaveSharedCanvas() {
    if (ownsCanvas()) return;
    canvas_->unshare(*this);
    canvas_ = &ownCanvas_;
}

void Glob::setPalette(Palette const& palette) {
    if (palette_ == palette) return;
    palette_ = palette;
    makeDirty();
}

void Glob::handleLookChange(LookChange) {}

Colour Glob::getCol() const {
    return side_ && side_->colour ? *side_->colour : palette_.window(eWindowNormal);
}

void Glob::setCol(Colour const& colour, bool redraw) {
    side().colour = colour;
    if (redraw) makeDirty();
}

CanvasPlace Glob::canvasPlace() const {
    CanvasPlace place;
    // Trees are mostly built before they are shown; a look at the root is cheaper than the whole way.
    place.surface = getRootParent(const_cast<Glob*>(this))->ownCanvas_.surface();
    if (!place.surface) {
        place.mapped = !isHidden();
        return place;
    }
    place.visible = bounds();
    place.mapped = true;
    Glob const* glob = this;
    while (true) {
        place.mapped = place.mapped && glob->isVisible() && glob->canvas_->isMapped();
        if (glob->ownsCanvas() && glob->parent_) place.opacity *= glob->canvas_->opacity();
        if (!glob->parent_) break;
        place.origin = Placement::clampPlace(place.origin) + glob->position_;
        // An invisible box stays invisible; it is not moved on, so that sums cannot overflow.
        if (!place.visible.isEmpty())
            place.visible = place.visible.translated(glob->position_).intersection(glob->parent_->bounds());
        glob = glob->parent_;
    }
    place.origin += place.surface->contentPlace();
    place.visible = place.visible.translated(place.surface->contentPlace());
    return place;
}

void Glob::damageAbove(IntBox const& area) {
    std::vector<Glob*> above;
    Tree::childrenMeeting(*this, area, above);
    for (Glob* child : above) child->damage(area.translated(XY<int>() - child->position_));
    IntBox inParent = area.intersection(bounds());
    for (Glob* glob = this; glob->parent_ && !inParent.isEmpty(); glob = glob->parent_) {
        inParent = inParent.translated(glob->position_).intersection(glob->parent_->bounds());
        if (!glob->next_) continue;
        above.clear();
        Tree::childrenMeeting(*glob->parent_, inParent, above);
        auto const own = std::find(above.begin(), above.end(), glob);
        for (auto later = own == above.end() ? own : own + 1; later != above.end(); ++later)
            (*later)->damage(inParent.translated(XY<int>() - (*later)->position_));
    }
}

} // namespace wainscot
