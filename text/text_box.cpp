#include "text/text_box.h"

#include "foundation/effects.h"
#include "host/drawing/drawable.h"
#include "host/objects/kbd_focus.h"
#include "host/objects/tooltip_details.h"
#include "text/text_box_p.h"
#include "text/text_line_view_p.h"

#include <algorithm>
#include <limits>

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

TextBox::TextBox(InitArgs const& args) : Bindable(sized(args)), line_(std::make_unique<TextLineView>()) {
    standardWidth_ = args.width == 0;
    init(args);
}

TextBox::TextBox(unsigned short width, unsigned short height, Palette const& palette, Canvas* canvas)
    : Bindable(width, height, palette, canvas), line_(std::make_unique<TextLineView>()) {
    init(InitArgs(width, height));
}

TextBox::~TextBox() = default;

void TextBox::init(InitArgs const& args) {
    standardHeight_ = height() == UifStd::getButtonHeight();
    line_->setFont(getFontPtr());
    TextBoxBase::setFont(args.font);
    line_->setFont(getFontPtr());
    ghostLabel_ = args.ghostLabel;
    suffix_ = args.suffix;
    alignment_ = args.alignment;
    setCharacters(args.characters, args.restriction);
    setSizeLimit(args.sizeLimit);
    TextBoxBase::setObfuscatedDisplay(args.obfuscated);
    TextBoxBase::setEditable(args.editable);
    document().setText(args.text);
    noteChangeByProgram();
    showAll();
    updateVisibleWindow();
}

// Value

Text TextBox::getText() const {
    return document().text();
}

Text TextBox::getText(CharPos const& from, CharPos const& to) const {
    int const first = std::max(std::min(from.index, to.index), 0);
    int const last = std::max({from.index, to.index, first});
    return document().substr(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first));
}

Text TextBox::getSelectedText() const {
    return document().selectedText();
}

void TextBox::setText(UIString const& text) {
    setTextInternal(text.text());
}

void TextBox::setNewWidgetValue(Text& value, eRedrawFlag redraw) {
    DispatchScope const scope;
    isPending_ = false;
    handedOver_ = value;
    // Escape must not bring back a text that the data no longer has.
    textAtFocus_ = value;
    setTextInternal(handedOver_, redraw);
}

void TextBox::setTextInternal(Text const& text, eRedrawFlag redraw) {
    DispatchScope const scope;
    if (!document().setText(text)) return;
    noteChangeByProgram();
    line_->resetScroll();
    document().setCursor(isEditing_ ? document().cursor() : 0);
    LifeGuard const life = guard();
    updateShown(redraw);
    if (life.alive()) describeChanged(DescriptionChange::value);
}

bool TextBox::isTextValid() const {
    return true;
}

void TextBox::handOverText() {
    if (!isPending_ || !getChanged()) return;
    DispatchScope const scope;
    isPending_ = false;
    if (!getDataAdaptor()) return;
    Text const before = handedOver_;
    handedOver_ = getText();
    if (handedOver_ == before) return;
    if (!isTextValid()) {
        handedOver_ = before;
        return setTextInternal(before);
    }
    FirstException thrown;
    LifeGuard const life = guard();
    thrown.run([&] { tellUserChange(before, DataChangeType::single); });
    // Escape must not bring back a text that the data no longer has.
    if (life.alive()) textAtFocus_ = getText();
    thrown.rethrow();
}

/// The data that was shown gets what was entered for it.
void TextBox::handleDataAdaptorChange() {
    handOverText();
}

void TextBox::setByUser(Text const& text) {
    DispatchScope const scope;
    Text const before = getText();
    Text const known = std::exchange(handedOver_, text);
    bool const wasPending = std::exchange(isPending_, false);
    FirstException thrown;
    LifeGuard const life = guard();
    engine().replaceAll(text);
    setChanged(true);
    updateShown();
    if (life.alive()) describeChanged(DescriptionChange::value);
    if (life.alive()) thrown.run([&] { tellUserChange(before, DataChangeType::single); });
    if (life.alive() && getDataAdaptor()) noteStep(before, known, wasPending);
    thrown.rethrow();
}

