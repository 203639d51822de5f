#pragma once

#include "tests/host_fixture.h"

#include "foundation/standard_panel.h"
#include "host/drawing/uif_std.h"
#include "host/events/event.h"

#include <map>

namespace wainscot {

namespace PanelMetrics {
constexpr int B = 24, I = 4, edge = 4; // the standard ones
}

/// A panel that records what it hears, answers as the test says, and can die in each of its handlers.
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

/// A window in which panels are.
class PanelTest : public HostTest {
protected:
    PanelTest() { ProbePanel::died = 0; }

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

    /// It destroys itself when it hears that in the act.
    void expectDeath(char const* heard, int flags, std::function<void(ProbePanel*)> const& act) {
        ProbePanel::died = 0;
        ProbePanel* const panel = add(Border::window, flags);
        panel->setMovable(true);
        panel->setMinimisable(true);
        panel->dieAt = heard;
        act(panel);
        EXPECT_EQ(ProbePanel::died, 1) << heard;
    }

    RecordingParent* const root_ = openWindow(500, 400);
};

/// The corner of a child from the upper right corner of its panel.
inline XY<int> fromTopRight(Glob const* child) {
    return {child->parent()->width() - child->box().x2, child->parent()->height() - child->box().y2};
}

} // namespace wainscot
