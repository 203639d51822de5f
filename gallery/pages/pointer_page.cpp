#include "foundation/layout/box_layout.h"
#include "foundation/layout/grid_layout.h"
#include "foundation/repeat_clock.h"
#include "gallery/pages/input_page_parts.h"
#include "gallery/pages/label_page.h"

#include "host/base/convert.h"
#include "host/events/event.h"
#include "host/services/clock.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace wainscot::gallery {

namespace {

struct Shape {
    MouseCursorID cursor;
    wchar_t const* name;
};

constexpr std::array shapes{
    Shape{arrowCursor, L"arrow"},         Shape{textCursor, L"text"},
    Shape{handCursor, L"hand"},           Shape{waitCursor, L"wait"},
    Shape{crossCursor, L"cross"},         Shape{sizeHorizontalCursor, L"width"},
    Shape{sizeVerticalCursor, L"height"}, Shape{sizeRisingCursor, L"rising"},
    Shape{sizeFallingCursor, L"falling"}, Shape{moveCursor, L"move"},
    Shape{forbiddenCursor, L"forbidden"}, Shape{hiddenCursor, L"hidden"},
};
constexpr int shapesInRow = 4;
/// In ticks of the processor clock.
constexpr std::int64_t firstRepeat = iClock::processorPerSecond * 3 / 10;
constexpr std::int64_t laterRepeat = iClock::processorPerSecond / 10;

class ShapeGlob final : public LabelGlob {
public:
    explicit ShapeGlob(Shape const& shape) : LabelGlob(shape.name), cursor_(shape.cursor) {
        setFocusable(false);
        setContextString(LightweightString<wchar_t>(L"The pointer's shape: ") + shape.name,
                         L"Tips come when the pointer rests.");
    }
    MouseCursorID contextCursor(XY<int> const&) const override { return cursor_; }

private:
    MouseCursorID cursor_;
};

LightweightString<wchar_t> number(int value) {
    return Qv::WStringFromInteger(value);
}

/// Counts clicks, wheel notches and double clicks.
class ClickReadOut final : public ReadOut {
public:
    ClickReadOut() : ReadOut(L"Click, double click, hold two buttons, turn the wheel") {}

    bool react(Event const& event) override {
        if (mouse_wheel_event(event)) {
            notches_ += event.amount();
        } else if (mouse_down_event(event)) {
            clicks_ = event.clicks();
            chord_ = mouse_chord_event(event);
        } else {
            return ReadOut::react(event);
        }
        setText(LightweightString<wchar_t>(L"click number ") + number(clicks_) + L"\nnotches " +
                number(notches_) + (chord_ ? L"\ntwo buttons" : L""));
        return true;
    }

private:
    int clicks_ = 0;
    int notches_ = 0;
    bool chord_ = false;
};

/// A value that follows the pointer for as long as it is held, past the edges of the screen.
class DragReadOut final : public ReadOut {
public:
    DragReadOut() : ReadOut(L"Drag sideways: on and on; Escape takes it back") { show(); }

    bool react(Event const& event) override {
        if (mouse_left_event(event) && mouse_down_event(event)) {
            before_ = value_;
            steps_ = 0;
        } else if (mouse_move_event(event) && event.heldButtons() != 0) {
            value_ = before_ + event.place().x - event.pressPlace().x;
            ++steps_;
        } else if (!mouse_up_event(event)) {
            return ReadOut::react(event);
        }
        show();
        return true;
    }
    bool wantsFullMotion() const override { return true; }
    bool wantsUnboundedMotion() const override { return true; }
    void handlePressCancelled(Event const&) override {
        value_ = before_;
        show();
    }
    MouseCursorID contextCursor(XY<int> const&) const override { return sizeHorizontalCursor; }

private:
    void show() {
        setText(LightweightString<wchar_t>(L"value ") + number(value_) + L"\nsteps " + number(steps_));
    }

    int value_ = 0;
    int before_ = 0;
    int steps_ = 0;
};

/// Counts while it is held, as the arrow of a scroll bar would.
class RepeatReadOut final : public ReadOut {
public:
    explicit RepeatReadOut(LogLine log)
        : ReadOut(L"Hold: counts after 0.3 s, then every 0.1 s"), log_(std::move(log)) {
        show();
    }

    bool react(Event const& event) override {
        if (isTimerEvent(event)) return tick();
        if (!mouse_left_event(event)) return ReadOut::react(event);
        if (mouse_down_event(event)) begin();
        if (mouse_up_event(event)) end();
        return true;
    }
    bool isAutoRepeating() const override { return true; }
    void handleCaptureLost() override {
        end();
        ReadOut::handleCaptureLost();
    }

private:
    void begin() {
        began_ = service_get_msecs();
        count_ = 0;
        clock_.start(firstRepeat, laterRepeat);
        setInterest(EventKind::timer);
        setNextTimer(clock_.msToNext());
        show();
    }
    void end() { clearInterest(EventKind::timer); }

    bool tick() {
        if (clock_.isDue()) {
            ++count_;
            log_(LightweightString<wchar_t>(L"repeat ") + number(count_) + L" after " +
                 number(static_cast<int>(std::lround(service_get_msecs() - began_))) + L" ms");
            show();
        }
        setNextTimer(clock_.msToNext());
        return true;
    }
    void show() { setText(LightweightString<wchar_t>(L"count ") + number(count_)); }

    LogLine log_;
    double began_ = 0.0;
    RepeatClock clock_;
    int count_ = 0;
};

/// A label that is dragged about in its page by its parent's own means.
std::unique_ptr<LabelGlob> makeMovable() {
    class Mover final : public Glob {
    public:
        Mover() : Glob(1, 1) { setVisible(false); }
        bool handleEvent(Event const& event) override {
            if (mouse_down_event(event) && parent()) parent()->startMoving();
            return false;
        }
    };
    auto moving = std::make_unique<LabelGlob>(L"Drag me; Escape");
    moving->setMovable(true);
    moving->setFocusable(false);
    moving->addEventHandler(moving->addChild(std::make_unique<Mover>()), EventKind::mouse);
    return moving;
}

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    auto page = std::make_unique<LabelPage>(size, log);
    auto layout = BoxLayout::makeColumn();
    GridLayout* const cursors = layout->add(std::make_unique<GridLayout>());
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        int const at = static_cast<int>(i);
        cursors->add(std::make_unique<ShapeGlob>(shapes[i]), {at / shapesInRow, at % shapesInRow},
                     {.stretch = 1});
    }
    GridLayout* const boxes = layout->add(std::make_unique<GridLayout>(), {.stretch = 1});
    boxes->setRowStretch(0, 1);
    boxes->setRowStretch(1, 1);
    boxes->add(std::make_unique<ClickReadOut>(), {0, 0}, {.stretch = 1})->setName("clicks");
    boxes->add(std::make_unique<DragReadOut>(), {0, 1}, {.stretch = 1})->setName("drag");
    boxes->add(std::make_unique<RepeatReadOut>(log), {1, 0})->setName("repeat");
    LayoutOptions small;
    small.horizontal = small.vertical = LayoutAlign::start;
    boxes->add(makeMovable(), {1, 1}, small);
    page->setLayout(std::move(layout));
    return page;
}

} // namespace

extern Page const pointerPage = {"pointer",
                                 L"Pointer",
                                 PageGroup::testBench,
                                 L"Pointer shapes, capture, tips, and motion past the edge of the screen.",
                                 "gallery/pages/pointer_page.cpp",
                                 make};

} // namespace wainscot::gallery
