#pragma once

#include "foundation/automatic_size.h"
#include "host/objects/glob.h"

#include <functional>

namespace wainscot::gallery {

/// A plain coloured object with a label. It can be hovered, pressed and focused, and reports to its parent:
/// "pressed", "released", "clicked", "wheel", "key", "focused", "unfocused", "entered", "left".
class LabelGlob : public Glob {
public:
    static constexpr LightweightString<char> pressedMsg{"pressed"};
    static constexpr LightweightString<char> releasedMsg{"released"};
    static constexpr LightweightString<char> clickedMsg{"clicked"};
    static constexpr LightweightString<char> wheelMsg{"wheel"};
    static constexpr LightweightString<char> keyMsg{"key"};
    static constexpr LightweightString<char> focusedMsg{"focused"};
    static constexpr LightweightString<char> unfocusedMsg{"unfocused"};
    static constexpr LightweightString<char> enteredMsg{"entered"};
    static constexpr LightweightString<char> leftMsg{"left"};

    explicit LabelGlob(LightweightString<wchar_t> label);

    LightweightString<wchar_t> const& label() const { return label_; }
    /// Whether Tab stops here and a press takes the keyboard focus.
    void setFocusable(bool focusable) { focusable_ = focusable; }
    /// Called after "clicked" was sent; may destroy anything.
    void setAction(std::function<void(LabelGlob&)> action) { action_ = std::move(action); }

    SizeNeeds sizeNeeds() const override;
    bool react(Event const& event) override;
    void handleCaptureLost() override;
    void draw() override;
    void handleKbdFocus() override;
    void handleMouseContainment(bool inside) override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;

private:
    XY<int> neededSize() const;
    bool reactToMouse(Event const& event);
    bool reactToKey(Event const& event);
    void setPressed(bool pressed);
    /// Reports, then acts; nothing of this is touched afterwards.
    void click();

    LightweightString<wchar_t> label_;
    std::function<void(LabelGlob&)> action_;
    AutomaticSize automatic_{true, true};
    bool focusable_ = true;
    bool pressed_ = false;
    bool hadFocus_ = false;
};

} // namespace wainscot::gallery
