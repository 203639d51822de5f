#include "tests/host_fixture.h"

#include "host/objects/tooltip_details.h"
#include "host/services/clipboard.h"
#include "host/windows/drag_drop_manager.h"

#include <limits>

namespace wainscot {
namespace {

/// Does something in any of the calls that ask it for an answer.
class HostileGlob : public ProbeGlob {
public:
    using ProbeGlob::ProbeGlob;

    MouseCursorID contextCursor(XY<int> const&) const override { return act("cursor"), inheritCursor; }
    bool getTooltipDetails(XY<int> const&, TooltipDetails& details) const override {
        act("tip");
        details.text = UIString(L"tip");
        return true;
    }
    std::optional<IntBox> textCaret() const override { return act("caret"), IntBox(1, 1, 2, 12); }
    bool wantsFullMotion() const override { return act("motion"), true; }
    bool wantsUnboundedMotion() const override { return act("unbounded"), true; }
    bool canAccept(DragDropItem const&, XY<int> const&, eDropReason) override { return act("accept"), true; }
    bool acceptDrop(DragDropItem&, XY<int> const&, eDropReason) override { return act("drop"), true; }
    MouseCursorID getDropCursor(DragDropItem const&, XY<int> const&) const override {
        return act("drop cursor"), crossCursor;
    }
    void handleDragHover(DragDropItem const&, XY<int> const&, bool inside) override {
        act(inside ? "hover" : "out");
    }
    void handleDragEnd(DragDropItem&, bool) override { act("end"); }
    void handlePressCancelled(Event const& press) override {
        act("cancelled");
        if (is_good_glob_ptr(this)) Glob::handlePressCancelled(press);
    }
    void handleMouseContainment(bool inside) override { act(inside ? "entered" : "left"); }
    bool intercept(Event const&) override { return act("intercept"), false; }

    static inline std::string trigger;
    static inline std::function<void()> deed;

private:
    static void act(char const* call) {
        if (trigger != call || !deed) return;
        auto const once = std::exchange(deed, nullptr);
        once();
    }
};

class Storm : public HostTest {
protected:
    ~Storm() override { HostileGlob::deed = nullptr; }

    void open() {
        root_ = openWindow();
        other_ = openWindow(200, 200, {700, 100});
        probe_ = addTo(root_, new HostileGlob(60, 40), BottomLeft(50, 50));
        target_ = addTo(root_, new HostileGlob(60, 40), BottomLeft(150, 50));
        activate(root_);
        probe_->claimKbdFocus();
        probe_->onReact = [this](Event const& event) {
            if (mouse_move_event(event) && event.heldButtons() != 0 && drags_)
                DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem("x", L"x")),
                                                      probe_);
            return mouse_event(event);
        };
        getEventInterceptStack().push(target_, 10);
    }
    void openPopUp() {
        auto popUp = std::make_unique<ProbeGlob>(40, 30);
        PopUpOptions options;
        options.opener = is_good_glob_ptr(probe_) ? probe_ : nullptr;
        options.place = XY<int>{160, 140};
        if (host_->globManager().openPopUp(popUp.get(), options)) static_cast<void>(popUp.release());
    }
    void composing(LightweightString<wchar_t> const& text, int caret, InputEvent::Kind kind) {
        InputEvent event;
        event.kind = kind;
        event.text = text;
        event.amount = caret;
        inject(event);
    }
    /// A person who uses everything.
    void use() {
        driver_.moveTo(XY<int>{160, 160});
        driver_.advance(700);
        driver_.press();
        driver_.press(Driver::Button::right);
        driver_.moveTo({165, 170});
        driver_.moveTo({260, 170});
        driver_.key(Key::escape);
        driver_.release();
        driver_.release(Driver::Button::right);
        composing(L"ni", 2, InputEvent::Kind::composing);
        composing(L"x", 0, InputEvent::Kind::composedText);
        driver_.moveTo({160, 160});
        driver_.press();
        driver_.moveTo({165, 170});
        driver_.moveTo({265, 170});
        driver_.moveTo({266, 171});
        driver_.release();
        driver_.moveTo({5, 5});
        deactivate();
    }

    bool drags_ = false;
    RecordingParent* root_ = nullptr;
    RecordingParent* other_ = nullptr;
    HostileGlob* probe_ = nullptr;
    HostileGlob* target_ = nullptr;
};

