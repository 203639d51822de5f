#include "gallery/scrolled_area.h"

#include "containers/scroll_bar.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"

#include <algorithm>
#include <cmath>

namespace wainscot::gallery {

namespace {

/// How far an arrow button or a notch of the wheel goes.
int step() {
    return 2 * UifStd::getButtonHeight();
}

void showPart(ScrollBar& bar, int offset, int shown, int all) {
    ThumbSettings thumb{static_cast<double>(offset) / std::max(all, 1),
                        static_cast<double>(shown) / std::max(all, 1)};
    bar.setNewWidgetValue(thumb, eRedrawYes);
}

} // namespace

class ScrolledArea::View final : public Glob {
public:
    View() : Glob(1, 1, Palette(), false) {}
    bool handleChildChange(Glob&, ChildChange change) override { return change == ChildChange::needs; }
};

ScrolledArea::ScrolledArea(XY<int> size) : Glob(toSize16(size.x), toSize16(size.y), Palette(), false) {
    view_ = addChild(std::make_unique<View>());
    across_ = addChild(std::make_unique<ScrollBar>(ScrollBar::InitArgs(eHorizontal)));
    down_ = addChild(std::make_unique<ScrollBar>(ScrollBar::InitArgs(eVertical)));
    across_->setName("page across");
    down_->setName("page down");
    layOut();
}

// Sizes

/// Where there is less room, the contents are scrolled.
XY<int> ScrolledArea::leastSize(int width) const {
    Glob const* const contents = contents_.get();
    if (!contents) return {};
    SizeNeeds const needs = contents->sizeNeeds();
    XY<int> least{needs.minimum.x < 0 ? needs.natural.x : needs.minimum.x,
                  needs.minimum.y < 0 ? needs.natural.y : needs.minimum.y};
    if (needs.heightFollowsWidth) least.y = contents->heightForWidth(std::max(width, least.x));
    return least;
}

ScrolledArea::Sizes ScrolledArea::sizes() const {
    int const thick = ScrollBar::thickness();
    XY<int> view = size();
    XY<int> least = leastSize(view.x);
    if (least.y > view.y) {
        view.x -= thick;
        least = leastSize(view.x);
    }
    if (least.x > view.x) {
        view.y -= thick;
        if (least.y > view.y && view.x == width()) view.x -= thick;
    }
    view = {std::max(view.x, 1), std::max(view.y, 1)};
    return {view, {std::max(view.x, least.x), std::max(view.y, least.y)}};
}

void ScrolledArea::layOut() {
    sizes_ = sizes();
    XY<int> const view = sizes_.view;
    int const thick = ScrollBar::thickness();
    reshapeWidgetAt(view_, {0, height() - view.y}, view);
    reshapeWidgetAt(across_, {0, 0}, {view.x, thick});
    reshapeWidgetAt(down_, {width() - thick, height() - view.y}, {thick, view.y});
    across_->setVisible(range().x > 0);
    down_->setVisible(range().y > 0);
    if (Glob* const contents = contents_.get(); contents && contents->size() != sizes_.contents)
        contents->resize(sizes_.contents.x, sizes_.contents.y);
    scrollTo(offset_);
}

bool ScrolledArea::handleChildChange(Glob& child, ChildChange change) {
    if (&child == view_ && change == ChildChange::needs) askForLayout();
    return false;
}

void ScrolledArea::handleLayout() {
    layOut();
}

void ScrolledArea::scrollTo(XY<int> offset) {
    XY<int> const most = range();
    XY<int> const size = sizes_.contents;
    XY<int> const view = sizes_.view;
    offset_ = {std::clamp(offset.x, 0, most.x), std::clamp(offset.y, 0, most.y)};
    if (Glob* const contents = contents_.get())
        view_->setWidgetPos(contents, {-offset_.x, view.y - size.y + offset_.y});
    showPart(*across_, offset_.x, view.x, size.x);
    showPart(*down_, offset_.y, view.y, size.y);
}

Glob* ScrolledArea::setContents(std::unique_ptr<Glob> contents) {
    if (Glob* const before = contents_.get()) destroy(before);
    contents_ = HandlerRef<Glob>(view_->addChild(std::move(contents)));
    across_->setControls(contents_.get());
    down_->setControls(contents_.get());
    offset_ = {};
    layOut();
    return contents_.get();
}

void ScrolledArea::reshape() {
    Glob::reshape();
    if (down_) layOut();
}

// What the user does

bool ScrolledArea::react(Event const& event) {
    bool const isWheel = mouse_wheel_event(event) || mouse_side_wheel_event(event);
    if (!isWheel || range() == XY<int>()) return Glob::react(event);
    if (mouse_side_wheel_event(event)) {
        scrollTo(offset_ + XY<int>{event.amount() * step(), 0});
        return true;
    }
    bool const isAcross = (event.modifiers() & Key::shift) != 0 || range().y == 0;
    int const way = -event.amount() * step();
    scrollTo(offset_ + (isAcross ? XY<int>{way, 0} : XY<int>{0, way}));
    return true;
}

XY<int> ScrolledArea::handleBringIntoView(IntBox const& area) {
    IntBox const seen = view_->box();
    // The upper left corner counts most where not all of it fits.
    int const right = std::max(area.x2 - seen.x2, 0);
    int const down = std::max(seen.y1 - area.y1, 0);
    XY<int> const before = offset_;
    scrollTo(offset_ + XY<int>{std::min(right, area.x1 - seen.x1), std::min(down, seen.y2 - area.y2)});
    XY<int> const way = offset_ - before;
    return {-way.x, way.y};
}

int ScrolledArea::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (!ScrollBar::isScrollBarMsg(name) || (sender != across_ && sender != down_)) return 0;
    bool const isAcross = sender == across_;
    XY<int> to = offset_;
    int& along = isAcross ? to.x : to.y;
    if (name == ScrollBar::thumbMovedMsg)
        along = static_cast<int>(std::lround((isAcross ? across_ : down_)->getThumbPos() *
                                             (isAcross ? sizes_.contents.x : sizes_.contents.y)));
    if (name == ScrollBar::upButtonPressedMsg || name == ScrollBar::leftButtonPressedMsg) along -= step();
    if (name == ScrollBar::downButtonPressedMsg || name == ScrollBar::rightButtonPressedMsg) along += step();
    if (to != offset_) scrollTo(to);
    return 1;
}

void ScrolledArea::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::scrollArea;
}

} // namespace wainscot::gallery
