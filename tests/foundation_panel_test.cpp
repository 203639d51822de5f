#include "tests/host_fixture.h"

#include "buttons/button.h"
#include "foundation/standard_panel.h"
#include "host/base/configb.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"
#include "host/objects/description.h"
#include "host/objects/tooltip_details.h"
#include "host/services/text_ids.h"
#include "host/windows/look.h"

namespace wainscot {
namespace {

using enum StandardPanel::StandardWidgetFlags;

constexpr int B = 24, I = 4, edge = 4; // the standard metrics

/// A panel that writes down what it hears, answers as told, and can die of each of its handlers.
class ProbePanel : public StandardPanel {
public:
    using StandardPanel::StandardPanel;
    ~ProbePanel() override { ++died; }

    int hear(std::string const& what) {
        log.push_back(what);
        auto const answered = answers.find(what.substr(0, what.find(' ')));
        int const answer = answered == answers.end() ? 0 : answered->second;
        if (dieAt == what) destroy(this);
        return answer;
    }
    int handleMessageEvent(LightweightString<char> name, Glob*) override {
        return hear("message " + std::string(name.c_str()));
    }
    int handleDataMessageEvent(LightweightString<char> name, Glob*, Qv::Ptr<iObject>) override {
        return hear("data " + std::string(name.c_str()));
    }
    int handleKeyboardEvent(int code) override { return hear("key " + std::to_string(code)); }
    int handleKeyReleaseEvent(int code) override { return hear("keyup " + std::to_string(code)); }
    int handleMouseEvent(Event const& event) override {
        if (mouse_move_event(event)) return 0;
        return hear(mouse_wheel_event(event) ? "wheel" : mouse_down_event(event) ? "press" : "release");
    }
    int handleZoom(int steps) override { return hear("zoom " + std::to_string(steps)); }
    int handleTimerEvent() override { return hear("timer"); }
    int handleFlipSize() override { return hear("flip"); }
    void handleTitleChange() override { hear("title"); }
    void handleTitleWidgetResize() override { hear("titlesize"); }
    void handleAutoClose(bool closes) override {
        hear(closes ? "closes" : "stays");
        if (isAlive()) StandardPanel::handleAutoClose(closes);
    }
    void handlePoot() override {
        hear("poot");
        if (isAlive()) StandardPanel::handlePoot();
    }
    XY<int> sizeConstrain(XY<int> const& wanted, int edges) const override {
        XY<int> size = StandardPanel::sizeConstrain(wanted, edges);
        if (grid > 0) size.x = size.x / grid * grid;
        return size;
    }
    bool isAlive() const { return !isDying(); }

    std::vector<std::string> log;
    std::map<std::string, int> answers;
    std::string dieAt;
    int grid = 0;
    static inline int died = 0;
};

class Stop : public ProbeGlob, public TabOrderable {
public:
    bool isTabStopActive() override { return true; }
    void handleTabStopFocusReceipt(eDirection direction) override {
        steps.push_back(direction == forward ? '>' : '<');
        if (doomed) destroy(doomed);
    }
    Glob* doomed = nullptr;
    std::string steps;
};

/// A title box that the test types into.
class FakeTitleBox : public ProbeGlob, public iTitleBox {
public:
    FakeTitleBox(StandardPanel& owner, LightweightString<wchar_t> title)
        : panel(owner), text(std::move(title)) {}
    Glob& glob() override { return *this; }
    LightweightString<wchar_t> titleText() const override { return text; }
    void setTitleText(LightweightString<wchar_t> const& title) override { text = title; }

    StandardPanel& panel;
    LightweightString<wchar_t> text;
};

class Panel : public HostTest {
protected:
    Panel() { ProbePanel::died = 0; }
    ~Panel() override { Registry::instance().makeTitleBox = nullptr; }

    ProbePanel* add(Border::eType border = Border::window, int flags = 0, XY<int> size = {200, 150}) {
        auto* const panel = new ProbePanel(StandardPanel::InitArgs(
            static_cast<unsigned short>(size.x), static_cast<unsigned short>(size.y), Border(border)));
        panel->addStandardWidgets(flags);
        root_->addChild(panel, BottomLeft(100, 100));
        settle();
        return panel;
    }
    void settle() {
        driver_.settle();
        root_->forgetMessages();
    }
    void dragIn(Glob* glob, XY<int> from, XY<int> way) {
        moveIn(glob, from.x, from.y);
        XY<int> const start = glob->globXYToScreenXY(from);
        driver_.press();
        driver_.moveTo(start + way);
        driver_.release();
    }
    std::string sent() { return root_->names().c_str(); }

