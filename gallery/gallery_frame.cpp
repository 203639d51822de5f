#include "gallery/gallery_frame.h"

#include "foundation/layout/box_layout.h"
#include "gallery/page_filter.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/windows/look.h"

#include <algorithm>
#include <cstdio>

namespace wainscot::gallery {

namespace {

/// How the height is shared between the page and the log.
constexpr int pageShare = 5;
constexpr int logShare = 1;

int listWidth() {
    return UifStd::getButtonHeight() * 8;
}

bool liesIn(Glob const* glob, Glob const& outer) {
    while (glob && glob != &outer) glob = glob->parent();
    return glob;
}

bool isFocusable(Glob const& glob) {
    return (GlobDescription::of(glob).states & GlobDescription::focusable) != 0;
}

} // namespace

// Tab goes through the children in their order, from the page on.
GalleryFrame::GalleryFrame(XY<int> size) : StandardPanel(size) {
    setName("Wainscot gallery");
    setMinSize(toSize16(listWidth() * 2), toSize16(UifStd::getButtonHeight() * 8));
    area_ = addChild(std::make_unique<ScrolledArea>(XY<int>(1, 1)));
    log_ = addChild(std::make_unique<LogPane>());
    StandardPanel* const sidebar = addChild(makeSidebar());
    header_ = addChild(std::make_unique<PageHeader>());
    setLayout(makeLayout(*sidebar));
    getLayout()->layOutNow();
    sidebar->getLayout()->layOutNow();
}

std::unique_ptr<StandardPanel> GalleryFrame::makeSidebar() {
    auto sidebar = std::make_unique<StandardPanel>(1, 1, Palette(), false);
    sidebar->setTabGoesOn(true);
    auto layout = BoxLayout::makeColumn();
    layout->setMargins(0);
    layout->add(std::make_unique<Label>(L"Wainscot", Label::Part::heading));
    auto chooser = std::make_unique<PageChooser>([this](Page const& page) { show(page); });
    chooser_ = chooser.get();
    sidebar->addTabStop(*layout->add(std::make_unique<PageFilter>(*chooser_)));
    // It takes the room that is left, whatever its own height.
    list_ = layout->add(std::make_unique<ScrolledArea>(XY<int>(listWidth(), 1)),
                        {.stretch = 1, .minimum = {-1, 1}});
    sidebar->addTabStop(*chooser_);
    list_->setContents(std::move(chooser));
    sidebar->setLayout(std::move(layout));
    return sidebar;
}

std::unique_ptr<Layout> GalleryFrame::makeLayout(StandardPanel& sidebar) {
    auto layout = BoxLayout::makeRow();
    layout->add(sidebar);
    BoxLayout* const column = layout->add(BoxLayout::makeColumn(), {.stretch = 1});
    column->add(*header_);
    LayoutOptions anySize{.size = {1, 1}, .minimum = {1, 1}};
    anySize.stretch = pageShare;
    column->add(*area_, anySize);
    anySize.stretch = logShare;
    anySize.maximum = {-1, UifStd::getButtonHeight() * 6};
    column->add(*log_, anySize);
    return layout;
}

void GalleryFrame::show(Page const& page) {
    chooser_->setCurrent(page);
    header_->show(page);
    std::unique_ptr<Glob> made = page.make(area_->viewSize(), [this, life = guard()](auto const& line) {
        if (life.alive()) addLine(line);
    });
    made->setPalette(getPalette().makeChildPalette());
    page_ = HandlerRef<Glob>(area_->setContents(std::move(made)));
    // A page may have changed the reading direction for itself.
    if (UifStd::isRightToLeft() == isRightToLeft_) return;
    UifStd::setRightToLeft(isRightToLeft_);
    Look::broadcast();
}

void GalleryFrame::handleLookChange(LookChange changes) {
    StandardPanel::handleLookChange(changes);
    list_->resize(listWidth(), list_->height());
}

void GalleryFrame::addLine(LightweightString<wchar_t> const& line) {
    log_->add(line);
    if (!echo_) return;
    std::printf("%s\n", toUTF8(line).c_str());
    std::fflush(stdout);
}

bool GalleryFrame::react(Event const& event) {
    if (!isKeyPressEvent(event)) return StandardPanel::react(event);
    switch (event.keyCode()) {
    case Key::ctrl | Key::pageUp:
        chooser_->take(PageChooser::Step::previous);
        return true;
    case Key::ctrl | Key::pageDown:
        chooser_->take(PageChooser::Step::next);
        return true;
    case Key::tab:
    case Key::shiftTab:
        return stepInPage(event.keyCode() == Key::tab) || StandardPanel::react(event);
    default:
        return StandardPanel::react(event);
    }
}

bool GalleryFrame::stepInPage(bool forward) {
    Glob* const page = page_.get();
    Glob* const focus = get_kbd_focus();
    // From where Tab enters the page.
    Glob const& before = forward ? static_cast<Glob&>(*header_) : *log_;
    bool const mayEnter = !focus || focus == this || (page && liesIn(focus, *page)) || liesIn(focus, before);
    if (!page || !mayEnter) return false;
    std::vector<Glob*> found;
    bool hasStops = false;
    page->visitSubtree([&](Glob& glob) {
        auto* const stops = dynamic_cast<TabOrderManager*>(&glob);
        hasStops = hasStops || (stops && stops->numTabStops() > 0);
        if (glob.isActive() && glob.isShown() && isFocusable(glob)) found.push_back(&glob);
        return !hasStops;
    });
    if (hasStops || found.empty()) return false;
    if (!forward) std::ranges::reverse(found);
    auto const here = std::ranges::find(found, focus);
    auto const next = here == found.end() ? found.begin() : here + 1;
    if (next == found.end() || !set_kbd_focus(*next)) return false;
    (*next)->bringIntoView();
    return true;
}

int GalleryFrame::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    return name == pootMsg ? StandardPanel::handleMessageEvent(name, sender) : 1;
}

void GalleryFrame::describe(GlobDescription& description) const {
    StandardPanel::describe(description);
    description.role = Role::window;
    description.name = L"Wainscot gallery";
}

} // namespace wainscot::gallery
