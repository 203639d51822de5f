#pragma once

#include "menus/model/menu_data.h"
#include "menus/model/menu_item.h"

#include <optional>

namespace wainscot {

/// Shared by copies of an item; an item that changes it gets its own first.
struct MenuItem::Rare final : Qv::InternalRefCount {
    /// The label with mark-up, as it was last asked for.
    struct Formatted {
        HTMLRenderer::ParagraphsPtr paragraphs;
        Colour text, background;
    };

    LightweightString<wchar_t> incidentalText;
    std::vector<MenuItem> options;
    std::uint32_t optionFormat = 0;
    unsigned int currentOption = 0;
    std::optional<Colour> text, background;
    std::optional<Glib::FontDesc> font;
    Layout layout;
    LightweightString<char> id;
    std::vector<WidgetCallback> moreCallbacks;
    Qv::Ptr<iSubMenuCreator> creator;
    Qv::Ptr<iIconRenderer> iconRenderer;
    mutable Formatted formatted;
};

} // namespace wainscot