    /// It destroys itself when it hears that, which it does in the act.
    void expectDeath(char const* heard, int flags, std::function<void(ProbePanel*)> const& act) {
        ProbePanel::died = 0;
        ProbePanel* const panel = add(Border::window, flags);
        panel->setMovable(true);
        panel->setMinimisable(true);
        panel->dieAt = heard;
        act(panel);
        EXPECT_EQ(ProbePanel::died, 1) << heard;
    }
    void useTitleBoxes() {
        Registry::instance().makeTitleBox = [](StandardPanel& owner, LightweightString<wchar_t> const& title,
                                               Glib::FontDesc const&) -> iTitleBox* {
            return titleBox_ = new FakeTitleBox(owner, title);
        };
    }

    RecordingParent* const root_ = openWindow(500, 400);
    /// The last one that was made.
    static inline FakeTitleBox* titleBox_ = nullptr;
};

/// The corner of a child from the upper right corner of its panel.
XY<int> fromTopRight(Glob const* child) {
    return {child->parent()->width() - child->box().x2, child->parent()->height() - child->box().y2};
}

// Geometry

TEST_F(Panel, ATitleThatIsCutHasATip) {
    RecordingParent* const root = openWindow();
    StandardPanel* panel = addTo(root, new StandardPanel({120, 80}));
    TooltipDetails details;
    XY<int> const onTitle{60, 80 - panel->calcSize(spacingButton) / 2};
    panel->setTitle(L"Short");
    EXPECT_FALSE(panel->getTooltipDetails(onTitle, details));
    panel->setTitle(L"A title that is much too long for it");
    ASSERT_TRUE(panel->getTooltipDetails(onTitle, details));
    EXPECT_EQ(details.text.text(), L"A title that is much too long for it");
    EXPECT_FALSE(panel->getTooltipDetails({60, 10}, details));
    root->removeWidget(panel);
    EXPECT_EQ(panel, nullptr);
    EXPECT_EQ(root->numChildren(), 0u);
}

TEST_F(Panel, SpacingsFollowTheMetricsAndTheKindOfBorder) {
    UifStd::Metrics metrics;
    metrics.buttonHeight = 30;
    metrics.indentWidth = 7;
    UifStd::setMetrics(metrics);
    int const expected[] = {30, 7, 14, 44, 7, 0, 0};
    int const spacings[] = {0, 1, 2, 3, 4, 5, -1};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(StandardPanel::calcSize(static_cast<eSpacing>(spacings[i])), expected[i]) << spacings[i];
    for (int kind = Border::none; kind <= Border::group; ++kind) {
        int const strip = kind == 1 || kind == 3 || kind == 6 ? 58 : 44;
        Border const border(static_cast<Border::eType>(kind));
        EXPECT_EQ(StandardPanel::calcSize(spacingTitleStrip, 1.0F, border), strip) << kind;
        EXPECT_EQ(StandardPanel::calcSize(spacingTitleStrip, 2.0F, border), strip + 30) << "only the button";
        EXPECT_EQ(StandardPanel::calcSize(spacingIndent, 2.0F, border), 7);
    }
    UifStd::setMetrics({});
}

TEST_F(Panel, TheUserAreaIsWhatThePanelWasCalculatedFor) {
    for (int kind = Border::none; kind <= Border::group; ++kind) {
        Border const border(static_cast<Border::eType>(kind), 5);
        int const width = kind == Border::none ? 0 : 5;
        for (int const flags :
             {0, int(closeWidget), int(doItWidget), int(plainTitle), int(pinWidget | sizeWidget)}) {
            XY<int> const size = StandardPanel::calcPanelSize({90, 70}, flags, border);
            StandardPanel::InitArgs const args(static_cast<unsigned short>(size.x),
                                               static_cast<unsigned short>(size.y), border);
            auto const panel = std::make_unique<StandardPanel>(args);
            panel->addStandardWidgets(flags);
            if (flags == plainTitle) panel->setTitle(L"Mixer");
            EXPECT_EQ(panel->getUserArea(), IntBox(width, width, width + 90, width + 70))
                << kind << " " << flags;
        }
    }
    EXPECT_EQ(StandardPanel::calcPanelSize({0, 0}, closeWidget, Border(Border::sunken)),
              XY<int>(2 * edge, 2 * edge + B + 2 * I));
}

TEST_F(Panel, ConstructorsStartEmpty) {
    configb settings;
    settings.set("border", int(Border::dialog));
    settings.set("border_size", 9);
    settings.set("title", LightweightString<wchar_t>(L"Saved"));
    settings.set("standard_widgets", closeWidget | pinWidget);
    settings.set("radius", 3.0);
    auto const saved = std::make_unique<StandardPanel>(settings, 200, 100);
    EXPECT_EQ(saved->getBorder(), Border(Border::dialog, 9));
    EXPECT_EQ(saved->getTitleW(), L"Saved");
    EXPECT_EQ(saved->get_radius(), 3.0);
    EXPECT_NE(saved->getStandardWidget(StandardWidget::close), nullptr);
    settings.set("border", 77);
    EXPECT_EQ(std::make_unique<StandardPanel>(settings, 10, 10)->getBorder(), Border());

    auto const plain = std::make_unique<StandardPanel>(XY<int>(-5, 70000));
    EXPECT_EQ(plain->size(), XY<int>(0, 65535));
    EXPECT_EQ(plain->getBorder(), Border());
    EXPECT_EQ(plain->getStandardWidgetFlags(), 0);
    EXPECT_EQ(plain->getSizeFlag(), 0);
    EXPECT_EQ(plain->getTitleResId(), 999999u);
    EXPECT_FALSE(plain->isPinned());
    EXPECT_EQ(plain->numChildren(), 0u);
    Palette const green(Colour(0, 0.5, 0));
    EXPECT_EQ(StandardPanel(XY<int>(5, 6), green).getPalette(), green);
}

// Standard widgets

TEST_F(Panel, TheChainRunsFromTheCornerWithoutGaps) {
    ProbePanel* const panel = add(Border::window, settingsWidget | pinWidget);
    Glob* const pin = panel->getStandardWidget(StandardWidget::pin);
    Glob* const settings = panel->getStandardWidget(StandardWidget::settings);
    EXPECT_EQ(fromTopRight(pin), XY<int>(edge, edge));
    EXPECT_EQ(fromTopRight(settings), XY<int>(edge + B, edge));

    panel->addStandardWidgets(closeWidget | sizeWidget | doItWidget);
    EXPECT_EQ(panel->getStandardWidget(StandardWidget::pin), pin) << "made once";
    EXPECT_EQ(panel->numChildren(), 5u);
    EXPECT_EQ(fromTopRight(panel->getStandardWidget(StandardWidget::close)), XY<int>(edge, edge));
    EXPECT_EQ(fromTopRight(panel->getStandardWidget(StandardWidget::size)), XY<int>(edge + B, edge));
    EXPECT_EQ(fromTopRight(pin), XY<int>(edge + 2 * B, edge));
    EXPECT_EQ(fromTopRight(settings), XY<int>(edge + 3 * B, edge));
    Glob* const doIt = panel->getStandardWidget(StandardWidget::doIt);
    EXPECT_EQ(doIt->box().x2, panel->width() - edge);
    EXPECT_EQ(doIt->box().y1, edge);
    EXPECT_EQ(panel->calcMaxTitleWidgetWidth(), 200 - 2 * edge - 2 * I - 4 * B);

    panel->resize(300, 200);
    EXPECT_EQ(fromTopRight(settings), XY<int>(edge + 3 * B, edge)) << "they follow the corner";
    panel->removeStandardWidgets(closeWidget | sizeWidget);
    EXPECT_EQ(fromTopRight(pin), XY<int>(edge, edge));
    panel->setBorder(Border(Border::line));
    EXPECT_EQ(fromTopRight(pin), XY<int>(1, 1));
    EXPECT_EQ(doIt->box().y1, 1);
    EXPECT_EQ(Driver::describe(*pin).name, resourceStrW(TextId::keepOpen)) << "an icon has a name, too";
    EXPECT_TRUE(panel->isStandardWidget(doIt));
    EXPECT_FALSE(panel->isStandardWidget(panel));
    EXPECT_FALSE(panel->isStandardWidget(nullptr));

    Look::setSize(2.0);
    EXPECT_EQ(pin->size(), XY<int>(2 * B, 2 * B));
    Look::setSize(1.0);
}

TEST_F(Panel, TheOptionSlotHoldsWhatCameFirst) {
    ProbePanel* const both = add(Border::window, settingsWidget | latchWidget);
    EXPECT_NE(both->getStandardWidget(StandardWidget::settings), nullptr);
    EXPECT_EQ(both->getStandardWidget(StandardWidget::latch), nullptr);
    ProbePanel* const panel = add(Border::window, latchWidget);
    Glob* const latch = panel->getStandardWidget(StandardWidget::latch);
    panel->addStandardWidgets(settingsWidget);
    EXPECT_EQ(panel->getStandardWidget(StandardWidget::latch), latch);
    EXPECT_EQ(panel->numChildren(), 1u);
    panel->removeStandardWidgets(settingsWidget);
    EXPECT_EQ(panel->getStandardWidget(StandardWidget::latch), latch) << "it is no settings button";

    auto* const state = dynamic_cast<iStateButton*>(latch);
    panel->setSizeFlag(sizeMinimised);
    EXPECT_TRUE(state->isDown());
    panel->setSizeFlag(static_cast<size_state>(2));
    EXPECT_FALSE(state->isDown());
    EXPECT_THAT(panel->log, IsEmpty()) << "nobody is told";
    // A widget that went by itself can be asked for again.
    delete latch;
    panel->addStandardWidgets(0);
    EXPECT_NE(panel->getStandardWidget(StandardWidget::latch), nullptr);
}

TEST_F(Panel, ThePinTellsItsPanelTheOpposite) {
    ProbePanel* const panel = add(Border::window, pinWidget);
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    EXPECT_TRUE(panel->isPinned());
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    EXPECT_FALSE(panel->isPinned());
    panel->handlePinned(true);
    EXPECT_THAT(panel->log, ElementsAre("message pin on", "stays", "message pin off", "closes", "stays"));
    panel->answers["message"] = 1;
    panel->log.clear();
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    EXPECT_THAT(panel->log, ElementsAre("message pin on"));
}

TEST_F(Panel, APinnedPopUpStaysOpenUntilItIsReleased) {
    auto* const panel = new ProbePanel(StandardPanel::InitArgs(120, 80, Border(Border::window)));
    panel->addStandardWidgets(pinWidget | closeWidget);
    PopUpOptions options;
    options.place = XY<int>(200, 200);
    ASSERT_TRUE(host_->globManager().openPopUp(panel, options));
    driver_.settle();
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    driver_.clickAt(root_->globXYToScreenXY({5, 5}));
    EXPECT_EQ(ProbePanel::died, 0);
    driver_.click(panel->getStandardWidget(StandardWidget::pin));
    driver_.clickAt(root_->globXYToScreenXY({5, 5}));
    EXPECT_EQ(ProbePanel::died, 1) << "it is a pop-up like others again";
}

// Events

TEST_F(Panel, EveryEventComesToItsHandlerAndGoesOnUnlessConsumed) {
    ProbePanel* const panel = add();
    panel->claimKbdFocus();
    auto const send = [&](Event const& event) { return panel->handleEvent(event); };
    Event zoom(EventKind::zoom);
    zoom.setAmount(-2);
    for (int const answer : {0, 1, 7}) {
        for (char const* name : {"key", "keyup", "zoom", "timer", "wheel", "message", "data"})
            panel->answers[name] = answer;
        panel->log.clear();
        bool const consumed = answer == 1;
        EXPECT_EQ(send(Event(EventKind::keyPress, std::uint32_t('x'))), consumed);
        EXPECT_EQ(send(Event(EventKind::keyRelease, std::uint32_t('x'))), consumed);
        EXPECT_EQ(send(zoom), consumed);
        EXPECT_EQ(send(Event(EventKind::timer)), consumed);
        EXPECT_EQ(send(Event(EventKind::mouseWheel)), consumed);
        EXPECT_EQ(callMessage("hello", panel), answer);
        EXPECT_EQ(callMessageWithData("hello", panel, wrapData(1)), answer);
        EXPECT_THAT(panel->log, ElementsAre("key 120", "keyup 120", "zoom -2", "timer", "wheel",
                                            "message hello", "data hello"));
    }
    expectDiagnostic("message not handled");
}

TEST_F(Panel, TabStepsThroughThePanelUnlessTheHandlerSaysOtherwise) {
    ProbePanel* const panel = add();
    auto* const one = new Stop;
    auto* const two = new Stop;
    for (Stop* stop : {one, two}) {
        panel->addChild(stop, BottomLeft(10, 10));
        panel->addTabStop(*stop);
    }
    panel->claimKbdFocus();
    driver_.key(Key::tab);
    driver_.key(Key::tab);
    driver_.key(Key::shiftTab);
    EXPECT_EQ(one->steps, "><");
    EXPECT_EQ(two->steps, ">");
    for (std::uint32_t const other : {Key::ctrl | Key::tab, Key::alt | Key::tab, Key::meta | Key::tab,
                                      Key::ctrl | Key::shiftTab, std::uint32_t('\t') | Key::keypad})
        EXPECT_FALSE(panel->handleEvent(Event(EventKind::keyPress, other))) << other;
    for (int const answer : {1, 2, -1}) {
        panel->answers["key"] = answer;
        EXPECT_EQ(panel->handleEvent(Event(EventKind::keyPress, Key::tab)), answer == 1);
    }
    EXPECT_EQ(one->steps + two->steps, "><>") << "no further step";

    // A control that is a panel, with no stops of its own, lets Tab through to the panel round it.
    panel->answers.clear();
    auto* const inner = addTo(panel, new ProbePanel(30, 30), BottomLeft(50, 10));
    inner->claimKbdFocus();
    driver_.key(Key::tab);
    EXPECT_EQ(two->steps, ">>");
    delete one;
    delete two;
    EXPECT_FALSE(panel->handleEvent(Event(EventKind::keyPress, Key::tab))) << "nothing to go to";
}

TEST_F(Panel, ATabThatDestroysThePanelIsConsumed) {
    for (bool const throughDriver : {true, false}) {
        ProbePanel::died = 0;
        ProbePanel* const panel = add();
        auto* const stop = new Stop;
        panel->addChild(stop, BottomLeft(10, 10));
        panel->addTabStop(*stop);
        stop->doomed = panel;
        panel->claimKbdFocus();
        if (throughDriver)
            driver_.key(Key::tab);
        else
            EXPECT_TRUE(panel->handleEvent(Event(EventKind::keyPress, Key::tab)));
        EXPECT_EQ(ProbePanel::died, 1);
    }
}

TEST_F(Panel, PootClosesWhoeverSentItUnlessItIsConsumedOrForbidden) {
    ProbePanel* panel = add(Border::window, closeWidget);
    panel->answers["message"] = 1;
    driver_.click(panel->getStandardWidget(StandardWidget::close));
    EXPECT_EQ(ProbePanel::died, 0);
    panel->answers.clear();
    panel->setIndestructible(true);
    EXPECT_TRUE(callMessage(Glob::pootMsg, panel, root_));
    EXPECT_EQ(ProbePanel::died, 0);
    panel->setIndestructible(false);
    callMessage(Glob::pootMsg, panel, nullptr);
    EXPECT_EQ(ProbePanel::died, 1);

    panel = new ProbePanel(100, 80);
    panel->addStandardWidgets(closeWidget);
    ASSERT_TRUE(host_->globManager().realize(panel, XY<int>(10, 10)));
    driver_.settle();
    std::size_t const windows = host_->globManager().numWindows();
    driver_.click(panel->getStandardWidget(StandardWidget::close));
    EXPECT_EQ(ProbePanel::died, 2);
    EXPECT_EQ(host_->globManager().numWindows(), windows - 1);
}

TEST_F(Panel, EachOfItsWidgetsMayDestroyIt) {
    struct Case {
        StandardWidget which;
        int flag;
        char const* heard;
    };
    Case const cases[] = {
        {StandardWidget::close, closeWidget, "message poot"},
        {StandardWidget::close, closeWidget, "poot"},
        {StandardWidget::size, sizeWidget, "message freeze_flip"},
        {StandardWidget::size, sizeWidget, "flip"},
        {StandardWidget::pin, pinWidget, "message pin on"},
        {StandardWidget::pin, pinWidget, "stays"},
        {StandardWidget::settings, settingsWidget, "message settings on"},
        {StandardWidget::latch, latchWidget, "message option on"},
        {StandardWidget::doIt, doItWidget, "message do_it"},
    };
    for (Case const& c : cases)
        expectDeath(c.heard, c.flag,
                    [&](ProbePanel* panel) { driver_.click(panel->getStandardWidget(c.which)); });
}

TEST_F(Panel, EachOfItsHandlersMayDestroyIt) {
    Event zoom(EventKind::zoom);
    zoom.setAmount(1);
    Event press(EventKind::leftPress, root_->globXYToScreenXY({110, 240}));
    std::pair<char const*, Event> const cases[] = {
        {"key 9", Event(EventKind::keyPress, Key::tab)},
        {"keyup 9", Event(EventKind::keyRelease, Key::tab)},
        {"zoom 1", zoom},
        {"timer", Event(EventKind::timer)},
        {"wheel", Event(EventKind::mouseWheel)},
        {"press", press},
    };
    for (auto const& [heard, event] : cases)
        expectDeath(heard, closeWidget, [&event = event](ProbePanel* panel) {
            EXPECT_TRUE(panel->handleEvent(event)) << event.kind();
        });
    expectDeath("message go", 0, [](ProbePanel* panel) { EXPECT_TRUE(callMessage("go", panel)); });
    expectDeath("data go", 0,
                [](ProbePanel* panel) { EXPECT_TRUE(callMessageWithData("go", panel, wrapData(1))); });
    expectDeath("title", 0, [](ProbePanel* panel) { panel->setTitle(L"The end"); });
}

TEST_F(Panel, AWidgetMayBeRemovedInItsOwnMessage) {
    class Remover : public ProbePanel {
    public:
        using ProbePanel::ProbePanel;
        int handleMessageEvent(LightweightString<char>, Glob*) override {
            removeStandardWidgets(0x1F | latchWidget);
            return 1;
        }
    };
    auto* const panel = new Remover(StandardPanel::InitArgs(200, 150, Border(Border::window)));
    root_->addChild(panel, BottomLeft(100, 100));
    for (StandardWidget const which : {StandardWidget::close, StandardWidget::pin, StandardWidget::doIt}) {
        panel->addStandardWidgets(0x1F);
        driver_.settle();
        driver_.click(panel->getStandardWidget(which));
        EXPECT_EQ(panel->numChildren(), 0u);
        EXPECT_EQ(panel->getStandardWidgetFlags(), 0);
    }
}

// Title

TEST_F(Panel, TheTitleBringsTheStripAndKnowsItsResource) {
    ProbePanel* const panel = add(Border::sunken);
    Glob* const child = panel->addChild(new ProbeGlob(20, 20), UserTopLeft(0, 0));
    panel->setTitle(TextId::settings, eRedrawYes);
    EXPECT_EQ(panel->getTitleResId(), TextId::settings);
    EXPECT_EQ(panel->getTitleW(), resourceStrW(TextId::settings));
    EXPECT_EQ(fromTopRight(child).y, edge + B + 2 * I) << "it made way";
    EXPECT_EQ(Driver::describe(*panel).name, panel->getTitleW());
    Glib::FontDesc const large({}, 30);
    int const before = panel->calcTitleWidth(L"Wide");
    panel->setTitle(L"Other", large);
    EXPECT_EQ(panel->getTitleResId(), 999999u);
    EXPECT_GT(panel->calcTitleWidth(L"Wide"), before);
    panel->setTitle(L"Other", large);
    EXPECT_THAT(panel->log, ElementsAre("title", "title")) << "an equal one is no change";
    panel->setTitle(L"");
    EXPECT_EQ(fromTopRight(child).y, edge);
}

TEST_F(Panel, AnEditableTitleReportsToTheParent) {
    ProbePanel* const panel = add(Border::window, closeWidget);
    panel->setTitle(L"Reel");
    panel->setEditableTitle(true);
    EXPECT_EQ(panel->getTitleWidget(), nullptr) << "nobody makes title boxes yet";
    useTitleBoxes();
    panel->log.clear();
    panel->addStandardWidgets(editableTitleToo);
    FakeTitleBox*& made = titleBox_;
    ASSERT_EQ(panel->getTitleWidget(), made);
    EXPECT_TRUE(panel->isStandardWidget(made));
    EXPECT_EQ(made->text, L"Reel");
    EXPECT_EQ(made->size(), XY<int>(200 - 2 * edge - 2 * I - B, B));
    EXPECT_EQ(made->box().y2, panel->height() - edge);
    panel->resize(250, 150);
    EXPECT_EQ(made->width(), panel->calcMaxTitleWidgetWidth());
    EXPECT_THAT(panel->log, ElementsAre("titlesize", "titlesize"));
    settle();

    made->text = L"Reel 2";
    panel->handleTitleTyped();
    panel->handleTitleTyped();
    panel->handleTitleEdited();
    panel->handleTitleEdited();
    driver_.settle();
    EXPECT_EQ(sent(), "StdPanelTitleTyped StdPanelTitleTyped StdPanelTitleChanged");
    EXPECT_EQ(root_->messages()[0].sender, panel);
    EXPECT_EQ(panel->getTitleW(), L"Reel 2");
    panel->setTitle(L"Set");
    EXPECT_EQ(made->text, L"Set");

    panel->setEditableTitle(false);
    EXPECT_EQ(panel->getTitleWidget(), nullptr);
    EXPECT_EQ(panel->getStandardWidgetFlags(), closeWidget);
    panel->handleTitleEdited();
    panel->setEditableTitle(true);
    made->text = L"Bye";
    panel->dieAt = "title";
    panel->handleTitleEdited();
    EXPECT_EQ(ProbePanel::died, 1);
}

// Frame

TEST_F(Panel, TheTitleStripMovesAMovablePanelWithinReach) {
    ProbePanel* const panel = add(Border::window, closeWidget);
    dragIn(panel, {20, 140}, {30, -20});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(100, 100)) << "it is not movable";
    panel->setMovable(true);
    dragIn(panel, {20, 140}, {30, -20});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(130, 80));
    EXPECT_FALSE(panel->isMoving());
    dragIn(panel, {20, 20}, {30, 0});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(130, 80)) << "its body is no handle";
    dragIn(panel, {20, 140}, {-4000, 4000});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(B - 200, 250)) << "part of the strip stays";
    panel->setScreenPos(root_->globXYToScreenXY({100, 100}));
    dragIn(panel, {20, 140}, {4000, -4000});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(500 - B, 2 * edge + B - 150));
    panel->setScreenPos(root_->globXYToScreenXY({100, 100}));

    moveIn(panel, 20, 140);
    driver_.press();
    moveIn(panel, 60, 140);
    EXPECT_EQ(panel->contextCursor({20, 140}), moveCursor);
    driver_.key(Key::escape);
    driver_.release();
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(100, 100)) << "Escape takes it back";
    EXPECT_EQ(panel->contextCursor({20, 140}), inheritCursor);
    panel->log.clear();
    panel->answers["press"] = 1;
    dragIn(panel, {20, 140}, {30, 0});
    EXPECT_EQ(panel->box().bottomLeft(), XY<int>(100, 100)) << "the handler comes first";
}

