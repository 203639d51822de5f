#pragma once

#include "buttons/radio_set.h"
#include "foundation/label.h"
#include "foundation/standard_panel.h"
#include "gallery/page.h"

namespace wainscot::gallery {

/// What stands above a page: its title, what it shows and where its source is, and the choices of how
/// everything looks.
class PageHeader final : public StandardPanel {
public:
    PageHeader();

    void show(Page const& page);

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    /// The look may be changed elsewhere, too.
    void handleLookChange(LookChange changes) override;

private:
    RadioSet* addSet(Vector<LightweightString<wchar_t>> const& labels, wchar_t const* name);
    void showLook();

    Label* title_;
    Label* shows_;
    Label* source_;
    RadioSet* theme_;
    RadioSet* textSize_;
    RadioSet* scale_;
};

} // namespace wainscot::gallery
