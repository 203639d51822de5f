#include "buttons/checkbox_group.h"

#include "host/objects/description.h"
#include "look/face.h"

namespace wainscot {

CheckboxGroup::InitArgs::InitArgs(UIString const& heading, std::vector<UIString> texts, unsigned short w,
                                  unsigned short h)
    : CheckboxPanel::InitArgs(std::move(texts), w, h) {
    title = heading;
    border = Border::group;
}

CheckboxGroup::InitArgs::InitArgs(UIString const& heading, std::vector<UIString> texts, XY<int> const& size)
    : InitArgs(heading, std::move(texts)) {
    setSize(size);
}

CheckboxGroup::CheckboxGroup(InitArgs const& args) : CheckboxPanel(args) {
    set_radius(ControlLook::cornerRadius());
    for (UIString const& label : args.labels) {
        Checkbox::InitArgs boxArgs(label);
        boxArgs.appearance = args.appearance;
        addBox(std::make_unique<Checkbox>(boxArgs));
    }
    setBoldRoom(args.bold);
    layOutBoxes();
}

CheckboxGroup::~CheckboxGroup() = default;

bool CheckboxGroup::isTicked(int index) const {
    Checkbox const* const box = getCheckbox(index);
    return box && box->isTicked();
}

void CheckboxGroup::setTicked(int index, bool ticked) {
    if (Checkbox* const box = getCheckbox(index)) box->setState(ticked);
}

int CheckboxGroup::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    int const index = name.startsWith(Checkbox::defaultPrefix.view()) ? indexOf(sender) : -1;
    if (index < 0) return CheckboxPanel::handleMessageEvent(name, sender);
    lastClicked_ = index;
    reporter_.report(*this, parent(), messageTable[0]);
    return 1;
}

void CheckboxGroup::describe(GlobDescription& description) const {
    CheckboxPanel::describe(description);
    description.role = Role::group;
}

} // namespace wainscot