TEST_F(Panel, EdgesAndCornersResizeAResizablePanel) {
    ProbePanel* const panel = add(Border::window, closeWidget);
    EXPECT_EQ(panel->contextCursor({1, 70}), inheritCursor);
    dragIn(panel, {1, 70}, {-30, 0});
    EXPECT_EQ(panel->box(), IntBox(100, 100, 300, 250)) << "only when it was asked for";
    panel->setResizable(true);
    EXPECT_EQ(panel->contextCursor({1, 70}), sizeHorizontalCursor);
    EXPECT_EQ(panel->contextCursor({100, 1}), sizeVerticalCursor);
    EXPECT_EQ(panel->contextCursor({1, 1}), sizeRisingCursor);
    EXPECT_EQ(panel->contextCursor({195, 149}), sizeRisingCursor);
    EXPECT_EQ(panel->contextCursor({1, 140}), sizeFallingCursor);
    EXPECT_EQ(panel->contextCursor({199, 10}), sizeFallingCursor);
    EXPECT_EQ(panel->contextCursor({100, 70}), inheritCursor);

    dragIn(panel, {1, 70}, {-30, 9});
    EXPECT_EQ(panel->box(), IntBox(70, 100, 300, 250));
    dragIn(panel, {229, 1}, {20, -10});
    EXPECT_EQ(panel->box(), IntBox(70, 90, 320, 250));
    dragIn(panel, {100, 159}, {0, 5});
    EXPECT_EQ(panel->box(), IntBox(70, 90, 320, 255));
    moveIn(panel, 1, 20);
    driver_.press();
    moveIn(panel, -20, 20);
    driver_.key(Key::escape);
    driver_.release();
    EXPECT_EQ(panel->box(), IntBox(70, 90, 320, 255)) << "Escape takes it back";
    panel->setMinSize(100, 80);
    dragIn(panel, {1, 1}, {4000, 4000});
    EXPECT_EQ(panel->box(), IntBox(220, 175, 320, 255)) << "the far corner stays";
    panel->setMinSize(0, 0);
    dragIn(panel, {1, 1}, {4000, 4000});
    EXPECT_EQ(panel->size(), XY<int>(2 * edge + B, 2 * edge + B + 4 * I)) << "room for strip and widgets";
    panel->grid = 50;
    dragIn(panel, {1, 20}, {-99, 0});
    EXPECT_EQ(panel->width(), 100) << "as the panel constrains it";
}

