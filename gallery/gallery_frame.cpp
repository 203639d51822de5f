#include "gallery/gallery_frame.h"

#include "gallery/caption.h"
#include "gallery/label_glob.h"

#include "foundation/tab_order_manager.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"

#include <algorithm>
#include <cstdio>

namespace wainscot::gallery {

namespace {

int margin() {
    return UifStd::getIndentWidth() * 2;
}

int listWidth() {
    return UifStd::getButtonHeight() * 6;
}

/// A quarter of a small window, so that the pages have room.
int logHeight(int frameHeight) {
    return std::min(UifStd::getButtonHeight() * 7, frameHeight / 4);
}

/// What the larger pages need to show all that they have.
XY<int> leastPage() {
    return {UifStd::getButtonHeight() * 34, UifStd::getButtonHeight() * 21};
}

bool isFocusable(Glob const& glob) {
    return (GlobDescription::of(glob).states & GlobDescription::focusable) != 0;
}

} // namespace

GalleryFrame::GalleryFrame(XY<int> size) : Glob(toSize16(size.x), toSize16(size.y)) {
    setName("Wainscot gallery");
    setMinSize(toSize16(listWidth() * 3), toSize16(UifStd::getButtonHeight() * 16));
    addChild(std::make_unique<Caption>(L"Wainscot", Caption::Kind::heading), TopLeft(margin(), margin()));
    for (Page const& page : pages()) {
        auto label = std::make_unique<LabelGlob>(XY<int>(listWidth(), UifStd::getButtonHeight()), page.title);
        label->setFocusable(false);
        label->setAction([this, &page](LabelGlob&) { show(page); });
        list_.push_back(addChild(std::move(label)));
    }
    IntBox const area = pageArea();
    area_ = addChild(std::make_unique<ScrolledArea>(area.size()), BottomLeft(area.x1, area.y1));
    log_ = addChild(std::make_unique<MessageLog>(XY<int>(1, logHeight(size.y))),
                    BottomLeft(2 * margin() + listWidth(), margin()));
    reshape();
}

IntBox GalleryFrame::pageArea() const {
    int const bottom = margin() * 2 + logHeight(height());
    int const left = margin() * 2 + listWidth();
    return {left, bottom, std::max(width() - margin(), left + 1), std::max(height() - margin(), bottom + 1)};
}

void GalleryFrame::show(Page const& page) {
    visitChildren([&](Glob& child) {
        if (auto* label = dynamic_cast<LabelGlob*>(&child)) label->setChosen(label->label() == page.title);
        return true;
    });
    fitsAnywhere_ = page.fitsAnywhere;
    fitPage();
    std::unique_ptr<Glob> made = page.make(area_->contentsSize(), [this, life = guard()](auto const& line) {
        if (life.alive()) addLine(line);
    });
    made->setPalette(getPalette().makeChildPalette());
    page_ = HandlerRef<Glob>(area_->setContents(std::move(made)));
}

void GalleryFrame::fitPage() {
    area_->setLeastSize(fitsAnywhere_ ? XY<int>() : leastPage());
}

void GalleryFrame::handleLookChange(LookChange changes) {
    Glob::handleLookChange(changes);
    fitPage();
}

void GalleryFrame::addLine(LightweightString<wchar_t> const& line) {
    log_->add(line);
    if (!echo_) return;
    std::printf("%s\n", toUTF8(line).c_str());
    std::fflush(stdout);
}

bool GalleryFrame::react(Event const& event) {
    bool const isTab =
        isKeyPressEvent(event) && (event.keyCode() == Key::tab || event.keyCode() == Key::shiftTab);
    return (isTab && stepInPage(event.keyCode() == Key::tab)) || Glob::react(event);
}

bool GalleryFrame::stepInPage(bool forward) {
    Glob* const page = page_.get();
    if (!page) return false;
    std::vector<Glob*> found;
    bool hasStops = false;
    page->visitSubtree([&](Glob& glob) {
        auto* const stops = dynamic_cast<TabOrderManager*>(&glob);
        hasStops = hasStops || (stops && stops->numTabStops() > 0);
        if (glob.isActive() && glob.isShown() && isFocusable(glob)) found.push_back(&glob);
        return !hasStops;
    });
    if (hasStops || found.empty()) return false;
    auto const here = std::find(found.begin(), found.end(), get_kbd_focus());
    std::size_t const index = static_cast<std::size_t>(here - found.begin());
    bool const isNone = here == found.end();
    std::size_t const next = forward ? (isNone ? 0 : index + 1) : (isNone ? 0 : index) + found.size() - 1;
    Glob* const chosen = found[next % found.size()];
    if (!set_kbd_focus(chosen)) return false;
    chosen->bringIntoView();
    return true;
}

int GalleryFrame::handleMessageEvent(LightweightString<char> name, Glob*) {
    // The labels of the page list act by themselves.
    return name == pootMsg ? 0 : 1;
}

/// The rows draw together where the window is too low for all of them.
void GalleryFrame::layOutList() {
    int const top = margin() + UifStd::getButtonHeight() + UifStd::getRowGap();
    int const room = height() - top - margin();
    int const usual = UifStd::getButtonHeight() + UifStd::getWidgetGap();
    int const step = std::clamp(room / std::max(static_cast<int>(list_.size()), 1), 1, usual);
    int const gap = step == usual ? UifStd::getWidgetGap() : 1;
    int y = height() - top;
    for (Glob* row : list_) {
        row->resize(listWidth(), std::max(step - gap, 1));
        setWidgetPos(row, {margin(), y - row->height()});
        y -= step;
    }
}

void GalleryFrame::reshape() {
    layOutList();
    int const left = 2 * margin() + listWidth();
    reshapeWidgetAt(log_, {left, margin()}, {std::max(width() - left - margin(), 1), logHeight(height())});
    IntBox const area = pageArea();
    reshapeWidgetAt(area_, area.bottomLeft(), area.size());
    Glob::reshape();
}

void GalleryFrame::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::window;
    description.name = L"Wainscot gallery";
}

} // namespace wainscot::gallery
