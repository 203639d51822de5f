#include "tests/widget_fixture.h"

#include "buttons/checkbox.h"
#include "foundation/val_server.h"
#include "foundation/val_server_adaptor.h"
#include "host/drawing/uif_std.h"
#include "host/objects/description.h"

namespace wainscot {
namespace {

class Checkboxes : public WidgetTest {
protected:
    Checkbox* add(wchar_t const* label = L"Loop", bool ticked = false) {
        return show(Checkbox::make(0, 0, label, ticked).release());
    }
};

TEST_F(Checkboxes, TheGenerationDecidesWhichClicksToggleAndKeysAlwaysDo) {
    Checkbox* const box = add();
    ASSERT_TRUE(box->claimKbdFocus());
    driver_.press(box);
    EXPECT_TRUE(box->isTicked());
    driver_.release();
    EXPECT_EQ(sent(), "Checkbox TICKED");
    box->setMessageGeneration(Checkbox::onRelease);
    driver_.press(box);
    EXPECT_TRUE(box->isTicked());
    driver_.moveTo({390, 390});
    driver_.release();
    EXPECT_FALSE(box->isTicked()) << "wherever it is released";
    box->setMessageGeneration(Checkbox::onNothing);
    driver_.click(box);
    EXPECT_FALSE(box->isTicked());
    driver_.key(Key::space);
    driver_.key(Key::enter);
    driver_.key(Key::shift | Key::space);
    EXPECT_EQ(sent(), "Checkbox TICKED Checkbox CLEAR Checkbox TICKED Checkbox CLEAR");
    box->setMsgPrefix("Loop", true);
    driver_.key(Key::space);
    box->setMsgPrefix("Loop", false);
    driver_.key(Key::space);
    EXPECT_THAT(sent(), testing::EndsWith("LoopTICKED Loop"));
    root_->forgetMessages();
    box->setState(true);
    box->setMessageGeneration(Checkbox::onPress);
    box->setClickable(false);
    driver_.click(box);
    EXPECT_TRUE(box->isTicked());
    EXPECT_EQ(sent(), "") << "the program tells nobody";
}

TEST_F(Checkboxes, AUserFunctionReplacesEverything) {
    Checkbox* const box = add();
    auto const adaptor = Qv::makePtr<TestData<bool>>();
    box->setDataAdaptor(adaptor);
    Checkbox* called = nullptr;
    box->setUserFunction([](Checkbox* which, void* context) { *static_cast<Checkbox**>(context) = which; },
                         &called);
    driver_.click(box);
    EXPECT_EQ(called, box);
    EXPECT_FALSE(box->isTicked());
    EXPECT_TRUE(adaptor->asked.empty());
    EXPECT_EQ(sent(), "");
}

TEST_F(Checkboxes, ACallbackIsToldInsteadOfTheParent) {
    Checkbox* const box = add();
    bool state = false;
    Checkbox* from = nullptr;
    box->setCallback(calling([&](NotifyMsg const& message) {
        auto* const change = dynamic_cast<Checkbox::Change*>(message.payload().get());
        state = change->state();
        from = change->checkbox();
        log_.push_back(std::string(message.name().c_str()) + " " + std::to_string(message.code()));
    }));
    driver_.click(box);
    EXPECT_THAT(log_, ElementsAre("Checkbox TICKED 1")) << "as the parent would hear";
    EXPECT_TRUE(state);
    EXPECT_EQ(from, box);
    EXPECT_EQ(sent(), "");
}

TEST_F(Checkboxes, AnAdaptorMayDestroyItAndRefuse) {
    Checkbox* box = add();
    auto const adaptor = Qv::makePtr<TestData<bool>>();
    adaptor->accepts = false;
    adaptor->onAsk = [&] { destroy(box); };
    box->setDataAdaptor(adaptor);
    driver_.click(box);
    EXPECT_EQ(root_->numChildren(), 0u);
}

TEST_F(Checkboxes, BoxesAndLightsShowTheirStates) {
    Checkbox* const box = add(L"");
    XY<int> const middle = box->getTickExtents().centre();
    driver_.moveTo({390, 390});
    auto const look = [&] {
        driver_.settle();
        return driver_.pixel(box, middle + XY<int>{0, -2});
    };
    box->setState(true);
    std::set<std::uint32_t> lights;
    for (auto appearance : {Checkbox::blueLight, Checkbox::redLight, Checkbox::greenLight}) {
        box->setAppearance(appearance);
        lights.insert(look());
        box->setActive(false);
        lights.insert(look());
        box->setActive(true);
    }
    EXPECT_EQ(lights.size(), 6u) << "three colours, on and off";
    box->setState(false);
    std::uint32_t const grey = look();
    box->setAppearance(Checkbox::redLight);
    EXPECT_EQ(look(), grey) << "grey whatever its colour";
}

TEST_F(Checkboxes, WidthsFitTheLabel) {
    int const plain = Checkbox::calcWidth(L"Loop", Border::none);
    Checkbox* const box = add(L"Loop");
    EXPECT_EQ(box->size(), (XY<int>{plain, UifStd::getButtonHeight()}));
    EXPECT_EQ(Checkbox::calcWidth(L"Loop", Border::line), plain + 2);
    EXPECT_GT(Checkbox::calcWidth(L"Loop", Border::none, Checkbox::tickBox, true), plain);
    EXPECT_LT(Checkbox::calcWidth(L"", Border::none), plain);
}

} // namespace
} // namespace wainscot
