#include "gallery/pages/language_page.h"

#include "host/drawing/uif_std.h"
#include "host/windows/look.h"

namespace wainscot::gallery {

namespace {
constexpr double largeText = 1.5;
} // namespace

LanguagePage::LanguagePage(XY<int> size, LogLine log, MakeForm makeForm)
    : StandardPanel(size), log_(std::move(log)), makeForm_(makeForm),
      wasRightToLeft_(UifStd::isRightToLeft()) {
    setTabGoesOn(true);
    column_ = setLayout(BoxLayout::makeColumn());
    auto* const row = column_->add(BoxLayout::makeRow());
    languages_ = addSwitch(*row, {L"Deutsch", L"English", L"עברית"}, "language");
    sizes_ = addSwitch(*row, {L"Normal", L"Large"}, "text size");
    row->addStretch();
    showSize();
    showForm(german);
}

void LanguagePage::showSize() {
    sizes_->setSelectedItem(UifStd::getScale() > 1 ? 1 : 0);
}

void LanguagePage::handleLookChange(LookChange changes) {
    StandardPanel::handleLookChange(changes);
    showSize();
}

LanguagePage::~LanguagePage() {
    UifStd::setRightToLeft(wasRightToLeft_);
}

int LanguagePage::handleMessageEvent(LightweightString<char> message, Glob* sender) {
    if (sender == languages_) return chooseLanguage(), 1;
    if (sender == sizes_) return Look::setSize(sizes_->getSelectedItem() == 1 ? largeText : 1.0), 1;
    return StandardPanel::handleMessageEvent(message, sender);
}

RadioSet* LanguagePage::addSwitch(BoxLayout& row, Vector<LightweightString<wchar_t>> const& labels,
                                  LightweightString<char> const& known) {
    auto* const added = row.add(std::make_unique<RadioSet>(RadioSet::InitArgs(labels)));
    added->setName(known);
    added->setSelectedItem(0);
    addTabStopsFrom(*added);
    return added;
}

void LanguagePage::chooseLanguage() {
    auto const language = static_cast<Language>(languages_->getSelectedItem());
    UifStd::setRightToLeft(language == hebrew);
    LifeGuard const life = guard();
    showForm(language);
    if (life.alive()) Look::broadcast();
}

void LanguagePage::showForm(Language language) {
    if (form_) removeWidget(form_);
    form_ = column_->add(makeForm_(language, log_));
}

} // namespace wainscot::gallery
