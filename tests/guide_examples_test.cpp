#include "tests/widget_fixture.h"

#include <counter_test.h>
#include <ownership_examples.h>

namespace wainscot {
namespace {

using namespace example;

/// What docs/ownership.md shows.
class OwnershipGuide : public WidgetTest {};

TEST_F(OwnershipGuide, OneQuestionIsOpenAtATime) {
    auto* const toolbar = show(new Toolbar);
    driver_.click(driver_.button(L"Ask"));
    Question* const question = toolbar->question();
    ASSERT_NE(question, nullptr);
    driver_.click(driver_.button(L"Ask"));
    EXPECT_EQ(toolbar->question(), question);
    driver_.click(driver_.button(L"Yes"));
    EXPECT_EQ(toolbar->question(), nullptr);
    driver_.click(driver_.button(L"Ask"));
    ASSERT_NE(toolbar->question(), nullptr);
    destroy(root_);
    EXPECT_EQ(host_->globManager().numWindows(), 0u) << "it goes with its owner's window";
}

TEST_F(OwnershipGuide, AListenerMayDestroyTheMeter) {
    auto* const meter = show(new Meter(GlobCreationInfo(50, 20)));
    meter->setListener([&](double) { destroy(meter); });
    meter->setLevel(0.5);
    EXPECT_FALSE(is_good_glob_ptr(meter));
}

TEST_F(OwnershipGuide, AWidgetOutlivesItsServer) {
    auto volume = std::make_unique<ValServer<double>>(0.25);
    auto* const slider = static_cast<Slider*>(show(new VolumePanel(*volume))->firstChild());
    slider->claimKbdFocus();
    expectDiagnostic("message not handled");
    driver_.key(Key::end);
    EXPECT_EQ(volume->value(), 1.0);
    volume.reset();
    driver_.key(Key::home);
    EXPECT_EQ(slider->getWidgetValue(), 1.0);
}

/// Its name has it tried under the thread sanitizer.
class ThreadGuide : public WidgetTest {};

TEST_F(ThreadGuide, ReportsComeInOrderAndNotToTheDead) {
    auto* const progress = show(new Progress);
    progress->finish();
    driver_.settle();
    EXPECT_EQ(progress->percent(), 100);
    destroy(new Progress);
    driver_.settle();
}

} // namespace
} // namespace wainscot
