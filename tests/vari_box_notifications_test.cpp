#include "tests/sent_notifications.h"

#include "text/vari_box.h"
#include "text/vari_box_parser_basic.h"

namespace wainscot {
namespace {

class VariBoxNotifications : public SentNotifications {
protected:
    VariBox& box() { return *static_cast<VariBox*>(widget_); }
    VariBoxParserBasic<int>& parser() { return static_cast<VariBoxParserBasic<int>&>(*box().getParser()); }
    void dropListeners() override {
        parser().setDataAdaptor({});
        box().setCallback(WidgetCallback(""));
    }
    static VariBox* make() {
        auto* const box = new VariBox(VariBox::InitArgs({}, 100));
        auto* const parser = new VariBoxParserBasic<int>(box, nullptr, 0, 100, 1, 10, 50);
        parser->setDefaultValue(20);
        box->setParser(parser, true);
        return box;
    }

    std::function<void()> const move_ = [this] {
        XY<int> const way = widget_->globXYToScreenXY({60, 12});
        driver_.press(widget_);
        driver_.moveTo(way);
    };
    std::function<void()> const drag_ = [this] {
        move_();
        driver_.release();
    };
    std::function<void()> const takeBack_ = [this] {
        move_();
        driver_.key(Key::escape);
    };
    std::function<void()> const wheel_ = [this] { driver_.wheel(widget_, 1); };
    std::function<void()> const key_ = [this] {
        widget_->claimKbdFocus();
        driver_.key(Key::pageUp);
    };
    std::function<void()> const type_ = [this] {
        widget_->claimKbdFocus();
        driver_.type(L"7");
        driver_.key(Key::enter);
    };
    std::function<void()> const typeAndStep_ = [this] {
        widget_->claimKbdFocus();
        driver_.type(L"7");
        driver_.key(Key::up);
    };
    std::function<void()> const typeAndLeave_ = [this] {
        widget_->claimKbdFocus();
        driver_.type(L"7");
        root_->claimKbdFocus();
    };
    std::function<void()> const default_ = [this] { driver_.doubleClick(widget_); };
    std::function<void()> heard(std::function<void()> const& act) {
        return [this, act] {
            box().setCallback(WidgetCallback(reaction(), ""));
            act();
        };
    }
    std::function<void()> bound(std::function<void()> const& act) {
        return [this, act] {
            bind<int>(parser());
            act();
        };
    }
};

TEST_F(VariBoxNotifications, AnythingMayDieInEach) {
    constexpr char const* changed = "varibox_ValueChanged";
    constexpr char const* complete = "varibox_ChangeComplete";
    std::vector<Row> rows = {{"changed", changed, move_},   {"changed", changed, wheel_},
                             {"changed", changed, type_},   {"complete", complete, drag_},
                             {"complete", complete, key_},  {"complete", complete, takeBack_},
                             {"changed", changed, default_}};
    for (auto const& act : {wheel_, key_, type_, typeAndStep_, typeAndLeave_})
        for (int const passed : {0, 1}) rows.push_back({"callback", "", heard(act), passed});
    for (int const passed : {0, 1, 2}) rows.push_back({"callback", "", heard(takeBack_), passed});
    for (auto const& act : {wheel_, key_, type_, typeAndStep_, typeAndLeave_, default_})
        rows.push_back({"data", "", bound(act)});
    for (int const passed : {0, 1, 2}) rows.push_back({"data", "", bound(drag_), passed});
    for (int const passed : {0, 1, 2, 3}) rows.push_back({"data", "", bound(takeBack_), passed});
    runAll<VariBox>(rows, make);
}

/// The parser is replaced, or destroyed by its owner, in each call of the data.
TEST_F(VariBoxNotifications, TheParserMayGoInEach) {
    std::function<void()> const acts[] = {drag_, takeBack_, wheel_, key_, type_, typeAndStep_, default_};
    for (std::size_t act = 0; act < std::size(acts); ++act) {
        for (int const passed : {0, 1, 2, 3}) {
            for (bool const isOwned : {true, false}) {
                root_ = openWindow();
                root_->addChild(widget_ = make(), BottomLeft(20, 20));
                auto* const last = new VariBoxParserBasic<int>(nullptr, nullptr, 0, 100, 1, 10, 50);
                box().setParser(last, isOwned);
                driver_.settle();
                int left = passed;
                bool hasGone = false;
                last->setDataAdaptor(Qv::Ptr<ValAdaptorBase<int>>(new ReactingAdaptor<int>([&] {
                    if (hasGone || left-- > 0) return;
                    hasGone = true;
                    if (isOwned)
                        box().setParser(nullptr, false);
                    else
                        delete last;
                })));
                acts[act]();
                driver_.release();
                driver_.settle();
                EXPECT_EQ(box().getParser() == nullptr, hasGone) << act;
                EXPECT_FALSE(box().isDragging());
                if (!hasGone && !isOwned) delete last;
                destroy(root_);
                driver_.settle();
            }
        }
    }
}

} // namespace
} // namespace wainscot
