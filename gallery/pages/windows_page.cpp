#include "gallery/pages/cell_panel.h"

#include "host/drawing/shapes.h"
#include "host/events/event.h"
#include "host/objects/described_items.h"
#include "host/objects/description.h"
#include "host/objects/surround.h"
#include "host/windows/glob_manager.h"
#include "host/windows/look.h"
#include "host/windows/popup_chain.h"

#include <functional>
#include <map>

namespace wainscot::gallery {

namespace {

constexpr int levels = 3;
constexpr int rowsOfPopUp = 4;
constexpr double shadowOpacity = 0.35;

XY<int> rowSize() {
    return {UifStd::getButtonHeight() * 6, UifStd::getButtonHeight()};
}

/// A list of rows in a pop-up; its first row opens the next level, the last one pins it, the others choose.
class LevelPopUp final : public Glob, public DescribedItems {
public:
    LevelPopUp(int level, LogLine log)
        : Glob(toSize16(rowSize().x), toSize16(rowSize().y * rowsOfPopUp)), level_(level),
          log_(std::move(log)) {
        setName(LightweightString<char>("level ") + StringFromInteger(level));
        setPalette(getPalette().makeChildPalette(eChildPopup));
        addSurround(Surround({WidgetSurround::Style::line, 1}));
        addShadow(2 * UifStd::getWidgetGap(), shadowOpacity);
    }

    void draw() override {
        CanvasRenderer renderer(canvas(), canvasArea());
        Palette const& palette = getPalette();
        renderer.renderPrimitive(Glib::RectDescription(bounds(), palette.childWindow(eChildPopup)));
        Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
        for (int row = 0; row < rowsOfPopUp; ++row) {
            IntBox const box = boxOf(row);
            bool const marked = row == marked_ || (row == 0 && next_);
            if (marked)
                renderer.renderPrimitive(Glib::RectDescription(box, palette.selection(eSelectionActive)));
            XY<int> const place{box.x1 + UifStd::getWidgetGap(), box.y1 + getFontYOffset(box.height(), font)};
            Colour const ink = palette.text(marked ? eTextSelected : eTextEnabled);
            renderer.renderPrimitive(Glib::TextDescription(textOf(row), place, font, ink));
        }
    }

    bool react(Event const& event) override {
        if (!mouse_event(event) || mouse_wheel_event(event)) return Glob::react(event);
        mark(rowAt(eventXYToGlobXY(event, *this)));
        if (mouse_up_event(event) && marked_ >= 0) choose(marked_);
        return true;
    }

    void handleMouseContainment(bool inside) override {
        if (!inside) mark(-1);
    }

    int handleMessageEvent(LightweightString<char> name, Glob*) override {
        if (name != pootMsg) return 0;
        say(L"closes");
        destroy(this);
        return 1;
    }

    void describe(GlobDescription& description) const override {
        Glob::describe(description);
        description.role = Role::menu;
        description.name = fromUTF8(name());
    }
    DescribedItems* describedItems() override { return this; }

    // DescribedItems: the rows, by their number from 1.
    std::size_t numItems(ItemKey in) const override { return in.isEmpty() ? rowsOfPopUp : 0; }
    Range itemsInSight(ItemKey in) const override { return {0, numItems(in)}; }
    ItemKey itemAt(ItemKey in, std::size_t index) const override {
        return index < numItems(in) ? ItemKey{index + 1} : ItemKey();
    }
    bool describeItem(ItemKey item, GlobDescription& description) const override {
        if (item.isEmpty() || item.value > rowsOfPopUp) return false;
        int const row = static_cast<int>(item.value) - 1;
        description.role = Role::menuItem;
        description.name = textOf(row);
        description.states = GlobDescription::visible | GlobDescription::enabled;
        description.actions = GlobDescription::press;
        description.box = boxOf(row).translated(screenBox().bottomLeft());
        return true;
    }
    bool performItemAction(ItemKey item, std::uint32_t action) override {
        bool const isRow = !item.isEmpty() && item.value <= rowsOfPopUp;
        if (isRow && action == GlobDescription::press) choose(static_cast<int>(item.value) - 1);
        return isRow && action == GlobDescription::press;
    }

private:
    bool opensAnother() const { return level_ < levels; }
    IntBox boxOf(int row) const {
        return IntBox::sized({0, height() - (row + 1) * rowSize().y}, {width(), rowSize().y});
    }
    int rowAt(XY<int> place) const {
        return bounds().contains(place) ? (height() - 1 - place.y) / rowSize().y : -1;
    }
    LightweightString<wchar_t> textOf(int row) const {
        if (row == 0 && opensAnother()) return L"Open the next level";
        return row == rowsOfPopUp - 1 ? LightweightString<wchar_t>(L"Pin")
                                      : LightweightString<wchar_t>(L"Choose ") + Qv::WStringFromInteger(row);
    }
    void say(LightweightString<wchar_t> const& what) { log_(fromUTF8(name()) + L"  " + what); }
    void mark(int row) {
        if (row == marked_) return;
        marked_ = row;
        makeDirty();
    }

    void choose(int row) {
        say(LightweightString<wchar_t>(L"chosen  ") + textOf(row));
        GlobManager& windows = GlobManager::instance();
        if (row == 0 && opensAnother()) return openNext();
        if (row == rowsOfPopUp - 1) return windows.pinPopUp(this);
        windows.popUps().closeAll();
        if (is_good_glob_ptr(this)) destroy(this);
    }

