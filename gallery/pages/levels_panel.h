#pragma once

#include "gallery/page.h"
#include "gallery/pages/level_meter.h"

#include "buttons/checkbox.h"
#include "containers/slider.h"
#include "foundation/standard_panel.h"
#include "foundation/val_server.h"

#include <array>

namespace wainscot::gallery {

/// Faders, buttons that silence, and meters of the channels of a small mixer. It plays nothing: how loud a
/// channel is follows from the time alone.
class LevelsPanel final : public StandardPanel {
public:
    explicit LevelsPanel(LogLine log);

    /// Shows what is heard at a time, in seconds.
    void setTime(double time);

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    static constexpr std::size_t numChannels = 4;

    struct Channel {
        ValServer<double> fader{0.75};
        LevelMeter* meter = nullptr;
        Slider* slider = nullptr;
        Checkbox* mute = nullptr;
    };

    void addChannel(std::size_t number);
    double levelOf(std::size_t number) const;

    std::array<Channel, numChannels> channels_;
    double time_ = 0;
    LogLine log_;
};

} // namespace wainscot::gallery
