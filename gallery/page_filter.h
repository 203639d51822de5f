#pragma once

#include "gallery/page_chooser.h"
#include "text/text_box.h"

namespace wainscot::gallery {

/// The field above the list of pages: the list has only the pages with the typed text in their title. What
/// keys of `keyTable` do, they do to the list; all others edit the text.
class PageFilter final : public TextBox {
public:
    enum class Step { goToList, openFirst, showAll };
    static constexpr KeyRow<Step> keyTable[] = {{Key::down, Step::goToList, "goes to the list"},
                                                {Key::enter, Step::openFirst, "opens the first page"},
                                                {Key::escape, Step::showAll, "empties the field"}};

    explicit PageFilter(PageChooser& chooser);

    int handleKeyboardEvent(int keyCode) override;

private:
    void filter();
    void take(Step step);

    HandlerRef<PageChooser> chooser_;
};

} // namespace wainscot::gallery
