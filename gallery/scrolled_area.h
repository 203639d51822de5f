#pragma once

#include "host/objects/glob.h"

namespace wainscot {

class ScrollBar;

namespace gallery {

/// Shows contents that need a certain size, and lets the user scroll them where there is not so much room.
class ScrolledArea final : public Glob {
public:
    explicit ScrolledArea(XY<int> size);

    /// The contents are never smaller than that.
    void setLeastSize(XY<int> least);

    /// What the contents are to be made for.
    XY<int> contentsSize() const;
    /// Takes it over, in the place of what was there. It is never smaller than what it needs.
    Glob* setContents(std::unique_ptr<Glob> contents);

    /// Turns of the wheel that nothing in the contents has used.
    bool react(Event const& event) override;
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    XY<int> handleBringIntoView(IntBox const& area) override;
    void reshape() override;
    bool handleChildChange(Glob& child, ChildChange change) override;
    void handleLayout() override;
    void describe(GlobDescription& description) const override;

private:
    /// What the bars leave.
    XY<int> viewSize() const;
    XY<int> range() const;
    /// What the contents cannot be smaller than.
    XY<int> least() const;
    void layOut();
    void scrollTo(XY<int> offset);

    XY<int> least_;
    /// How far the contents are moved up and to the left.
    XY<int> offset_;
    Glob* view_ = nullptr;
    HandlerRef<Glob> contents_;
    ScrollBar* across_ = nullptr;
    ScrollBar* down_ = nullptr;
};

} // namespace gallery
} // namespace wainscot