TEST_F(Panel, MinimisingLeavesTheStripAndComesBack) {
    ProbePanel* const panel = add(Border::window, sizeWidget | settingsWidget | doItWidget);
    Glob* const shown = panel->addChild(new ProbeGlob(20, 20), BottomLeft(10, 10));
    Glob* const hidden = panel->addChild(new ProbeGlob(20, 20), BottomLeft(40, 10));
    hidden->setVisible(false);
    driver_.click(panel->getStandardWidget(StandardWidget::size));
    EXPECT_EQ(panel->height(), 150) << "not asked for";
    panel->setMinimisable(true);
    driver_.click(panel->getStandardWidget(StandardWidget::size));
    EXPECT_EQ(panel->box(), IntBox(100, 250 - 2 * edge - B, 300, 250));
    EXPECT_EQ(panel->getSizeFlag(), sizeMinimised);
    EXPECT_TRUE(dynamic_cast<iStateButton*>(panel->getStandardWidget(StandardWidget::settings))->isDown());
    EXPECT_FALSE(shown->isVisible());
    EXPECT_FALSE(panel->getStandardWidget(StandardWidget::doIt)->isVisible());
    driver_.click(panel->getStandardWidget(StandardWidget::size));
    EXPECT_EQ(panel->box(), IntBox(100, 100, 300, 250));
    EXPECT_TRUE(shown->isVisible());
    EXPECT_FALSE(hidden->isVisible());
    EXPECT_EQ(panel->getSizeFlag(), sizeFull);
    panel->answers["flip"] = 1;
    driver_.click(panel->getStandardWidget(StandardWidget::size));
    EXPECT_EQ(panel->height(), 150) << "the handler has done something else";
}

