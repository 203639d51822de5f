#include "text/text_entry.h"

#include "foundation/effects.h"
#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/drawable.h"
#include "look/field.h"
#include "text/text_entry_p.h"

#include <algorithm>
#include <limits>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

} // namespace

TextEntry::TextEntry(GlobCreationInfo const& info) : Bindable(info) {}

TextEntry::TextEntry(unsigned short width, unsigned short height, Palette const& palette, Canvas* canvas)
    : Bindable(width, height, palette, canvas) {}

TextEntry::~TextEntry() = default;

void TextEntry::init(InitArgs const& args) {
    takeFont();
    TextBoxBase::setFont(args.font);
    takeFont();
    ghostLabel_ = args.ghostLabel;
    alignment_ = args.alignment;
    setCharacters(args.characters, args.restriction);
    setSizeLimit(args.sizeLimit);
    TextBoxBase::setEditable(args.editable);
    document().setText(admitted(args.text));
    noteChangeByProgram();
    showAll();
    updateVisibleWindow();
}

// Value

Text TextEntry::getText() const {
    return document().text();
}

Text TextEntry::getText(CharPos const& from, CharPos const& to) const {
    int const first = std::max(std::min(from.index, to.index), 0);
    int const last = std::max({from.index, to.index, first});
    return document().substr(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first));
}

Text TextEntry::getSelectedText() const {
    return document().selectedText();
}

void TextEntry::setText(UIString const& text) {
    setTextInternal(admitted(text.text()));
}

void TextEntry::setNewWidgetValue(Text& value, eRedrawFlag redraw) {
    DispatchScope const scope;
    isPending_ = false;
    handedOver_ = admitted(value);
    // Escape must not bring back a text that the data no longer has.
    if (bringsTextBack()) textAtFocus_ = handedOver_;
    setTextInternal(handedOver_, redraw);
}

void TextEntry::setTextInternal(Text const& text, eRedrawFlag redraw) {
    DispatchScope const scope;
    std::uint64_t const before = document().revision();
    if (!updateText(text) && document().setText(text)) {
        resetScroll();
        document().setCursor(isEditing_ ? document().cursor() : 0);
    }
    if (document().revision() == before) return;
    noteChangeByProgram();
    LifeGuard const life = guard();
    updateShown(redraw);
    if (life.alive()) describeChanged(DescriptionChange::value);
}

bool TextEntry::updateText(Text const&) {
    return false;
}

Text TextEntry::admitted(Text const& text) const {
    return text;
}

bool TextEntry::isTextValid() const {
    return true;
}

void TextEntry::handOverText() {
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
    if (life.alive()) noteTextAtFocus();
    thrown.rethrow();
}

/// The data that was shown gets what was entered for it.
void TextEntry::handleDataAdaptorChange() {
    handOverText();
}