    void openNext() {
        if (Glob* const open = next_.get()) return destroy(open);
        auto made = std::make_unique<LevelPopUp>(level_ + 1, log_);
        IntBox const row = boxOf(0).translated(screenBox().bottomLeft());
        PopUpOptions options;
        options.anchor = row;
        options.parent = this;
        options.place = GlobManager::instance().getSafePosForGlob(
            {toSize16(made->width()), toSize16(made->height())}, row, WidgetRelativity::rightOf,
            UifStd::getWidgetGap(), WidgetAlignment::end);
        next_ = HandlerRef<Glob>(made.get());
        if (GlobManager::instance().openPopUp(made.get(), options)) static_cast<void>(made.release());
        makeDirty();
    }

    int level_;
    LogLine log_;
    int marked_ = -1;
    HandlerRef<Glob> next_;
};

/// A window with one thing to press in it.
class SmallWindow final : public StandardPanel {
public:
    SmallWindow(char const* title, LightweightString<wchar_t> const& label, LogLine log)
        : StandardPanel(toSize16(rowSize().x * 2), toSize16(rowSize().y * 4)), log_(std::move(log)) {
        setName(title);
        setMinSize(toSize16(rowSize().x), toSize16(rowSize().y * 2));
        auto close =
            std::make_unique<Button>(label, pootMsg.c_str(), toSize16(rowSize().x), toSize16(rowSize().y));
        close->setDefaultAction(true);
        addTabStop(*close);
        addChild(std::move(close), Centre(0, 0));
    }
    int handleMessageEvent(LightweightString<char> message, Glob*) override {
        log_(fromUTF8(name()) + L"  " + fromUTF8(message));
        return message == pootMsg ? 0 : 1;
    }

private:
    LogLine log_;
};

/// Windows, modal windows and pop-ups, and what is heard of them.
class WindowsPage final : public CellPanel {
public:
    WindowsPage(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        addNote(L"A press outside of the pop-ups closes them all; Escape closes the last one.", 0, count_++,
                2);
        place(L"Open a window", [this](Button&) { openWindow(); });
        place(L"Open a modal window", [this](Button& self) { openModal(self); });
        opener_ = place(
            L"Open pop-ups", [this](Button&) { openPopUps(); }, "pressed");
        opener_->setMessageOnMouseUp(false);
        place(L"Keep above", [this](Button& self) {
            GlobManager::instance().canvasKeepTopmost(canvas(), self.isDown());
        })->setLatching(true, false);
        place(L"Other scale", [](Button&) { Look::setDeviceScale(Look::deviceScale() > 1 ? 1.0 : 2.0); });
        place(L"Modal strip below", [this](Button&) { GlobManager::instance().addModalGlob(strip_, this); });
        strip_ = place(L"The strip: press to free the rest",
                       [this](Button&) { GlobManager::instance().unsetModalContextGlob(strip_); });
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        auto* const button = dynamic_cast<Button*>(sender);
        log()(fromUTF8(name) + L"  " +
              (button ? button->getWidgetValue() : LightweightString<wchar_t>(L"(sender has gone)")));
        auto const found = actions_.find(button);
        if (found == actions_.end()) return name == pootMsg ? 0 : 1;
        auto const action = found->second;
        action(*button);
        return 1;
    }

private:
    Button* place(LightweightString<wchar_t> const& text, std::function<void(Button&)> action,
                  char const* message = "clicked") {
        Button* const button =
            addButton(std::make_unique<Button>(Button::InitArgs(UIString(text), message)), 0, count_++);
        actions_[button] = std::move(action);
        return button;
    }

    void openWindow() {
        auto window = std::make_unique<SmallWindow>("Another window", L"Close it", log());
        XY<int> const corner =
            GlobManager::instance().getSafePosForGlob({toSize16(window->width()), toSize16(window->height())},
                                                      RightOf(UifStd::getWidgetGap(), opener_));
        if (GlobManager::instance().realize(window.get(), corner)) static_cast<void>(window.release());
    }

    void openModal(Button& from) {
        auto window = std::make_unique<SmallWindow>("Modal window", L"Done", log());
        if (GlobManager::instance().addModalGlob(window.get(), &from)) static_cast<void>(window.release());
    }

    void openPopUps() {
        if (Glob* const open = popUp_.get()) return destroy(open);
        auto made = std::make_unique<LevelPopUp>(1, log());
        IntBox const anchor = opener_->screenBox();
        PopUpOptions options;
        options.anchor = anchor;
        options.opener = opener_;
        options.place = GlobManager::instance().calcPosForGlob(made->size(), anchor);
        if (options.place->y < 0) options.place->y = anchor.y2;
        popUp_ = HandlerRef<Glob>(made.get());
        if (GlobManager::instance().openPopUp(made.get(), options)) static_cast<void>(made.release());
    }

    std::map<Button*, std::function<void(Button&)>> actions_;
    int count_ = 0;
    Button* opener_;
    Button* strip_;
    HandlerRef<Glob> popUp_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<WindowsPage>(size, std::move(log));
}

} // namespace

extern Page const windowsPage = {"windows",
                                 L"Windows",
                                 PageGroup::panels,
                                 L"Windows, pop-ups, modal dialogues and notes.",
                                 "gallery/pages/windows_page.cpp",
                                 make};

} // namespace wainscot::gallery
