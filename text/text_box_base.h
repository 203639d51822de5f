#pragma once

#include "foundation/focusable.h"
#include "foundation/report.h"
#include "text/text_cursor.h"
#include "text/text_engine.h"
#include "text/text_keys.h"

#include <optional>
#include <vector>

namespace wainscot {

/// What a text box tells its owner.
enum eCallbackEvent : int {
    /// It has got the keyboard focus.
    eEditStart = 0,
    /// It has lost the keyboard focus, or a step has set a new number.
    eEditEnd = 1,
    /// The user has changed the text.
    eChanged = 2,
    /// Return was pressed.
    eReturn = 3,
    /// A box that cannot be edited was clicked twice within 400 ms.
    eDoubleClick = 4,
};

/// What typing does with the character behind the cursor.
enum eEditMode : int { eInsertMode = 0, eOverwriteMode = 1 };

/// The base of all boxes in which text is edited. It has what they share: the document, the caret, which
/// characters may be entered, the clipboard, undo, the colours of the text, and what the owner is told. The
/// derived classes show the text and give the keys their meaning.
///
/// An owner asks for each event that it wants with `requestCallback`. Changes by the program are not told.
///
/// It is one tab stop while it is active, editable and shown. While it has the keyboard focus it is on the
/// event intercept stack, so that it gets its keys before everybody else.
class WAINSCOT_API TextBoxBase : public Focusable<Pressable<StandardPanel>>, private iTextView {
public:
    /// The messages that have it copy, cut and paste, as menus send them.
    static constexpr LightweightString<char> copyMsg{"Copy"};
    static constexpr LightweightString<char> cutMsg{"Cut"};
    static constexpr LightweightString<char> pasteMsg{"Paste"};
    /// Others of its context menu.
    static constexpr LightweightString<char> undoMsg{"Undo"};
    static constexpr LightweightString<char> redoMsg{"Redo"};
    static constexpr LightweightString<char> selectAllMsg{"SelectAll"};

    using Callback = Qv::Ptr<iCallbackBase<int, NotifyMsg>>;

    explicit TextBoxBase(GlobCreationInfo const& info);
    TextBoxBase(unsigned short width, unsigned short height, Palette const& palette,
                Canvas* canvas = nullptr);
    ~TextBoxBase() override;

    // --- What the owner is told
    /// From now on `target` gets a message of that name on each such event. It may die first. The same
    /// request twice is served twice.
    void requestCallback(LightweightString<char> message, EventHandler* target, eCallbackEvent event);
    /// The same for a callback, which is always called at once. Its `NotifyMsg` has the event as code.
    void requestCallback(Callback const& callback, eCallbackEvent event);
    /// Forgets all requests of a target.
    void withdrawCallbacks(EventHandler const* target);
    /// Tells all who have asked, in the order of their requests. Messages carry `keyCode`; `direct` = they
    /// are delivered before it returns, else queued. It may destroy the box.
    void informOwner(eCallbackEvent event, bool direct, int keyCode);

    // --- What can be edited
    /// A box that cannot be edited gives up the focus; one for one line is no tab stop.
    virtual void setEditable(bool editable);
    bool isEditable() const { return isEditable_; }
    void setEditMode(eEditMode mode);
    eEditMode getEditMode() const { return editMode_; }
    /// Which characters may be entered; the present text stays.
    void setCharacters(LightweightString<wchar_t> const& characters, eCharacterRestriction restriction);
    LightweightString<wchar_t> const& getCharacters() const { return rules_.characters(); }
    /// The most characters that the text may have; 0 = any number. The present text stays.
    void setSizeLimit(unsigned long limit) { rules_.setSizeLimit(limit); }
    unsigned long getSizeLimit() const { return rules_.sizeLimit(); }
    static constexpr wchar_t maskCharacter = L'*';
    /// Shows a "*" for each character, for passwords. Nothing can be copied then, and the text is told to
    /// nobody but the owner.
    virtual void setObfuscatedDisplay(bool obfuscated);
    bool isObfuscatedDisplay() const { return isObfuscated_; }
    /// Whether the user has changed the text since the flag was cleared.
    bool getChanged() const { return changed_; }
    void clearChanged() { changed_ = false; }

    bool isAllowed(wchar_t character) const { return rules_.isAllowed(character); }
    bool isRestricted(wchar_t character) const { return rules_.isRestricted(character); }
    static bool isPrintable(int keyCode) { return TextRules::isPrintable(keyCode); }
    static bool sameCharType(wchar_t a, wchar_t b) { return UndoHistory::sameCharType(a, b); }

