#pragma once

#include "foundation/standard_panel.h"
#include "foundation/tab_orderable.h"
#include "text/multi_line_text_box.h"

namespace wainscot {

/// A panel that a box with lines of text fills, for widgets that are more than the box: with a title, with
/// controls of their own, or with a text that is only shown. Its box is one of its tab stops.
class WAINSCOT_API ScrollableTextBoxBase : public StandardPanel, public TabOrderableHost {
public:
    /// The record is the box's: its size is that of the panel.
    explicit ScrollableTextBoxBase(MultiLineTextBox::InitArgs const& args);
    ~ScrollableTextBoxBase() override;

    /// Null when it has died.
    MultiLineTextBox* getTextBox() const { return box_.get(); }
    /// The text of the box; empty when that has died.
    LightweightString<wchar_t> getText() const;
    void setText(UIString const& text);

    void getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int order) override;

protected:
    /// For a box of another class, which it takes.
    ScrollableTextBoxBase(MultiLineTextBox::InitArgs const& args, std::unique_ptr<MultiLineTextBox> box);

private:
    HandlerRef<MultiLineTextBox> box_;
};

/// A text that is only shown: wrapped to the width, scrolled where it does not fit, to be read, selected and
/// copied with keys and pointer.
class WAINSCOT_API TextViewer : public ScrollableTextBoxBase {
public:
    explicit TextViewer(MultiLineTextBox::InitArgs const& args);
};

} // namespace wainscot
