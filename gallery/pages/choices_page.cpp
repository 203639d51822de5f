#include "gallery/pages/cell_panel.h"

#include "buttons/checkbox.h"
#include "buttons/radio_button.h"

namespace wainscot::gallery {

namespace {

constexpr int rowsOfLights = 4;

/// Check boxes of every appearance, and a set of radio buttons.
class ChoicesPanel final : public CellPanel {
public:
    ChoicesPanel(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        addNote(L"ticks", 0, 0);
        addBox(L"Loop", true, Checkbox::tickBox, 0, 1);
        addBox(L"Snap", false, Checkbox::roundTickBox, 1, 1);
        addBox(L"On release", false, Checkbox::tickBox, 2, 1)->setMessageGeneration(Checkbox::onRelease);
        addBox(L"Disabled", true, Checkbox::tickBox, 3, 1)->setActive(false);
        Checkbox* const own = addBox(L"Own tick", true, Checkbox::tickBox, 4, 1);
        own->setTickCharacter('x');
        addNote(L"lights", 0, 2);
        addBox(L"Record", true, Checkbox::redLight, 0, 3);
        addBox(L"Ready", true, Checkbox::greenLight, 1, 3);
        addBox(L"Sync", true, Checkbox::blueLight, 2, 3);
        addBox(L"Off", false, Checkbox::redLight, 3, 3);
        addBox(L"Disabled", true, Checkbox::redLight, 4, 3)->setActive(false);
        addNote(L"one of several; arrow keys step through them", 0, rowsOfLights);
        int column = 0;
        for (wchar_t const* label : {L"24 fps", L"25 fps", L"30 fps", L"50 fps", L"60 fps"})
            addButton(std::make_unique<radio_button>(label, "rate", &rates_, toSize16(buttonSize().x),
                                                     toSize16(buttonSize().y)),
                      column++, rowsOfLights + 1);
        rates_.set_current(1, true);
        rates_.member(3)->setActive(false);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (auto const* const box = dynamic_cast<Checkbox*>(sender)) {
            say(box->getString().text() + L"  sends  " + fromUTF8(name));
            return 1;
        }
        return CellPanel::handleMessageEvent(name, sender);
    }

private:
    Checkbox* addBox(wchar_t const* label, bool ticked, Checkbox::eAppearance appearance, int column,
                     int row) {
        Checkbox* const box = addButton(Checkbox::make(0, 0, label, ticked), column, row);
        box->setAppearance(appearance);
        return box;
    }

    radio_set rates_;
};

} // namespace

std::unique_ptr<Glob> makeChoicesPage(XY<int> size, LogLine log) {
    return std::make_unique<ChoicesPanel>(size, std::move(log));
}

} // namespace wainscot::gallery
