#pragma once

#include "gallery/log_pane.h"
#include "gallery/page.h"
#include "gallery/page_chooser.h"
#include "gallery/page_header.h"
#include "gallery/scrolled_area.h"

namespace wainscot::gallery {

/// The window of the gallery: the list of pages on the left, the chosen page below its header, and the log at
/// the bottom. Ctrl+Page Up and Ctrl+Page Down go to the page before and behind, wherever the
/// focus is.
class GalleryFrame final : public StandardPanel {
public:
    explicit GalleryFrame(XY<int> size);

    /// Shows a page instead of the present one.
    void show(Page const& page);
    MessageLog& log() { return log_->log(); }
    /// Also writes each line of the log to the standard output, for those who watch from outside.
    void echoLog(bool echo) { echo_ = echo; }

    /// Tab goes through pages that have no tab stops as well.
    bool react(Event const& event) override;
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;

private:
    /// The chooser and what it stands in.
    std::unique_ptr<StandardPanel> makeSidebar();
    std::unique_ptr<Layout> makeLayout(StandardPanel& sidebar);
    /// The next of what can take the focus in the page, in the order of the tree. False at its ends.
    bool stepInPage(bool forward);
    void addLine(LightweightString<wchar_t> const& line);

    PageChooser* chooser_;
    ScrolledArea* list_;
    ScrolledArea* area_;
    LogPane* log_;
    PageHeader* header_;
    HandlerRef<Glob> page_;
    bool const isRightToLeft_ = UifStd::isRightToLeft();
    bool echo_ = false;
};

} // namespace wainscot::gallery