/// What was typed before a step that the data has refused is still to be handed over.
void TextBox::noteStep(Text const& before, Text const& known, bool wasPending) {
    bool const isRefused = getText() == before;
    isPending_ = isRefused && wasPending;
    if (isPending_)
        handedOver_ = known;
    else
        textAtFocus_ = getText();
}

void TextBox::handleDataMixed(bool, eRedrawFlag redraw) {
    if (redraw) makeDirty();
    describeChanged(DescriptionChange::state);
}

// What is shown

Text TextBox::getDisplayText() const {
    Text const shown = isGhostLabelVisible()   ? ghostLabel_.text()
                       : isObfuscatedDisplay() ? Text(document().length(), maskCharacter)
                                               : document().text();
    return shown + suffix_;
}

bool TextBox::isGhostLabelVisible() const {
    return document().length() == 0 && !isEditing_;
}

void TextBox::showAll() {
    showsGhost_ = isGhostLabelVisible();
    line_->show(getDisplayText(), document().length());
}

void TextBox::textEdited(TextEdit const& edit) {
    if (showsGhost_ || isGhostLabelVisible()) return showAll();
    line_->edit(edit, isObfuscatedDisplay() ? Text(edit.inserted.size(), maskCharacter) : edit.inserted);
}

void TextBox::updateShown(eRedrawFlag redraw) {
    isOutdated_ = isInKey_;
    if (isInKey_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    updateVisibleWindow();
    placeCaret();
    if (!life.alive()) return;
    if (redraw) damageText();
    describeChanged(DescriptionChange::selection);
    if (life.alive()) handleCursorChange();
}

void TextBox::handleCursorChange() {}

/// Edge and ground stay as they are.
void TextBox::damageText() {
    auto const changed = line_->takeChanged(width(), document().selection());
    if (!changed) return;
    IntBox const area = textArea();
    damage(IntBox(changed->left, area.y1, changed->right, area.y2).intersection(area));
}

void TextBox::updateIfMoved(int cursor, TextSelection const& selection) {
    if (cursor != document().cursor() || !(selection == document().selection())) updateShown();
}

TextBox::Margins TextBox::margins() const {
    if (margins_) return *margins_;
    auto const standard = toSize16(calcSize(spacingDoubleIndent));
    return {standard, standard};
}

void TextBox::updateVisibleWindow() {
    auto const [left, right] = margins();
    line_->place(width(), left, right, alignment_, document().cursor());
}

void TextBox::placeCaret() {
    TextCursor* const caret = getCaret();
    if (!caret) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    int const size = getFont().size;
    setWidgetPos(caret, {line_->displayX(document().cursor()), (height() - size + 1) / 2});
    if (!life.alive()) return;
    auto const cursor = static_cast<std::size_t>(document().cursor());
    bool const isAtEnd = cursor >= document().length();
    wchar_t const under = isAtEnd ? L' ' : isObfuscatedDisplay() ? maskCharacter : document().at(cursor);
    caret->setCurrentChar(under);
    if (life.alive()) pauseFlash();
}

std::optional<IntBox> TextBox::textCaret() const {
    TextCursor const* const caret = getCaret();
    if (!isEditing_ || !caret) return std::nullopt;
    return caret->box();
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
    if (margins_ == Margins{left, right}) return;
    margins_ = Margins{left, right};
    line_->setOrigin(left);
    makeDirty();
    updateShown();
}

void TextBox::setAlignment(TextAlignment alignment) {
    if (alignment == alignment_) return;
    alignment_ = alignment;
    updateShown();
}

void TextBox::setDisplaySuffix(Text const& suffix) {
    if (suffix == suffix_) return;
    suffix_ = suffix;
    showAll();
    updateShown();
}

void TextBox::setGhostLabel(UIString const& label) {
    if (label == ghostLabel_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    ghostLabel_ = label;
    if (isGhostLabelVisible()) showAll();
    updateShown();
    if (life.alive()) describeChanged(DescriptionChange::name);
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

void TextBox::setFont(Glib::FontDesc const& font) {
    if (font == getFont()) return TextBoxBase::setFont(font);
    DispatchScope const scope;
    LifeGuard const life = guard();
    TextBoxBase::setFont(font);
    if (!life.alive()) return;
    line_->setFont(getFontPtr());
    updateShown();
}

void TextBox::handleLookChange(LookChange changes) {
    TextBoxBase::handleLookChange(changes);
    line_->setFont(getFontPtr());
    if (isGhostLabelVisible()) showAll();
    updateVisibleWindow();
    placeCaret();
}

void TextBox::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    TextBoxBase::reshape();
    if (!life.alive()) return;
    updateVisibleWindow();
    placeCaret();
    // All of it is painted, with the present scroll.
    if (life.alive()) damageText();
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
    if (isEditing_ || !isCut || isObfuscatedDisplay()) return false;
    details.text = getDisplayText();
    details.area = bounds();
    return true;
}

void TextBox::describe(GlobDescription& description) const {
    TextBoxBase::describe(description);
    if (description.name.empty()) description.name = ghostLabel_.text();
    if (isDataMixed()) description.states |= GlobDescription::mixed;
}

// Cursor and selection

int TextBox::getCursorPosition() const {
    return document().cursor();
}

void TextBox::setCursorPosition(eCursorPos where) {
    setCursorIndex(where == eCursorAtEnd ? std::numeric_limits<int>::max() : 0);
}

void TextBox::setCursorPosition(unsigned short index) {
    setCursorIndex(index);
}

void TextBox::setCursorIndex(int index) {
    DispatchScope const scope;
    int const cursor = document().cursor();
    TextSelection const before = document().selection();
    document().setCursor(index);
    document().dropSelection();
    updateIfMoved(cursor, before);
}

void TextBox::updateCurrentPosition(iFont::eCharSeekMethod method, int index) {
    DispatchScope const scope;
    int const cursor = document().cursor();
    bool const isPlace = method == iFont::eSeekAbsolute || index < 0;
    document().setCursor(document().seek(isPlace ? cursor : index, method, index));
    updateIfMoved(cursor, document().selection());
}

void TextBox::setSelection(NumRange<int, Unordered> const& range) {
    DispatchScope const scope;
    int const cursor = document().cursor();
    TextSelection const before = document().selection();
    document().setSelection(range.start(), range.end());
    if (document().selection().hasAnchor()) document().setCursor(document().selection().end);
    updateIfMoved(cursor, before);
}

NumRange<int, Unordered> TextBox::getSelection() const {
    return {document().selection().start, document().selection().end};
}

void TextBox::invalidateTextSelection() {
    DispatchScope const scope;
    TextSelection const before = document().selection();
    document().dropSelection();
    updateIfMoved(document().cursor(), before);
}

void TextBox::highlightAllText(bool highlight) {
    if (highlight) return selectAll();
    invalidateTextSelection();
}

// Editing

void TextBox::noteEdit(bool hasChanged) {
    if (hasChanged) setChanged(true);
    isPending_ = isPending_ || hasChanged;
    LifeGuard const life = guard();
    updateShown();
    // No end of editing will come.
    if (life.alive() && !isEditing_ && !isInKey_) handOverText();
}

void TextBox::addCharacter(int character) {
    DispatchScope const scope;
    auto const code = static_cast<wchar_t>(static_cast<std::uint32_t>(character) & ~Key::shift);
    if (!isAllowed(code)) return;
    bool const overwrites = getEditMode() == eOverwriteMode && document().selection().isEmpty();
    if (overwrites) engine().selectNextCharacter();
    // A text beyond its limit loses nothing by it.
    if (overwrites && !engine().hasRoom()) return document().dropSelection();
    paste(Text(1, code));
}

void TextBox::erase(CharPos const& from, CharPos const& to, bool recordUndo) {
    DispatchScope const scope;
    noteEdit(engine().erase(from, to, recordUndo));
}

void TextBox::eraseSelectedText(bool recordUndo) {
    DispatchScope const scope;
    noteEdit(engine().eraseSelection(recordUndo));
}

void TextBox::selectAll() {
    DispatchScope const scope;
    engine().selectAll();
    offerSelectionSoon();
    updateShown();
}

void TextBox::cut() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    copy();
    if (!life.alive()) return;
    if (document().selection().isEmpty()) engine().selectAll();
    eraseSelectedText(true);
}

void TextBox::paste(Text const& text) {
    DispatchScope const scope;
    noteEdit(engine().paste(text));
}

void TextBox::undo() {
    DispatchScope const scope;
    noteEdit(document().undo());
}

void TextBox::redo() {
    DispatchScope const scope;
    noteEdit(document().redo());
}

} // namespace wainscot
