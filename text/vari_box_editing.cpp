#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/base/first_exception.h"
#include "host/base/letter_case.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/drawable.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/objects/kbd_focus.h"
#include "text/local_number.h"
#include "text/vari_box_p.h"

namespace wainscot {

using Text = LightweightString<wchar_t>;

// The text box

VariBox::Editor::Editor(VariBox& box, InitArgs const& args) : VariFriendlyTextBox(args), box_(box) {
    setLightweight(true);
    setVisible(false);
    requestCallback(makeCallback<int, NotifyMsg>([owner = HandlerRef<VariBox>(&box)](NotifyMsg const&) {
                        if (VariBox* const live = owner.get()) live->endEditing(live->takesInput());
                        return 1;
                    }),
                    eEditEnd);
}

wchar_t VariBox::enteredAs(wchar_t character, Text const& allowed) {
    auto const isAllowed = [&](wchar_t c) { return allowed.empty() || allowed.find(c) != Text::npos; };
    if (isAllowed(character)) return character;
    if (character == trueMinus) return L'-';
    if (isAllowed(largeLetter(character))) return largeLetter(character);
    return character == L',' ? L'.' : character;
}

int VariBox::Editor::handleKeyboardEvent(int keyCode) {
    auto const key = static_cast<std::uint32_t>(keyCode);
    if (wasOffered() || !takesInput()) return VariFriendlyTextBox::handleKeyboardEvent(keyCode);
    if (isPrintable(keyCode))
        return VariFriendlyTextBox::handleKeyboardEvent(
            static_cast<int>(enteredAs(static_cast<wchar_t>(Key::base(key)), getCharacters())));
    if (key == Key::escape) return box_.endEditing(false), handled;
    auto const action = actionFor(keyTable, key);
    if (!action) return VariFriendlyTextBox::handleKeyboardEvent(keyCode);
    if (*action != edit) return box_.stepWhileEditing(*action, (key & Key::shift) != 0), handled;
    if (key != Key::enter) return handled;
    LifeGuard const life = guard();
    informOwner(eReturn, false, keyCode);
    if (life.alive()) box_.endEditing(true);
    return handled;
}

void VariBox::Editor::paste(Text const& text) {
    auto const number = plainNumber(text);
    if (!number || getCharacters().empty()) return VariFriendlyTextBox::paste(text);
    VariFriendlyTextBox::paste(isRestricted(L'.') ? number->substr(0, number->find(L'.')) : *number);
}

void VariBox::Editor::beginAt(XY<int> const& place) {
    isByClick_ = true;
    int const index = gapAt(screenXYToGlobXY(place));
    setSelection({index, index});
}

/// The second half of a double click on the box, which the first half has opened for editing.
bool VariBox::Editor::pressBegan(Event const& event) {
    bool const isSecond = std::exchange(isByClick_, false) && event.clicks() == 2 && mouse_left_event(event);
    if (!isSecond || getChanged() || !box_.getParser() || !box_.getParser()->hasDefault())
        return VariFriendlyTextBox::pressBegan(event);
    DispatchScope const scope;
    VariBox& box = box_;
    LifeGuard const boxLife = box.guard();
    box.endEditing(false);
    if (boxLife.alive()) box.putDefaultBack();
    return true;
}

void VariBox::Editor::setRefused(bool refused) {
    if (refused == isRefused_) return;
    isRefused_ = refused;
    makeDirty();
}

void VariBox::Editor::handleCursorChange() {
    if (getChanged()) setRefused(false);
    VariFriendlyTextBox::handleCursorChange();
}

void VariBox::Editor::draw() {
    VariFriendlyTextBox::draw();
    if (!isRefused_) return;
    CanvasRenderer renderer(canvas(), canvasArea());
    Glib::drawRoundedRectOutline(renderer, getPalette().mark(eMarkWarning), canvasArea(),
                                 box_.calcSize(VariBoxMetrics::eThermLine), UifStd::getCornerRadius());
}

// Editing

VariBox::Editor* VariBox::editor() const {
    return extras_ ? extras_->editor.get() : nullptr;
}

VariFriendlyTextBox* VariBox::getTextBox() {
    extras().keepsEditor = true;
    if (Editor* const present = editor()) return present;
    DispatchScope const scope;
    Text const characters = parser_ ? fromUTF8(parser_->getAllowedCharacters()) : Text();
    TextBox::InitArgs args(size());
    args.palette = getPalette();
    args.alignment = eAlignCentre;
    args.characters = characters;
    args.restriction = characters.empty() ? eNoRestriction : eOnlyCharacters;
    args.sizeLimit = parser_ ? parser_->getMaxNumChars() : 0;
    auto made = std::make_unique<Editor>(*this, args);
    if (extras_->draggingColour) made->setDraggingForeCol(*extras_->draggingColour);
    extras_->editor = HandlerRef<Editor>(made.get());
    addChild(std::move(made), BottomLeft(0, 0));
    return editor();
}

Text VariBox::getEnteredText() const {
    Editor const* const box = editor();
    return isEditing_ && box ? box->getText() : Text();
}

/// Values that differ have no text that could be edited.
bool VariBox::beginEditing() {
    if (isEditing_) return true;
    if (!takesInput() || !isShown()) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    dropPress();
    if (!life.alive() || !takesInput()) return false;
    bool const wasKept = extras().keepsEditor;
    getTextBox();
    extras_->keepsEditor = wasKept;
    Editor* const box = editor();
    if (!box) return false;
    box->setText(isMixed() ? Text() : parser_->getText());
    box->clearChanged();
    box->setRefused(false);
    box->setVisible(true);
    isEditing_ = true;
    box->claimKbdFocus();
    if (!life.alive() || !isEditing_) return false;
    box->selectAll();
    return true;
}

/// With the cursor where the click was.
void VariBox::editAt(XY<int> const& place) {
    LifeGuard const life = guard();
    if (beginEditing() && life.alive() && isEditing_) editor()->beginAt(place);
}

/// The text, if the user has changed it. False when it could not be read. It may destroy everything.
bool VariBox::readEntered() {
    Editor* const box = editor();
    if (!box || !box->getChanged() || !takesInput()) return true;
    LifeGuard const life = guard();
    LifeGuard const editorLife = box->guard();
    box->clearChanged();
    parser_->setDataChangeType(DataChangeType::single);
    parser_->handleParseText();
    if (!life.alive() || !parser_ || !parser_->isTextRefused()) return true;
    Diagnostics::count("no value", "VariBox");
    if (!isEditing_ || !editorLife.alive()) return false;
    box->setRefused(true);
    box->selectAll();
    return false;
}

bool VariBox::endEditing(bool accept) {
    if (!isEditing_) return true;
    DispatchScope const scope;
    LifeGuard const life = guard();
    FirstException thrown;
    bool isRead = true;
    if (accept) thrown.run([&] { isRead = readEntered(); });
    if (!life.alive()) return thrown.rethrow(), true;
    // Who still is in the text can mend it.
    bool const canMend = !isRead && editor() && FocusStop::holderBeside(*this) == editor();
    if (isEditing_ && !canMend) thrown.run([&] { closeEditor(); });
    thrown.rethrow();
    return isRead;
}

void VariBox::closeEditor() {
    LifeGuard const life = guard();
    FirstException thrown;
    isEditing_ = false;
    Editor* const box = editor();
    bool const hasFocus = box && FocusStop::holderBeside(*this) == box;
    if (hasFocus) thrown.run([&] { claimKbdFocus(); });
    if (!life.alive()) return thrown.rethrow();
    if (Editor* const left = editor()) {
        if (extras_->keepsEditor)
            thrown.run([&] { left->setVisible(false); });
        else
            thrown.run([&] { destroy(left); });
    }
    if (life.alive()) makeDirty();
    thrown.rethrow();
}

/// From what has been entered; then all of it is selected.
void VariBox::stepWhileEditing(KeyAction action, bool isFine) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (!readEntered() || !life.alive() || !isEditing_) return;
    nudge(action == stepUp || action == majorUp, action == majorUp || action == majorDown, isFine);
    if (!life.alive() || !isEditing_ || !parser_) return;
    // The text of the value, not what was entered.
    isEditing_ = false;
    Text const text = parser_->getText();
    if (!life.alive()) return;
    isEditing_ = editor() != nullptr;
    if (!isEditing_) return;
    editor()->setText(text);
    editor()->selectAll();
}

} // namespace wainscot
