#include "tests/host_fixture.h"

#include "driver/random_user.h"
#include "driver/shorten.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"

using namespace wainscot;

namespace {

/// Shows another colour after a press of the right button, and forgets to be painted.
class Forgetful : public Glob {
public:
    Forgetful() : Glob(60, 60) {}
    bool react(Event const& event) override {
        presses_ += mouse_down_event(event) && mouse_right_event(event) ? 1 : 0;
        return true;
    }
    void draw() override {
        CanvasRenderer renderer(canvas(), canvasArea());
        double const shade = presses_ == 0 ? 0.0 : 1.0;
        renderer.renderPrimitive(Glib::RectDescription(canvasArea(), Colour(shade, shade, shade)));
    }

private:
    int presses_ = 0;
};

} // namespace

class RandomUse : public HostTest {
protected:
    /// Does the acts to a new window; what the check says after the last one, or after the first that fails.
    std::string faultOf(std::span<UserAct const> acts) {
        RecordingParent* const root = openWindow();
        addTo(root, new Forgetful, BottomLeft(200, 200));
        driver_.moveTo(XY<int>(0, 0));
        std::string fault;
        for (UserAct const& act : acts) {
            act.perform(driver_);
            if (fault.empty()) fault = Consistency(driver_).fault().c_str();
        }
        for (auto const button :
             {InputEvent::Button::left, InputEvent::Button::middle, InputEvent::Button::right})
            driver_.release(button);
        destroy(root);
        driver_.settle();
        return fault;
    }
};

TEST_F(RandomUse, AFaultIsFoundRecordedAndMadeShort) {
    RecordingParent* const root = openWindow();
    addTo(root, new Forgetful, BottomLeft(200, 200));
    driver_.moveTo(XY<int>(0, 0));
    RandomUser user(driver_, 5);
    std::vector<UserAct> acts;
    user.setBefore([&](UserAct const& act) { acts.push_back(act); });
    user.setAfter([&] { return Consistency(driver_).fault().empty(); });
    EXPECT_FALSE(user.run(2000));
    EXPECT_LT(user.counts().events, 2000u);
    destroy(root);

    std::vector<UserAct> readBack;
    EXPECT_TRUE(readActs("# a comment\n\n" + writeActs(acts), readBack));
    EXPECT_EQ(readBack, acts);
    EXPECT_FALSE(readActs("wait 5\npress left", readBack));
    EXPECT_FALSE(UserAct::fromLine("wait 5 6"));

    std::vector<UserAct> const least =
        shortened(acts, [&](auto const& tried) { return !faultOf(tried).empty(); });
    ASSERT_EQ(least.size(), 2u) << writeActs(least).c_str();
    EXPECT_EQ(least[0].kind, UserAct::Kind::move);
    EXPECT_EQ(least[1].kind, UserAct::Kind::press);
    EXPECT_EQ(least[1].button, InputEvent::Button::right);
    EXPECT_THAT(faultOf(least), testing::HasSubstr("another picture"));
}

TEST_F(RandomUse, WhatIsHeldWithoutAButtonIsAFault) {
    auto* const holder = addTo(openWindow(), new Forgetful);
    driver_.settle();
    EXPECT_EQ(Consistency(driver_).fault(), "");
    EXPECT_FALSE(driver_.painted(holder)) << "one colour";
    EventSystem::live().pointer.capture(holder);
    EXPECT_THAT(Consistency(driver_).fault().c_str(), testing::HasSubstr("no button is held"));
    EventSystem::live().pointer.releaseCapture();
}
