#include "tests/panel_fixture.h"

#include "host/base/configb.h"

namespace wainscot {
namespace {

using enum StandardPanel::StandardWidgetFlags;
using namespace PanelMetrics;
using Panel = PanelTest;

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
    ProbePanel* const panel = add();
    auto* const stop = addTo(panel, new Stop);
    panel->addTabStop(*stop);
    stop->doomed = panel;
    EXPECT_TRUE(panel->handleEvent(Event(EventKind::keyPress, Key::tab)));
    EXPECT_FALSE(is_good_glob_ptr(panel)) << "in a step of Tab";
}

} // namespace
} // namespace wainscot
