#pragma once

#include "buttons/button.h"
#include "foundation/makers.h"

namespace wainscot {

/// The square icon buttons in the title strip of a panel. Each reports to the panel that it lies on.
class WAINSCOT_API TitleButton : public Button {
public:
    /// `icon` is the icon's bare name.
    TitleButton(LightweightString<wchar_t> const& icon, LightweightString<char> message, UIString const& tip,
                Palette const& palette);

    /// False: they are used with the pointer only.
    bool isTabStopActive() override;
    void describe(GlobDescription& description) const override;
};

/// Closes its panel: sends "poot".
class WAINSCOT_API PootButton final : public TitleButton {
public:
    static constexpr MessageInfo messageTable[] = {{"poot", MessageInfo::fixed, Glob::pootMsg.view(),
                                                    MessageInfo::queued, codeUp,
                                                    "the close button was clicked"}};
    explicit PootButton(Palette const& palette);
};

/// Asks its panel to change between its sizes: sends `flipSizeMsg`.
class WAINSCOT_API SizeButton final : public TitleButton {
public:
    static constexpr LightweightString<char> flipSizeMsg{"freeze_flip"};
    static constexpr MessageInfo messageTable[] = {{"freeze_flip", MessageInfo::fixed, flipSizeMsg.view(),
                                                    MessageInfo::queued, codeUp,
                                                    "the size button was clicked"}};
    explicit SizeButton(Palette const& palette);
};

/// A title button that latches, and shows a state of its panel.
class WAINSCOT_API LatchingTitleButton : public TitleButton, public iStateButton {
public:
    LatchingTitleButton(LightweightString<wchar_t> const& icon, LightweightString<char> message,
                        UIString const& tip, Palette const& palette);

    // iStateButton
    bool isDown() const override { return Button::isDown(); }
    void setDown(bool down, eRedrawFlag redraw) override { setState(down ? buttonDown : buttonUp, redraw); }
};

/// Keeps its panel open: sends `pinMsg` followed by " on" or " off".
class WAINSCOT_API PinButton final : public LatchingTitleButton {
public:
    static constexpr LightweightString<char> pinMsg{"pin"};
    static constexpr MessageInfo messageTable[] = {
        {"pin on", MessageInfo::fixed, "pin on", MessageInfo::queued, codeDown, "the pin button went down"},
        {"pin off", MessageInfo::fixed, "pin off", MessageInfo::queued, codeUp, "the pin button went up"}};
    explicit PinButton(Palette const& palette);
};

/// Shows or hides the settings of its panel: sends `settingsMsg` followed by " on" or " off".
class WAINSCOT_API SettingsButton final : public LatchingTitleButton {
public:
    static constexpr LightweightString<char> settingsMsg{"settings"};
    static constexpr MessageInfo messageTable[] = {
        {"settings on", MessageInfo::fixed, "settings on", MessageInfo::queued, codeDown,
         "the settings button went down"},
        {"settings off", MessageInfo::fixed, "settings off", MessageInfo::queued, codeUp,
         "the settings button went up"}};
    explicit SettingsButton(Palette const& palette);
};

} // namespace wainscot
