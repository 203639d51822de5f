#include "text/register_makers.h"

#include "text/name_box_p.h"
#include "text/title_text_box_p.h"

namespace wainscot::TextBoxes {

namespace {

iTitleBox* makeTitleBox(StandardPanel& panel, LightweightString<wchar_t> const& title,
                        Glib::FontDesc const& font) {
    return new TitleTextBox(panel, title, font);
}

Glob* makeNameBox(LightweightString<wchar_t> const& name, Glib::FontDesc const& font, Palette const& palette,
                  NameEdited ended) {
    return new NameBox(name, font, palette, std::move(ended));
}

} // namespace

void registerMakers(Registry& registry) {
    registry.makeTitleBox = makeTitleBox;
    registry.makeNameBox = makeNameBox;
}

} // namespace wainscot::TextBoxes
