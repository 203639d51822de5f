#include "gallery/caption.h"
#include "gallery/label_glob.h"
#include "gallery/page.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/kbd_focus.h"

#include <algorithm>
#include <stdexcept>

namespace wainscot::gallery {

namespace {

constexpr int columns = 4;

/// Plain objects that can be pressed, focused with Tab, hidden, disabled and destroyed in their own handlers.
class GlobsPage final : public Glob {
public:
    SizeNeeds sizeNeeds() const override { return usualNeeds(); }
    GlobsPage(XY<int> size, LogLine log) : Glob(toSize16(size.x), toSize16(size.y)), log_(std::move(log)) {
        fill();
    }

    bool react(Event const& event) override {
        if (!isKeyPressEvent(event)) return Glob::react(event);
        bool const forward = event.keyCode() == Key::tab;
        if (!forward && event.keyCode() != Key::shiftTab) return Glob::react(event);
        return stepFocus(forward);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        auto const* label = dynamic_cast<LabelGlob const*>(sender);
        log_(fromUTF8(name) + L"  " +
             (label ? label->label() : LightweightString<wchar_t>(L"(sender has gone)")));
        return 1;
    }

private:
    LabelGlob* place(LightweightString<wchar_t> const& text, std::function<void(LabelGlob&)> action) {
        int const gap = UifStd::getWidgetGap();
        XY<int> const cell{UifStd::getButtonHeight() * 6, UifStd::getButtonHeight() * 2};
        int const column = count_ % columns;
        int const row = count_++ / columns;
        auto label = std::make_unique<LabelGlob>(cell, text);
        label->setAction(std::move(action));
        int const top = margin() + UifStd::getButtonHeight() * 2;
        return addChild(std::move(label),
                        TopLeft(margin() + column * (cell.x + gap), top + row * (cell.y + gap)));
    }

    static int margin() { return UifStd::getIndentWidth() * 2; }

    void fill() {
        count_ = 0;
        addChild(std::make_unique<Caption>(L"Press them, or step with Tab and press Return or space.",
                                           Caption::Kind::note),
                 TopLeft(margin(), margin()));
        place(L"Plain", {});
        place(L"Destroys itself", [](LabelGlob& self) { delete &self; });
        place(L"Destroys the next", [](LabelGlob& self) { destroy(self.nextSibling()); });
        place(L"Destroys the page", [](LabelGlob& self) { destroy(self.parent()); });
        place(L"Hides itself", [](LabelGlob& self) { self.setVisible(false); });
        place(L"Disables itself", [](LabelGlob& self) { self.setActive(false); });
        place(L"Throws", [](LabelGlob&) { throw std::runtime_error("thrown by a button"); });
        place(L"Moves to the top", [](LabelGlob& self) { self.moveToTop(); });
        place(L"Half transparent",
              [](LabelGlob& self) { self.setOpacity(self.opacity() < 1.0 ? 1.0 : 0.5); });
        place(L"Drag me", {})->setMovable(true);
        place(L"Bring all back", [this](LabelGlob&) { bringBack(); });
        place(L"Destroys the window", [](LabelGlob& self) { destroy(getRootParent(&self)); });
    }

    void bringBack() {
        std::vector<Glob*> children;
        getChildren(children);
        for (Glob* child : children) delete child;
        fill();
        claimKbdFocus();
    }

    bool stepFocus(bool forward) {
        std::vector<Glob*> stops;
        getChildren(stops);
        std::erase_if(stops, [](Glob* glob) {
            auto const* label = dynamic_cast<LabelGlob const*>(glob);
            return !label || !label->isFocusable() || !label->isShown() || !label->isActive();
        });
        if (stops.empty()) return false;
        auto const count = stops.size();
        auto const at =
            static_cast<std::size_t>(std::find(stops.begin(), stops.end(), get_kbd_focus()) - stops.begin());
        if (at == count) return set_kbd_focus(forward ? stops.front() : stops.back());
        // At the ends Tab goes on.
        bool const isLast = at == (forward ? count - 1 : 0);
        return !isLast && set_kbd_focus(stops[forward ? at + 1 : at - 1]);
    }

    LogLine log_;
    int count_ = 0;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<GlobsPage>(size, std::move(log));
}

} // namespace

extern Page const globsPage = {"globs",
                               L"Globs",
                               PageGroup::testBench,
                               L"Objects that destroy themselves, their page, or throw in their handlers.",
                               "gallery/pages/globs_page.cpp",
                               make};

} // namespace wainscot::gallery