TEST_F(Panel, StatusWidgetsStandInARowBelowTheUserArea) {
    ProbePanel* const panel = add();
    EXPECT_EQ(panel->addStatusWidget(nullptr, 5), nullptr);
    expectDiagnostic("tree operation refused");
    Glob* const first = panel->addStatusWidget(new ProbeGlob(30, 20), 50);
    Glob* const second = panel->addStatusWidget(new ProbeGlob(30, 20), 0);
    EXPECT_EQ(first->box(), IntBox(edge + I, edge + 2, edge + I + 50, edge + 22));
    EXPECT_EQ(second->box().x1, first->box().x2 + UifStd::getWidgetGap());
    EXPECT_EQ(second->width(), 30);
    EXPECT_EQ(panel->getUserArea().y1, edge + B + I);
    EXPECT_FALSE(panel->isStandardWidget(first));
    delete first;
    delete second;
    EXPECT_EQ(panel->getUserArea().y1, edge);
}

// Looks

TEST_F(Panel, ColoursReachTheStandardWidgets) {
    ProbePanel* const panel = add(Border::window, closeWidget);
    Glob* const close = panel->getStandardWidget(StandardWidget::close);
    Palette const blue(Colour(0, 0, 0.5));
    panel->setPalette(blue);
    EXPECT_EQ(close->getPalette(), blue);
    panel->setcol(Colour(0.9, 0.9, 0.4), true);
    EXPECT_EQ(close->getPalette().window(eWindowNormal), Colour(0.9, 0.9, 0.4));
    panel->addStandardWidgets(pinWidget);
    EXPECT_EQ(panel->getStandardWidget(StandardWidget::pin)->getPalette(), panel->getColoursForWidgets());
    useTitleBoxes();
    panel->addStandardWidgets(editableTitle);
    panel->setPalette(Palette(Colour::fromLong(0xF0E0D0)));
    EXPECT_EQ(panel->getTitleWidget()->getPalette(), panel->getColoursForWidgets());
    panel->setCol(Colour::fromLong(0x102030));
    EXPECT_EQ(panel->getTitleWidget()->getPalette(), panel->getColoursForWidgets());
}

