#include "text/text_box_base.h"

#include "foundation/effects.h"
#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/drawing/drawable.h"
#include "host/drawing/uif_std.h"
#include "host/events/event_system.h"
#include "host/events/event_time_server.h"
#include "host/events/filter_stack.h"
#include "host/events/key_names.h"
#include "host/events/messages.h"
#include "host/objects/kbd_focus.h"
#include "host/services/clipboard.h"
#include "host/services/clock.h"
#include "host/services/text_ids.h"
#include "look/field.h"
#include "look/ink.h"
#include "menus/model/menu_item.h"
#include "text/text_keys.h"

#include <algorithm>

namespace wainscot {

namespace {

/// The box is asked for keys before all others but open pop-ups.
constexpr int interceptPriority = 1536;
/// How many milliseconds after the last key the caret flashes again.
constexpr double flashPause = 500;

/// While a key is on its way that was offered before; the box may die meanwhile.
class Offered {
public:
    Offered(TextBoxBase const& box, bool& flag) : life_(box.guard()), flag_(flag) { flag_ = true; }
    ~Offered() {
        if (life_.alive()) flag_ = false;
    }
    Offered(Offered const&) = delete;
    Offered& operator=(Offered const&) = delete;

private:
    LifeGuard life_;
    bool& flag_;
};

} // namespace

TextBoxBase::TextBoxBase(GlobCreationInfo const& info) : Focusable(StandardPanel::InitArgs(info)) {
    init();
}

TextBoxBase::TextBoxBase(unsigned short width, unsigned short height, Palette const& palette, Canvas* canvas)
    : Focusable(width, height, palette, true, canvas) {
    init();
}

void TextBoxBase::init() {
    font_ = UifStd::getFont();
    loadedFont_ = Glib::loadFont(font_);
    document_.setView(this);
}

TextBoxBase::~TextBoxBase() = default;

// What the owner is told

void TextBoxBase::requestCallback(LightweightString<char> message, EventHandler* target,
                                  eCallbackEvent event) {
    callbacks_.push_back({std::move(message), HandlerRef<EventHandler>(target), {}, event});
}

void TextBoxBase::requestCallback(Callback const& callback, eCallbackEvent event) {
    if (callback) callbacks_.push_back({{}, {}, callback, event});
}

void TextBoxBase::withdrawCallbacks(EventHandler const* target) {
    std::erase_if(callbacks_, [target](CallbackSummary const& entry) {
        return !entry.callback && (!entry.target || entry.target.get() == target);
    });
}

void TextBoxBase::informOwner(eCallbackEvent event, bool direct, int keyCode) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    std::vector<CallbackSummary> const entries = callbacks_;
    FirstException thrown;
    for (CallbackSummary const& entry : entries)
        if (entry.event == event && life.alive()) thrown.run([&] { serve(entry, direct, keyCode); });
    thrown.rethrow();
}

void TextBoxBase::serve(CallbackSummary const& entry, bool direct, int keyCode) {
    if (entry.callback) {
        NotifyMsg message(entry.message);
        message.setCode(entry.event);
        entry.callback->call(message);
        return;
    }
    EventHandler* const target = entry.target.get();
    if (!target) return;
    Event event(EventKind::message, static_cast<std::uint32_t>(keyCode), target);
    event.setMessage(entry.message);
    event.setSender(this);
    if (direct)
        deliverEvent(target, event);
    else
        event_send(&event);
}

void TextBoxBase::tellChanged(int keyCode) {
    if (!isChangeUntold()) return;
    toldRevision_ = document_.revision();
    LifeGuard const life = guard();
    describeChanged(DescriptionChange::value);
    if (life.alive()) informOwner(eChanged, true, keyCode);
}

// What can be edited