    // --- Editing
    virtual void selectAll() = 0;
    /// Copies what is selected, or everything, to the clipboard.
    virtual void copy();
    virtual void cut() = 0;
    virtual void paste(LightweightString<wchar_t> const& text) = 0;
    virtual void undo() = 0;
    virtual void redo() = 0;
    /// Whether the box may use a key. Always, here.
    virtual bool isEditingKeyAllowed(unsigned int key);
    /// Adds a change that undo takes back; nothing can be made again any more.
    void addUndoItem(HistoryItem const& item);
    std::size_t numUndoItems() const { return document_.history().numUndo(); }
    std::size_t numRedoItems() const { return document_.history().numRedo(); }

    // --- Look
    virtual void setAlignment(TextAlignment alignment) = 0;
    virtual void setFont(Glib::FontDesc const& font);
    Glib::FontDesc const& getFont() const { return font_; }
    Qv::Ptr<iFont> const& getFontPtr() const { return loadedFont_; }
    void setCaretColour(Colour const& colour);
    Colour getTextColour() const;
    /// On the ground of the selection.
    Colour getSelectedTextColour() const;
    /// Makes the caret, hidden, unless there is one. `place` is its lower-left corner in the box.
    void makeCaret(XY<int> const& place);
    /// Null while there is none.
    TextCursor* getCaret() const { return caret_.get(); }

    // --- Events
    bool react(Event const& event) override;
    /// A key press: answers whether the box has used it. Other events: whether it takes keys.
    bool intercept(Event const& event) override;
    /// The shortcuts with Ctrl. 0 for all other keys, and in a box that is not editable or not active.
    int handleKeyboardEvent(int keyCode) override;
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    int handleTimerEvent() override;
    /// Fills the context menu anew.
    void reviewMenu(Event const* event) override;
    MouseCursorID contextCursor(XY<int> const& place) const override;
    bool repeatsReturnAndSpace() const override { return true; }

    // --- Focus
    bool isTabStopActive() override;
    void handleTabStopFocusLoss() override;

    void handleLookChange(LookChange changes) override;
    void setPalette(Palette const& palette) override;
    void describe(GlobDescription& description) const override;

protected:
    TextDocument& document() { return document_; }
    TextDocument const& document() const { return document_; }
    TextEngine& engine() { return engine_; }
    void setChanged(bool changed) { changed_ = changed; }
    void allowLineFeeds() { rules_.setLineFeeds(true); }
    /// Whether the user can change the text now.
    bool takesInput() const { return isEditable_ && isActive(); }
    /// Whether it can have the keyboard focus: here, while it takes input.
    virtual bool takesFocus() const { return takesInput(); }

    /// The text of the document has changed: shows that. It must not call out.
    void textEdited(TextEdit const& edit) override = 0;
    /// What `copy` takes.
    virtual LightweightString<wchar_t> textToCopy() const;
    /// Does what a shortcut means; false for other keys. It may destroy the box.
    bool useShortcut(std::uint32_t key);
    /// Inserts text that was composed, or that the middle button brings, as the user's input.
    void insertComposed(LightweightString<wchar_t> const& text);
    /// What the user changes from now on is told by `tellChanged`.
    void beginUserChange() { toldRevision_ = document_.revision(); }
    /// The program has changed the text: that is not told.
    void noteChangeByProgram() { toldRevision_ = document_.revision(); }
    /// Whether the user has changed the text, and the owner has not been told.
    bool isChangeUntold() const { return document_.revision() != toldRevision_; }
    /// Tells the owner if the user has changed the text. It may destroy the box.
    void tellChanged(int keyCode);
    static constexpr int unhandled = 0;
    static constexpr int handled = 1;

    /// A key was used now: a caret that flashes keeps still for a while.
    void pauseFlash();
    void removeCaret();
    bool wasOffered() const { return wasOffered_; }
    /// Puts the box on the event intercept stack; takes it away.
    void beginInterception();
    void endInterception();
    /// Hands the keyboard focus to the root of the window when the box holds it.
    void giveUpFocus();

private:
    struct CallbackSummary {
        LightweightString<char> message;
        HandlerRef<EventHandler> target;
        Callback callback;
        eCallbackEvent event;
    };

    void init();
    void serve(CallbackSummary const& entry, bool direct, int keyCode);
    void styleCaret();

    Glib::FontDesc font_;
    Qv::Ptr<iFont> loadedFont_;
    bool isStandardFont_ = true;
    bool isEditable_ = true;
    bool changed_ = false;
    bool isObfuscated_ = false;
    /// While a key goes its usual way that was offered to the box before.
    bool wasOffered_ = false;
    eEditMode editMode_ = eInsertMode;
    HandlerRef<TextCursor> caret_;
    double flashPausedAt_ = 0;
    std::vector<CallbackSummary> callbacks_;
    TextRules rules_;
    std::optional<Colour> caretColour_;
    TextDocument document_;
    TextEngine engine_{document_, rules_};
    /// The revision of the text that the owner knows of.
    std::uint64_t toldRevision_ = 0;
    IdStamp interception_;
};

} // namespace wainscot
