#pragma once

#include "foundation/automatic_size.h"
#include "foundation/bindable.h"
#include "foundation/fitted_label.h"
#include "foundation/focusable.h"
#include "foundation/key_table.h"
#include "foundation/report.h"
#include "host/drawing/image.h"
#include "host/messages/handler_ref.h"

#include <memory>
#include <optional>
#include <string_view>

namespace wainscot {

class Checkbox;

/// A set of checkboxes of which one is chosen, as its members see it.
class WAINSCOT_API iCheckboxSet {
public:
    virtual ~iCheckboxSet();
    /// Whether Tab stops at this member; the set is one stop.
    virtual bool isTabStop(Checkbox const& member) const = 0;
    /// An arrow key was pressed on a member: chooses the next member in that direction (y downwards). False
    /// when there is none. Everything may be dead afterwards.
    virtual bool stepFrom(Checkbox& member, XY<int> direction) = 0;
    /// Dead members are counted.
    virtual unsigned int getNumMembers() const = 0;
};

/// A choice between on and off: a box with a tick, or a light, and a label. Its value is whether it is
/// ticked.
///
/// When the user toggles it, the state changes first. Then the adaptor and the callback are told with a
/// `Change`; without both the parent is sent a message: the prefix, followed by "TICKED" or "CLEAR". When the
/// adaptor refuses, the state goes back. A user function replaces all of that. The code of a report
/// (`NotifyMsg::code`, `Event::reportCode`) is the new state.
class WAINSCOT_API Checkbox : public Bindable<ValWidget<bool>, Focusable<Pressable<StandardPanel>>> {
public:
    static constexpr LightweightString<char> defaultPrefix{"Checkbox "};
    static constexpr LightweightString<char> tickedWord{"TICKED"};
    static constexpr LightweightString<char> clearWord{"CLEAR"};
    /// The codes of reports.
    static constexpr int codeClear = 0;
    static constexpr int codeTicked = 1;

    enum eAppearance : unsigned char {
        tickBox = 0,
        /// A round box with a dot, for members of sets.
        roundTickBox = 1,
        blueLight = 4,
        redLight = 5,
        greenLight = 6,
    };
    /// When a click toggles it. With any other value clicks do nothing.
    enum eMsgGeneration : unsigned char { onPress = 0, onRelease = 1, onNothing = 2 };

    /// What it tells others. The prefix comes first in the name.
    enum Messages { clearMsg, tickedMsg };
    static constexpr MessageInfo messageTable[] = {
        {"clear", MessageInfo::ownThenText, clearWord.view(), MessageInfo::queued, codeClear,
         "the tick was taken away"},
        {"ticked", MessageInfo::ownThenText, tickedWord.view(), MessageInfo::queued, codeTicked,
         "it was ticked"},
        {"callback",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "instead, after `setCallback`; the payload is a `Checkbox::Change`"},
        {"user function",
         MessageInfo::fixed,
         {},
         MessageInfo::callback,
         0,
         "instead of the whole toggle, after `setUserFunction`"},
        {"adaptor", MessageInfo::fixed, {}, MessageInfo::callback, 0, "instead, where it is bound to data"},
    };

    enum KeyAction { toggle };
    static constexpr KeyRow<KeyAction> keyTable[] = {{Key::enter, toggle, "toggles it"},
                                                     {Key::space, toggle, "toggles it"}};

    using UserFunction = void (*)(Checkbox* checkbox, void* context);

    /// What adaptors and callbacks are told of a change.
    class WAINSCOT_API Change final : public Qv::InternalRefCount {
    public:
        Change(bool state, Checkbox& checkbox);
        bool state() const { return state_; }
        /// Null when it has died.
        Checkbox* checkbox() const;

    private:
        bool state_;
        HandlerRef<Checkbox> checkbox_;
    };

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        InitArgs(unsigned short w, unsigned short h);
        InitArgs(UIString text, bool isTicked, XY<int> const& size);
        explicit InitArgs(UIString text, bool isTicked = false, unsigned short w = 0, unsigned short h = 0);

        UIString label;
        bool ticked = false;
        eAppearance appearance = tickBox;
        Border::eType border = Border::none;
        Glib::FontDesc font;
    };

    /// A width of 0 becomes the width that the label needs, a height of 0 the height of a button.
    explicit Checkbox(InitArgs const& args);
    ~Checkbox() override;
    static std::unique_ptr<Checkbox> make(unsigned short width, unsigned short height, UIString const& label,
                                          bool ticked, Palette const& palette = Palette(),
                                          Canvas* canvas = nullptr);

