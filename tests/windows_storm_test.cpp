// One scene with everything in it, and a person who uses all of it. In every call that an object gets,
// anything is destroyed, taken out, hidden, disabled or opened. The program goes on, and nothing is left.

#include "tests/host_fixture.h"

#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "foundation/tab_orderable.h"
#include "host/messages/handler_ref.h"
#include "host/objects/glob_notices.h"
#include "host/objects/tooltip_details.h"
#include "host/services/clipboard.h"
#include "host/windows/drag_drop_manager.h"
#include "host/windows/look.h"

#include <stdexcept>

namespace wainscot {
namespace {

/// Does something in any of the calls that tell it or ask it something.
class HostileGlob : public ProbeGlob, public TabOrderable {
public:
    using ProbeGlob::ProbeGlob;

    // The pointer and the keys
    bool react(Event const& event) override {
        if (!act(callFor(event))) return true;
        if (mouse_move_event(event) && event.heldButtons() != 0 && drags)
            DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem("x", L"x")), this);
        return mouse_event(event) || ProbeGlob::react(event);
    }
    bool intercept(Event const&) override { return act("intercept"), false; }
    void handleMouseContainment(bool inside) override { act(inside ? "entered" : "left"); }
    void handlePressCancelled(Event const& press) override {
        if (act("cancelled")) Glob::handlePressCancelled(press);
    }
    void handleKbdFocus() override { act(get_kbd_focus() == this ? "gained" : "lost"); }
    MouseCursorID contextCursor(XY<int> const&) const override { return act("cursor"), inheritCursor; }
    bool wantsFullMotion() const override { return act("motion"), true; }
    bool wantsUnboundedMotion() const override { return act("unbounded"), true; }
    std::optional<IntBox> textCaret() const override { return act("caret"), IntBox(1, 1, 2, 12); }
    bool getTooltipDetails(XY<int> const&, TooltipDetails& details) const override {
        act("tip");
        details.text = UIString(L"tip");
        return true;
    }
    // What is dragged
    bool canAccept(DragDropItem const&, XY<int> const&, eDropReason) override { return act("accept"), true; }
    bool acceptDrop(DragDropItem&, XY<int> const&, eDropReason) override { return act("drop"), true; }
    MouseCursorID getDropCursor(DragDropItem const&, XY<int> const&) const override {
        return act("drop cursor"), crossCursor;
    }
    void handleDragHover(DragDropItem const&, XY<int> const&, bool in) override { act(in ? "hover" : "out"); }
    void handleDragEnd(DragDropItem&, bool) override { act("end"); }
    // Stops
    bool isTabStopActive() override { return act("stop asked") && isShown(); }
    void handleTabStopFocusReceipt(eDirection) override {
        if (act("receipt")) claimKbdFocus();
    }
    void handleTabStopFocusLoss() override { act("loss"); }
    // Messages, places and looks
    int handleMessageEvent(LightweightString<char> name, Glob*) override {
        bool const closes = name == pootMsg;
        if (act(closes ? "poot" : "message") && closes) delete this;
        return 1;
    }
    SizeNeeds sizeNeeds() const override { return act("needs"), SizeNeeds{{60, 40}}; }
    void reshape() override {
        ProbeGlob::reshape();
        act("reshape");
    }
    void draw() override {
        if (act("draw")) ProbeGlob::draw();
    }
    void handleLookChange(LookChange change) override {
        if (act("look")) ProbeGlob::handleLookChange(change);
    }

    /// Does the deed in this call, once.
    static void doIn(std::string_view call) {
        if (trigger != call || !deed) return;
        auto const todo = std::exchange(deed, nullptr);
        // What is not there yet is dealt with in a later call.
        if (!todo()) deed = todo;
    }
    /// The same; whether this object has outlived it.
    bool act(std::string_view call) const {
        doIn(call);
        return is_good_glob_ptr(this);
    }

    bool drags = false;
    static inline std::string trigger;
    static inline std::function<bool()> deed;

private:
    static char const* callFor(Event const& event) {
        return mouse_down_event(event)    ? "press"
               : mouse_up_event(event)    ? "release"
               : mouse_wheel_event(event) ? "wheel"
               : mouse_move_event(event)  ? "move"
               : isKeyPressEvent(event)   ? "key"
               : isTimerEvent(event)      ? "timer"
                                          : "";
    }
};

InputEvent composing(LightweightString<wchar_t> const& text, int caret,
                     InputEvent::Kind kind = InputEvent::Kind::composing) {
    return {.kind = kind, .amount = caret, .text = text};
}

class Storm : public HostTest, public testing::WithParamInterface<char const*> {
protected:
    ~Storm() override { HostileGlob::deed = nullptr; }

