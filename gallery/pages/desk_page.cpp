#include "gallery/pages/levels_panel.h"
#include "gallery/pages/timeline_panel.h"

#include "buttons/checkbox.h"
#include "buttons/radio_set.h"
#include "containers/slider.h"
#include "foundation/form_layout.h"
#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/services/clock.h"

#include <star_rating.h>

namespace wainscot::gallery {

namespace {

/// Milliseconds from picture to picture while it plays.
constexpr int playStep = 40;
constexpr double firstTrack = 3;
constexpr double tracksInSight = 5;
/// In heights of a button: what stands in them can be read.
constexpr XY<int> leastTimeline{-1, 10};
constexpr XY<int> leastLevels{12, -1};
constexpr XY<int> leastSet{5, -1};
/// From this size of text on, panels stand below each other.
constexpr double largeText = 1.4;
/// How the height is shared.
constexpr int timelineShare = 3;
constexpr int lowerShare = 2;

/// A timeline that plays.
class PlayingTimeline final : public TimelinePanel {
public:
    PlayingTimeline(XY<int> size, LogLine log) : TimelinePanel(size, std::move(log)) {
        play_ = addTool(L"Play", playMsg, L"Lets the playhead go on");
        play_->setLatching(true, false);
        play_->setSecondString(L"Stop");
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (sender != play_) return TimelinePanel::handleMessageEvent(name, sender);
        bool const plays = play_->isDown();
        if (plays)
            begin();
        else
            clearInterest(EventKind::timer);
        say(plays ? L"plays" : L"stops");
        return 1;
    }
    int handleTimerEvent() override {
        double const now = service_get_msecs();
        double const to = view().playhead() + (now - last_) / 1000;
        last_ = now;
        setNextTimer(playStep);
        LifeGuard const life = guard();
        view().follow(to);
        if (life.alive() && to >= TimelineModel::duration) {
            clearInterest(EventKind::timer);
            play_->setState(buttonUp, eRedrawYes);
        }
        return 1;
    }

private:
    static constexpr LightweightString<char> playMsg{"play"};

    void begin() {
        last_ = service_get_msecs();
        setInterest(EventKind::timer);
        setNextTimer(playStep);
    }

    Button* play_;
    double last_ = 0;
};

/// The settings of what is edited.
class SequencePanel final : public StandardPanel {
public:
    SequencePanel(TimelineView& view, LogLine log)
        : StandardPanel(InitArgs(1, 1, Border(Border::group))), view_(&view), log_(std::move(log)) {
        setTitle(L"Sequence");
        setTabGoesOn(true);
        auto form = std::make_unique<FormLayout>();
        addSet(*form, L"Frame rate", {L"24", L"25", L"30", L"50"}, 1);
        addSet(*form, L"Aspect", {L"16:9", L"4:3", L"1:1"}, 0);
        waves_ = form->addRow(L"Show", std::make_unique<Checkbox>(Checkbox::InitArgs(L"Wave forms", true)));
        addTabStop(*waves_);
        Slider::InitArgs args(toSize16(5 * UifStd::getButtonHeight()));
        args.minimum = 2;
        args.maximum = view.model().numTracks();
        args.value = view.tracks().length;
        tracks_ = form->addRow(L"Tracks in sight", std::make_unique<Slider>(args));
        addTabStop(*tracks_);
        GlobCreationInfo info(XY<int>(1, 1));
        info.opaque = false;
        rating_ = form->addRow(
            L"Rating", std::make_unique<example::StarRating>(info),
            {.horizontal = LayoutAlign::start, .size = {5, 1}, .unit = LayoutUnit::buttonHeight});
        int stars = 4;
        rating_->setNewWidgetValue(stars, eRedrawNo);
        addTabStop(*rating_);
        setLayout(std::move(form));
    }
    int handleDataMessageEvent(LightweightString<char> name, Glob* sender, Qv::Ptr<iObject> data) override {
        int const* const stars = unwrapData<int>(data);
        if (sender != rating_ || !stars) return StandardPanel::handleDataMessageEvent(name, sender, data);
        log_(fromUTF8(name) + L"  " + Qv::WStringFromInteger(*stars));
        return 1;
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == pootMsg) return StandardPanel::handleMessageEvent(name, sender);
        auto* const set = dynamic_cast<RadioSet*>(sender);
        if (set && set->getSelectedItem() >= 0)
            log_(fromUTF8(set->name()) + L"  " + set->getButton(set->getSelectedItem())->getWidgetValue());
        if (sender == waves_) view_->showWaves(waves_->isTicked());
        if (sender == tracks_) view_->setTracks({view_->tracks().from, tracks_->getWidgetValue()});
        if (!set) log_(fromUTF8(name));
        return 1;
    }

private:
    void addSet(FormLayout& form, wchar_t const* label, Vector<LightweightString<wchar_t>> const& choices,
                int chosen) {
        RadioSet* const set = form.addRow(
            UIString(label), std::make_unique<RadioSet>(RadioSet::InitArgs(choices)),
            {.horizontal = LayoutAlign::start, .minimum = leastSet, .unit = LayoutUnit::buttonHeight});
        set->setName(toUTF8(label));
        set->setSelectedItem(chosen);
        addTabStopsFrom(set);
    }

    example::StarRating* rating_;
    TimelineView* view_;
    Checkbox* waves_;
    Slider* tracks_;
    LogLine log_;
};

/// A small editing desk. Its parts work on each other.
class DeskPage final : public StandardPanel {
public:
    DeskPage(XY<int> size, LogLine log) : StandardPanel(size) {
        auto layout = BoxLayout::makeColumn();
        layout->setMargins(0);
        auto* const timeline = layout->add(
            std::make_unique<PlayingTimeline>(XY<int>(1, 1), log),
            {.stretch = timelineShare, .minimum = leastTimeline, .unit = LayoutUnit::buttonHeight});
        lower_ = layout->add(std::make_unique<GridLayout>(), {.stretch = lowerShare});
        lower_->setRowStretch(0, 1);
        lower_->setMargins({.left = UifStd::getWidgetGap(),
                            .bottom = UifStd::getWidgetGap(),
                            .right = UifStd::getWidgetGap()});
        // Sound and its wave forms are to be seen at once.
        timeline->view().setTracks({firstTrack, tracksInSight});
        auto* const levels =
            lower_->add(std::make_unique<LevelsPanel>(log), {},
                        {.stretch = 1, .minimum = leastLevels, .unit = LayoutUnit::buttonHeight});
        sequence_ = lower_->add(std::make_unique<SequencePanel>(timeline->view(), log), sequenceCell(),
                                {.stretch = 1});
        timeline->setPlayheadMoved([timeline, levels] { levels->setTime(timeline->view().playhead()); });
        setLayout(std::move(layout));
    }

    void handleLookChange(LookChange changes) override {
        lower_->remove(*sequence_);
        lower_->add(*sequence_, sequenceCell(), {.stretch = 1});
        StandardPanel::handleLookChange(changes);
    }

private:
    /// Beside the levels; below them where large texts leave no room there.
    static GridCell sequenceCell() {
        return UifStd::getScale() < largeText ? GridCell{.column = 1} : GridCell{.row = 1};
    }

    GridLayout* lower_ = nullptr;
    SequencePanel* sequence_ = nullptr;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<DeskPage>(size, std::move(log));
}

} // namespace

extern Page const deskPage = {"desk",
                              L"Editing desk",
                              PageGroup::showcase,
                              L"A timeline, levels and settings, made of the controls of the other pages.",
                              "gallery/pages/desk_page.cpp",
                              make};

} // namespace wainscot::gallery
