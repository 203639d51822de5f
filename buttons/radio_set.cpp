#include "buttons/radio_set.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
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

XY<int> neededSize(RadioSet::InitArgs const& args) {
    int widest = 0;
    for (LightweightString<wchar_t> const& label : args.labels)
        widest = std::max(widest, Button::calcSizeFor(label, UifStd::getFont()).x);
    int const count = static_cast<int>(args.labels.size());
    int const height = UifStd::getButtonHeight();
    return args.vertical ? XY<int>{widest, count * height} : XY<int>{count * widest, height};
}

} // namespace

RadioSet::InitArgs::InitArgs(Vector<LightweightString<wchar_t>> texts, unsigned short w, unsigned short h)
    : GlobCreationInfo(w, h), labels(std::move(texts)) {}

StandardPanel::InitArgs RadioSet::panelArgs(InitArgs const& args) {
    XY<int> const needed = neededSize(args);
    return {GlobCreationInfo(args, args.width != 0 ? args.width : toSize16(needed.x),
                             args.height != 0 ? args.height : toSize16(needed.y))};
}

RadioSet::RadioSet(InitArgs const& args) : StandardPanel(panelArgs(args)), vertical_(args.vertical) {
    for (LightweightString<wchar_t> const& label : args.labels) {
        radio_button::InitArgs buttonArgs(label, buttonMessage, 1, UifStd::getButtonHeight());
        buttonArgs.set = &set_;
        buttonArgs.palette = getPalette();
        auto* const button = addChild(std::make_unique<radio_button>(buttonArgs));
        if (args.faceColour) button->setCols(getPalette().text(eTextEnabled), *args.faceColour);
    }
    layOutButtons();
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
    if (event.message().endsWith(Button::onSuffix.view())) callMsg(parent(), radioSetMessage().c_str());
    return true;
}

// Layout

void RadioSet::layOutButtons() {
    IntBox const area = getUserArea();
    int const count = getNumItems();
    int const extent = vertical_ ? area.height() : area.width();
    for (int i = 0; i < count; ++i) {
        Button* const button = getButton(i);
        if (!button) continue;
        int const from = extent * i / count;
        int const length = extent * (i + 1) / count - from;
        button->resize(vertical_ ? area.width() : length, vertical_ ? length : area.height());
        addChild(button, vertical_ ? UserTopLeft(0, from) : UserTopLeft(from, 0));
    }
}

void RadioSet::reshape() {
    StandardPanel::reshape();
    layOutButtons();
}

void RadioSet::handleLookChange() {
    StandardPanel::handleLookChange();
    layOutButtons();
}

// State and look

void RadioSet::setActive(bool active, eRedrawFlag redraw) {
    LifeGuard const life = guard();
    StandardPanel::setActive(active, redraw);
    for (int i = 0; life.alive() && i < getNumItems(); ++i)
        if (Button* const button = getButton(i)) button->setActive(active, redraw);
}

void RadioSet::setPalette(Palette const& palette) {
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
    description.role = "radiogroup";
    Button const* const chosen = getButton(getSelectedItem());
    if (chosen) description.value = chosen->getWidgetValue();
}

} // namespace wainscot