TEST_F(Storm, AnyAnswerMayDestroyCloseOrOpenAnything) {
    for (char const* kind : {"pop-up refused", "message not handled", "keyboard focus refused",
                             "modal object refused", "window refused"})
        expectDiagnostic(kind);
    std::vector<std::function<void()>> const deeds{
        [&] { destroy(probe_); },
        [&] { destroy(target_); },
        [&] { destroy(root_); },
        [&] { host_->globManager().closeAll(); },
        [&] { openPopUp(); },
        [&] { DragDropManager::instance().cancel(); },
        [&] {
            auto dialog = std::make_unique<RecordingParent>(100, 60);
            if (host_->globManager().addModalGlob(dialog.get(), root_)) static_cast<void>(dialog.release());
        },
        [&] { host_->offscreen()->refuseWindows(true); },
        [&] { host_->offscreen()->setMonitors(std::vector<IntBox>(1, IntBox(0, 0, 300, 200))); },
        [&] { root_->setVisible(false); },
        [&] { throw std::runtime_error("x"); },
        [&] { EventSystem::live().pointer.capture(target_); },
    };
    expectDiagnostic("exception in handler");
    for (char const* trigger :
         {"cursor", "tip", "caret", "motion", "unbounded", "accept", "drop", "drop cursor", "hover", "out",
          "end", "cancelled", "entered", "left", "intercept"})
        for (auto const& deed : deeds)
            for (bool drags : {false, true}) {
                HostileGlob::trigger = trigger;
                HostileGlob::deed = nullptr;
                drags_ = drags;
                open();
                HostileGlob::deed = deed;
                use();
                HostileGlob::deed = nullptr;
                host_->offscreen()->refuseWindows(false);
                host_->globManager().closeAll();
                driver_.settle();
                EXPECT_FALSE(DragDropManager::instance().isDragging());
                EXPECT_EQ(EventSystem::live().timers.size(), 0u) << trigger;
                EXPECT_EQ(EventSystem::live().pointer.heldButtons, 0) << trigger;
                host_->offscreen()->setMonitors({{0, 0, 1920, 1080}});
                driver_.settle();
            }
}

TEST_F(Storm, AThousandPopUpsOpenAndClose) {
    RecordingParent* const root = openWindow();
    std::vector<ProbeGlob*> chain;
    for (int i = 0; i < 1000; ++i) {
        chain.push_back(new ProbeGlob(40, 30));
        ProbeGlob* const made = chain.back();
        made->onMessage = [made](auto const&, Glob*) { return delete made, 1; };
        PopUpOptions options;
        options.opener = root;
        options.parent = i > 0 ? chain[chain.size() - 2] : nullptr;
        options.place = XY<int>{i, i};
        ASSERT_TRUE(host_->globManager().openPopUp(made, options));
    }
    driver_.settle();
    EXPECT_EQ(host_->globManager().popUps().size(), 1000u);
    driver_.moveTo({500, 510});
    driver_.key('a');
    host_->offscreen()->setMonitors({{0, 0, 640, 480}, {640, 0, 640, 480}});
    driver_.settle();
    EXPECT_EQ(host_->globManager().numWindows(), 1u);
}

TEST_F(Storm, TextsOfAnyKindAndLengthAreShownAndKept) {
    open();
    LightweightString<wchar_t> const strange(L"\xD800\xDFFF\x110000\x7FFFFFFF\n\r\t\x1\x200F\xFFFE", 10);
    LightweightString<wchar_t> lines;
    for (int i = 0; i < 3000; ++i) lines = lines + L"x\n";
    for (auto const& text : {strange, lines, LightweightString<wchar_t>(20000, L'w')}) {
        for (int caret : {-5, 0, 3, 1 << 30}) composing(text, caret, InputEvent::Kind::composing);
        Glob* const note = driver_.find(Role::note, L"");
        if (note) {
            EXPECT_LE(note->width(), 1920);
            EXPECT_LE(note->height(), 1080);
        }
        composing(text, 0, InputEvent::Kind::composedText);
        WindowsClipboard::addText(text);
        WindowsClipboard::addText(WindowsClipboard::getText());
    }
    iClipboard::current()->setText(iClipboard::Kind::clipboard, "\xFF\xC0\x80\xED\xA0\x80\xF8\x88");
    WindowsClipboard::getText();
    composing({}, 0, InputEvent::Kind::composing);
}

} // namespace
} // namespace wainscot
