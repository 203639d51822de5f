#include "gallery/page_filter.h"

namespace wainscot::gallery {

PageFilter::PageFilter(PageChooser& chooser) : TextBox(InitArgs(0)), chooser_(&chooser) {
    setName("filter");
    setGhostLabel(L"Find a page");
    requestCallback(makeCallback<int, NotifyMsg>([this](NotifyMsg const&) {
                        filter();
                        return 1;
                    }),
                    eChanged);
}

void PageFilter::filter() {
    if (PageChooser* const chooser = chooser_.get()) chooser->setFilter(getText());
}

int PageFilter::handleKeyboardEvent(int keyCode) {
    auto const step = actionFor(keyTable, static_cast<std::uint32_t>(keyCode));
    if (!step || wasOffered() || !takesInput()) return TextBox::handleKeyboardEvent(keyCode);
    take(*step);
    return handled;
}

void PageFilter::take(Step step) {
    if (step == Step::showAll) {
        setText({});
        filter();
        return;
    }
    PageChooser* const chooser = chooser_.get();
    if (!chooser || !chooser->hasPages()) return;
    LifeGuard const life = chooser->guard();
    chooser->takeFirst(step == Step::openFirst);
    // A page may close the window.
    if (life.alive()) chooser->claimKbdFocus();
}

} // namespace wainscot::gallery
