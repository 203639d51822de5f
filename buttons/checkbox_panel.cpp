#include "buttons/checkbox_panel.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

#include <algorithm>

namespace wainscot {

namespace {

int rowsFor(int count, int columns) {
    return (count + columns - 1) / columns;
}

int heightFor(int rows, int rowHeight) {
    return rows <= 0 ? 0 : rows * rowHeight + (rows - 1) * UifStd::getRowGap();
}

int flagsFor(CheckboxPanel::InitArgs const& args) {
    return args.title.isEmpty() ? 0 : StandardPanel::plainTitle;
}

/// What all checkboxes need, in columns that are as wide as the widest of them.
XY<int> neededSize(CheckboxPanel::InitArgs const& args) {
    int widest = 0;
    for (UIString const& label : args.labels)
        widest = std::max(widest, Checkbox::calcWidth(label, Border::none, args.appearance, args.bold));
    int const columns = std::max<int>(args.columns, 1);
    int const rows = rowsFor(static_cast<int>(args.labels.size()), columns);
    XY<int> const user{columns * widest, heightFor(rows, UifStd::getButtonHeight())};
    return StandardPanel::calcPanelSize(user, flagsFor(args), Border(args.border));
}

} // namespace

CheckboxPanel::InitArgs::InitArgs(std::vector<UIString> texts, unsigned short w, unsigned short h)
    : GlobCreationInfo(w, h), labels(std::move(texts)) {
    opaque = false;
}

StandardPanel::InitArgs CheckboxPanel::panelArgs(InitArgs const& args) {
    bool const isGiven = args.width != 0 && args.height != 0;
    XY<int> const needed = isGiven ? XY<int>() : neededSize(args);
    return {GlobCreationInfo(args, args.width != 0 ? args.width : toSize16(needed.x),
                             args.height != 0 ? args.height : toSize16(needed.y)),
            Border(args.border)};
}

CheckboxPanel::CheckboxPanel(InitArgs const& args)
    : StandardPanel(panelArgs(args)), columns_(std::max<int>(args.columns, 1)) {
    if (!args.title.isEmpty()) setTitle(args.title, eRedrawNo);
}

CheckboxPanel::~CheckboxPanel() = default;

void CheckboxPanel::addBox(std::unique_ptr<Checkbox> box) {
    box->setPalette(getPalette());
    if (!isActive()) box->setActive(false, eRedrawNo);
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

// Layout

unsigned short CheckboxPanel::calcHeightForRows(unsigned char rows, unsigned short rowHeight) {
    return toSize16(heightFor(rows, rowHeight != 0 ? rowHeight : UifStd::getButtonHeight()));
}

/// Rows move together, and get lower at last, where there is no room for all of them.
void CheckboxPanel::layOutBoxes() {
    IntBox const area = getUserArea();
    int const rows = std::max(rowsFor(getNumCheckboxes(), columns_), 1);
    int const usual = UifStd::getButtonHeight();
    int const step = std::min(usual + UifStd::getRowGap(),
                              rows > 1 ? std::max(area.height() - usual, 0) / (rows - 1) : usual);
    int const rowHeight = std::clamp(rows > 1 ? step : area.height(), 0, usual);
    for (int i = 0; i < getNumCheckboxes(); ++i) {
        Checkbox* const box = getCheckbox(i);
        if (!box) continue;
        int const column = i % columns_;
        int const left = area.width() * column / columns_;
        int const right = area.width() * (column + 1) / columns_;
        box->resize(right - left, rowHeight);
        addChild(box, UserTopLeft(left, i / columns_ * step));
    }
}

void CheckboxPanel::reshape() {
    StandardPanel::reshape();
    layOutBoxes();
}

void CheckboxPanel::handleLookChange() {
    StandardPanel::handleLookChange();
    layOutBoxes();
}

// State and look

void CheckboxPanel::setAppearance(Checkbox::eAppearance appearance) {
    for (GlobRef<Checkbox> const& box : boxes_)
        if (box.get()) box.get()->setAppearance(appearance);
}

void CheckboxPanel::setActive(bool active, eRedrawFlag redraw) {
    LifeGuard const life = guard();
    StandardPanel::setActive(active, redraw);
    for (std::size_t i = 0; life.alive() && i < boxes_.size(); ++i)
        if (Checkbox* const box = boxes_[i].get()) box->setActive(active, redraw);
}

void CheckboxPanel::setPalette(Palette const& palette) {
    StandardPanel::setPalette(palette);
    for (GlobRef<Checkbox> const& box : boxes_)
        if (box.get()) box.get()->setPalette(palette);
}

void CheckboxPanel::getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int) {
    for (GlobRef<Checkbox> const& box : boxes_)
        if (box.get()) controls.push_back(box.get());
}

} // namespace wainscot