void TextBoxBase::setEditable(bool editable) {
    if (editable == isEditable_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    isEditable_ = editable;
    if (!editable) giveUpFocus();
    if (life.alive()) applyEffects(*this, Effect::paint | Effect::state);
}

void TextBoxBase::setEditMode(eEditMode mode) {
    editMode_ = mode;
    styleCaret();
}

void TextBoxBase::setCharacters(LightweightString<wchar_t> const& characters,
                                eCharacterRestriction restriction) {
    rules_.setCharacters(characters, restriction);
}

void TextBoxBase::setObfuscatedDisplay(bool obfuscated) {
    document_.setOneWord(obfuscated);
    changeSetting(*this, isObfuscated_, obfuscated, Effect::paint | Effect::value);
}

void TextBoxBase::addUndoItem(HistoryItem const& item) {
    if (!rules_.areLineFeedsAllowed()) return document_.addUndoItem(item);
    document_.addUndoItem({TextRules::withLineFeeds(item.removed), TextRules::withLineFeeds(item.inserted),
                           item.cursorBefore, item.cursorAfter});
}

bool TextBoxBase::isEditingKeyAllowed(unsigned int) {
    return true;
}

// Clipboard

LightweightString<wchar_t> TextBoxBase::textToCopy() const {
    return document_.selection().isEmpty() ? document_.text() : document_.selectedText();
}

void TextBoxBase::copy() {
    if (!isObfuscated_) WindowsClipboard::addText(textToCopy());
}

void TextBoxBase::insertComposed(LightweightString<wchar_t> const& text) {
    if (!takesInput()) return;
    DispatchScope const scope;
    RedrawHold const hold;
    LifeGuard const life = guard();
    FirstException thrown;
    beginUserChange();
    thrown.run([&] { paste(text); });
    if (life.alive()) thrown.run([&] { tellChanged(0); });
    thrown.rethrow();
}

// Look

void TextBoxBase::setFont(Glib::FontDesc const& font) {
    isStandardFont_ = font == UifStd::getFont();
    if (font == font_) return;
    font_ = font;
    loadedFont_ = Glib::loadFont(font_);
    if (TextCursor* const caret = getCaret()) caret->setFont(font_);
    applyEffects(*this, Effect::paint | Effect::layout | Effect::size);
}

void TextBoxBase::handleLookChange(LookChange changes) {
    Focusable::handleLookChange(changes);
    font_ = isStandardFont_ ? UifStd::getFont() : font_;
    loadedFont_ = Glib::loadFont(font_);
    if (TextCursor* const caret = getCaret()) caret->setFont(font_);
    styleCaret();
}

void TextBoxBase::setPalette(Palette const& palette) {
    LifeGuard const life = guard();
    Focusable::setPalette(palette);
    if (life.alive()) styleCaret();
}

Colour TextBoxBase::getTextColour() const {
    return getPalette().text(isActive() ? eTextEnabled : eTextDisabled);
}

Colour TextBoxBase::getSelectedTextColour() const {
    Colour const& ground = getPalette().selection(eSelectionActive);
    double const r = ground.red();
    double const g = ground.green();
    double const b = ground.blue();
    Colour hue(0, 1, 1);
    if (g >= r && g > b)
        hue = Colour(1, 0, 1);
    else if (b > r && b > g)
        hue = Colour(1, 1, 0);
    constexpr double share = 0.75;
    return Colour::mix(hue, getTextColour(), share);
}

// Caret

void TextBoxBase::setCaretColour(Colour const& colour) {
    caretColour_ = colour;
    styleCaret();
}

void TextBoxBase::makeCaret(XY<int> const& place) {
    if (getCaret()) return;
    auto* const caret = new TextCursor(font_, canvas());
    caret_ = HandlerRef<TextCursor>(caret);
    addWidget(caret, place.x, place.y);
    styleCaret();
}

/// The character on a block is written so that it reads on the block.
void TextBoxBase::styleCaret() {
    TextCursor* const caret = getCaret();
    if (!caret) return;
    DispatchScope const scope;
    Colour const ground = caretColour_.value_or(getTextColour());
    Colour const field = ControlLook::fieldColour({.isActive = takesInput()}, getPalette());
    caret->setPalette(Palette(ControlLook::inkOn(field, ground), ground));
    caret->setCursorStyle(editMode_ == eOverwriteMode ? TextCursor::eBlockStyle : TextCursor::eLineStyle);
}

void TextBoxBase::removeCaret() {
    clearInterest(EventKind::timer);
    Glob* caret = getCaret();
    caret_ = {};
    removeWidget(caret);
}

void TextBoxBase::pauseFlash() {
    flashPausedAt_ = service_get_msecs();
    TextCursor* const caret = getCaret();
    if (!caret) return;
    caret->deactivateFlash();
    caret->show();
    setInterest(EventKind::timer);
    setNextTimer(flashPause + EventTimeServer::minMs);
}

int TextBoxBase::handleTimerEvent() {
    double const paused = service_get_msecs() - flashPausedAt_;
    if (paused <= flashPause) {
        setNextTimer(flashPause - paused + EventTimeServer::minMs);
        return handled;
    }
    flashPausedAt_ = service_get_msecs();
    clearInterest(EventKind::timer);
    if (TextCursor* const caret = getCaret()) caret->restartFlash();
    return handled;
}

// Focus

bool TextBoxBase::isTabStopActive() {
    return takesFocus() && Focusable::isTabStopActive();
}

void TextBoxBase::handleTabStopFocusLoss() {
    // It was the current stop already: this loss follows its own receipt.
    if (!isReceivingTabStopFocus()) giveUpFocus();
}

void TextBoxBase::giveUpFocus() {
    KbdFocus::giveUp(*this);
}

void TextBoxBase::beginInterception() {
    FilterStack<Event>& stack = getEventInterceptStack();
    if (!stack.contains(interception_)) interception_ = stack.push(this, interceptPriority);
}

void TextBoxBase::endInterception() {
    if (interception_.valid() && EventSystem::current()) getEventInterceptStack().pop(interception_);
    interception_ = {};
}

// Events

bool TextBoxBase::react(Event const& event) {
    if (isMessageEvent(event) && event.message() == compoundTextInputMsg) {
        auto const* const text = unwrapData<LightweightString<wchar_t>>(event.data());
        if (text) insertComposed(LightweightString<wchar_t>(*text));
        return true;
    }
    if (!isKeyPressEvent(event) || !event.wasOffered() || !interception_.valid())
        return Focusable::react(event);
    Offered const offered(*this, wasOffered_);
    return Focusable::react(event);
}

bool TextBoxBase::intercept(Event const& event) {
    if (!isKeyPressEvent(event)) return takesFocus();
    return handleKeyboardEvent(static_cast<int>(TextKeys::translated(event.keyCode()))) == handled;
}

int TextBoxBase::handleKeyboardEvent(int keyCode) {
    auto const key = static_cast<std::uint32_t>(keyCode);
    bool const isUsed = !wasOffered_ && takesInput() && isEditingKeyAllowed(key) && useShortcut(key);
    return isUsed ? handled : unhandled;
}

bool TextBoxBase::useShortcut(std::uint32_t key) {
    auto const shortcut = TextKeys::shortcutFor(key);
    if (!shortcut) return false;
    switch (*shortcut) {
    case TextKeys::Shortcut::selectAll:
        selectAll();
        break;
    case TextKeys::Shortcut::copy:
        copy();
        break;
    case TextKeys::Shortcut::paste:
        paste(WindowsClipboard::getText());
        break;
    case TextKeys::Shortcut::cut:
        cut();
        break;
    case TextKeys::Shortcut::redo:
        redo();
        break;
    case TextKeys::Shortcut::undo:
        undo();
        break;
    }
    return true;
}

int TextBoxBase::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (name == copyMsg) return copy(), handled;
    if (name == cutMsg) return handleKeyboardEvent(static_cast<int>(Key::ctrl | 'X')), handled;
    if (name == pasteMsg) return handleKeyboardEvent(static_cast<int>(Key::ctrl | 'V')), handled;
    if (name == undoMsg) return handleKeyboardEvent(static_cast<int>(Key::ctrl | 'Z')), handled;
    if (name == redoMsg) return handleKeyboardEvent(static_cast<int>(Key::ctrl | 'Y')), handled;
    if (name != selectAllMsg) return Focusable::handleMessageEvent(name, sender);
    LifeGuard const life = guard();
    claimKbdFocus();
    if (life.alive()) selectAll();
    return handled;
}

