#include "buttons/checkbox_radio_set.h"

#include "foundation/effects.h"
#include "host/base/convert.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"

namespace wainscot {

namespace {

CheckboxRadioSet::InitArgs argsFor(std::vector<UIString> const& labels, Palette const& palette, int width,
                                   int height, Canvas* canvas) {
    CheckboxRadioSet::InitArgs args(labels, toSize16(width), toSize16(height));
    args.palette = palette;
    args.canvas = canvas;
    return args;
}

} // namespace

CheckboxRadioSet::InitArgs::InitArgs(std::vector<UIString> texts, unsigned short w, unsigned short h)
    : CheckboxPanel::InitArgs(std::move(texts), w, h) {
    appearance = Checkbox::roundTickBox;
}

CheckboxRadioSet::InitArgs::InitArgs(std::vector<UIString> texts, XY<int> const& size)
    : InitArgs(std::move(texts)) {
    setSize(size);
}

CheckboxRadioSet::CheckboxRadioSet(InitArgs const& args) : Bindable(args) {
    for (UIString const& label : args.labels) {
        RadioSetCheckbox::InitArgs boxArgs(label, static_cast<int>(numCheckboxes()) == args.selected);
        boxArgs.appearance = args.appearance;
        addBox(std::make_unique<RadioSetCheckbox>(boxArgs, *this));
    }
    setChoiceColumns(getColumns());
    tickOnly(getSelectedCheckbox());
    setBoldWhenTicked(args.bold);
    layOutBoxes();
}

CheckboxRadioSet::CheckboxRadioSet(std::vector<UIString> const& labels, Palette const& palette, int width,
                                   int height, Canvas* canvas)
    : CheckboxRadioSet(argsFor(labels, palette, width, height, canvas)) {}

CheckboxRadioSet::~CheckboxRadioSet() = default;

// Value

int CheckboxRadioSet::getWidgetValue() const {
    unsigned int const index = getSelectedCheckbox();
    return index == noCheckbox ? -1 : static_cast<int>(index);
}

void CheckboxRadioSet::setSelectedItem(int index) {
    if (index == toSize16(index)) CheckboxRadioSetBase::setSelectedItem(toSize16(index));
}

void CheckboxRadioSet::setNewWidgetValue(int& index, eRedrawFlag redraw) {
    DispatchScope const scope;
    if (!getCheckbox(index)) index = -1;
    if (index == getWidgetValue()) return;
    LifeGuard const life = guard();
    tickOnly(static_cast<unsigned int>(index));
    if (life.alive())
        applyEffects(*this, redraw == eRedrawYes ? Effect::paint | Effect::value : Effect::value);
}

void CheckboxRadioSet::handleCheckboxClick(Checkbox*) {
    describeChanged(DescriptionChange::value);
    tellUserChange(static_cast<int>(getPreviousSelection()), DataChangeType::single);
}

void CheckboxRadioSet::reportUserChange(DataChangeType) {
    reporter_.report(*this, parent(), messageTable[0]);
}

void CheckboxRadioSet::handleDataMixed(bool mixed, eRedrawFlag) {
    showMixed(mixed);
}

/// Members report to the set itself; this is for members whose user function was replaced.
int CheckboxRadioSet::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (!name.startsWith(Checkbox::defaultPrefix.view()))
        return CheckboxPanel::handleMessageEvent(name, sender);
    LifeGuard const life = guard();
    clearOther(sender);
    if (life.alive()) reportUserChange(DataChangeType::single);
    return 1;
}

void CheckboxRadioSet::clearOther(Glob const* sender) {
    for (int i = 0; i < getNumCheckboxes(); ++i) {
        Checkbox* const box = getCheckbox(i);
        if (!box || box == sender || !box->isTicked()) continue;
        return box->setState(false);
    }
}

// Look

void CheckboxRadioSet::setBoldWhenTicked(bool bold) {
    DispatchScope const scope;
    for (int i = 0; i < getNumCheckboxes(); ++i)
        if (Checkbox* const box = getCheckbox(i))
            static_cast<RadioSetCheckbox*>(box)->setBoldWhenTicked(bold);
    setBoldRoom(bold);
}

void CheckboxRadioSet::setTextColourWhenTicked(Colour const& colour) {
    for (int i = 0; i < getNumCheckboxes(); ++i)
        if (Checkbox* const box = getCheckbox(i))
            static_cast<RadioSetCheckbox*>(box)->setTextColourWhenTicked(colour);
}

void CheckboxRadioSet::describe(GlobDescription& description) const {
    CheckboxPanel::describe(description);
    description.role = Role::radioGroup;
    Checkbox const* const chosen = getCheckbox(getWidgetValue());
    if (chosen) description.value = chosen->getString().text();
}

} // namespace wainscot
