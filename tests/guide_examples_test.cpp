#include "tests/widget_fixture.h"

#include <counter_test.h>
#include <menus_examples.h>
#include <ownership_examples.h>
#include <table_examples.h>
#include <tabs_examples.h>
#include <text_entry_examples.h>
#include <text_lines_examples.h>
#include <tree_examples.h>
#include <value_box_examples.h>

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

/// What docs/text-entry.md shows.
TEST_F(OwnershipGuide, NotesAreToldAndChangesAreDrawn) {
    auto* const notes = show(new ClipNotes);
    driver_.key(Key::tab);
    driver_.type(L"a");
    driver_.key(Key::enter);
    driver_.key(Key::tab);
    driver_.settle();
    auto* const log = dynamic_cast<MultiLineTextBox*>(get_kbd_focus());
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(log->getText(), L"noted: a\n");
    destroy(notes);
    show(new Changes(MultiLineTextBox::InitArgs(100, 80, L"+new\n-gone\nas before")));
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

/// What docs/value-box.md shows.
TEST_F(OwnershipGuide, ValueBoxesShowWhatTheirParsersSay) {
    ValServer<double> opacity(0.5);
    auto* const layer = show(new LayerPanel(opacity));
    driver_.key(Key::tab);
    driver_.type(L"25%");
    driver_.key(Key::tab);
    EXPECT_EQ(opacity.value(), 0.25);
    driver_.type(L"240");
    driver_.key(Key::enter);
    driver_.settle();
    EXPECT_EQ(layer->getTitleW(), L"Blur 240");
    destroy(layer);
    auto* const box = show(new VariBox(VariBox::InitArgs()));
    box->setParser(new VariBoxParserBasic<double>(box, new ShutterDisplayer, 0, 10, 1, 3, 3), true);
    EXPECT_EQ(box->getText(), L"1/8");
    box->claimKbdFocus();
    driver_.type(L"1/64");
    driver_.key(Key::enter);
    driver_.key(Key::up);
    EXPECT_EQ(box->getText(), L"1/128");
    box->setParser(new SizeParser(box), true);
    driver_.type(L"20");
    driver_.key(Key::enter);
    EXPECT_EQ(box->getText(), L"24 pt");
    EXPECT_EQ(told(), "varibox_ValueChanged varibox_ChangeComplete varibox_ValueChanged "
                      "varibox_ChangeComplete varibox_ValueChanged varibox_ChangeComplete");
    auto const gain = Qv::makePtr<UndoableGain>();
    auto* const parser = new VariBoxParserBasic<double>(box, nullptr, 0, 10, 1, 3, 0);
    parser->bindTo(gain);
    box->setParser(parser, true);
    for (bool const isTakenBack : {false, true}) {
        driver_.press(box);
        XY<int> const centre = box->screenBox().centre();
        for (int const way : {3, 6, 9}) driver_.moveTo(centre + XY<int>(way, 0));
        EXPECT_EQ(gain->getDataValue(), isTakenBack ? 7 : 4);
        if (isTakenBack) driver_.key(Key::escape);
        driver_.release();
        EXPECT_EQ(gain->getDataValue(), 4);
    }
    gain->undo();
    EXPECT_EQ(box->getText(), L"1");
    gain->undo();
    EXPECT_EQ(box->getText(), L"1") << "all is undone";
}

/// What docs/table.md shows.
TEST_F(OwnershipGuide, ATableShowsItsTakes) {
    Takes takes;
    TableWidget::InitArgs args(200, 150);
    args.adaptor = &takes;
    auto* const table = show(new TableWidget(args));
    table->setTagFlags(TableTagFlag::useRows | TableTagFlag::allowMulti | TableTagFlag::windowsStyle);
    driver_.click(driver_.findItem(Role::row, L"close"));
    EXPECT_TRUE(takes.getTag(1));
    takes.add(L"cutaway");
    table->dataChanged({RowNotice::Kind::inserted, 3, 1, 0});
    driver_.key(Key::end);
    driver_.key(Key::shift | Key::down);
    EXPECT_EQ(takes.getNumTagged(), 2U);
    destroy(table);
}

/// What docs/tree.md shows.
TEST_F(OwnershipGuide, ATreeShowsItsScenes) {
    Scenes scenes;
    TreeView::InitArgs args(200, 150);
    args.adaptor = &scenes;
    auto* const tree = show(new TreeView(args));
    driver_.click(driver_.findItem(Role::treeItem, L"Night"));
    driver_.key(Key::right);
    EXPECT_EQ(tree->findItem(L"Night, close"), 3);
    destroy(tree);
}

/// What docs/tabs.md shows.
TEST_F(OwnershipGuide, TabsHaveTheirPagesWhenTheyAreAsked) {
    auto* const reels = show(new Reels);
    driver_.click(driver_.find(Role::tab, L"Reel 2"));
    EXPECT_TRUE(driver_.find(Role::label, L"Reel 2")->isShown());
    EXPECT_TRUE(reels->dialogue()->getPage(0));
    destroy(reels);
    auto* const settings = show(new Settings);
    EXPECT_EQ(settings->getCurrentTab(), 0);
    driver_.key(Key::tab);
    driver_.key(Key::right);
    driver_.key(Key::left);
    EXPECT_EQ(settings->numBuilt, 2);
}

using TextEntryGuide = WidgetTest;

TEST_F(TextEntryGuide, AFormHearsOfItsBoxAndSetsTheData) {
    ValServer<LightweightString<wchar_t>> name(L"Reel");
    auto* const form = show(new ClipEntry(name));
    driver_.key(Key::tab);
    driver_.type(L"a/b");
    EXPECT_EQ(form->getTitleW(), L"ab");
    EXPECT_EQ(name.value(), L"Reel");
    driver_.key(Key::enter);
    EXPECT_EQ(told(), "named");
    EXPECT_EQ(name.value(), L"ab");
}

TEST_F(TextEntryGuide, AReelIsWrittenInCapitals) {
    auto* const box = show(new ReelBox(TextBox::InitArgs(100)));
    box->claimKbdFocus();
    driver_.type(L"a0ß");
    EXPECT_EQ(box->getText(), L"A0ß");
}

TEST_F(TextEntryGuide, ALockTakesFourDigits) {
    auto* const lock = show(new DigitLock(GlobCreationInfo(100, 30)));
    lock->claimKbdFocus();
    driver_.type(L"1x2");
    driver_.key(Key::backspace);
    driver_.type(L"34");
    EXPECT_EQ(told(), "");
    driver_.type(L"56");
    EXPECT_EQ(told(), "complete");
    EXPECT_EQ(lock->digits(), L"1345");
    driver_.key(Key::ctrl | 'Z');
    EXPECT_EQ(lock->digits(), L"1");
}

/// What docs/menus.md shows.
using MenusGuide = WidgetTest;

TEST_F(MenusGuide, ItsMenusDoWhatTheySay) {
    Qv::Ptr<MenuData> const clip = clipMenu(L"a|b");
    EXPECT_EQ(clip->findItem(LightweightString<wchar_t>(L"a|b")), 0);
    EXPECT_FALSE(clip->isSelectable(clip->findItem("delete")));
    double speed = 0;
    MenuItem& item = clip->getItem(2);
    item.addCallback(WidgetCallback(Qv::makePtr<SpeedAction>([&](double set) { speed = set; }), "speed"));
    clip->issueCallback(2, root_, nullptr);
    EXPECT_EQ(speed, 0.5);
    item.setCurOption(3);
    clip->issueCallback(2, root_, nullptr);
    EXPECT_EQ(speed, 0.5);
    EXPECT_EQ(told(), "speed speed");

    FrameRates rates;
    EXPECT_TRUE(rates.setSelectedItemPhysical(1, false) && rates.setSelectedItemPhysical(3, true));
    EXPECT_EQ(rates.getSelectedItemNameW(), L"25");
    MenuItem const folder = folderItem(L"x").createSubMenu(*root_).items->getItem(1);
    EXPECT_EQ(folder.createSubMenu(*root_).items->getItem(0).label(), L"x/b/a");
    PlayerSettings const settings;
    EXPECT_EQ(settings.menu()->getItem(2).currentOption()->label(), L"Good");
    settings.menu()->issueCallback(1, nullptr, nullptr);
    EXPECT_TRUE(settings.loop->value());
    TrackList tracks;
    tracks.tracks = {L"V1", L"A1"};
    EXPECT_TRUE(!tracks.requestItemSelect(0) && tracks.requestItemSelect(1) && tracks.selected == 1);
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
