#pragma once

#include "foundation/form_layout.h"
#include "foundation/standard_panel.h"
#include "gallery/page.h"
#include "text/text_box.h"

namespace wainscot::gallery {

/// A page of text boxes. It logs all that the boxes tell.
class BoxPage : public StandardPanel {
public:
    BoxPage(XY<int> size, LogLine log);

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;

protected:
    static constexpr LightweightString<char> changedMsg{"changed"};
    static constexpr LightweightString<char> returnMsg{"return"};

    void say(LightweightString<wchar_t> const& line) const { log_(line); }
    /// A row of a form with a box that takes the width that there is, is a stop of the page, and tells it
    /// everything.
    template <class Box>
    Box* addBox(FormLayout& form, UIString const& label, std::unique_ptr<Box> box) {
        Box* const added = form.addRow(label, std::move(box));
        hear(*added);
        return added;
    }
    TextBox* addBox(FormLayout& form, UIString const& label, TextBox::InitArgs const& args) {
        return addBox(form, label, std::make_unique<TextBox>(args));
    }
    void hear(TextEntry& box);

private:
    LogLine log_;
};

} // namespace wainscot::gallery