void TextEntry::setByUser(Text const& text) {
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
void TextEntry::noteStep(Text const& before, Text const& known, bool wasPending) {
    bool const isRefused = getText() == before;
    isPending_ = isRefused && wasPending;
    if (isPending_)
        handedOver_ = known;
    else
        noteTextAtFocus();
}

void TextEntry::handleDataMixed(bool, eRedrawFlag redraw) {
    if (redraw) makeDirty();
    describeChanged(DescriptionChange::state);
}

// What is shown

bool TextEntry::isGhostLabelVisible() const {
    return document().length() == 0 && !isEditing_;
}

void TextEntry::updateShown(eRedrawFlag redraw) {
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

void TextEntry::handleCursorChange() {}

void TextEntry::updateIfMoved(int cursor, TextSelection const& selection) {
    if (cursor != document().cursor() || !(selection == document().selection())) updateShown();
}

TextEntry::Margins TextEntry::margins() const {
    if (margins_) return *margins_;
    auto const standard = toSize16(calcSize(spacingDoubleIndent));
    return {standard, standard};
}

void TextEntry::placeCaret() {
    TextCursor* const caret = getCaret();
    if (!caret) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    setWidgetPos(caret, caretPlace());
    if (!life.alive()) return;
    auto const cursor = static_cast<std::size_t>(document().cursor());
    bool const isAtEnd = cursor >= document().length();
    wchar_t const under = isAtEnd ? L' ' : isObfuscatedDisplay() ? maskCharacter : document().at(cursor);
    caret->setCurrentChar(under == L'\n' ? L' ' : under);
    if (life.alive()) pauseFlash();
}

std::optional<IntBox> TextEntry::textCaret() const {
    TextCursor const* const caret = getCaret();
    if (!isEditing_ || !caret) return std::nullopt;
    return caret->box();
}

void TextEntry::setMargins(unsigned short left, unsigned short right) {
    if (margins_ == Margins{left, right}) return;
    margins_ = Margins{left, right};
    makeDirty();
    updateShown();
}

void TextEntry::setAlignment(TextAlignment alignment) {
    if (alignment == alignment_) return;
    alignment_ = alignment;
    updateShown();
}

void TextEntry::setGhostLabel(UIString const& label) {
    if (label == ghostLabel_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    ghostLabel_ = label;
    if (isGhostLabelVisible()) showAll();
    updateShown();
    if (life.alive()) describeChanged(DescriptionChange::name);
}

void TextEntry::setFont(Glib::FontDesc const& font) {
    if (font == getFont()) return TextBoxBase::setFont(font);
    DispatchScope const scope;
    LifeGuard const life = guard();
    TextBoxBase::setFont(font);
    if (!life.alive()) return;
    takeFont();
    updateShown();
}

void TextEntry::handleLookChange(LookChange changes) {
    TextBoxBase::handleLookChange(changes);
    takeFont();
    if (isGhostLabelVisible()) showAll();
    updateVisibleWindow();
    placeCaret();
}

void TextEntry::reshape() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    TextBoxBase::reshape();
    if (!life.alive()) return;
    updateVisibleWindow();
    placeCaret();
    // All of it is painted, with the present scroll.
    if (life.alive()) damageText();
}

void TextEntry::describe(GlobDescription& description) const {
    TextBoxBase::describe(description);
    if (description.name.empty()) description.name = ghostLabel_.text();
    if (description.name.empty()) description.name = fromUTF8(name());
    if (isDataMixed()) description.states |= GlobDescription::mixed;
}

// Cursor and selection

int TextEntry::getCursorPosition() const {
    return document().cursor();
}

void TextEntry::setCursorPosition(eCursorPos where) {
    setCursorIndex(where == eCursorAtEnd ? std::numeric_limits<int>::max() : 0);
}

void TextEntry::setCursorPosition(unsigned short index) {
    setCursorIndex(index);
}

void TextEntry::setCursorIndex(int index) {
    DispatchScope const scope;
    int const cursor = document().cursor();
    TextSelection const before = document().selection();
    document().setCursor(index);
    document().dropSelection();
    updateIfMoved(cursor, before);
}

void TextEntry::updateCurrentPosition(iFont::eCharSeekMethod method, int index) {
    DispatchScope const scope;
    int const cursor = document().cursor();
    bool const isPlace = method == iFont::eSeekAbsolute || index < 0;
    document().setCursor(document().seek(isPlace ? cursor : index, method, index));
    updateIfMoved(cursor, document().selection());
}

void TextEntry::setSelection(NumRange<int, Unordered> const& range) {
    DispatchScope const scope;
    int const cursor = document().cursor();
    TextSelection const before = document().selection();
    document().setSelection(range.start(), range.end());
    if (document().selection().hasAnchor()) document().setCursor(document().selection().end);
    updateIfMoved(cursor, before);
}

NumRange<int, Unordered> TextEntry::getSelection() const {
    return {document().selection().start, document().selection().end};
}

void TextEntry::invalidateTextSelection() {
    DispatchScope const scope;
    TextSelection const before = document().selection();
    document().dropSelection();
    updateIfMoved(document().cursor(), before);
}

void TextEntry::highlightAllText(bool highlight) {
    if (highlight) return selectAll();
    invalidateTextSelection();
}

// Editing

void TextEntry::noteEdit(bool hasChanged) {
    if (hasChanged) setChanged(true);
    isPending_ = isPending_ || hasChanged;
    LifeGuard const life = guard();
    updateShown();
    // No end of editing will come.
    if (life.alive() && !isEditing_ && !isInKey_) handOverText();
}

bool TextEntry::overwritesNext() const {
    return getEditMode() == eOverwriteMode && document().selection().isEmpty();
}

void TextEntry::addCharacter(int character) {
    DispatchScope const scope;
    auto const code = static_cast<wchar_t>(static_cast<std::uint32_t>(character) & ~Key::shift);
    if (!isAllowed(code)) return;
    bool const overwrites = overwritesNext();
    if (overwrites) engine().selectNextCharacter();
    // A text beyond its limit loses nothing by it.
    if (overwrites && !engine().hasRoom()) return document().dropSelection();
    paste(Text(1, code));
}

void TextEntry::erase(CharPos const& from, CharPos const& to, bool recordUndo) {
    DispatchScope const scope;
    noteEdit(engine().erase(from, to, recordUndo));
}

void TextEntry::eraseSelectedText(bool recordUndo) {
    DispatchScope const scope;
    noteEdit(engine().eraseSelection(recordUndo));
}

void TextEntry::selectAll() {
    DispatchScope const scope;
    engine().selectAll();
    offerSelectionSoon();
    updateShown();
}

void TextEntry::cut() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    copy();
    if (!life.alive()) return;
    if (document().selection().isEmpty()) engine().selectAll();
    eraseSelectedText(true);
}

void TextEntry::paste(Text const& text) {
    DispatchScope const scope;
    noteEdit(engine().paste(text));
}

void TextEntry::undo() {
    DispatchScope const scope;
    noteEdit(document().undo());
}

void TextEntry::redo() {
    DispatchScope const scope;
    noteEdit(document().redo());
}

std::pair<int, int> TextEntry::unitAt(int index, Unit unit) const {
    if (unit == Unit::word) return document().wordAt(index);
    return unit == Unit::all ? std::pair(0, static_cast<int>(document().length())) : std::pair(index, index);
}

// Drawing

Colour TextEntry::shownTextColour() const {
    return getTextColour();
}

void TextEntry::draw() {
    drawBackground();
    CanvasRenderer renderer(canvas(), canvasArea());
    drawText(renderer);
    drawFocusMark();
}

void TextEntry::drawBackground() {
    CanvasRenderer renderer(canvas(), canvasArea());
    bool const isInUse = takesInput();
    ControlLook::drawBehindCorners(renderer, canvasArea(), getPalette());
    ControlLook::drawField(renderer, canvasArea(),
                           {.isActive = isInUse, .isHovered = isInUse && containsPointer()}, getPalette());
}

} // namespace wainscot
