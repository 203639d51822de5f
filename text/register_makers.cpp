#include "text/register_makers.h"

#include "text/title_text_box_p.h"

namespace wainscot::TextBoxes {

namespace {

iTitleBox* makeTitleBox(StandardPanel& panel, LightweightString<wchar_t> const& title,
                        Glib::FontDesc const& font) {
    return new TitleTextBox(panel, title, font);
}

} // namespace

void registerMakers(Registry& registry) {
    registry.makeTitleBox = makeTitleBox;
}

} // namespace wainscot::TextBoxes
