#pragma once

#include "buttons/button.h"
#include "buttons/radio_set_base.h"

namespace wainscot {

class radio_button;

/// A set of radio buttons.
class WAINSCOT_API radio_set final : public RadioSetBase<Button> {
public:
    ~radio_set() override;

    /// When a member has the keyboard focus, the focus goes to the chosen member.
    void set_current(int index, bool quiet) override;

protected:
    void switchMember(Button& member, bool on, bool notify) override;
    int indexOfMember(Glob const& glob) const override;
};

/// One of several buttons of which one is down. A left press, Return or space chooses it; the arrow keys step
/// through the set. A click on the chosen button changes nothing.
///
/// Sends to its parent the message's name, a blank and "on" or "off"; the button that goes up reports first.
class WAINSCOT_API radio_button : public Button {
public:
    /// The most characters of a message with its suffix; longer names are cut.
    static constexpr std::size_t maxText = 99;

    class WAINSCOT_API InitArgs : public Button::InitArgs {
    public:
        using Button::InitArgs::InitArgs;
        /// Not owned; it may die first.
        radio_set* set = nullptr;
    };

    explicit radio_button(InitArgs const& args);
    radio_button(LightweightString<wchar_t> const& label, char const* message, radio_set* set,
                 unsigned short width, unsigned short height, bool opaque = true, Canvas* canvas = nullptr);
    ~radio_button() override;

    /// What it tells its parent, whatever callback it has.
    static constexpr MessageInfo messageTable[] = {
        {"on", MessageInfo::ownThenText, " on", MessageInfo::queued, codeDown, "it was chosen"},
        {"off", MessageInfo::ownThenText, " off", MessageInfo::queued, codeUp, "another one was chosen"},
    };

    /// -1 when the set had no room for it.
    int index() const { return index_; }
    /// Null when it has none, or when the set has died.
    radio_set* set() const;
    /// Chooses it, whatever state is asked for, and reports.
    void setState(button_state state, eRedrawFlag redraw) override;
    /// Inverts its state, whatever state is asked for.
    void switchState(button_state state, bool notify) override;
    /// A name that leaves no room for the suffix is counted in the diagnostics.
    void setMessage(char const* message) override;

    bool isTabStopActive() override;
    bool react(Event const& event) override;
    void describe(GlobDescription& description) const override;

private:
    void init(radio_set* set);
    void checkMessage() const;
    bool stepBy(XY<int> direction);
    void report(bool on);

    radio_set* set_ = nullptr;
    LifeGuard setLife_{nullptr, IdStamp()};
    int index_ = -1;
};

/// A radio button in a colour of its own.
class WAINSCOT_API StdRadioButton : public radio_button {
public:
    StdRadioButton(radio_set* set, LightweightString<wchar_t> const& label, char const* message,
                   Colour const& colour, Canvas* canvas, XY<int> const& size);
};

} // namespace wainscot
