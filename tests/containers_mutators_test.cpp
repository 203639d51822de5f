#include "tests/controls.h"
#include "tests/host_fixture.h"

#include "buttons/radio_set.h"
#include "host/objects/glob_notices.h"

namespace wainscot {
namespace {

Glob* makePanel() {
    auto* const panel = new StandardPanel({200, 120});
    panel->addStandardWidgets(StandardPanel::closeWidget | StandardPanel::settingsWidget);
    panel->addChild(new Button(L"x", "x", 40, 20), UserTopLeft(0, 0));
    panel->setTitle(L"title");
    return panel;
}

template <class T>
std::function<void(Glob&)> on(void (*act)(T&)) {
    return [act](Glob& glob) { act(static_cast<T&>(glob)); };
}

struct Row {
    std::function<Glob*()> make;
    /// What lays it out.
    std::vector<std::function<void(Glob&)>> acts;
};

Row const rows[] = {
    {[] {
         return new RadioSet(RadioSet::InitArgs({L"a", L"b"}, 80, 20));
     },
     {[](Glob& glob) { glob.resize(120, 30); },
      [](Glob& glob) {
          glob.reshapeAndDraw({120, 30});
      }}},
    {[] {
         return newSet({L"a", L"b"});
     },
     {[](Glob& glob) { glob.resize(120, 30); }}},
    {[] { return newBar(eHorizontal, {}, false, true); }, {[](Glob& glob) { glob.resize(120, 30); }}},
    {[] { return newSlider(0); }, {[](Glob& glob) { glob.resize(120, 30); }}},
    {makePanel,
     {[](Glob& glob) { glob.resize(120, 100); },
      [](Glob& glob) {
          glob.reshapeWidgetAt(glob.lastChild(), {5, 5}, {9, 9});
      },
      [](Glob& glob) {
          glob.parent()->reshapeWidgetAt(&glob, {5, 5}, {90, 90});
      },
      on<StandardPanel>([](StandardPanel& panel) { panel.setTitle(UIString()); }),
      on<StandardPanel>([](StandardPanel& panel) { panel.setBorderStyle(Border::window); }),
      on<StandardPanel>([](StandardPanel& panel) { panel.addStandardWidgets(StandardPanel::sizeWidget); }),
      on<StandardPanel>(
          [](StandardPanel& panel) { panel.removeStandardWidgets(StandardPanel::closeWidget); }),
      on<StandardPanel>([](StandardPanel& panel) { panel.setMinimised(true); })}},
};

using Mutators = OneWindowTest;

/// A listener of moves destroys the widget, or the moving part. From outside any handler, so that only the
/// call itself keeps the memory.
TEST_F(Mutators, MayLoseTheWidgetOrItsPartsInTheMiddle) {
    int killed = 0;
    for (bool const all : {true, false}) {
        for (Row const& row : rows) {
            for (auto const& act : row.acts) {
                bool isOver = false;
                for (int after = 0; !isOver; ++after) {
                    Glob* const widget = addTo(root_, row.make());
                    std::vector<NotifierSubscription> watches;
                    int left = after;
                    widget->visitSubtree([&](Glob& moving) {
                        auto const kill = [&, part = &moving](NotifyMsg const&) {
                            if (left-- == 0) destroy(all ? widget : part);
                            return 0;
                        };
                        watches.push_back(
                            GlobNotices::watchMoves(moving, makeCallback<int, NotifyMsg>(kill)));
                        return true;
                    });
                    act(*widget);
                    isOver = left >= 0;
                    killed += isOver ? 0 : 1;
                    watches.clear();
                    destroy(widget);
                }
            }
        }
    }
    EXPECT_GT(killed, 50);
}

} // namespace
} // namespace wainscot
