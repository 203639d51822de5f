#pragma once

#include "menus/menu.h"

namespace wainscot {

class Button;

/// A menu with a button below the items by which the user adds one. It tells the owner, and closes unless it
/// is pinned.
class WAINSCOT_API MenuWithAddButton : public Menu {
public:
    /// Sent to the owner.
    static constexpr LightweightString<char> addMsg{"MenuAdd"};

    /// An empty label is that of the resources.
    explicit MenuWithAddButton(InitArgs const& args, UIString const& label = {});
    ~MenuWithAddButton() override;

    Button* getAddButton() const;
    IntBox calcAreaForItems() const override;
    void reshape() override;
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    /// The button is the last stop of the arrow keys.
    int handleKeyboardEvent(int keyCode) override;

private:
    void placeButton();
    void add();
    void markButton(bool marked);

    HandlerRef<Button> button_;
};

} // namespace wainscot
