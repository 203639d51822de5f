#pragma once

#include "host/objects/glob.h"

#include <deque>

namespace wainscot::gallery {

/// Shows the last lines of what the owner of a page heard, the newest at the bottom; keeps more than it
/// shows.
class MessageLog : public Glob {
public:
    explicit MessageLog(XY<int> size);

    void add(LightweightString<wchar_t> const& line);
    /// All kept lines, each ended by a line feed.
    LightweightString<char> text() const;

    void draw() override;
    void describe(GlobDescription& description) const override;

private:
    std::deque<LightweightString<wchar_t>> lines_;
    unsigned numAdded_ = 0;
};

} // namespace wainscot::gallery
