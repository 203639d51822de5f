#include "text/title_text_box_p.h"

namespace wainscot {

TextBox::InitArgs TitleTextBox::argsFor(StandardPanel const& panel, Text const& title,
                                        Glib::FontDesc const& font) {
    unsigned short const button = UifStd::getButtonHeight();
    InitArgs args(button, button, title);
    args.palette = panel.getColoursForWidgets();
    args.font = font;
    return args;
}

TitleTextBox::TitleTextBox(StandardPanel& panel, Text const& title, Glib::FontDesc const& font)
    : TextBox(argsFor(panel, title, font)), panel_(&panel) {
    auto const telling = [&](eCallbackEvent event, void (StandardPanel::*tell)()) {
        requestCallback(
            makeCallback<int, NotifyMsg>([owner = HandlerRef<StandardPanel>(&panel), tell](NotifyMsg const&) {
                if (StandardPanel* const live = owner.get()) (live->*tell)();
                return 1;
            }),
            event);
    };
    telling(eChanged, &StandardPanel::handleTitleTyped);
    telling(eEditEnd, &StandardPanel::handleTitleEdited);
}

void TitleTextBox::takeFont() {
    if (StandardPanel const* const panel = panel_.get()) setFont(panel->getTitleFont());
}

void TitleTextBox::setTitleText(Text const& text) {
    LifeGuard const life = guard();
    takeFont();
    if (life.alive()) setText(text);
}

void TitleTextBox::handleLookChange(LookChange changes) {
    LifeGuard const life = guard();
    takeFont();
    if (life.alive()) TextBox::handleLookChange(changes);
}

} // namespace wainscot
