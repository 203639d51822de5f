#include "gallery/pages/levels_panel.h"

#include "foundation/label.h"
#include "foundation/layout/box_layout.h"
#include "foundation/layout/grid_layout.h"
#include "foundation/val_server_adaptor.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"

#include <cmath>

namespace wainscot::gallery {

namespace {

constexpr wchar_t const* channelNames[] = {L"Dialogue", L"Music", L"Effects", L"Ambience"};

enum Row { barsRow, nameRow, muteRow };

} // namespace

LevelsPanel::LevelsPanel(LogLine log)
    : StandardPanel(InitArgs(1, 1, Border(Border::group))), log_(std::move(log)) {
    setTitle(L"Levels");
    setTabGoesOn(true);
    setLayout(std::make_unique<GridLayout>());
    for (std::size_t i = 0; i < numChannels; ++i) addChannel(i);
    setTime(0);
}

void LevelsPanel::addChannel(std::size_t number) {
    Channel& channel = channels_[number];
    auto& grid = static_cast<GridLayout&>(*getLayout());
    int const column = static_cast<int>(number);
    grid.setColumnStretch(column, 1);
    grid.setRowStretch(barsRow, 1);
    LayoutOptions middle;
    middle.horizontal = LayoutAlign::centre;
    BoxLayout* const pair = grid.add(BoxLayout::makeRow(), {barsRow, column}, middle);
    channel.meter = pair->add(std::make_unique<LevelMeter>());
    channel.meter->setName(toUTF8(LightweightString<wchar_t>(channelNames[number]) + L" level"));
    // As high as the meter beside it.
    LayoutOptions const height{.size = {-1, 4}, .minimum = {-1, 2}, .unit = LayoutUnit::buttonHeight};
    Slider* const fader = pair->add(std::make_unique<Slider>(Slider::InitArgs(1, eVertical)), height);
    channel.slider = fader;
    fader->setName(toUTF8(channelNames[number]));
    bindToServer<double>(*fader, channel.fader);
    addTabStop(*fader);
    Label* const label = grid.add(std::make_unique<Label>(channelNames[number]), {nameRow, column}, middle);
    label->setLabelFor(*fader);
    // Not bound to data, so that it tells the panel.
    channel.mute =
        grid.add(std::make_unique<Checkbox>(Checkbox::InitArgs(L"Mute")), {muteRow, column}, middle);
    channel.mute->setAppearance(Checkbox::redLight);
    addTabStop(*channel.mute);
}

double LevelsPanel::levelOf(std::size_t number) const {
    Channel const& channel = channels_[number];
    if (channel.mute->isTicked() || channel.fader.value() <= 0) return LevelMeter::silence;
    auto const which = static_cast<double>(number);
    double const pace = 1.7 + which;
    double const voice = std::sin(time_ * pace + which) * std::sin(time_ * 0.61 * pace + 2 * which) +
                         0.4 * std::sin(time_ * 9 + which);
    return -14 + 9 * voice + 20 * std::log10(channel.fader.value() / 0.75);
}

void LevelsPanel::setTime(double time) {
    time_ = time;
    for (std::size_t i = 0; i < numChannels; ++i) channels_[i].meter->setLevel(levelOf(i));
}

int LevelsPanel::handleMessageEvent(LightweightString<char> message, Glob* sender) {
    if (message == pootMsg) return StandardPanel::handleMessageEvent(message, sender);
    LifeGuard const life = guard();
    setTime(time_);
    for (std::size_t i = 0; i < numChannels && life.alive(); ++i)
        if (sender == channels_[i].slider || sender == channels_[i].mute)
            log_(channelNames[i] + LightweightString<wchar_t>(L"  ") + fromUTF8(message));
    return 1;
}

} // namespace wainscot::gallery
