#pragma once

#include "host/objects/glob.h"

namespace wainscot {

class ScrollBar;

namespace gallery {

/// Shows contents in their smallest size or larger, and lets the user scroll them where there is not so much
/// room. Contents without needs get the room that there is.
class ScrolledArea final : public Glob {
public:
    explicit ScrolledArea(XY<int> size);

    /// What is to be seen of the contents at once.
    XY<int> viewSize() const { return view_->size(); }
    /// Takes the contents over, and destroys those before.
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
    /// Passes on what it is told of the contents.
    class View;
    /// The sizes of view and contents, which depend on each other where texts are wrapped.
    struct Sizes {
        XY<int> view;
        XY<int> contents;
    };

    XY<int> leastSize(int width) const;
    Sizes sizes() const;
    XY<int> range() const { return sizes_.contents - sizes_.view; }
    void layOut();
    void scrollTo(XY<int> offset);

    Sizes sizes_;
    /// How far the contents are moved up and to the left.
    XY<int> offset_;
    Glob* view_ = nullptr;
    HandlerRef<Glob> contents_;
    ScrollBar* across_ = nullptr;
    ScrollBar* down_ = nullptr;
};

} // namespace gallery
} // namespace wainscot
