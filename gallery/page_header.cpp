#include "gallery/page_header.h"

#include "foundation/layout/box_layout.h"
#include "host/base/convert.h"
#include "host/windows/look.h"

#include <algorithm>
#include <cmath>

namespace wainscot::gallery {

namespace {

constexpr double textSizes[] = {1.0, 1.25, 1.5};
constexpr double scales[] = {1.0, 1.25, 1.5, 2.0};

template <std::size_t count>
int indexOf(double const (&values)[count], double value) {
    auto const found =
        std::ranges::find_if(values, [&](double each) { return std::abs(each - value) < 0.01; });
    return found == std::end(values) ? -1 : static_cast<int>(found - values);
}

} // namespace

PageHeader::PageHeader() : StandardPanel(1, 1, Palette(), false) {
    setTabGoesOn(true);
    auto layout = BoxLayout::makeRow();
    layout->setMargins(0);
    BoxLayout* const texts = layout->add(BoxLayout::makeColumn(), {.stretch = 1});
    BoxLayout* const first = texts->add(BoxLayout::makeRow());
    XY<int> const mayBeCut{UifStd::getButtonHeight(), -1};
    title_ = first->add(std::make_unique<Label>(L"", Label::Part::heading), {.minimum = mayBeCut});
    // The title takes its room first.
    source_ = first->add(std::make_unique<Label>(L"", Label::Part::secondary),
                         {.stretch = 1, .size = mayBeCut, .minimum = mayBeCut});
    shows_ = texts->add(std::make_unique<Label>(L"", Label::Part::normal), {.minimum = mayBeCut});
    BoxLayout* const looks = layout->add(BoxLayout::makeColumn());
    BoxLayout* const upper = looks->add(BoxLayout::makeRow());
    theme_ = upper->add(std::unique_ptr<RadioSet>(addSet({L"Dark", L"Light"}, L"Theme")), {.stretch = 1});
    textSize_ =
        upper->add(std::unique_ptr<RadioSet>(addSet({L"A", L"A+", L"A++"}, L"Text size")), {.stretch = 1});
    scale_ =
        looks->add(std::unique_ptr<RadioSet>(addSet({L"100 %", L"125 %", L"150 %", L"200 %"}, L"Scale")));
    setLayout(std::move(layout));
    showLook();
}

RadioSet* PageHeader::addSet(Vector<LightweightString<wchar_t>> const& labels, wchar_t const* name) {
    auto* const set = new RadioSet(RadioSet::InitArgs(labels));
    set->setName(toUTF8(name));
    for (int i = 0; i < set->getNumItems(); ++i) set->getButton(i)->setContextString(UIString(name));
    addTabStopsFrom(set);
    return set;
}

void PageHeader::show(Page const& page) {
    title_->setString(UIString(page.title));
    shows_->setString(UIString(page.shows));
    source_->setString(UIString(fromUTF8(page.source)));
}

void PageHeader::showLook() {
    theme_->setSelectedItem(Palette::currentTheme() == eThemeLight ? 1 : 0);
    textSize_->setSelectedItem(indexOf(textSizes, UifStd::getScale()));
    scale_->setSelectedItem(indexOf(scales, Look::deviceScale()));
}

void PageHeader::handleLookChange(LookChange changes) {
    StandardPanel::handleLookChange(changes);
    showLook();
}

int PageHeader::handleMessageEvent(LightweightString<char> name, Glob* sender) {
    if (name != RadioSet::radioSetMessage()) return StandardPanel::handleMessageEvent(name, sender);
    auto const* const set = static_cast<RadioSet const*>(sender);
    int const chosen = set ? set->getSelectedItem() : -1;
    if (chosen < 0) return 1;
    auto const index = static_cast<std::size_t>(chosen);
    if (sender == theme_) Look::setTheme(chosen == 1 ? eThemeLight : eThemeDark);
    if (sender == textSize_) Look::setSize(textSizes[index]);
    if (sender == scale_) Look::setDeviceScale(scales[index]);
    return 1;
}

} // namespace wainscot::gallery