    // --- State
    bool isTicked() const { return ticked_; }
    /// Nobody is told.
    void setState(bool ticked) { setState(ticked, true); }
    void setState(bool ticked, bool redraw);
    /// Stores the state; nothing is painted and nobody is told.
    void setStateInternal(bool ticked) { ticked_ = ticked; }
    bool getWidgetValue() const override { return ticked_; }
    void setNewWidgetValue(bool& ticked, eRedrawFlag redraw) override;
    /// What a click by the user does.
    void requestToggleState();

    // --- Reporting
    void setMessageGeneration(eMsgGeneration generation) { generation_ = generation; }
    void setMsgPrefix(LightweightString<char> prefix, bool appendState);
    /// Called instead of everything that a toggle does; null takes it away.
    void setUserFunction(UserFunction function, void* context);
    bool hasUserFunction() const { return userFunction_ != nullptr; }
    void* getUserContext() const { return userContext_; }
    /// The callback is told instead of the parent, with the same name and code, and a `Change` as payload;
    /// null = the parent again. If the callback has a message name, it becomes the prefix.
    void setCallback(WidgetCallback const& callback);
    /// With false, clicks pass through it.
    void setClickable(bool clickable);
    /// Set by its set: another member is the chosen one.
    void setNotChosen(bool notChosen) { notChosen_ = notChosen; }
    bool isNotChosen() const { return notChosen_; }
    /// Set by its set: the set and the index in it; null = none. The set clears it before it dies. A member
    /// that joins another set leaves the former set.
    void setMembership(iCheckboxSet* set, unsigned int index = 0);
    iCheckboxSet* getMembership() const { return set_; }
    unsigned int getMemberIndex() const { return memberIndex_; }
    /// Shows it as mixed, for a set whose data has several values.
    void setShownMixed(bool mixed);

    // --- Look
    UIString const& getString() const { return label_.text(); }
    void setString(UIString const& label);
    void setAppearance(eAppearance appearance);
    eAppearance getAppearance() const { return appearance_; }
    bool isLight() const { return appearance_ >= blueLight; }
    /// The character that is drawn as the tick; 0 = the tick of the symbols.
    void setTickCharacter(char character);
    void setFont(Glib::FontDesc const& font);
    Glib::FontDesc const& getFont() const { return label_.font(); }
    void setTextColour(Colour const& colour);
    /// The width that a label needs, in a bold font or not.
    static int calcWidth(UIString const& label, Border::eType border, eAppearance appearance = tickBox,
                         bool bold = false);
    static int calcWidth(UIString const& label, Border::eType border, Glib::FontDesc const& font);
    /// The box or the light, in the checkbox's coordinates.
    IntBox getTickExtents() const;

    // TabOrderable
    bool isTabStopActive() override;

    // Glob
    SizeNeeds sizeNeeds() const override;
    bool react(Event const& event) override;
    void draw() override;
    void drawBackground() override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;

protected:
    bool pressBegan(Event const& event) override;
    void pressEnded(PressEnd how) override;
    // The parts of the drawing.
    virtual void drawTickBox();
    virtual void drawText();
    virtual void drawTick(bool mixed);
    virtual Colour getTextColour() const;
    virtual Colour getTickColour() const;
    virtual Glib::FontDesc getTextFont() const { return label_.font(); }
    Qv::Ptr<Glib::Image> getLEDIcon() const;
    void handleDataMixed(bool mixed, eRedrawFlag redraw) override;
    void reportUserChange(DataChangeType why) override;

private:
    bool reactToArrow(Event const& event);
    XY<int> neededSize() const;
    bool showsMixed() const { return isDataMixed() || shownMixed_; }
    LightweightString<char> messageFor(bool ticked) const;
    /// The label in its present font.
    FittedLabel shownLabel() const { return label_.withFont(getTextFont()); }
    int labelRoom() const;

    FittedLabel label_;
    LightweightString<char> prefix_{defaultPrefix};
    Reporter reporter_;
    UserFunction userFunction_ = nullptr;
    void* userContext_ = nullptr;
    iCheckboxSet* set_ = nullptr;
    unsigned int memberIndex_ = 0;
    std::optional<Colour> textColour_;
    eAppearance appearance_;
    eMsgGeneration generation_ = onPress;
    char tickCharacter_ = 0;
    bool ticked_;
    bool appendState_ = true;
    bool clickable_ = true;
    bool notChosen_ = false;
    bool shownMixed_ = false;
    /// Its size follows label and metrics.
    AutomaticSize automatic_;
};

} // namespace wainscot
