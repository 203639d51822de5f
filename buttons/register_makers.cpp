#include "buttons/register_makers.h"

#include "buttons/standard_buttons.h"
#include "host/drawing/uif_std.h"
#include "host/services/text_ids.h"
#include "look/face.h"

namespace wainscot::Buttons {

namespace {

constexpr LightweightString<char> doItMessage{"do_it"};
constexpr LightweightString<char> optionMessage{"option"};

Glob* makeDoItButton(Palette const& palette) {
    Button::InitArgs args(UIString(TextId::ok), doItMessage, 0, UifStd::getButtonHeight());
    args.palette = palette;
    auto* const button = new Button(args);
    button->setDefaultAction(true);
    return button;
}

Glob* makeStandardWidget(Palette const& palette, StandardWidget which) {
    switch (which) {
    case StandardWidget::close:
        return new PootButton(palette);
    case StandardWidget::size:
        return new SizeButton(palette);
    case StandardWidget::pin:
        return new PinButton(palette);
    case StandardWidget::settings:
        return new SettingsButton(palette);
    case StandardWidget::latch:
        return new LatchingTitleButton(L"arrow_down.png", optionMessage, UIString(TextId::options), palette);
    case StandardWidget::doIt:
        return makeDoItButton(palette);
    }
    return nullptr;
}

} // namespace

void registerMakers(Registry& registry) {
    ControlLook::readPreferences();
    registry.makeStandardWidget = makeStandardWidget;
}

} // namespace wainscot::Buttons