    void open() {
        root_ = HandlerRef<Glob>(openWindow(320, 220));
        other_ = HandlerRef<Glob>(openWindow(200, 200, {700, 100}));
        panel_ = HandlerRef<StandardPanel>(
            addTo(root_.get(), new StandardPanel(XY<int>{300, 200}), BottomLeft(20, 20)));
        BoxLayout* const column = panel_.get()->setLayout(BoxLayout::makeColumn());
        BoxLayout* const row = column->add(BoxLayout::makeRow());
        auto const add = [&] {
            HandlerRef<HostileGlob> made(row->add(std::make_unique<HostileGlob>(60, 40)));
            panel_.get()->addTabStop(*made.get());
            return made;
        };
        probe_ = add();
        target_ = add();
        child_ = HandlerRef<Glob>(addTo(probe_.get(), new ProbeGlob(5, 5)));
        driver_.settle();
        activate(root_.get());
        probe_.get()->claimKbdFocus();
        probe_.get()->setInterest(EventKind::timer);
        getEventInterceptStack().push(target_.get(), 10);
        places_ = {probe_.get()->screenBox().centre(), target_.get()->screenBox().centre()};
        auto const telling = [](char const* call) {
            return makeCallback<int, NotifyMsg>(
                [call](NotifyMsg const&) { return HostileGlob::doIn(call), 0; });
        };
        watches_[0] = GlobNotices::watchDeletion(*probe_.get(), telling("deletion"));
        watches_[1] = GlobNotices::watchDeletion(*root_.get(), telling("deletion of the window"));
        watches_[2] = GlobNotices::watchMoves(*probe_.get(), telling("moved"));
    }
    HandlerRef<Glob> openPopUp(Glob* parent, XY<int> place) {
        auto popUp = std::make_unique<HostileGlob>(60, 50);
        HandlerRef<Glob> const made(popUp.get());
        PopUpOptions options;
        options.opener = probe_.get();
        options.parent = parent;
        options.place = place;
        if (windows().openPopUp(popUp.get(), options)) static_cast<void>(popUp.release());
        return made;
    }
    void openDialog() {
        auto dialog = std::make_unique<HostileGlob>(100, 60);
        dialog_ = HandlerRef<Glob>(dialog.get());
        if (windows().addModalGlob(dialog.get(), root_.get())) static_cast<void>(dialog.release());
    }

    // A person who uses everything.
    void useKeysAndPointer() {
        driver_.moveTo(places_[0]);
        driver_.advance(700);
        sendMessage("hello", probe_.get(), target_.get());
        for (std::uint32_t const key : {std::uint32_t('a'), Key::tab, Key::tab, Key::shiftTab})
            driver_.key(key);
        driver_.wheelAt(places_[0], 1);
        driver_.press();
        driver_.press(Driver::Button::right);
        driver_.moveTo(places_[0] + XY<int>{20, 10});
        driver_.key(Key::escape);
        driver_.release();
        driver_.release(Driver::Button::right);
        driver_.clickAt(places_[0]);
        inject(composing(L"ni", 2));
        inject(composing(L"x", 0, InputEvent::Kind::composedText));
    }
    void drag(bool backwards) {
        if (HostileGlob* const probe = probe_.get()) probe->drags = true;
        driver_.moveTo(places_[0]);
        driver_.press();
        driver_.moveTo(places_[0] + XY<int>{5, 10});
        driver_.moveTo(places_[1]);
        driver_.moveTo(places_[1] + XY<int>{1, 1});
        if (backwards) driver_.key(Key::escape);
        driver_.release();
        if (HostileGlob* const probe = probe_.get()) probe->drags = false;
    }
    /// Each way to close pop-ups has its turn.
    void usePopUps(std::size_t turn) {
        std::function<void()> const ends[] = {
            [&] { driver_.clickAt({750, 150}); },   [&] { driver_.clickAt({1500, 50}); },
            [&] { driver_.key(Key::escape); },      [&] { deactivate(); },
            [&] { windows().popUps().closeAll(); }, [&] { destroy(first_.get()); },
        };
        first_ = openPopUp(nullptr, {600, 400});
        second_ = openPopUp(first_.get(), {660, 400});
        driver_.clickAt({680, 420});
        driver_.key('a');
        ends[turn % numEnds]();
        driver_.settle();
        activateRoot();
    }
    void activateRoot() {
        if (Glob* const root = root_.get(); root && windows().windowOf(root)) activate(root);
    }
    void useWindows() {
        openDialog();
        driver_.settle();
        driver_.clickAt({300, 250});
        driver_.clickAt(places_[0]);
        driver_.key('a');
        destroy(dialog_.get());
        Look::broadcast();
        if (StandardPanel* const panel = panel_.get()) panel->resize(280, 190);
        if (HostileGlob* const probe = probe_.get()) probe->makeDirty();
        driver_.moveTo({5, 5});
        deactivate();
        activateRoot();
    }
    void use(std::size_t turn) {
        useKeysAndPointer();
        drag(true);
        drag(false);
        usePopUps(turn);
        useWindows();
    }

