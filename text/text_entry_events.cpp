#include "host/base/host_value.h"
#include "host/drawing/drawable.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "host/services/clipboard.h"
#include "host/services/clock.h"
#include "text/text_entry.h"
#include "text/text_entry_p.h"

#include <algorithm>

namespace wainscot {

namespace {

/// Two clicks on boxes that cannot be edited are a double click within so many milliseconds.
constexpr double doubleClickTime = 400;
/// How often the text is scrolled while the pointer is held beside the box, and how soon after the last
/// change a selection is offered to other programs, in milliseconds.
constexpr double scrollPeriod = 40;
constexpr double offerDelay = 200;

/// When such a box was clicked last; one time for all of them.
constinit HostValue<std::optional<double>> lastClick;

} // namespace

// Keys

int TextEntry::handleKeyboardEvent(int keyCode) {
    if (wasOffered()) return unhandled;
    if (!takesFocus()) return handled;
    return useKey(keyCode);
}

int TextEntry::useKey(int keyCode) {
    DispatchScope const scope;
    RedrawHold const hold;
    LifeGuard const life = guard();
    FirstException thrown;
    beginUserChange();
    pauseFlash();
    int answer = handled;
    isInKey_ = true;
    thrown.run([&] { answer = performKey(static_cast<std::uint32_t>(keyCode)); });
    if (!life.alive()) return thrown.rethrow(), handled;
    isInKey_ = false;
    if (isOutdated_) thrown.run([&] { updateShown(); });
    if (life.alive()) thrown.run([&] { tellChanged(keyCode); });
    // A command may follow.
    if (life.alive() && (answer == unhandled || !isEditing_)) thrown.run([&] { handOverText(); });
    thrown.rethrow();
    return answer;
}

int TextEntry::performKey(std::uint32_t key) {
    if (isPrintable(static_cast<int>(key))) {
        addCharacter(static_cast<int>(key));
        return handled;
    }
    TextSelection const before = document().selection();
    if ((key & Key::shift) && !before.hasAnchor())
        document().setSelection(document().cursor(), document().cursor());
    LifeGuard const life = guard();
    if (!isEditingKeyAllowed(key) || !life.alive()) return handled;
    bool const isShortcut = useShortcut(key);
    if (!life.alive()) return handled;
    Use const use = isShortcut ? Use::yes : performAction(key, before.hasAnchor());
    if (use == Use::yes && life.alive()) followKey(key, before.hasAnchor());
    // A key that means something elsewhere leaves no anchor here.
    if (use == Use::no && life.alive()) document().setSelection(before.start, before.end);
    if (use == Use::passed && life.alive() && !(document().selection() == before)) isOutdated_ = true;
    return use == Use::no || use == Use::passed ? unhandled : handled;
}

/// With Shift the selection follows the cursor; else a selection from before the key is dropped.
void TextEntry::followKey(std::uint32_t key, bool hadAnchor) {
    std::uint32_t const base = Key::base(key);
    isOutdated_ = true;
    if ((key & Key::shift) == 0) {
        bool const isCopy = TextKeys::shortcutFor(key) == TextKeys::Shortcut::copy;
        if (hadAnchor && !isCopy) document().dropSelection();
        return;
    }
    bool const isEdit = base == Key::backspace || base == Key::del || base == Key::enter;
    if (isEdit || (key & Key::meta)) return;
    document().setSelection(std::max(document().selection().start, 0), document().cursor());
    offerSelectionSoon();
}

/// Shift and Meta together select from the cursor to that end, and leave the cursor.
void TextEntry::moveBy(std::uint32_t key, bool backwards) {
    int const cursor = document().cursor();
    auto const length = static_cast<int>(document().length());
    if (cursor == (backwards ? 0 : length)) return;
    if ((key & Key::shift) && (key & Key::meta))
        return document().setSelection(backwards ? 0 : cursor, backwards ? cursor : length);
    bool const byWord = (key & Key::ctrl) != 0;
    auto const method = backwards ? (byWord ? iFont::eSeekPrevWord : iFont::eSeekPrevChar)
                                  : (byWord ? iFont::eSeekNextWord : iFont::eSeekNextChar);
    document().setCursor(document().seek(cursor, method));
}

// Focus

void TextEntry::handleKbdFocus() {
    bool const hasFocus = get_kbd_focus() == this;
    if (hasFocus == isEditing_) return TextBoxBase::handleKbdFocus();
    if (hasFocus)
        gainFocus();
    else
        loseFocus();
}

void TextEntry::noteTextAtFocus() {
    if (bringsTextBack()) textAtFocus_ = document().text();
}

void TextEntry::handleEditEnd() {}

void TextEntry::gainFocus() {
    if (!takesFocus()) return giveUpFocus();
    DispatchScope const scope;
    LifeGuard const life = guard();
    isEditing_ = true;
    if (!document().selection().isEmpty()) document().setCursor(document().selection().end);
    noteTextAtFocus();
    if (!isPending_ && getDataAdaptor()) handedOver_ = document().text();
    if (showsGhost_) showAll();
    updateVisibleWindow();
    makeCaret(caretPlace());
    if (!life.alive() || !isEditing_) return;
    placeCaret();
    beginInterception();
    presses_ = Glib::addMouseListener([this](Event const& event) { notePress(event); });
    TextBoxBase::handleKbdFocus();
    if (life.alive() && isEditing_) informOwner(eEditStart, false, 0);
}

void TextEntry::loseFocus() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    FirstException thrown;
    isEditing_ = false;
    if (selecting_ && selecting_->offer.isRunning()) offerSelection();
    endInterception();
    presses_.end();
    handleEditEnd();
    if (isGhostLabelVisible()) showAll();
    thrown.run([&] { removeCaret(); });
    if (life.alive()) thrown.run([&] { updateShown(); });
    if (life.alive()) thrown.run([&] { TextBoxBase::handleKbdFocus(); });
    if (life.alive()) thrown.run([&] { handOverText(); });
    if (life.alive()) thrown.run([&] { informOwner(eEditEnd, false, 0); });
    thrown.rethrow();
}

