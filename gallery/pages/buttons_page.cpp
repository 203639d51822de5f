#include "gallery/pages/cell_panel.h"

#include "buttons/command_button.h"
#include "buttons/custom_border_button.h"
#include "buttons/standard_buttons.h"
#include "host/drawing/shapes.h"
#include "host/drawing/symbols.h"

namespace wainscot::gallery {

namespace {

constexpr Colour madeFace = Colour::fromLong(0x6A3D7C);
constexpr Colour madeText = Colour::fromLong(0xFFFFFF);
constexpr Colour madeEdge = Colour::fromLong(0xE0A030);

std::unique_ptr<Button> newButton(wchar_t const* label, LightweightString<char> message = "clicked") {
    return std::make_unique<Button>(Button::InitArgs(label, std::move(message)));
}

void drawMeter(Button const& button) {
    CanvasRenderer renderer(button.canvas(), button.canvasArea());
    IntBox box = button.canvasArea().inset(UifStd::getIndentWidth());
    box.x2 = box.x1 + box.width() * (button.isDown() ? 3 : 1) / 4;
    renderer.renderPrimitive(Glib::RectDescription(box, button.getPalette().mark(eMarkNormal)));
}

class ButtonsPanel final : public CellPanel {
public:
    ButtonsPanel(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        addStates();
        addReporting();
        addLooks();
        addContents();
    }

private:
    void addStates() {
        addNote(L"at rest", 0, 0);
        addNote(L"down", 1, 0);
        addNote(L"disabled", 2, 0);
        addNote(L"default action", 3, 0);
        addNote(L"disabled default", 4, 0);
        addButton(newButton(L"Apply"), 0, 1);
        addButton(newButton(L"Down"), 1, 1)->setState(buttonDown, eRedrawNo);
        addButton(newButton(L"Disabled"), 2, 1)->setActive(false);
        addButton(newButton(L"OK", "do_it"), 3, 1)->setDefaultAction(true);
        Button* const notYet = addButton(newButton(L"Not yet", "do_it"), 4, 1);
        notYet->setDefaultAction(true);
        notYet->setActive(false);
    }

    void addReporting() {
        addNote(L"latching", 0, 2);
        addNote(L"reports presses", 1, 2);
        addNote(L"reports drags", 2, 2);
        addNote(L"repeats while held", 3, 2);
        addNote(L"two labels", 4, 2);
        addButton(newButton(L"Latch", "latch"), 0, 3)->setLatching(true, false);
        addButton(newButton(L"Press", "pressed"), 1, 3)->setMessageOnMouseUp(false);
        addButton(newButton(L"Drag", "drag"), 2, 3)->setMessageOnDrag(true);
        addButton(newButton(L"Hold", "held"), 3, 3)->setRepeating(5, 1.0);
        Button* const two = addButton(newButton(L"Play", "play"), 4, 3);
        two->setLatching(true, false);
        two->setSecondString(L"Stop");
    }

    void addLooks() {
        addNote(L"flat", 0, 4);
        addNote(L"folding", 1, 4);
        addNote(L"opens a list", 2, 4);
        addNote(L"own colours", 3, 4);
        addNote(L"own edge", 4, 4);
        addButton(newButton(L"Flat"), 0, 5)->setStyle(eButtonFlat);
        Button* const fold = addButton(newButton(L"Details", "fold"), 1, 5);
        fold->setStyle(eButtonFolding);
        fold->setLatching(true, false);
        addButton(newButton(L"Format"), 2, 5)->setStyle(eButtonDropDown);
        addButton(newButton(L"Purple"), 3, 5)->setCols(madeText, madeFace);
        addButton(std::make_unique<CustomBorderButton>(Button::InitArgs(L"Edged", "clicked")), 4, 5)
            ->setCustomBorderColour(madeEdge);
    }

    void addContents() {
        addNote(L"icon", 0, 6);
        addNote(L"icon and label", 1, 6);
        addNote(L"icon on the right", 2, 6);
        addNote(L"drawn by a function", 3, 6);
        addNote(L"too long", 4, 6);
        addButton(newButton(L""), 0, 7)->setIcons(L"led_green_on.png", L"led_green.png");
        addButton(newButton(L"Folder"), 1, 7)->setIcons(L"folder.png", L"");
        Button* const right = addButton(newButton(L"Settings"), 2, 7);
        right->setIcons(L"settings.png", L"");
        right->setAlignment(eAlignLeft);
        Button* const meter = addButton(newButton(L"Meter", "meter"), 3, 7);
        meter->setCustomDrawFn(drawMeter);
        meter->setLatching(true, false);
        Button* const tooLong = addButton(newButton(L"A label that does not fit"), 4, 7);
        grid().setOptions(*tooLong, {.size = {5, 1}, .maximum = {5, 1}, .unit = LayoutUnit::buttonHeight});
    }
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<ButtonsPanel>(size, std::move(log));
}

} // namespace

extern Page const buttonsPage = {"buttons",
                                 L"Buttons",
                                 PageGroup::controls,
                                 L"Buttons in all their states, and what they report.",
                                 "gallery/pages/buttons_page.cpp",
                                 make};

} // namespace wainscot::gallery