    void expectNothingLeft() {
        PointerState const& pointer = EventSystem::live().pointer;
        EXPECT_FALSE(DragDropManager::instance().isDragging());
        EXPECT_FALSE(windows().popUps().isOpen());
        EXPECT_EQ(EventSystem::live().timers.size(), 0u);
        EXPECT_EQ(EventSystem::live().intercepts.size(), 0u);
        EXPECT_EQ(EventSystem::live().focus.numWindows(), 0u);
        EXPECT_EQ(pointer.heldButtons, 0);
        EXPECT_EQ(pointer.captureHolder(), nullptr);
        EXPECT_EQ(ProbeGlob::alive, 0);
        EXPECT_EQ(Drawable::holdCount(), 0);
        EXPECT_FALSE(host_->offscreen()->outsidePresses() || host_->offscreen()->fullMotion() ||
                     host_->offscreen()->unboundedMotion() || host_->offscreen()->textCaret());
    }
    /// A new window hears the pointer and the keys.
    void expectTheProgramGoesOn() {
        RecordingParent* const window = openWindow(100, 100, {300, 300});
        auto* const probe = addTo(window, new ProbeGlob(60, 40, &log_), BottomLeft(10, 10));
        probe->onReact = [probe](Event const& event) {
            if (mouse_down_event(event)) probe->note("down");
            if (isKeyPressEvent(event)) probe->note("key");
            return mouse_event(event);
        };
        takeLog();
        driver_.moveTo(probe);
        probe->claimKbdFocus();
        driver_.click(probe);
        driver_.key('a');
        EXPECT_EQ(takeLog(), (Lines{"entered", "gained", "down", "key"}));
        destroy(window);
    }
    GlobManager& windows() { return host_->globManager(); }

    static constexpr std::size_t numEnds = 6;
    HandlerRef<Glob> root_, other_, child_, first_, second_, dialog_;
    HandlerRef<StandardPanel> panel_;
    HandlerRef<HostileGlob> probe_, target_;
    std::array<XY<int>, 2> places_;
    std::array<NotifierSubscription, 3> watches_;
};

using Deed = std::pair<std::string, std::function<bool()>>;

TEST_P(Storm, InAnyCallAnythingMayHappenToAnything) {
    for (char const* kind :
         {"pop-up refused", "message not handled", "keyboard focus refused", "window refused",
          "modal object refused", "tree operation refused", "exception in handler", "message to nobody"})
        expectDiagnostic(kind);
    std::vector<HandlerRef<Glob>> taken;
    std::vector<Deed> deeds{
        {"close all", [&] { return windows().closeAll(), true; }},
        {"close pop-ups", [&] { return windows().popUps().closeAll(), true; }},
        {"pin", [&] { return first_.get() && (windows().pinPopUp(first_.get()), true); }},
        {"open pop-up",
         [&] {
             return openPopUp(nullptr, {160, 140}), true;
         }},
        {"open dialogue", [&] { return openDialog(), true; }},
        {"cancel drag", [&] { return DragDropManager::instance().cancel(), true; }},
        {"refuse windows", [&] { return host_->offscreen()->refuseWindows(true), true; }},
        {"monitors",
         [&] {
             return host_->offscreen()->setMonitors({{0, 0, 300, 200}}), true;
         }},
        {"throw", []() -> bool { throw std::runtime_error("x"); }},
        {"capture", [&] { return EventSystem::live().pointer.capture(target_.get()), true; }},
        {"no layout", [&] { return panel_ && (panel_.get()->setLayout(nullptr), true); }},
        {"other layout", [&] { return panel_ && panel_.get()->setLayout(BoxLayout::makeRow()); }},
    };
    std::pair<char const*, std::function<Glob*()>> const victims[] = {
        {"probe", [&] { return probe_.get(); }},
        {"child", [&] { return child_.get(); }},
        {"target", [&] { return target_.get(); }},
        {"panel", [&] { return panel_.get(); }},
        {"window", [&] { return root_.get(); }},
        {"other window", [&] { return other_.get(); }},
        {"first pop-up", [&] { return first_.get(); }},
        {"second pop-up", [&] { return second_.get(); }},
        {"dialogue", [&] { return dialog_.get(); }},
        {"note", [&] { return driver_.find(Role::note, L""); }},
    };
    for (auto const& [name, find] : victims) {
        auto const add = [&, find = find](std::string const& what, std::function<void(Glob*)> const& act) {
            deeds.emplace_back(what + " " + name, [find, act] {
                Glob* const victim = find();
                if (victim) act(victim);
                return victim != nullptr;
            });
        };
        add("destroy", [](Glob* victim) { delete victim; });
        add("hide", [](Glob* victim) { victim->setVisible(false); });
        add("disable", [](Glob* victim) { victim->setActive(false); });
        add("take out", [&](Glob* victim) {
            if (victim->parent())
                taken.emplace_back(victim->parent()->takeWidget(victim).release());
            else
                victim->unmapCanvas();
        });
    }
    HostileGlob::trigger = GetParam();
    std::size_t numDone = 0;
    std::size_t const numTurns = HostileGlob::trigger == "poot" ? numEnds : 1;
    for (std::size_t i = 0; i < deeds.size() * numTurns; ++i) {
        auto const& [name, deed] = deeds[i / numTurns];
        SCOPED_TRACE(name);
        open();
        HostileGlob::deed = deed;
        use(i);
        // What has thrown when it was drawn is not drawn again by itself.
        bool const isWhole = name != "throw";
        EXPECT_EQ(isWhole ? Consistency(driver_).fault() : "", "");
        destroy(probe_.get());
        destroy(root_.get());
        numDone += !HostileGlob::deed;
        HostileGlob::deed = nullptr;
        host_->offscreen()->refuseWindows(false);
        for (HandlerRef<Glob> const& glob : std::exchange(taken, {})) destroy(glob.get());
        windows().closeAll();
        driver_.settle();
        host_->offscreen()->setMonitors({{0, 0, 1920, 1080}});
        driver_.settle();
        expectNothingLeft();
        expectTheProgramGoesOn();
    }
    EXPECT_GE(numDone, 20u) << "the call is hardly made";
}

