#include "gallery/caption.h"
#include "gallery/label_glob.h"
#include "gallery/page.h"

#include "buttons/button.h"
#include "foundation/standard_panel.h"
#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/described_items.h"
#include "host/objects/description.h"
#include "host/objects/surround.h"
#include "host/windows/glob_manager.h"
#include "host/windows/look.h"
#include "host/windows/popup_chain.h"

#include <algorithm>

namespace wainscot::gallery {

namespace {

constexpr int levels = 3;
constexpr int rowsOfPopUp = 4;
constexpr double shadowOpacity = 0.35;

int margin() {
    return UifStd::getIndentWidth() * 2;
}

XY<int> rowSize() {
    return {UifStd::getButtonHeight() * 6, UifStd::getButtonHeight()};
}

XY<int> buttonSize() {
    return {UifStd::getButtonHeight() * 8, UifStd::getButtonHeight()};
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
            XY<int> const place{box.x1 + UifStd::getIndentWidth(),
                                box.y1 + getFontYOffset(box.height(), font)};
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
class WindowsPage final : public Glob {
public:
    WindowsPage(XY<int> size, LogLine log) : Glob(toSize16(size.x), toSize16(size.y)), log_(std::move(log)) {
        addChild(std::make_unique<Caption>(
                     L"A press outside of the pop-ups closes them all; Escape closes the last one.",
                     Caption::Kind::note),
                 TopLeft(margin(), margin()));
        place(L"Open a window", [this](LabelGlob&) { openWindow(); });
        place(L"Open a modal window", [this](LabelGlob& self) { openModal(self); });
        popUpLabel_ = place(L"Open pop-ups", {});
        keepAbove_ = place(L"Keep above", [this](LabelGlob&) { toggleKeepAbove(); });
        place(L"Modal strip below", [this](LabelGlob&) { makeStripModal(); });
        place(L"Other theme", [](LabelGlob&) {
            Look::setTheme(Palette::currentTheme() == eThemeDark ? eThemeLight : eThemeDark);
        });
        place(L"Other scale", [this](LabelGlob&) {
            isLarge_ = !isLarge_;
            Look::setDeviceScale(isLarge_ ? 2.0 : 1.0);
        });
        strip_ = place(L"The strip: press to free the rest",
                       [this](LabelGlob&) { GlobManager::instance().unsetModalContextGlob(strip_); });
        strip_->resize(buttonSize().x * 2, buttonSize().y);
        popUpLabel_->setFocusable(false);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        auto const* label = dynamic_cast<LabelGlob const*>(sender);
        log_(fromUTF8(name) + L"  " +
             (label ? label->label() : LightweightString<wchar_t>(L"(sender has gone)")));
        if (name == LabelGlob::pressedMsg && sender == popUpLabel_) pressedPopUpLabel();
        return 1;
    }

private:
    LabelGlob* place(LightweightString<wchar_t> const& text, std::function<void(LabelGlob&)> action) {
        auto label = std::make_unique<LabelGlob>(buttonSize(), text);
        label->setAction(std::move(action));
        int const step = buttonSize().y + UifStd::getWidgetGap();
        return addChild(std::move(label), TopLeft(margin(), margin() * 3 + step * count_++));
    }

    void openWindow() {
        auto window = std::make_unique<SmallWindow>("Another window", L"Close it", log_);
        XY<int> const corner =
            GlobManager::instance().getSafePosForGlob({toSize16(window->width()), toSize16(window->height())},
                                                      RightOf(UifStd::getWidgetGap(), popUpLabel_));
        if (GlobManager::instance().realize(window.get(), corner)) static_cast<void>(window.release());
    }

    void openModal(LabelGlob& from) {
        auto window = std::make_unique<SmallWindow>("Modal window", L"Done", log_);
        if (GlobManager::instance().addModalGlob(window.get(), &from)) static_cast<void>(window.release());
    }

    void pressedPopUpLabel() {
        if (Glob* const open = popUp_.get()) return destroy(open);
        auto made = std::make_unique<LevelPopUp>(1, log_);
        IntBox const anchor = popUpLabel_->screenBox();
        PopUpOptions options;
        options.anchor = anchor;
        options.opener = popUpLabel_;
        options.place = GlobManager::instance().calcPosForGlob(made->size(), anchor);
        if (options.place->y < 0) options.place->y = anchor.y2;
        popUp_ = HandlerRef<Glob>(made.get());
        if (GlobManager::instance().openPopUp(made.get(), options)) static_cast<void>(made.release());
    }

    void toggleKeepAbove() {
        keepsAbove_ = !keepsAbove_;
        keepAbove_->setChosen(keepsAbove_);
        GlobManager::instance().canvasKeepTopmost(canvas(), keepsAbove_);
    }

    void makeStripModal() { GlobManager::instance().addModalGlob(strip_, this); }

    LogLine log_;
    int count_ = 0;
    LabelGlob* popUpLabel_;
    LabelGlob* keepAbove_;
    LabelGlob* strip_;
    bool keepsAbove_ = false;
    bool isLarge_ = false;
    HandlerRef<Glob> popUp_;
};

} // namespace

std::unique_ptr<Glob> makeWindowsPage(XY<int> size, LogLine log) {
    return std::make_unique<WindowsPage>(size, std::move(log));
}

} // namespace wainscot::gallery
