#include "containers/tab_strip_p.h"

#include "buttons/checkbox.h"
#include "containers/tabbed_dialogue.h"
#include "host/drawing/symbols.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"
#include "host/services/text_ids.h"

#include <algorithm>
#include <numeric>

namespace wainscot {

namespace {

/// A button with a sign, which says its name in its tip.
class StripButton final : public Button {
public:
    StripButton(InitArgs const& args, UIString name) : Button(args), name_(std::move(name)) {
        setContextString(name_);
    }
    void describe(GlobDescription& description) const override {
        Button::describe(description);
        description.name = name_.text();
    }

private:
    UIString name_;
};

} // namespace

/// Cuts the tabs off at its edges; what lies behind them shows through.
class TabStrip::Area final : public Glob {
public:
    Area() : Glob(0, 0) {
        setOpaque(false);
        setLightweight(true);
    }
};

TabStrip::TabStrip(TabbedDialogue& dialogue) : Focusable<rect>(0, 0), dialogue_(&dialogue), area_(new Area) {
    setOpaque(false);
    addWidget(area_, 0, 0);
}

TabStrip::~TabStrip() = default;

// Tabs

int TabStrip::indexOf(Tab const* tab) {
    for (; numNumbered_ < tabs_.size(); ++numNumbered_) tabs_[numNumbered_]->index_ = numNumbered_;
    bool const isHere = tab && tab->index_ < tabs_.size() && tabs_[tab->index_] == tab;
    return isHere ? static_cast<int>(tab->index_) : -1;
}

void TabStrip::orderChanged(std::size_t from) {
    numNumbered_ = std::min(numNumbered_, from);
    widthsChanged(from);
    describeChanged(DescriptionChange::children);
}

Tab* TabStrip::add(UIString const& name) {
    auto* const tab = new Tab(name, this);
    tab->setVisible(false);
    tabs_.push_back(tab);
    LifeGuard const life = guard();
    LifeGuard const tabLife = tab->guard();
    area_->addWidget(tab, 0, 0);
    if (!life.alive() || !tabLife.alive()) return nullptr;
    orderChanged(tabs_.size() - 1);
    return tab;
}

void TabStrip::remove(std::size_t index) {
    Tab* const tab = tabs_[index];
    tab->strip_ = {};
    tabs_.erase(tabs_.begin() + static_cast<std::ptrdiff_t>(index));
    if (current() == tab) current_ = {};
    orderChanged(index);
    destroy(tab);
}

void TabStrip::removeAll() {
    std::vector<HandlerRef<Tab>> doomed;
    for (Tab* const tab : tabs_) {
        tab->strip_ = {};
        doomed.push_back(HandlerRef<Tab>(tab));
    }
    tabs_.clear();
    current_ = {};
    firstTabPos_ = 0;
    orderChanged(0);
    for (HandlerRef<Tab> const& tab : doomed)
        if (tab) destroy(tab.get());
}

/// It must not call out.
void TabStrip::tabGone(Tab& tab) {
    int const index = indexOf(&tab);
    if (index < 0) return;
    bool const wasCurrent = current_.stamp() == tab.idStamp();
    tabs_.erase(tabs_.begin() + index);
    if (wasCurrent) current_ = {};
    numNumbered_ = std::min(numNumbered_, static_cast<std::size_t>(index));
    widthsChanged(static_cast<std::size_t>(index));
    if (dialogue_)
        dialogue_.get()->handleTabGone(tab.page_.get(), wasCurrent, static_cast<std::size_t>(index));
}

void TabStrip::move(std::size_t from, std::size_t to) {
    auto const at = [&](std::size_t index) { return tabs_.begin() + static_cast<std::ptrdiff_t>(index); };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to + 1));
    else
        std::rotate(at(to), at(from), at(from + 1));
    orderChanged(std::min(from, to));
}

void TabStrip::setOrder(std::vector<Tab*> order) {
    tabs_ = std::move(order);
    orderChanged(0);
}

void TabStrip::setCurrent(Tab* tab) {
    Tab* const before = current();
    if (before == tab) return;
    current_ = HandlerRef<Tab>(tab);
    LifeGuard const life = guard();
    for (HandlerRef<Tab> const changed : {HandlerRef<Tab>(before), HandlerRef<Tab>(tab)}) {
        if (!life.alive() || !changed) continue;
        changed.get()->makeDirty();
        changed.get()->describeChanged(DescriptionChange::state);
    }
}

// Geometry

void TabStrip::widthsChanged(std::size_t from) {
    numMeasured_ = std::min(numMeasured_, from);
    askForLayout();
}

void TabStrip::widthChanged(Tab const& tab) {
    if (int const index = indexOf(&tab); index >= 0) widthsChanged(static_cast<std::size_t>(index));
}

void TabStrip::remeasure() {
    widthsChanged(0);
}

