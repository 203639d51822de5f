#pragma once

#include "host/objects/glob.h"

#include <deque>

namespace wainscot::gallery {

/// Shows the last lines of the log, the newest at the bottom. Keeps more lines than it shows.
class MessageLog : public Glob {
public:
    explicit MessageLog(XY<int> size);

    void add(LightweightString<wchar_t> const& line);
    void clear();
    /// While it is paused, lines are kept, and shown when it goes on.
    void setPaused(bool paused);
    /// How many lines came while it was paused.
    std::size_t numHeldBack() const { return heldBack_; }
    /// All kept lines, each ended by a line feed.
    LightweightString<char> text() const;

    /// The wheel leads to older lines.
    bool react(Event const& event) override;
    void draw() override;
    void describe(GlobDescription& description) const override;

private:
    void showNewest();

    std::deque<LightweightString<wchar_t>> lines_;
    unsigned numAdded_ = 0;
    bool isPaused_ = false;
    /// How many lines the user has gone back.
    std::size_t back_ = 0;
    std::size_t heldBack_ = 0;
};

} // namespace wainscot::gallery
