#pragma once

#include "foundation/label.h"
#include "foundation/standard_panel.h"
#include "foundation/tab_orderable.h"

namespace wainscot {

/// A control with a title before it. The control's messages go to the parent as if it stood there itself, and
/// it is the tab stop: `getTabOrderables` gives it to the panel around.
class WAINSCOT_API TitledWidget : public StandardPanel, public TabOrderableHost {
public:
    /// A width or height of 0 is that of title and control; a title width of 0 is what the text needs.
    TitledWidget(UIString const& title, std::unique_ptr<Glob> control, GlobCreationInfo const& size,
                 int titleWidth = 0);
    ~TitledWidget() override;

    /// The title's label; null when it has died.
    Label* getTitleLabel() const { return label_.get(); }
    /// Null when it has died, or was taken out.
    Glob* getControlGlob() const;

    void getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int order) override;
    bool react(Event const& event) override;
    void setActive(bool active, eRedrawFlag redraw = eRedrawYes) override;

private:
    HandlerRef<Label> label_;
    HandlerRef<Glob> control_;
};

/// The same for a control of a class `T`.
template <class T>
class Titled : public TitledWidget {
public:
    Titled(UIString const& title, std::unique_ptr<T> control, GlobCreationInfo const& size = {0, 0},
           int titleWidth = 0)
        : TitledWidget(title, std::move(control), size, titleWidth) {}

    /// Null when it has died, or was taken out.
    T* getControl() const { return static_cast<T*>(getControlGlob()); }
};

} // namespace wainscot
