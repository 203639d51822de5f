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

std::unique_ptr<Button> make(wchar_t const* label, LightweightString<char> message = "clicked") {
    XY<int> const size = CellPanel::buttonSize();
    return std::make_unique<Button>(
        Button::InitArgs(label, std::move(message), toSize16(size.x), toSize16(size.y)));
}

void drawMeter(Button const& button) {
    CanvasRenderer renderer(button.canvas(), button.canvasArea());
    IntBox box = button.canvasArea().inset(UifStd::getIndentWidth());
    box.x2 = box.x1 + box.width() * (button.isDown() ? 3 : 1) / 4;
    renderer.renderPrimitive(Glib::RectDescription(box, button.getPalette().mark(eMarkNormal)));
}

void addStates(CellPanel& panel) {
    panel.addNote(L"at rest", 0, 0);
    panel.addNote(L"down", 1, 0);
    panel.addNote(L"disabled", 2, 0);
    panel.addNote(L"default action", 3, 0);
    panel.addNote(L"disabled default", 4, 0);
    panel.addButton(make(L"Apply"), 0, 1);
    panel.addButton(make(L"Down"), 1, 1)->setState(buttonDown, eRedrawNo);
    panel.addButton(make(L"Disabled"), 2, 1)->setActive(false);
    panel.addButton(make(L"OK", "do_it"), 3, 1)->setDefaultAction(true);
    Button* const notYet = panel.addButton(make(L"Not yet", "do_it"), 4, 1);
    notYet->setDefaultAction(true);
    notYet->setActive(false);
}

void addReporting(CellPanel& panel) {
    panel.addNote(L"latching", 0, 2);
    panel.addNote(L"reports presses", 1, 2);
    panel.addNote(L"reports drags", 2, 2);
    panel.addNote(L"repeats while held", 3, 2);
    panel.addNote(L"two labels", 4, 2);
    panel.addButton(make(L"Latch", "latch"), 0, 3)->setLatching(true, false);
    panel.addButton(make(L"Press", "pressed"), 1, 3)->setMessageOnMouseUp(false);
    panel.addButton(make(L"Drag", "drag"), 2, 3)->setMessageOnDrag(true);
    panel.addButton(make(L"Hold", "held"), 3, 3)->setRepeating(5, 1.0);
    Button* const two = panel.addButton(make(L"Play", "play"), 4, 3);
    two->setLatching(true, false);
    two->setSecondString(L"Stop");
}

void addLooks(CellPanel& panel) {
    panel.addNote(L"flat", 0, 4);
    panel.addNote(L"folding", 1, 4);
    panel.addNote(L"opens a list", 2, 4);
    panel.addNote(L"own colours", 3, 4);
    panel.addNote(L"own edge", 4, 4);
    panel.addButton(make(L"Flat"), 0, 5)->setStyle(eButtonFlat);
    Button* const fold = panel.addButton(make(L"Details", "fold"), 1, 5);
    fold->setStyle(eButtonFolding);
    fold->setLatching(true, false);
    panel.addButton(make(L"Format"), 2, 5)->setStyle(eButtonDropDown);
    panel.addButton(make(L"Purple"), 3, 5)->setCols(madeText, madeFace);
    XY<int> const size = CellPanel::buttonSize();
    panel
        .addButton(std::make_unique<CustomBorderButton>(
                       Button::InitArgs(L"Edged", "clicked", toSize16(size.x), toSize16(size.y))),
                   4, 5)
        ->setCustomBorderColour(madeEdge);
}

void addContents(CellPanel& panel) {
    panel.addNote(L"icon", 0, 6);
    panel.addNote(L"icon and label", 1, 6);
    panel.addNote(L"icon on the right", 2, 6);
    panel.addNote(L"drawn by a function", 3, 6);
    panel.addNote(L"too long", 4, 6);
    panel.addButton(make(L""), 0, 7)->setIcons(L"led_green_on.png", L"led_green.png");
    panel.addButton(make(L"Folder"), 1, 7)->setIcons(L"folder.png", L"");
    Button* const right = panel.addButton(make(L"Settings"), 2, 7);
    right->setIcons(L"settings.png", L"");
    right->setAlignment(eAlignLeft);
    Button* const meter = panel.addButton(make(L"Meter", "meter"), 3, 7);
    meter->setCustomDrawFn(drawMeter);
    meter->setLatching(true, false);
    panel.addButton(make(L"A label that does not fit"), 4, 7);
}

} // namespace

std::unique_ptr<Glob> makeButtonsPage(XY<int> size, LogLine log) {
    auto page = std::make_unique<CellPanel>(size, std::move(log));
    addStates(*page);
    addReporting(*page);
    addLooks(*page);
    addContents(*page);
    return page;
}

} // namespace wainscot::gallery
