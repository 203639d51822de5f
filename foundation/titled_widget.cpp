#include "foundation/titled_widget.h"

#include "foundation/layout/box_layout.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"

#include <algorithm>

namespace wainscot {

namespace {

StandardPanel::InitArgs argsFor(GlobCreationInfo const& size, Glob const* control) {
    GlobCreationInfo info = size;
    if (info.height == 0)
        info.height = control ? toSize16(control->height()) : toSize16(UifStd::getButtonHeight());
    StandardPanel::InitArgs args(info, Border(Border::none));
    args.opaque = false;
    return args;
}

} // namespace

TitledWidget::TitledWidget(UIString const& title, std::unique_ptr<Glob> control, GlobCreationInfo const& size,
                           int titleWidth)
    : StandardPanel(argsFor(size, control.get())) {
    auto* const row = setLayout(BoxLayout::makeRow());
    row->setMargins(0);
    Label::InitArgs const args(title, Label::Part::normal, toSize16(std::max(titleWidth, 0)));
    Label* const label = row->add(std::make_unique<Label>(args));
    label_ = HandlerRef<Label>(label);
    Glob* const added = row->add(std::move(control), {.stretch = 1});
    if (!added) return;
    control_ = HandlerRef<Glob>(added);
    label->setLabelFor(*added);
    if (size.width == 0) resize(label->width() + UifStd::getWidgetGap() + added->width(), height());
}

TitledWidget::~TitledWidget() = default;

Glob* TitledWidget::getControlGlob() const {
    Glob* const control = control_.get();
    return control && Glob::isParentedTo(control, this) ? control : nullptr;
}

void TitledWidget::getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int order) {
    Glob* const control = getControlGlob();
    if (auto* const several = dynamic_cast<TabOrderableHost*>(control))
        return several->getTabOrderables(controls, order);
    if (auto* const one = dynamic_cast<TabOrderable*>(control)) controls.push_back(one);
}

bool TitledWidget::react(Event const& event) {
    Glob* const control = getControlGlob();
    bool const isFromControl = isMessageEvent(event) && control && event.sender() == control;
    return isFromControl && parent() ? parent()->handleEvent(event) : StandardPanel::react(event);
}

void TitledWidget::setActive(bool active, eRedrawFlag redraw) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    StandardPanel::setActive(active, redraw);
    if (life.alive() && getControlGlob()) getControlGlob()->setActive(active, redraw);
}

} // namespace wainscot
