#include "buttons/standard_buttons.h"

#include "host/drawing/uif_std.h"
#include "host/objects/description.h"
#include "host/services/text_ids.h"

namespace wainscot {

namespace {

Button::InitArgs titleArgs(LightweightString<char> message, Palette const& palette) {
    unsigned short const size = UifStd::getButtonHeight();
    Button::InitArgs args({}, std::move(message), size, size);
    args.palette = palette;
    args.style = eButtonFlat;
    return args;
}

} // namespace

TitleButton::TitleButton(LightweightString<wchar_t> const& icon, LightweightString<char> message,
                         UIString const& tip, Palette const& palette)
    : Button(titleArgs(std::move(message), palette)) {
    setIcons(icon, icon);
    setContextString(tip);
}

bool TitleButton::isTabStopActive() {
    return false;
}

void TitleButton::describe(GlobDescription& description) const {
    Button::describe(description);
    description.states &= ~GlobDescription::focusable;
}

PootButton::PootButton(Palette const& palette)
    : TitleButton(L"close.png", Glob::pootMsg, UIString(TextId::close), palette) {}

SizeButton::SizeButton(Palette const& palette)
    : TitleButton(L"size.png", flipSizeMsg, UIString(TextId::changeSize), palette) {}

LatchingTitleButton::LatchingTitleButton(LightweightString<wchar_t> const& icon,
                                         LightweightString<char> message, UIString const& tip,
                                         Palette const& palette)
    : TitleButton(icon, std::move(message), tip, palette) {
    setLatching(true, false);
}

PinButton::PinButton(Palette const& palette)
    : LatchingTitleButton(L"pin.png", pinMsg, UIString(TextId::keepOpen), palette) {}

SettingsButton::SettingsButton(Palette const& palette)
    : LatchingTitleButton(L"settings.png", settingsMsg, UIString(TextId::settings), palette) {}

} // namespace wainscot
