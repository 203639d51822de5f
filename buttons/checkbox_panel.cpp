#include "buttons/checkbox_panel.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/description.h"

#include <algorithm>

namespace wainscot {

namespace {

int rowsFor(int count, int columns) {
    return (count + columns - 1) / columns;
}

int heightFor(int rows, int rowHeight) {
    return rows <= 0 ? 0 : rows * rowHeight + (rows - 1) * UifStd::getRowGap();
}

/// The title as it is drawn, with room at both ends.
int titleWidth(UIString const& title) {
    return title.isEmpty() ? 0
                           : Glib::loadFont(UifStd::getTitleFont())->textWidth(title.text()) +
                                 4 * UifStd::getIndentWidth();
}

XY<int> panelSize(XY<int> user, UIString const& title, Border const& border) {
    int const flags = title.isEmpty() ? 0 : StandardPanel::plainTitle;
    return StandardPanel::calcPanelSize({std::max(user.x, titleWidth(title)), user.y}, flags, border);
}

} // namespace

CheckboxPanel::InitArgs::InitArgs(std::vector<UIString> texts, unsigned short w, unsigned short h)
    : GlobCreationInfo(w, h), labels(std::move(texts)) {
    opaque = false;
}

CheckboxPanel::InitArgs::InitArgs(std::vector<UIString> texts, XY<int> const& size)
    : InitArgs(std::move(texts)) {
    setSize(size);
}

/// An automatic size is set after the checkboxes are added.
StandardPanel::InitArgs CheckboxPanel::panelArgs(InitArgs const& args) {
    return {args, Border(args.border)};
}

CheckboxPanel::CheckboxPanel(InitArgs const& args)
    : StandardPanel(panelArgs(args)), columns_(std::max<int>(args.columns, 1)), bold_(args.bold),
      automatic_(args.width == 0, args.height == 0) {
    if (!args.title.isEmpty()) setTitle(args.title, eRedrawNo);
}

CheckboxPanel::~CheckboxPanel() = default;

void CheckboxPanel::addBox(std::unique_ptr<Checkbox> box) {
    box->setPalette(getPalette());
    boxes_.emplace_back(addChild(std::move(box)));
}

Checkbox* CheckboxPanel::getCheckbox(int index) const {
    bool const exists = index >= 0 && index < getNumCheckboxes();
    return exists ? boxes_[static_cast<std::size_t>(index)].get() : nullptr;
}

int CheckboxPanel::indexOf(Glob const* glob) const {
    for (int i = 0; glob && i < getNumCheckboxes(); ++i)
        if (getCheckbox(i) == glob) return i;
    return -1;
}

Checkbox* CheckboxPanel::childBox(int index) const {
    Checkbox* const box = getCheckbox(index);
    return box && box->parent() == this ? box : nullptr;
}

// Layout

XY<int> CheckboxPanel::neededSize() const {
    int widest = 0;
    for (int i = 0; i < getNumCheckboxes(); ++i)
        if (Checkbox const* const box = getCheckbox(i))
            widest = std::max(
                widest, Checkbox::calcWidth(box->getString(), Border::none, box->getAppearance(), bold_));
    int const rows = rowsFor(getNumCheckboxes(), columns_);
    return panelSize({columns_ * widest, heightFor(rows, UifStd::getButtonHeight())}, getTitle(),
                     getBorder());
}

SizeNeeds CheckboxPanel::sizeNeeds() const {
    return automatic_.needs(neededSize());
}

void CheckboxPanel::resizeToFit() {
    automatic_.apply(*this, neededSize());
}

void CheckboxPanel::setBoldRoom(bool bold) {
    bold_ = bold;
    resizeToFit();
}

unsigned short CheckboxPanel::calcHeightForRows(unsigned char rows, unsigned short rowHeight) {
    return toSize16(heightFor(rows, rowHeight != 0 ? rowHeight : UifStd::getButtonHeight()));
}

/// Without room for all rows, the gaps shrink first, then the rows.
void CheckboxPanel::layOutBoxes() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    IntBox const area = getUserArea();
    int const rows = std::max(rowsFor(getNumCheckboxes(), columns_), 1);
    int const usual = UifStd::getButtonHeight();
    int const step = std::min(usual + UifStd::getRowGap(),
                              rows > 1 ? std::max(area.height() - usual, 0) / (rows - 1) : usual);
    int const rowHeight = std::clamp(rows > 1 ? step : area.height(), 0, usual);
    for (int i = 0; life.alive() && i < getNumCheckboxes(); ++i) {
        Checkbox* const box = childBox(i);
        if (!box) continue;
        int const column = i % columns_;
        int const left = area.width() * column / columns_;
        int const right = area.width() * (column + 1) / columns_;
        box->resize(right - left, rowHeight);
        // Listeners may have taken it away.
        if (childBox(i)) addChild(box, UserTopLeft(left, i / columns_ * step));
    }
}

void CheckboxPanel::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    StandardPanel::reshape();
    if (life.alive()) layOutBoxes();
}

void CheckboxPanel::handleLookChange(LookChange changes) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    StandardPanel::handleLookChange(changes);
    if (life.alive()) resizeToFit();
    if (life.alive()) layOutBoxes();
}

// State and look

void CheckboxPanel::setAppearance(Checkbox::eAppearance appearance) {
    DispatchScope const scope;
    for (HandlerRef<Checkbox> const& box : boxes_)
        if (box.get()) box.get()->setAppearance(appearance);
}

void CheckboxPanel::setPalette(Palette const& palette) {
    DispatchScope const scope;
    StandardPanel::setPalette(palette);
    for (HandlerRef<Checkbox> const& box : boxes_)
        if (box.get()) box.get()->setPalette(palette);
}

void CheckboxPanel::getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int) {
    for (HandlerRef<Checkbox> const& box : boxes_)
        if (box.get()) controls.push_back(box.get());
}

void CheckboxPanel::describeChild(Glob const& child, GlobDescription& description) const {
    int const index = indexOf(&child);
    if (index < 0) return;
    description.memberOf = HandlerRef<Glob>(const_cast<CheckboxPanel*>(this));
    description.position = static_cast<std::size_t>(index) + 1;
    description.setSize = boxes_.size();
}

} // namespace wainscot
