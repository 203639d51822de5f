#include "gallery/pages/cell_panel.h"
#include "host/objects/description.h"

#include "buttons/bool_radio_set.h"
#include "buttons/checkbox_group.h"
#include "buttons/checkbox_radio_set.h"
#include "buttons/radio_set.h"

namespace wainscot::gallery {

namespace {

/// Checkboxes of every appearance, radio buttons, and the panels that are made of both.
class ChoicesPanel final : public CellPanel {
public:
    ChoicesPanel(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        addTicks();
        addLights();
        addRadioButtons();
        addPanels();
        addPair();
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (auto const* const box = dynamic_cast<Checkbox*>(sender)) {
            say(box->getString().text() + L"  sends  " + fromUTF8(name));
            return 1;
        }
        if (auto const* const group = dynamic_cast<CheckboxGroup*>(sender)) return sayOf(*group, name);
        if (auto const* const set = dynamic_cast<CheckboxRadioSet*>(sender))
            return sayChoice(name, valueOf(*set));
        if (auto const* const set = dynamic_cast<RadioSet*>(sender)) return sayChoice(name, valueOf(*set));
        return CellPanel::handleMessageEvent(name, sender);
    }
    void handleLookChange(LookChange changes) override {
        CellPanel::handleLookChange(changes);
        showColours();
    }

private:
    /// The label of the chosen one; empty where there is none.
    static LightweightString<wchar_t> valueOf(Glob const& set) { return GlobDescription::of(set).value; }
    int sayOf(CheckboxGroup const& group, LightweightString<char> const& name) {
        int const index = group.getLastClicked();
        return sayChoice(name, group.getCheckbox(index)->getString().text() +
                                   (group.isTicked(index) ? L" on" : L" off"));
    }
    int sayChoice(LightweightString<char> const& name, LightweightString<wchar_t> const& choice) {
        say(fromUTF8(name) + L"  " + choice);
        return 1;
    }

    Checkbox* addBox(wchar_t const* label, bool ticked, Checkbox::eAppearance appearance, int column,
                     int row) {
        Checkbox* const box = addButton(Checkbox::make(0, 0, label, ticked), column, row);
        box->setAppearance(appearance);
        return box;
    }
    void addTicks() {
        addNote(L"ticks", 0, 0);
        addBox(L"Loop", true, Checkbox::tickBox, 0, 1);
        addBox(L"Snap", false, Checkbox::tickBox, 1, 1);
        addBox(L"On release", false, Checkbox::tickBox, 2, 1)->setMessageGeneration(Checkbox::onRelease);
        addBox(L"Disabled", true, Checkbox::tickBox, 3, 1)->setActive(false);
        addBox(L"Own tick", true, Checkbox::tickBox, 4, 1)->setTickCharacter('x');
    }
    void addLights() {
        addNote(L"lights", 0, 2);
        addBox(L"Record", true, Checkbox::redLight, 0, 3);
        addBox(L"Ready", true, Checkbox::greenLight, 1, 3);
        addBox(L"Sync", true, Checkbox::blueLight, 2, 3);
        addBox(L"Off", false, Checkbox::redLight, 3, 3);
        addBox(L"Disabled", true, Checkbox::redLight, 4, 3)->setActive(false);
    }
    void addRadioButtons() {
        addNote(L"one of several; arrow keys step through them", 0, 4, allColumns);
        int column = 0;
        for (wchar_t const* label : {L"24 fps", L"25 fps", L"30 fps", L"50 fps", L"60 fps"})
            addButton(std::make_unique<radio_button>(label, "rate", &rates_, 0, 0), column++, 5);
        rates_.set_current(1, true);
        rates_.member(3)->setActive(false);
    }
    /// A composite hands its stops to the page.
    template <class Panel>
    Panel* addPanel(std::unique_ptr<Panel> panel, GridCell const& cell) {
        Panel* const added = put(std::move(panel), cell);
        addTabStopsFrom(added);
        return added;
    }
    void addPanels() {
        addNote(L"a group", 0, 6);
        auto* const tracks = addPanel(std::make_unique<CheckboxGroup>(CheckboxGroup::InitArgs(
                                          L"Tracks", {L"Video", L"Titles", L"Speech", L"Music"})),
                                      {.row = 7, .column = 0, .rows = 5});
        tracks->setTicked(0, true);
        addNote(L"a set in two columns, bold when chosen", 1, 6, 2);
        CheckboxRadioSet::InitArgs quality({L"Draft", L"Preview", L"Good", L"Best", L"Master"});
        quality.columns = 2;
        quality.selected = 3;
        addPanel(std::make_unique<CheckboxRadioSet>(quality), {.row = 7, .column = 1, .columns = 2})
            ->setBoldWhenTicked(true);
        addNote(L"in colours", 3, 6);
        CheckboxRadioSet::InitArgs coloured({L"Online", L"Proxy", L"Missing"});
        coloured.selected = 2;
        states_ = addPanel(std::make_unique<CheckboxRadioSet>(coloured), {7, 3});
        states_->setAppearance(Checkbox::redLight);
        showColours();
        addNote(L"disabled", 4, 6);
        CheckboxRadioSet::InitArgs fixed({L"Left", L"Right"});
        fixed.selected = 0;
        addPanel(std::make_unique<CheckboxRadioSet>(fixed), {7, 4})->setActive(false);
        addNote(L"sets of buttons", 1, 8, 2);
        addPanel(std::make_unique<RadioSet>(RadioSet::InitArgs({L"Fit", L"Fill", L"Crop"})),
                 {.row = 9, .column = 1, .columns = 2})
            ->setSelectedItem(0);
        RadioSet::InitArgs upright({L"Over", L"Under"});
        upright.vertical = true;
        addPanel(std::make_unique<RadioSet>(upright), {.row = 9, .column = 3, .rows = 2});
    }
    void addPair() {
        addNote(L"two sides of one value", 0, 12, 2);
        Checkbox* const on = addBox(L"Stereo", false, Checkbox::roundTickBox, 0, 13);
        Checkbox* const off = addBox(L"Mono", false, Checkbox::roundTickBox, 1, 13);
        pair_.setWidgets(on, off, true);
    }

    void showColours() { states_->setTextColourWhenTicked(getPalette().mark(eMarkWarning)); }

    CheckboxRadioSet* states_ = nullptr;
    radio_set rates_;
    BoolRadioSet pair_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<ChoicesPanel>(size, std::move(log));
}

} // namespace

extern Page const choicesPage = {"choices",
                                 L"Choices",
                                 PageGroup::controls,
                                 L"Check boxes, lights, and sets of which one is chosen.",
                                 "gallery/pages/choices_page.cpp",
                                 make};

} // namespace wainscot::gallery
