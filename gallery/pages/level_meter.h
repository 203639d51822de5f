#pragma once

#include "host/objects/glob.h"

namespace wainscot::gallery {

/// Shows how loud a channel is, with a line where it was loudest of late. Levels are decibels; `silence` and
/// less is nothing, 0 the loudest.
class LevelMeter final : public Glob {
public:
    static constexpr double silence = -60;

    LevelMeter();

    /// The line falls by itself from one call to the next.
    void setLevel(double level);

    SizeNeeds sizeNeeds() const override;
    void draw() override;
    void describe(GlobDescription& description) const override;

private:
    static constexpr double fallPerStep = 1.5;

    /// Where a level lies, from the lower edge.
    int heightOf(double level) const;

    double level_ = silence;
    double peak_ = silence;
};

} // namespace wainscot::gallery
