#include "text/text_box.h"

#include "host/drawing/drawable.h"
#include "host/objects/tooltip_details.h"
#include "text/text_line_view_p.h"

#include <algorithm>

namespace wainscot {

namespace {

/// The standard width, in heights of a button.
constexpr int standardWidth = 8;

using Text = LightweightString<wchar_t>;

GlobCreationInfo sized(TextBox::InitArgs const& args) {
    unsigned short const button = UifStd::getButtonHeight();
    auto const wide = args.width > 0 ? args.width : toSize16(standardWidth * button);
    return {args, wide, args.height > 0 ? args.height : button};
}

} // namespace

TextBox::TextBox(InitArgs const& args) : TextEntry(sized(args)), line_(std::make_unique<TextLineView>()) {
    standardWidth_ = args.width == 0;
    init(args);
}

TextBox::TextBox(unsigned short width, unsigned short height, Palette const& palette, Canvas* canvas)
    : TextEntry(width, height, palette, canvas), line_(std::make_unique<TextLineView>()) {
    init(InitArgs(width, height));
}

TextBox::~TextBox() = default;

void TextBox::init(InitArgs const& args) {
    standardHeight_ = height() == UifStd::getButtonHeight();
    suffix_ = args.suffix;
    TextBoxBase::setObfuscatedDisplay(args.obfuscated);
    TextEntry::init(args);
}

// What is shown

Text TextBox::getDisplayText() const {
    Text const shown = isGhostLabelVisible()   ? getGhostLabel().text()
                       : isObfuscatedDisplay() ? Text(document().length(), maskCharacter)
                                               : document().text();
    return shown + suffix_;
}

void TextBox::showAll() {
    noteGhost();
    line_->show(getDisplayText(), document().length());
}

void TextBox::textEdited(TextEdit const& edit) {
    if (showsGhost() || isGhostLabelVisible()) return showAll();
    line_->edit(edit, isObfuscatedDisplay() ? Text(edit.inserted.size(), maskCharacter) : edit.inserted);
}

void TextBox::takeFont() {
    line_->setFont(getFontPtr());
}

void TextBox::resetScroll() {
    line_->resetScroll();
}

XY<int> TextBox::caretPlace() const {
    return {line_->displayX(document().cursor()), (height() - getFont().size + 1) / 2};
}

int TextBox::gapAt(XY<int> const& place) {
    return line_->indexAt(place.x);
}

bool TextBox::showsTextAt(XY<int> const& place) const {
    return place.x >= 0 && place.x < width();
}

/// Edge and ground stay as they are.
void TextBox::damageText() {
    auto const changed = line_->takeChanged(width(), document().selection());
    if (!changed) return;
    IntBox const area = textArea();
    damage(IntBox(changed->left, area.y1, changed->right, area.y2).intersection(area));
}

void TextBox::updateVisibleWindow() {
    auto const [left, right] = margins();
    line_->place(width(), left, right, getAlignment(), document().cursor());
}

int TextBox::textXToDisplayX(int x) const {
    return Coordinate::sum(x, line_->origin());
}

int TextBox::displayXToTextX(int x) const {
    return Coordinate::difference(x, line_->origin());
}

int TextBox::getScroll() const {
    return line_->scroll();
}

// Look

void TextBox::setMargins(unsigned short left, unsigned short right) {
    line_->setOrigin(left);
    TextEntry::setMargins(left, right);
}

void TextBox::setDisplaySuffix(Text const& suffix) {
    if (suffix == suffix_) return;
    suffix_ = suffix;
    showAll();
    updateShown();
}

void TextBox::setObfuscatedDisplay(bool obfuscated) {
    if (obfuscated == isObfuscatedDisplay()) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    TextBoxBase::setObfuscatedDisplay(obfuscated);
    if (!life.alive()) return;
    showAll();
    updateShown();
}

SizeNeeds TextBox::sizeNeeds() const {
    int const button = UifStd::getButtonHeight();
    SizeNeeds needs;
    needs.natural = {standardWidth_ ? standardWidth * button : -1, standardHeight_ ? button : -1};
    needs.minimum = {2 * button, standardHeight_ ? button : -1};
    return needs;
}

bool TextBox::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    if (TextBoxBase::getTooltipDetails(place, details)) return true;
    auto const [left, right] = margins();
    bool const isCut = line_->textWidth() > width() - left - right;
    if (isEditing() || !isCut || isObfuscatedDisplay()) return false;
    details.text = getDisplayText();
    details.area = bounds();
    return true;
}

// Keys and focus

TextBox::Use TextBox::performAction(std::uint32_t key, bool hadAnchor) {
    auto const action = actionFor(TextKeys::actionTable, Key::base(key));
    if (!action) return Use::no;
    bool const byWord = (key & Key::ctrl) != 0;
    switch (*action) {
    case TextKeys::Action::backspace:
        noteEdit(engine().eraseBackwards(byWord));
        return Use::yes;
    case TextKeys::Action::del:
        noteEdit(engine().eraseForwards(byWord));
        return Use::yes;
    case TextKeys::Action::tab:
        if ((key & Key::shift) && !(key & Key::meta))
            document().setSelection(hadAnchor ? document().selection().start : 0, document().cursor());
        return Use::passed;
    case TextKeys::Action::enter:
        return performReturn(key);
    case TextKeys::Action::escape:
        performEscape();
        return Use::yes;
    case TextKeys::Action::home:
        document().setCursor(0);
        return Use::yes;
    case TextKeys::Action::end:
        document().setCursor(static_cast<int>(document().length()));
        return Use::yes;
    case TextKeys::Action::left:
    case TextKeys::Action::right:
        moveBy(key, *action == TextKeys::Action::left);
        return Use::yes;
    }
    return Use::no;
}

TextBox::Use TextBox::performReturn(std::uint32_t key) {
    LifeGuard const life = guard();
    FirstException thrown;
    thrown.run([&] { handOverText(); });
    if (life.alive()) thrown.run([&] { informOwner(eReturn, false, static_cast<int>(key)); });
    // The owner may have closed it, or given the focus to something else.
    if (life.alive()) thrown.run([&] { leaveByReturn(); });
    thrown.rethrow();
    return Use::last;
}

void TextBox::leaveByReturn() {
    giveUpFocus();
}

/// Undo brings back what was typed.
void TextBox::performEscape() {
    noteEdit(engine().replaceAll(textAtFocus()));
    engine().selectAll();
    setChanged(false);
    dropPending();
}

void TextBox::handleTabStopFocusReceipt(eDirection direction) {
    if (isEditing()) return;
    LifeGuard const life = guard();
    TextEntry::handleTabStopFocusReceipt(direction);
    if (life.alive() && isEditing()) selectAll();
}

/// The view goes back to the beginning.
void TextBox::handleEditEnd() {
    document().setCursor(0);
    document().dropSelection();
    resetScroll();
}

} // namespace wainscot
