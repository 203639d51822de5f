#pragma once

#include "gallery/message_log.h"
#include "gallery/page.h"
#include "gallery/scrolled_area.h"

namespace wainscot::gallery {

/// The window of the gallery: the names of the pages on the left, the chosen page, and the log of messages
/// below.
class GalleryFrame final : public Glob {
public:
    explicit GalleryFrame(XY<int> size);

    /// Shows a page instead of the present one.
    void show(Page const& page);
    MessageLog& log() { return *log_; }
    /// Also writes each line of the log to the standard output, for those who watch from outside.
    void echoLog(bool echo) { echo_ = echo; }

    /// Tab goes through pages that have no tab stops as well.
    bool react(Event const& event) override;
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void reshape() override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;

private:
    IntBox pageArea() const;
    void fitPage();
    /// The next of what can take the focus in the page, in the order of the tree and round its ends.
    bool stepInPage(bool forward);
    void addLine(LightweightString<wchar_t> const& line);

    void layOutList();

    std::vector<Glob*> list_;
    MessageLog* log_;
    ScrolledArea* area_;
    HandlerRef<Glob> page_;
    bool fitsAnywhere_ = false;
    bool echo_ = false;
};

} // namespace wainscot::gallery
