#pragma once

#include "buttons/button.h"

namespace wainscot {

/// Runs a command of the program by its name.
class WAINSCOT_API CommandExecuter final : public iCallbackBase<int, NotifyMsg> {
public:
    explicit CommandExecuter(LightweightString<char> command) : command_(std::move(command)) {}

    LightweightString<char> const& command() const { return command_; }
    /// Answers 1 when there is such a command.
    int call(NotifyMsg const& message) override;

private:
    LightweightString<char> command_;
};

/// A button that runs a command instead of sending a message. Without a label of its own it shows the
/// command's display name; its tool tip also names the keys that run the command.
class WAINSCOT_API CommandButton : public Button {
public:
    CommandButton(LightweightString<char> const& command, unsigned short width, unsigned short height,
                  UIString const& label = UIString());

    LightweightString<char> const& command() const { return command_; }

    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;

private:
    LightweightString<char> command_;
};

} // namespace wainscot
