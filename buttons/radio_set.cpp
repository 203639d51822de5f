#include "buttons/radio_set.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/objects/description.h"

#include <algorithm>

namespace wainscot {

namespace {

/// What the buttons send to the set.
constexpr LightweightString<char> buttonMessage{"radio"};

RadioSet::InitArgs argsFor(Vector<LightweightString<wchar_t>> const& labels, Palette const& palette,
                           int width, int height, bool vertical, Canvas* canvas, Colour const* faceColour) {
    RadioSet::InitArgs args(labels, toSize16(width), toSize16(height));
    args.palette = palette;
    args.canvas = canvas;
    args.vertical = vertical;
    if (faceColour) args.faceColour = *faceColour;
    return args;
}

} // namespace

RadioSet::InitArgs::InitArgs(Vector<LightweightString<wchar_t>> texts, unsigned short w, unsigned short h)
    : GlobCreationInfo(w, h), labels(std::move(texts)) {}

RadioSet::InitArgs::InitArgs(Vector<LightweightString<wchar_t>> texts, XY<int> const& size)
    : InitArgs(std::move(texts)) {
    setSize(size);
}

RadioSet::RadioSet(InitArgs const& args)
    : StandardPanel(StandardPanel::InitArgs(args)), vertical_(args.vertical),
      automatic_(args.width == 0, args.height == 0) {
    for (LightweightString<wchar_t> const& label : args.labels)
        if (!addItem(label, args.faceColour)) break;
    resizeToFit();
    layOutButtons();
}

/// False when the set has no room for more.
bool RadioSet::addItem(LightweightString<wchar_t> const& label, std::optional<Colour> const& faceColour) {
    radio_button::InitArgs args(label, buttonMessage, 1, UifStd::getButtonHeight());
    args.set = &set_;
    args.palette = getPalette();
    auto button = std::make_unique<radio_button>(args);
    if (button->index() < 0) return false;
    if (faceColour) button->setFaceColour(*faceColour);
    addChild(std::move(button));
    return true;
}

RadioSet::RadioSet(Vector<LightweightString<wchar_t>> const& labels, Palette const& palette, int width,
                   int height, bool vertical, Canvas* canvas, Colour* faceColour)
    : RadioSet(argsFor(labels, palette, width, height, vertical, canvas, faceColour)) {}

RadioSet::~RadioSet() = default;

bool RadioSet::isButton(Glob const* glob) const {
    auto const* const button = dynamic_cast<radio_button const*>(glob);
    return button && button->set() == &set_;
}

bool RadioSet::react(Event const& event) {
    if (event.kind() != EventKind::message || !isButton(event.sender())) return StandardPanel::react(event);
    if (!event.message().endsWith(Button::onSuffix.view())) return true;
    describeChanged(DescriptionChange::value);
    reporter_.report(*this, parent(), messageTable[0]);
    return true;
}

void RadioSet::setSelectedItem(int index) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    set_.set_current(index, true);
    if (life.alive()) describeChanged(DescriptionChange::value);
}

int RadioSet::getSelectedItem() const {
    return set_.member(set_.getCurrent()) ? set_.getCurrent() : -1;
}

Button* RadioSet::childButton(int index) const {
    Button* const button = getButton(index);
    return button && button->parent() == this ? button : nullptr;
}

// Layout

XY<int> RadioSet::neededSize() const {
    int widest = 0;
    for (int i = 0; i < getNumItems(); ++i)
        if (Button const* const button = getButton(i))
            widest = std::max(widest, Button::calcSizeFor(button->getWidgetValue(), UifStd::getFont()).x);
    int const count = getNumItems();
    int const height = UifStd::getButtonHeight();
    return vertical_ ? XY<int>{widest, count * height} : XY<int>{count * widest, height};
}

SizeNeeds RadioSet::sizeNeeds() const {
    return automatic_.needs(neededSize());
}

void RadioSet::resizeToFit() {
    automatic_.apply(*this, neededSize());
}

void RadioSet::layOutButtons() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    IntBox const area = getUserArea();
    int const count = getNumItems();
    int const extent = vertical_ ? area.height() : area.width();
    for (int i = 0; life.alive() && i < count; ++i) {
        Button* const button = childButton(i);
        if (!button) continue;
        int const from = extent * i / count;
        int const length = extent * (i + 1) / count - from;
        button->resize(vertical_ ? area.width() : length, vertical_ ? length : area.height());
        // Listeners may have taken it away.
        if (childButton(i)) addChild(button, vertical_ ? UserTopLeft(0, from) : UserTopLeft(from, 0));
    }
}

void RadioSet::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    StandardPanel::reshape();
    if (life.alive()) layOutButtons();
}

void RadioSet::handleLookChange(LookChange changes) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    StandardPanel::handleLookChange(changes);
    if (life.alive()) resizeToFit();
    if (life.alive()) layOutButtons();
}

// State and look

void RadioSet::setPalette(Palette const& palette) {
    DispatchScope const scope;
    StandardPanel::setPalette(palette);
    for (int i = 0; i < getNumItems(); ++i)
        if (Button* const button = getButton(i)) button->setPalette(palette);
}

void RadioSet::getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int) {
    for (int i = 0; i < getNumItems(); ++i)
        if (Button* const button = getButton(i)) controls.push_back(button);
}

void RadioSet::describe(GlobDescription& description) const {
    StandardPanel::describe(description);
    description.role = Role::radioGroup;
    Button const* const chosen = getButton(getSelectedItem());
    if (chosen) description.value = chosen->getWidgetValue();
}

void RadioSet::describeChild(Glob const& child, GlobDescription& description) const {
    if (isButton(&child)) description.memberOf = HandlerRef<Glob>(const_cast<RadioSet*>(this));
}

} // namespace wainscot
