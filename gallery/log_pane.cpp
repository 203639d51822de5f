#include "gallery/log_pane.h"

#include "foundation/layout/box_layout.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

namespace wainscot::gallery {

LogPane::LogPane() : StandardPanel(1, 1, Palette(), false) {
    setTabGoesOn(true);
    auto layout = BoxLayout::makeColumn();
    layout->setMargins(0);
    BoxLayout* const row = layout->add(BoxLayout::makeRow());
    caption_ = row->add(std::make_unique<Label>(L"Messages", Label::Part::secondary),
                        {.stretch = 1, .minimum = {UifStd::getButtonHeight(), -1}});
    pause_ = row->add(std::unique_ptr<Button>(makeButton(L"Pause", pauseMsg)));
    pause_->setLatching(true, false);
    pause_->setSecondString(L"Go on");
    row->add(std::unique_ptr<Button>(makeButton(L"Clear", clearMsg)));
    log_ = layout->add(std::make_unique<MessageLog>(XY<int>(1, 1)), {.stretch = 1});
    setLayout(std::move(layout));
}

Button* LogPane::makeButton(wchar_t const* label, LightweightString<char> const& message) {
    auto* const button = new Button(Button::InitArgs(label, message));
    addTabStop(*button);
    return button;
}

void LogPane::add(LightweightString<wchar_t> const& line) {
    log_->add(line);
    showCount();
}

void LogPane::showCount() {
    std::size_t const count = log_->numHeldBack();
    LightweightString<wchar_t> text = L"Messages";
    if (pause_->isDown()) text += L" (paused, " + Qv::WStringFromInteger(static_cast<int>(count)) + L" more)";
    caption_->setString(text);
}

int LogPane::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    // The message of a latching button is longer: it also says which way.
    if (sender != pause_ && name != clearMsg) return StandardPanel::handleMessageEvent(name, sender);
    if (name == clearMsg) log_->clear();
    if (sender == pause_) log_->setPaused(pause_->isDown());
    showCount();
    return 1;
}

} // namespace wainscot::gallery