void TextEntry::handleDetached() {
    isEditing_ = false;
    selecting_.reset();
    presses_.end();
    endInterception();
    Bindable::handleDetached();
}

// Pointer

void TextEntry::notePress(Event const& event) {
    if (mouse_down_event(event) && !screenBox().contains(event.place())) handlePressElsewhere();
}

int TextEntry::handleMouseEvent(Event const& event) {
    LifeGuard const life = guard();
    bool const isReadOnlyPress = isActive() && !isEditable() && handleReadOnlyPress(event);
    if (!life.alive()) return handled;
    if (isActive() && !takesFocus()) return isReadOnlyPress ? handled : unhandled;
    if (pressWithMiddle(event)) return handled;
    return reactToPress(event) ? handled : TextBoxBase::handleMouseEvent(event);
}

bool TextEntry::handleReadOnlyPress(Event const& event) {
    if (!mouse_left_event(event) || !mouse_down_event(event) || !isPlainEvent(event)) return false;
    double const now = service_get_msecs();
    std::optional<double> const before = lastClick.get();
    lastClick.set(now);
    if (before && now - *before < doubleClickTime) informOwner(eDoubleClick, false, 0);
    return true;
}

bool TextEntry::takeFocus() {
    LifeGuard const life = guard();
    if (!isEditing_) claimKbdFocus();
    return life.alive() && isEditing_ && takesFocus();
}

bool TextEntry::pressWithMiddle(Event const& event) {
    bool const isPress = mouse_middle_event(event) && mouse_down_event(event);
    if (!isPress || !isPlainEvent(event) || !takesInput() || press().isHeld()) return false;
    int const index = gapAt(eventXYToGlobXY(event, *this));
    Text const text = WindowsClipboard::getSelection();
    document().dropSelection();
    document().setCursor(index);
    if (!takeFocus()) return true;
    document().dropSelection();
    document().setCursor(index);
    insertComposed(text);
    return true;
}

/// A click puts the cursor, a second one selects the word and a third one everything. Shift takes the end of
/// the selection to the pointer.
bool TextEntry::pressBegan(Event const& event) {
    bool const extends = getModifier(event) == Key::shift && !mouse_chord_event(event);
    if (!takesFocus() || !selectsByPointer() || !(isPlainEvent(event) || extends)) return false;
    int const index = gapAt(eventXYToGlobXY(event, *this));
    unsigned int const number = press().number();
    int const cursorBefore = document().cursor();
    TextSelection const selectionBefore = document().selection();
    int const anchor = extends && selectionBefore.hasAnchor() ? selectionBefore.start
                       : extends                              ? cursorBefore
                                                              : index;
    // The view does not scroll to where the cursor was.
    document().dropSelection();
    document().setCursor(index);
    if (!takeFocus() || number != press().number()) return true;
    Selecting& state = selecting();
    state.cursorBefore = cursorBefore;
    state.selectionBefore = selectionBefore;
    state.pointer = eventXYToGlobXY(event, *this);
    bool const isWord = event.clicks() == 2 && !extends;
    bool const isAll = event.clicks() > 2 && !extends;
    state.unit = isAll ? Unit::all : isWord ? Unit::word : Unit::character;
    state.pressed = extends ? std::pair(anchor, anchor) : unitAt(index, state.unit);
    selectTo(index);
    return true;
}

/// From the far end of what was pressed to the far end of the unit at the pointer.
void TextEntry::selectTo(int index) {
    auto const [from, to] = selecting().pressed;
    auto const [first, last] = unitAt(index, selecting().unit);
    bool const isBefore = index < from;
    int const end = isBefore ? first : std::max(to, index > to ? last : to);
    engine().select(isBefore ? to : from, end);
    updateShown();
}

void TextEntry::pressMoved(Event const& event) {
    if (!selecting_ || !isEditing_) return;
    LifeGuard const life = guard();
    selecting_->pointer = eventXYToGlobXY(event, *this);
    selectTo(gapAt(selecting_->pointer));
    if (!life.alive()) return;
    if (showsTextAt(selecting_->pointer)) return selecting_->scroll.stop();
    if (!selecting_->scroll.isRunning()) selecting_->scroll.start(scrollPeriod);
}

void TextEntry::scrollWhileSelecting() {
    if (!press().isHeld() || !isEditing_) return;
    selecting_->scroll.start(scrollPeriod);
    selectTo(gapAt(selecting_->pointer));
}

void TextEntry::pressEnded(PressEnd how) {
    if (!selecting_) return;
    selecting_->scroll.stop();
    // Who is called away from the window goes on where he was.
    if (how == PressEnd::cancelled && isEditing_ && glib_appHasFocus()) {
        TextSelection const before = selecting_->selectionBefore;
        document().setCursor(selecting_->cursorBefore);
        document().setSelection(before.start, before.end);
        return updateShown();
    }
    offerSelection();
}

// The selection for other programs

TextEntry::Selecting& TextEntry::selecting() {
    if (!selecting_) selecting_ = std::make_unique<Selecting>(*this);
    return *selecting_;
}

void TextEntry::offerSelectionSoon() {
    if (isEditing_) selecting().offer.start(offerDelay);
}

void TextEntry::offerSelection() {
    if (selecting_) selecting_->offer.stop();
    if (!isObfuscatedDisplay() && !document().selection().isEmpty())
        WindowsClipboard::addSelection(getSelectedText());
}

} // namespace wainscot
