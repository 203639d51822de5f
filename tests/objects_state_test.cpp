#include "tests/host_fixture.h"

#include "host/messages/notify_msg.h"
#include "host/objects/description.h"
#include "host/objects/description_listener.h"

namespace wainscot {
namespace {

using State = OneWindowTest;

TEST_F(State, DrawingIsLaidOutInParts) {
    struct Parts : ProbeGlob {
        std::string order;
        void drawBackground() override { order += "b"; }
        void drawBorder() override { order += "f"; }
        bool canDraw() override { return mayDraw && ProbeGlob::canDraw(); }
        void reshapeCanvas() override { order += "c"; }
        bool mayDraw = true;
    };
    auto* const parts = addTo(root_, new Parts);
    auto* const child = addTo(parts, new ProbeGlob);
    driver_.settle();
    EXPECT_EQ(parts->order, "bf");
    parts->order.clear();
    parts->reshapeAndDraw({70, 50});
    EXPECT_EQ(parts->order, "c");
    EXPECT_TRUE(parts->isDirty());
    driver_.settle();
    EXPECT_EQ(parts->order, "cbf");
    EXPECT_FALSE(parts->isDirty());
    parts->forceReshape();
    driver_.settle();
    EXPECT_EQ(parts->order, "cbfcbf") << "although the size is as before";
    int const drawn = child->drawn;
    parts->mayDraw = false;
    canvupd_mark_all(parts->canvas());
    EXPECT_TRUE(parts->isDirty());
    driver_.settle();
    EXPECT_EQ(child->drawn, drawn) << "nor are its children drawn";
}

TEST_F(State, CanvasesAreMappedFromTheRootDown) {
    auto* const outer = addTo(root_, new ProbeGlob);
    auto* const inner = addTo(outer, new ProbeGlob);
    EXPECT_TRUE(canvas_is_mapped_to_root(inner->canvas()));
    outer->unmapCanvas();
    EXPECT_FALSE(canvas_is_mapped_to_root(inner->canvas()));
    EXPECT_FALSE(inner->isShown());
    outer->mapCanvas();
    outer->setVisible(false);
    EXPECT_FALSE(canvas_is_mapped_to_root(inner->canvas()));
    outer->setVisible(true);
    EXPECT_TRUE(canvas_is_mapped_to_root(inner->canvas()));
    EXPECT_FALSE(canvas_is_mapped_to_root(nullptr));
    EXPECT_EQ(canvas_to_glob(inner->canvas()), inner);
    EXPECT_EQ(canvas_to_glob(nullptr), nullptr);
}

TEST_F(State, LimitsAndPlacesOfChildren) {
    auto* const below = new Glob(40, 20);
    auto* const above = new Glob(40, 20);
    root_->addWidget(above, 5, 6, CoordinateOrigin::topRight, {WidgetSurround::Style::line, 2});
    EXPECT_NE(root_->addWidget(below, 5, 6, CoordinateOrigin::topRight, {}, above), nullptr);
    EXPECT_EQ(root_->firstChild(), below);
    EXPECT_EQ(root_->getWidgetPos(below), XY<int>(355, 274));
    WidgetDetails details = root_->getWidgetDetails(above);
    EXPECT_EQ(details.position.origin(), CoordinateOrigin::topRight);
    EXPECT_EQ(details.surround.width, 2);
    root_->setWidgetBorderStyle(above, {});
    EXPECT_EQ(root_->getWidgetDetails(above).surround, WidgetSurround());
    EXPECT_EQ(root_->getWidgetDetails(root_).widget, nullptr) << "no child";
    details.position = BottomLeft(1, 2);
    root_->positionChildWidget(details);
    EXPECT_EQ(root_->getWidgetPos(above), XY<int>(1, 2));
    root_->positionChildWidgets();
    EXPECT_EQ(root_->getWidgetPos(above), XY<int>(355, 274)) << "its rule is as before";
    above->setMinSize(30, 25);
    EXPECT_EQ(above->sizeConstrain({10, 50}, 0), XY<int>(30, 50));
    Glob* gone = below;
    root_->removeWidget(gone, false);
    EXPECT_EQ(root_->getWidget(below), nullptr);
    EXPECT_EQ(root_->getWidgetPos(below), XY<int>());
}

TEST_F(State, PoliciesAreKeptAndTheWindowManagerRespectsThem) {
    EXPECT_TRUE(root_->isTrashable() && root_->canBeIt() && root_->isResizable());
    EXPECT_FALSE(root_->isPersistable() || root_->isLightweight() || root_->isIndestructible());
    root_->setTrashable(false);
    root_->setPersistable(true);
    root_->setLightweight(true);
    root_->setResizable(false);
    EXPECT_TRUE(root_->isPersistable() && root_->isLightweight());
    EXPECT_FALSE(root_->isTrashable() || root_->isResizable());
    RecordingParent* const second = openWindow(100, 100, {600, 100});
    host_->globManager().setWindowTitle(*second, L"\u00c4 title");
    EXPECT_EQ(nativeOf(second)->title(), L"\u00c4 title");
    root_->setCanBeIt(false);
    activate(root_);
    EXPECT_EQ(get_kbd_focus(), second) << "it may not become the active window";
    EXPECT_FALSE(host_->hasScreen());
    EXPECT_TRUE(host_->problem().empty());
    EXPECT_TRUE(host_->globManager().realize(second)) << "brings it to the front";
    driver_.settle();
    EXPECT_EQ(host_->globManager().windowAt({650, 150})->rootStamp(), second->idStamp());
    EXPECT_EQ(host_->globManager().windowAt({5, 5}), nullptr);
}

TEST_F(State, EventsCarryTheirCircumstances) {
    auto* const probe = addTo(root_, new ProbeGlob);
    int significant = 0;
    int moves = 0;
    probe->onReact = [&](Event const& event) {
        if (mouse_down_event(event)) {
            EXPECT_TRUE(mouse_right_event(event) && !mouse_left_event(event));
            EXPECT_EQ(getMouseClickState(event), 1);
            EXPECT_EQ(getModifier(event), Key::ctrl);
            EXPECT_EQ(glib_getMousePos(), event.place());
        }
        if (mouse_move_event(event)) {
            ++moves;
            significant += isMouseMoveSignificant(event);
        }
        return mouse_event(event);
    };
    driver_.moveTo(probe);
    moves = significant = 0;
    XY<int> const start = glib_getMousePos();
    driver_.holdModifiers(Key::ctrl);
    driver_.press(InputEvent::Button::right);
    driver_.holdModifiers(0);
    for (int way : {1, 3, 4, 9}) driver_.moveTo(start + XY<int>(0, way));
    driver_.release(InputEvent::Button::right);
    EXPECT_EQ(moves, 4);
    EXPECT_EQ(significant, 2);
    Event const key(EventKind::keyPress, std::uint32_t('a'));
    EXPECT_EQ(getMouseClickState(key), 0);
}

TEST_F(State, MessagesCarryDataSenderAndModifiers) {
    expectDiagnostic("message to nobody");
    expectDiagnostic("event to nobody");
    expectDiagnostic("message not handled");
    auto* const probe = addTo(root_, new ProbeGlob);
    EXPECT_TRUE(callMessageWithData("with data", root_, wrapData(42), probe));
    EXPECT_TRUE(sendMessageWithData("with none", root_, nullptr, probe));
    probe->onReact = [&](Event const& event) {
        return mouse_down_event(event) && probe->sendMsg(root_, "pressed");
    };
    driver_.holdModifiers(Key::shift);
    driver_.press(probe);
    driver_.holdModifiers(0);
    driver_.release();
    EXPECT_TRUE(probe->callMsg(root_, "direct"));
    ASSERT_EQ(root_->names(), "with data with none pressed direct");
    EXPECT_EQ(*unwrapData<int>(root_->messages()[0].data), 42);
    EXPECT_EQ(unwrapData<float>(root_->messages()[0].data), nullptr);
    EXPECT_EQ(root_->messages()[1].sender, probe);
    EXPECT_EQ(root_->messages()[2].modifiers, Key::shift) << "those of the press, though it was queued";
    EXPECT_EQ(root_->messages()[3].modifiers, 0u);
    EXPECT_FALSE(sendMessage("lost", nullptr));
    EXPECT_FALSE(callMessage("lost", nullptr));
    EXPECT_FALSE(probe->sendMsg(nullptr, "lost"));
    EXPECT_FALSE(event_send(nullptr));
    Event const toNobody(EventKind::message);
    EXPECT_FALSE(event_send(&toNobody));
    probe->onReact = nullptr;
    probe->onMessage = [](auto const&, Glob*) { return 0; };
    EXPECT_FALSE(callMessage("unwanted", probe));
    EXPECT_EQ(Diagnostics::countOf("message not handled"), 1u);
    EXPECT_EQ(NotifyMsg(L"\u00e9", 3).name(), "\xC3\xA9");
    EXPECT_STREQ(NotifyMsg("name"), "name");
}

TEST_F(State, OthersMayBeOfferedAnObjectsEventsFirst) {
    expectDiagnostic("event handler refused");
    auto* const probe = addTo(root_, new ProbeGlob);
    auto* const guard = addTo(root_, new ProbeGlob(1, 1), BottomLeft(300, 200));
    int reached = 0, offered = 0;
    bool takes = true;
    probe->onReact = [&](Event const& event) { return mouse_down_event(event) && ++reached > 0; };
    guard->onReact = [&](Event const& event) {
        offered += mouse_down_event(event);
        return takes;
    };
    probe->addEventHandler(guard, EventKind::mouse);
    probe->addEventHandler(nullptr, EventKind::mouse);
    probe->addEventHandler(probe, EventKind::mouse);
    driver_.click(probe);
    EXPECT_EQ(offered, 1);
    EXPECT_EQ(reached, 0);
    takes = false;
    driver_.click(probe);
    EXPECT_EQ(reached, 1);
    probe->removeEventHandler(EventKind::keyPress);
    driver_.click(probe);
    EXPECT_EQ(offered, 3);
    probe->removeEventHandler(EventKind::mouse);
    driver_.click(probe);
    EXPECT_EQ(offered, 3);
    probe->addEventHandler(guard, EventKind::mouse);
    delete guard;
    driver_.click(probe);
    EXPECT_EQ(reached, 4);
    EXPECT_TRUE(Glob::isPlainKey('a') && Glob::isPlainKey(Key::shift | 'A') && Glob::isPlainKey(Key::tab));
    EXPECT_FALSE(Glob::isPlainKey(Key::ctrl | 'A') || Glob::isPlainKey(Key::home));
}

TEST_F(State, WidgetsDescribeThemselvesAndTellOfChanges) {
    struct Listener : DescriptionListener {
        std::vector<DescriptionChange> changes;
        void descriptionChanged(Glob&, DescriptionChange what) override { changes.push_back(what); }
    };
    auto* const probe = new ProbeGlob;
    Listener listener;
    DescriptionListener::install(&listener);
    root_->addChild(probe, BottomLeft(10, 20));
    probe->setActive(false);
    probe->setActive(false);
    probe->setVisible(false);
    DescriptionListener::install(nullptr);
    probe->setVisible(true);
    using Change = DescriptionChange;
    EXPECT_EQ(listener.changes, (std::vector{Change::place, Change::children, Change::state, Change::state}));
    GlobDescription const description = Driver::describe(*probe);
    EXPECT_EQ(description.box, IntBox(110, 120, 170, 160));
    EXPECT_EQ(description.states, std::uint32_t(GlobDescription::visible));
    EXPECT_EQ(driver_.find(Role::panel, L""), root_);
    EXPECT_EQ(driver_.find(Role::panel, L"no such name"), nullptr);
    EXPECT_FALSE(driver_.problem().empty());
}

TEST_F(State, ColoursComeFromThePaletteUntilOneIsSet) {
    auto* const probe = addTo(root_, new ProbeGlob);
    EXPECT_EQ(probe->getCol(), Palette().window(eWindowNormal));
    Palette const light = Palette::standard(eThemeLight);
    probe->setPalette(light);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(probe, {5, 5}), light.window(eWindowNormal).getAsLong());
    probe->setCol(Colour(1, 0, 1), true);
    driver_.settle();
    EXPECT_EQ(driver_.pixel(probe, {5, 5}), 0xFF00FFu);
    probe->setOpaque(false);
    probe->makeDirty();
    driver_.settle();
    EXPECT_EQ(driver_.pixel(probe, {5, 5}), root_->getCol().getAsLong());
}

TEST(ObjectSizes, StayWithinTheirBudget) {
    EXPECT_LE(sizeof(Glob), 192u);
    std::printf("sizeof(Glob) = %zu\n", sizeof(Glob));
}

} // namespace
} // namespace wainscot