void TextBoxBase::reviewMenu(Event const*) {
    clearMenu();
    if (!isActive()) return;
    auto const add = [this](ResId text, LightweightString<char> const& message, char letter,
                            bool isPossible) {
        MenuItem item(text, WidgetCallback(message));
        item.setIncidentalText(fromUTF8(keyToString(Key::ctrl | static_cast<std::uint32_t>(letter))));
        item.setActive(isPossible);
        addMenuItem(item);
    };
    bool const hasText = document_.length() > 0;
    bool const isReadable = hasText && !isObfuscated_;
    add(TextId::undo, undoMsg, 'Z', isEditable_ && numUndoItems() > 0);
    add(TextId::redo, redoMsg, 'Y', isEditable_ && numRedoItems() > 0);
    addMenuItem(MenuItem());
    add(TextId::cut, cutMsg, 'X', isEditable_ && isReadable);
    add(TextId::copy, copyMsg, 'C', isReadable);
    add(TextId::paste, pasteMsg, 'V', isEditable_);
    addMenuItem(MenuItem());
    add(TextId::selectAll, selectAllMsg, 'A', hasText);
}

MouseCursorID TextBoxBase::contextCursor(XY<int> const& place) const {
    MouseCursorID const cursor = Focusable::contextCursor(place);
    return cursor == inheritCursor && takesFocus() ? textCursor : cursor;
}

// Description

void TextBoxBase::describe(GlobDescription& description) const {
    Focusable::describe(description);
    description.role = Role::textBox;
    if (isEditable_ && isActive())
        description.states |= GlobDescription::editable;
    else
        description.states &= ~std::uint32_t(GlobDescription::focusable);
    description.value =
        isObfuscated_ ? LightweightString<wchar_t>(document_.length(), maskCharacter) : document_.text();
    if (!description.wants(GlobDescription::textContent)) return;
    TextSelection const& selection = document_.selection();
    int const caret = document_.cursor();
    // The anchor is the end at which the cursor does not stand.
    int const anchor = selection.isEmpty() ? caret : selection.end == caret ? selection.start : selection.end;
    description.content =
        TextContent{description.value, static_cast<std::size_t>(caret), static_cast<std::size_t>(anchor)};
}

} // namespace wainscot