TEST_F(Panel, EveryBorderIsSeenAndLeavesTheMiddleAlone) {
    for (double const radius : {0.0, 8.0})
        for (double const scale : {1.0, 1.5, 2.0})
            for (int kind = Border::none; kind <= Border::group; ++kind) {
                Look::setDeviceScale(scale);
                // Round lines of 1.5 pixels are 2 pixels of the screen.
                int const inside = scale == 1.5 ? edge + 1 : edge;
                ProbePanel* const panel = add(static_cast<Border::eType>(kind));
                panel->set_radius(radius);
                driver_.settle();
                std::uint32_t const body = panel->getcol().getAsLong();
                EXPECT_EQ(driver_.pixel(panel, {100, 75}), body);
                EXPECT_EQ(driver_.pixel(panel, {inside, 75}), body)
                    << kind << " the border keeps to its width";
                EXPECT_EQ(driver_.pixel(panel, {0, 75}) == body, kind == Border::none)
                    << kind << " " << radius;
                EXPECT_EQ(driver_.pixel(panel, {199, 75}) == body, kind == Border::none)
                    << kind << " " << radius;
                std::uint32_t const corner =
                    radius > 0.0 ? root_->getCol().getAsLong() : driver_.pixel(panel, {0, 0});
                EXPECT_EQ(driver_.pixel(panel, {0, 0}), corner) << kind;
                delete panel;
            }
    Look::setDeviceScale(1.0);
}

TEST_F(Panel, AGrooveLeavesOutItsTitle) {
    ProbePanel* const panel = add(Border::group);
    panel->setTitle(L"i");
    driver_.settle();
    int const y = 150 - edge - B / 2 - 1;
    std::uint32_t const body = panel->getcol().getAsLong();
    EXPECT_NE(driver_.pixel(panel, {150, y}), body);
    EXPECT_EQ(driver_.pixel(panel, {edge + I - 2, y}), body);
    EXPECT_EQ(driver_.pixel(panel, {100, 149}), body) << "nothing above it";
    panel->eraseRectangle({140, 0, 400, 400}, Colour(1, 0, 0));
    EXPECT_EQ(driver_.pixel(panel, {100, 75}), body);
}

} // namespace
} // namespace wainscot