void TabStrip::measure() {
    starts_.resize(tabs_.size() + 1);
    starts_[0] = 0;
    for (std::size_t i = numMeasured_; i < tabs_.size(); ++i)
        starts_[i + 1] = starts_[i] + tabs_[i]->neededWidth();
    numMeasured_ = tabs_.size();
}

int TabStrip::totalWidth() {
    return startOf(tabs_.size());
}

std::size_t TabStrip::tabAtOffset(int offset) {
    measure();
    auto const behind = std::upper_bound(starts_.begin() + 1, starts_.end(), offset);
    auto const index = static_cast<std::size_t>(behind - starts_.begin()) - 1;
    return std::min(index, tabs_.empty() ? 0 : tabs_.size() - 1);
}

void TabStrip::setFirstTabPos(int position) {
    int const wanted = std::clamp(position, std::min(0, visibleWidth() - totalWidth()), 0);
    if (wanted == firstTabPos_) return;
    firstTabPos_ = wanted;
    placeTabs();
}

void TabStrip::revealLater(Tab& tab) {
    revealed_ = HandlerRef<Tab>(&tab);
    askForLayout();
}

/// No room is left free behind the last tab, unless the strip is to stay still.
void TabStrip::ensureTabIsVisible(std::size_t index) {
    int const left = startOf(index) + firstTabPos_;
    int const right = startOf(index + 1) + firstTabPos_;
    bool const isSeen = left >= 0 && right <= visibleWidth();
    bool const staysStill = dialogue_ && (dialogue_.get()->getStyleFlags() & TabbedDialogue::keepsStripStill);
    if (isSeen && (staysStill || totalWidth() + firstTabPos_ >= visibleWidth())) return;
    int const wanted = left < 0 ? firstTabPos_ - left : firstTabPos_ - std::max(right - visibleWidth(), 0);
    setFirstTabPos(left >= 0 && right - left > visibleWidth() ? -startOf(index) : wanted);
}

void TabStrip::stepForward() {
    int step = visibleWidth();
    bool const byTab = dialogue_ && (dialogue_.get()->getStyleFlags() & TabbedDialogue::stepsByTab);
    if (byTab && !tabs_.empty()) {
        // The first tab whose right edge reaches that of the strip.
        std::size_t const crossing = tabAtOffset(visibleWidth() - firstTabPos_ - 1);
        step = startOf(crossing + 1) - startOf(crossing);
    }
    setFirstTabPos(firstTabPos_ - std::max(step, 1));
}

void TabStrip::stepBack() {
    int step = visibleWidth();
    bool const byTab = dialogue_ && (dialogue_.get()->getStyleFlags() & TabbedDialogue::stepsByTab);
    if (byTab && firstTabPos_ < 0) {
        std::size_t const crossing = tabAtOffset(-firstTabPos_ - 1);
        step = startOf(crossing + 1) - startOf(crossing);
    }
    setFirstTabPos(firstTabPos_ + std::max(step, 1));
}

// Layout

void TabStrip::reshape() {
    Focusable<rect>::reshape();
    layOut();
}

void TabStrip::handleLayout() {
    layOut();
}

Button* TabStrip::makeButton(QvTTF::eGlyph glyph, char const* message, UIString const& name, bool repeats) {
    Button::InitArgs args(getString(glyph), message, UifStd::getButtonHeight(), UifStd::getButtonHeight());
    args.style = eButtonFlat;
    auto* const button = new StripButton(args, name);
    if (repeats) button->setRepeating(4, 1);
    addWidget(button, 0, 0);
    return button;
}

/// The buttons to go on stand at the right end, as many as there is room for: the list is the last to go.
/// Gives the width that is left for tabs.
int TabStrip::placeButtons(bool overflows) {
    if (overflows && !listButton_) {
        backButton_ = HandlerRef<Button>(
            makeButton(QvTTF::eChevronLeft, backMsg.c_str(), UIString(TextId::previousTabs), true));
        forwardButton_ = HandlerRef<Button>(
            makeButton(QvTTF::eChevronRight, forwardMsg.c_str(), UIString(TextId::nextTabs), true));
        listButton_ = HandlerRef<Button>(
            makeButton(QvTTF::eChevronDown, listMsg.c_str(), UIString(TextId::allTabs), false));
        listButton_.get()->setMessageOnMouseUp(false);
    }
    int const side = UifStd::getButtonHeight();
    int left = width();
    bool isFull = !overflows;
    for (HandlerRef<Button> const& button : {listButton_, forwardButton_, backButton_}) {
        if (!button) continue;
        isFull = isFull || left < 2 * side;
        button.get()->setVisible(!isFull);
        if (isFull || !button) continue;
        left -= side;
        reshapeWidgetAt(button.get(), {left, (height() - side) / 2}, {side, side});
    }
    return left;
}

void TabStrip::layOut() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    int const room = placeButtons(totalWidth() > width());
    if (!life.alive()) return;
    reshapeWidgetAt(area_, {0, 0}, {room, height()});
    if (!life.alive()) return;
    firstTabPos_ = std::clamp(firstTabPos_, std::min(0, room - totalWidth()), 0);
    int const index = indexOf(std::exchange(revealed_, {}).get());
    if (index >= 0) ensureTabIsVisible(static_cast<std::size_t>(index));
    if (life.alive()) placeTabs();
}

