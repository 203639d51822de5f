#pragma once

#include "driver/consistency.h"
#include "driver/driver.h"
#include "driver/recording_parent.h"
#include "host/backends/offscreen/offscreen_backend.h"
#include "host/base/diagnostics.h"
#include "host/base/life.h"
#include "host/drawing/drawable.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event_system.h"
#include "host/events/key_codes.h"
#include "host/events/messages.h"
#include "host/objects/kbd_focus.h"
#include "host/windows/backend.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "host/windows/popup_chain.h"
#include "host/windows/top_level_window.h"

#include <gmock/gmock.h>

#include <functional>
#include <set>
#include <string>
#include <utility>

namespace wainscot {

using testing::ElementsAre;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

/// A host without a screen for each test. After the test nothing may be left: no widget, timer interest,
/// focus, capture, intercept entry or hold; and no diagnostics that the test did not expect. What is shown
/// must fit together, and look as it does when it is painted anew.
class HostTest : public testing::Test {
protected:
    HostTest() : liveBefore_(Liveness::count()), host_(makeHost()), driver_(*host_) {
        Diagnostics::reset();
        Diagnostics::setSink([](char const*) {});
    }

    ~HostTest() override {
        host_->globManager().closeAll();
        driver_.settle();
        EXPECT_EQ(Liveness::count(), liveBefore_) << "handlers are left";
        EXPECT_EQ(EventSystem::live().timers.size(), 0u) << "timer interests are left";
        EXPECT_EQ(EventSystem::live().intercepts.size(), 0u) << "intercept entries are left";
        EXPECT_EQ(EventSystem::live().focus.numWindows(), 0u) << "focus holders are left";
        EXPECT_EQ(EventSystem::live().pointer.captureHolder(), nullptr) << "the pointer is still captured";
        EXPECT_TRUE(EventSystem::live().queue.empty()) << "messages are left";
        EXPECT_EQ(Drawable::holdCount(), 0) << "redraw holds are left";
        EXPECT_FALSE(Drawable::isHeld()) << "lasting redraw holds are left";
        EXPECT_FALSE(DispatchScope::isActive());
        for (Diagnostics::Entry const& entry : Diagnostics::entries())
            EXPECT_TRUE(expected_.count(entry.kind.c_str()))
                << entry.kind.c_str() << ": " << entry.firstDetail.c_str();
        Diagnostics::setSink(nullptr);
        Diagnostics::reset();
    }

    void TearDown() override;

    /// Diagnostics of this kind do not fail the test.
    void expectDiagnostic(char const* kind) { expected_.insert(kind); }

    /// A shown, settled window.
    RecordingParent* openWindow(int width = 400, int height = 300, XY<int> place = {100, 100}) {
        auto* root =
            new RecordingParent(static_cast<unsigned short>(width), static_cast<unsigned short>(height));
        EXPECT_TRUE(host_->globManager().realize(root, place));
        driver_.settle();
        return root;
    }

    OffscreenWindow* nativeOf(Glob* root) {
        return host_->offscreen()->window(host_->globManager().windowOf(root)->native().id());
    }

    VirtualClock& virtualClock() { return host_->offscreen()->virtualClock(); }

    /// Adds a new child and gives it back.
    template <class T>
    T* addTo(Glob* parent, T* child, WidgetPosition const& place = {}) {
        EXPECT_TRUE(parent->addChild(static_cast<Glob*>(child), place));
        return child;
    }
    /// As the window system reports it.
    void inject(InputEvent const& input) {
        host_->loop().inject(input);
        driver_.settle();
    }
    void activate(Glob* root) {
        host_->offscreen()->activate(nativeOf(root)->id());
        driver_.settle();
    }
    /// Another program becomes the active one.
    void deactivate() {
        host_->offscreen()->deactivateAll();
        driver_.settle();
    }
    void moveIn(Glob* glob, int x, int y) { driver_.moveTo(glob->globXYToScreenXY({x, y})); }
    /// The lines of the log since the last call.
    Lines takeLog() { return std::exchange(log_, {}); }

private:
    static std::unique_ptr<Host> makeHost() {
        HostSettings settings;
        settings.name = "test";
        settings.screen = HostSettings::Screen::offscreen;
        return std::make_unique<Host>(0, nullptr, settings);
    }