INSTANTIATE_TEST_SUITE_P(Calls, Storm,
                         testing::Values("press", "release", "wheel", "move", "key", "timer", "intercept",
                                         "entered", "left", "cancelled", "gained", "lost", "cursor", "motion",
                                         "unbounded", "caret", "tip", "accept", "drop", "drop cursor",
                                         "hover", "out", "end", "stop asked", "receipt", "loss", "message",
                                         "poot", "needs", "reshape", "draw", "look", "deletion",
                                         "deletion of the window", "moved"));

using Floods = OneWindowTest;

TEST_F(Floods, AThousandPopUpsOpenAndClose) {
    std::vector<ProbeGlob*> chain;
    for (int i = 0; i < 1000; ++i) {
        chain.push_back(new HostileGlob(40, 30));
        PopUpOptions options;
        options.opener = root_;
        options.parent = i > 0 ? chain[chain.size() - 2] : nullptr;
        options.place = XY<int>{i, i};
        ASSERT_TRUE(host_->globManager().openPopUp(chain.back(), options));
    }
    driver_.settle();
    EXPECT_EQ(host_->globManager().popUps().size(), 1000u);
    driver_.moveTo({500, 510});
    driver_.key('a');
    host_->offscreen()->setMonitors({{0, 0, 640, 480}, {640, 0, 640, 480}});
    driver_.settle();
    EXPECT_EQ(host_->globManager().numWindows(), 1u);
}

TEST_F(Floods, TextsOfAnyKindAndLengthAreShownAndKept) {
    addTo(root_, new HostileGlob(60, 40))->claimKbdFocus();
    LightweightString<wchar_t> const strange(L"\xD800\xDFFF\x110000\x7FFFFFFF\n\r\t\x1\x200F\xFFFE", 10);
    LightweightString<wchar_t> lines;
    for (int i = 0; i < 3000; ++i) lines = lines + L"x\n";
    for (auto const& text : {strange, lines, LightweightString<wchar_t>(20000, L'w')}) {
        for (int caret : {-5, 0, 3, 1 << 30}) inject(composing(text, caret));
        Glob const* const note = driver_.find(Role::note, L"");
        ASSERT_TRUE(note);
        EXPECT_TRUE(IntBox(0, 0, 1920, 1080).contains(note->screenBox()));
        inject(composing(text, 0, InputEvent::Kind::composedText));
        WindowsClipboard::addText(text);
        WindowsClipboard::addText(WindowsClipboard::getText());
    }
    iClipboard::current()->setText(iClipboard::Kind::clipboard, "\xFF\xC0\x80\xED\xA0\x80\xF8\x88");
    WindowsClipboard::getText();
    inject(composing({}, 0));
}

} // namespace
} // namespace wainscot
