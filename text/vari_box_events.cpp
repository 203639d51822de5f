#include "host/base/convert.h"
#include "host/base/first_exception.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/objects/kbd_focus.h"
#include "text/local_number.h"
#include "text/vari_box_p.h"

#include <algorithm>
#include <cstdlib>

namespace wainscot {

namespace {

/// Pixels for a step of a drag, and for one that is ten times as fine.
constexpr int pixelsPerStep = 3;
constexpr int finePixelsPerStep = 30;
/// For one event: a broken wheel must not hold up the program.
constexpr int maxNotches = 100;
constexpr int bothButtons = EventKind::left | EventKind::right;
/// Where the parser names no characters.
constexpr std::wstring_view numberStarts = L"0123456789+-.,(\u2212\u221E";

using Text = LightweightString<wchar_t>;

bool hasModifier(Event const& event, std::uint32_t modifier) {
    return (event.modifiers() & modifier) != 0;
}

} // namespace

// Steps

VariBox::Stepping VariBox::steppingFor(bool isUp, bool isMajor) {
    if (isMajor) return isUp ? Stepping::upMajor : Stepping::downMajor;
    return isUp ? Stepping::upMinor : Stepping::downMinor;
}

/// The parser, and the box with it, may die in its handler.
bool VariBox::step(Stepping stepping, DataChangeType why, bool isFine) {
    if (!parser_) return false;
    VariBoxParserBase& parser = *parser_;
    LifeGuard const alive(parser.life());
    parser.setDataChangeType(why);
    parser.setFine(isFine);
    bool const hasChanged = makeStep(parser, stepping);
    if (alive.alive()) parser.setFine(false);
    return hasChanged;
}

bool VariBox::makeStep(VariBoxParserBase& parser, Stepping stepping) {
    switch (stepping) {
    case Stepping::upMinor:
        return parser.handleMinorInc();
    case Stepping::downMinor:
        return parser.handleMinorDec();
    case Stepping::upMajor:
        return parser.handleMajorInc();
    case Stepping::downMajor:
        return parser.handleMajorDec();
    }
    return false;
}

/// A change that is complete; also one that the data has made and failed then is reported.
template <class Change>
void VariBox::changeAtOnce(Change change) {
    if (!takesInput()) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    FirstException thrown;
    parser_->setDataChangeType(DataChangeType::single);
    Text const before = parser_->getText();
    if (!life.alive() || !takesInput()) return;
    bool hasChanged = false;
    thrown.run([&] { hasChanged = change(); });
    if (!life.alive()) return thrown.rethrow();
    if (thrown.any()) hasChanged = getText() != before;
    if (hasChanged) thrown.run([&] { handleNudge(); });
    thrown.rethrow();
}

void VariBox::nudge(bool isUp, bool isMajor, bool isFine) {
    changeAtOnce([&] { return step(steppingFor(isUp, isMajor), DataChangeType::single, isFine); });
}

void VariBox::putDefaultBack() {
    changeAtOnce([this] { return parser_->handleDefault(); });
}

/// Each notch is a change of its own.
void VariBox::turnWheel(Event const& event) {
    if (isDragging_) return;
    LifeGuard const life = guard();
    if (isEditing_) endEditing(true);
    int left = std::clamp(std::abs(event.amount()), 1, maxNotches);
    for (; left > 0 && life.alive() && takesInput(); --left)
        nudge(event.amount() >= 1, hasModifier(event, Key::ctrl), hasModifier(event, Key::shift));
}

// Keys

bool VariBox::react(Event const& event) {
    if (takesInput() && mouse_wheel_event(event)) return turnWheel(event), true;
    bool const isKey = takesInput() && !isDragging_ && !isEditing_ && isKeyPressEvent(event);
    return (isKey && reactToKey(event)) || reactToPress(event) || Focusable::react(event);
}

bool VariBox::reactToKey(Event const& event) {
    std::uint32_t const key = event.keyCode();
    auto const action = actionFor(keyTable, key);
    if (!action) return startsEntry(key) && enter(key);
    bool const isFine = (key & Key::shift) != 0;
    switch (*action) {
    case stepUp:
    case stepDown:
        nudge(*action == stepUp, false, isFine);
        break;
    case majorUp:
    case majorDown:
        nudge(*action == majorUp, true, isFine);
        break;
    case edit:
        beginEditing();
        break;
    }
    return true;
}

/// Whether a key begins a new text: what a number can begin with, one of the characters that the parser
/// names, or what the clipboard has.
bool VariBox::startsEntry(std::uint32_t key) const {
    if (TextKeys::shortcutFor(key) == TextKeys::Shortcut::paste) return true;
    if (!TextRules::isPrintable(static_cast<int>(key)) || Key::base(key) == Key::space) return false;
    Text const allowed = fromUTF8(parser_->getAllowedCharacters());
    wchar_t const character = enteredAs(static_cast<wchar_t>(Key::base(key)), allowed);
    // Other letters may be keys of the application.
    return allowed.empty() ? numberStarts.find(character) != std::wstring_view::npos
                           : allowed.find(character) != Text::npos;
}

/// It replaces the whole text.
bool VariBox::enter(std::uint32_t key) {
    LifeGuard const life = guard();
    if (!beginEditing() || !life.alive() || !isEditing_) return true;
    editor()->handleKeyboardEvent(static_cast<int>(key));
    return true;
}

bool VariBox::isTabStopActive() {
    return takesInput() && Focusable::isTabStopActive();
}

// Dragging

bool VariBox::pressBegan(Event const& event) {
    if (!takesInput()) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    unsigned int const number = press().number();
    hadFocus_ = get_kbd_focus() == this;
    claimKbdFocus();
    // The object that lost the focus may have ended the press.
    if (!life.alive() || number != press().number() || !takesInput()) return true;
    // Who drags again at once has not clicked twice.
    if (mouse_double_click_event(event) && mouse_left_event(event) && !hasMoved_)
        doubleClicked();
    else
        beginDrag(event);
    return true;
}

void VariBox::doubleClicked() {
    if (parser_->hasDefault())
        putDefaultBack();
    else
        beginEditing();
}

void VariBox::beginDrag(Event const& event) {
    reference_ = event.place();
    isDragging_ = true;
    isDraggingLeft_ = mouse_left_event(event);
    hasMoved_ = false;
    parser_->setDataChangeType(DataChangeType::started);
    LifeGuard const life = guard();
    parser_->handleDragStart();
    if (life.alive() && isDragging_) showDragging(true);
}

void VariBox::showDragging(bool isDragging) {
    LifeGuard const life = guard();
    if (Editor* const box = editor()) box->setDragging(isDragging);
    if (!life.alive()) return;
    redrawTherm();
    describeChanged(DescriptionChange::state);
}

/// However far the pointer has gone, it is one step; shorter ways add up.
void VariBox::pressMoved(Event const& event) {
    if (!isDragging_ || !parser_) return;
    XY<int> const way = reference_ - event.place();
    int const longer = std::abs(way.x) >= std::abs(way.y) ? way.x : way.y;
    bool const isFine = hasModifier(event, Key::shift);
    int const steps = longer / (isFine && !parser_->hasFineSteps() ? finePixelsPerStep : pixelsPerStep);
    if (steps == 0) return;
    reference_ = event.place();
    hasMoved_ = true;
    bool const isMajor = hasModifier(event, Key::ctrl) || (event.heldButtons() & bothButtons) == bothButtons;
    LifeGuard const life = guard();
    FirstException thrown;
    Text const before = getText();
    bool hasChanged = false;
    thrown.run(
        [&] { hasChanged = step(steppingFor(steps < 0, isMajor), DataChangeType::continued, isFine); });
    if (!life.alive()) return thrown.rethrow();
    if (thrown.any()) hasChanged = getText() != before;
    if (hasChanged && isDragging_) thrown.run([&] { sendMessageToParent(eValueChanged); });
    thrown.rethrow();
}

void VariBox::pressEnded(PressEnd how) {
    if (!isDragging_) return;
    LifeGuard const life = guard();
    FirstException thrown;
    bool isTakenBack = false;
    if (how == PressEnd::cancelled && parser_) thrown.run([&] { isTakenBack = parser_->handleDragCancel(); });
    if (life.alive() && isTakenBack) thrown.run([&] { sendMessageToParent(eValueChanged); });
    if (!life.alive()) return thrown.rethrow();
    isDragging_ = false;
    thrown.run([&] { showDragging(false); });
    if (life.alive() && parser_) thrown.run([&] { parser_->handleNoChange(); });
    // What the program changes later is no part of the drag.
    if (life.alive() && parser_) parser_->setDataChangeType(DataChangeType::single);
    bool const isReported = how != PressEnd::lost && life.alive();
    if (isReported) thrown.run([&] { sendMessageToParent(eChangeComplete); });
    bool const isClick = how == PressEnd::releasedInside && !hasMoved_;
    if (life.alive() && isClick && !isDraggingLeft_) thrown.run([&] { openMenu(press().place()); });
    if (life.alive() && isClick && isDraggingLeft_ && hadFocus_) thrown.run([&] { editAt(press().place()); });
    thrown.rethrow();
}

MouseCursorID VariBox::contextCursor(XY<int> const& place) const {
    if (isDragging_) return hiddenCursor;
    MouseCursorID const cursor = Focusable::contextCursor(place);
    return cursor == inheritCursor && takesInput() ? sizeHorizontalCursor : cursor;
}

} // namespace wainscot