    std::size_t liveBefore_;
    std::set<std::string> expected_;

protected:
    std::unique_ptr<Host> host_;
    Driver driver_;
    /// The records of the test and its probes.
    Lines log_;
};

/// The same with a window that is open from the beginning.
class OneWindowTest : public HostTest {
protected:
    RecordingParent* const root_ = openWindow();
};

/// A widget whose handlers are given by the test, and which records what happens to it.
class ProbeGlob : public Glob {
public:
    explicit ProbeGlob(int width = 60, int height = 40, std::vector<std::string>* log = nullptr,
                       std::string name = {})
        : Glob(static_cast<unsigned short>(width), static_cast<unsigned short>(height)), log_(log),
          name_(std::move(name)) {
        ++alive;
    }
    ~ProbeGlob() override { --alive; }

    std::function<bool(Event const&)> onReact;
    std::function<int(LightweightString<char> const&, Glob*)> onMessage;
    std::function<void()> onFocus;
    std::function<void(bool)> onContainment;
    std::function<void()> onDraw;
    std::function<bool(Event const&)> onIntercept;
    std::function<void()> onReshape;
    std::function<void()> onPressLost;

    bool react(Event const& event) override {
        // The function may destroy this object, and itself with it.
        auto const handler = onReact;
        return handler ? handler(event) : Glob::react(event);
    }
    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        note("message " + std::string(name.c_str()));
        auto const handler = onMessage;
        return handler ? handler(name, sender) : 1;
    }
    void handleKbdFocus() override {
        note(get_kbd_focus() == this ? "gained" : "lost");
        auto const handler = onFocus;
        if (handler) handler();
    }
    void handleMouseContainment(bool inside) override {
        note(inside ? "entered" : "left");
        auto const handler = onContainment;
        if (handler) handler(inside);
    }
    bool intercept(Event const& event) override {
        auto const handler = onIntercept;
        return handler && handler(event);
    }
    void handleCaptureLost() override {
        Glob::handleCaptureLost();
        auto const handler = onPressLost;
        if (handler) handler();
    }
    void draw() override {
        ++drawn;
        auto const handler = onDraw;
        if (handler)
            handler();
        else
            Glob::draw();
    }
    void reshape() override {
        auto const handler = onReshape;
        Glob::reshape();
        if (handler) handler();
    }

    /// From now on records each mouse event with its place in the widget.
    void noteMouse(bool consume = true) {
        onReact = [this, consume](Event const& event) {
            if (!mouse_event(event)) return false;
            XY<int> const at = eventXYToGlobXY(event, *this);
            char const* const what = mouse_down_event(event)    ? "down "
                                     : mouse_up_event(event)    ? "up "
                                     : mouse_wheel_event(event) ? "wheel "
                                                                : "move ";
            note(what + std::to_string(at.x) + "," + std::to_string(at.y));
            return consume;
        };
    }
    /// From now on a press moves it.
    void moveWhenPressed() {
        setMovable(true);
        onReact = [this](Event const& event) {
            if (!mouse_down_event(event)) return Glob::react(event);
            startMoving();
            return true;
        };
    }
    void note(std::string const& what) {
        if (log_) log_->push_back(name_.empty() ? what : name_ + " " + what);
    }

    int drawn = 0;
    static inline int alive = 0;

private:
    std::vector<std::string>* log_;
    std::string name_;
};

/// What probes draw may be counted in variables of the test, which have gone.
inline void HostTest::TearDown() {
    if (!host_ || ProbeGlob::alive > 0) return;
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

} // namespace wainscot
