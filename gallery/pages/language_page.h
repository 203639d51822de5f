#pragma once

#include "buttons/radio_set.h"
#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "gallery/page.h"

#include <array>

namespace wainscot::gallery {

enum Language { german, english, hebrew, numLanguages };
/// A text in each of them.
using LanguageText = std::array<wchar_t const*, numLanguages>;

/// A form, and what it is shown in: language and size of text.
class LanguagePage : public StandardPanel {
public:
    using MakeForm = std::unique_ptr<StandardPanel> (*)(Language language, LogLine log);

    LanguagePage(XY<int> size, LogLine log, MakeForm makeForm);
    /// The other pages are read from left to right.
    ~LanguagePage() override;

    int handleMessageEvent(LightweightString<char> message, Glob* sender) override;
    /// The size may be changed elsewhere, too.
    void handleLookChange(LookChange changes) override;

private:
    RadioSet* addSwitch(BoxLayout& row, Vector<LightweightString<wchar_t>> const& labels,
                        LightweightString<char> const& known);
    void showSize();
    void chooseLanguage();
    void showForm(Language language);

    LogLine log_;
    MakeForm makeForm_;
    BoxLayout* column_ = nullptr;
    RadioSet* languages_ = nullptr;
    RadioSet* sizes_ = nullptr;
    StandardPanel* form_ = nullptr;
    bool wasRightToLeft_;
};

} // namespace wainscot::gallery