void TabStrip::placeTabs() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    measure();
    ++pass_;
    std::vector<HandlerRef<Tab>> const before = std::exchange(placed_, {});
    std::size_t const first = tabs_.empty() ? 0 : tabAtOffset(-firstTabPos_);
    for (std::size_t i = first; i < tabs_.size() && starts_[i] + firstTabPos_ < visibleWidth(); ++i)
        placed_.push_back(HandlerRef<Tab>(tabs_[i]));
    if (dragged_ && indexOf(dragged_.get()) >= 0) placed_.push_back(dragged_);
    for (HandlerRef<Tab> const& tab : placed_) tab.get()->pass_ = pass_;
    for (HandlerRef<Tab> const& tab : before)
        if (tab && tab.get()->pass_ != pass_ && life.alive()) tab.get()->setVisible(false);
    std::size_t index = first;
    for (HandlerRef<Tab> const& ref : std::vector<HandlerRef<Tab>>(placed_)) {
        Tab* const tab = life.alive() ? ref.get() : nullptr;
        if (!tab || index >= starts_.size() - 1) continue;
        bool const isDragged = tab == dragged_.get();
        int const left = isDragged ? draggedLeft() : starts_[index] + firstTabPos_;
        int const tabWidth = isDragged ? tab->neededWidth() : starts_[index + 1] - starts_[index];
        ++index;
        area_->reshapeWidgetAt(tab, {left, 0}, {tabWidth, height()});
        if (ref && life.alive()) tab->setVisible(true);
    }
    if (life.alive()) makeDirty();
}

// Dragging tabs

bool TabStrip::drag(Tab& tab, Event const& event, XY<int> const& pressPlace) {
    int const index = indexOf(&tab);
    if (index < 0 || !dialogue_ || !dialogue_.get()->canReorder()) return false;
    if (dragged_.get() != &tab) {
        dragged_ = HandlerRef<Tab>(&tab);
        draggedFrom_ = static_cast<std::size_t>(index);
        grip_ = pressPlace.x - area_->screenBox().x1 - startOf(draggedFrom_) - firstTabPos_;
        tab.moveToTop();
        setInterest(EventKind::timer);
        setNextTimer(scrollInterval);
    }
    pointerX_ = event.place().x - area_->screenBox().x1;
    dragOn();
    return true;
}

int TabStrip::draggedLeft() const {
    int const most = std::max(0, visibleWidth() - dragged_.get()->width());
    return std::clamp(pointerX_ - grip_, 0, most);
}

/// The tab changes its place with each neighbour whose middle it has passed.
void TabStrip::dragOn() {
    Tab* const tab = dragged_.get();
    int const found = indexOf(tab);
    if (found < 0) return;
    auto index = static_cast<std::size_t>(found);
    int const left = draggedLeft() - firstTabPos_;
    int const right = left + startOf(index + 1) - startOf(index);
    auto const middle = [&](std::size_t other) { return (startOf(other) + startOf(other + 1)) / 2; };
    std::size_t const from = index;
    while (index > 0 && left < middle(index - 1)) --index;
    while (index >= from && index + 1 < tabs_.size() && right > middle(index + 1)) ++index;
    if (index != from) move(from, index);
    placeTabs();
}

void TabStrip::scrollWhileDragging() {
    if (!dragged_ && hoverSide_ == 0) return clearInterest(EventKind::timer);
    setNextTimer(scrollInterval);
    int const step = UifStd::getButtonHeight();
    if (!dragged_) return setFirstTabPos(firstTabPos_ - hoverSide_ * step);
    int const before = firstTabPos_;
    if (pointerX_ < 0) setFirstTabPos(firstTabPos_ + step);
    if (pointerX_ > visibleWidth()) setFirstTabPos(firstTabPos_ - step);
    if (firstTabPos_ != before) dragOn();
}

void TabStrip::endDrag(Tab& tab, bool isTakenBack) {
    if (dragged_.get() != &tab) return;
    dragged_ = {};
    clearInterest(EventKind::timer);
    int const index = indexOf(&tab);
    bool const hasMoved = index >= 0 && static_cast<std::size_t>(index) != draggedFrom_;
    bool const isBack = hasMoved && isTakenBack && draggedFrom_ < tabs_.size();
    if (isBack) move(static_cast<std::size_t>(index), draggedFrom_);
    // The drag may have scrolled it out of sight.
    if (isTakenBack && current()) revealLater(*current());
    LifeGuard const life = guard();
    LifeGuard const tabLife = tab.guard();
    placeTabs();
    if (hasMoved && !isBack && life.alive() && tabLife.alive() && dialogue_)
        dialogue_.get()->tell(TabbedDialogue::pageOrderChanged, tab);
}

} // namespace wainscot
