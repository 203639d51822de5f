#pragma once

#include "text/vari_box.h"

namespace wainscot {

/// The text box of a value box. It leaves the keys that end the editing, or step the value, to its box.
class VariBox::Editor final : public VariFriendlyTextBox {
public:
    Editor(VariBox& box, InitArgs const& args);

    int handleKeyboardEvent(int keyCode) override;
    /// A number as people write it goes in as the characters allow it.
    void paste(Text const& text) override;
    /// Puts the cursor at a place in root coordinates.
    void beginAt(XY<int> const& place);
    /// Marks the text as one that could not be read, until it is changed.
    void setRefused(bool refused);
    void draw() override;

protected:
    void handleCursorChange() override;
    bool pressBegan(Event const& event) override;

private:
    VariBox& box_;
    bool isRefused_ = false;
    /// Whether a click has opened it, and no press has followed.
    bool isByClick_ = false;
};

/// What most boxes do without.
struct VariBox::Extras {
    LightweightString<wchar_t> text;
    std::optional<Colour> thermColour;
    std::optional<Colour> textColour;
    std::optional<Colour> draggingColour;
    HandlerRef<Editor> editor;
    /// The owner has asked for the editor.
    bool keepsEditor = false;
};

} // namespace wainscot
