#include "tests/host_fixture.h"

#include "buttons/button.h"
#include "buttons/checkbox.h"
#include "buttons/radio_set.h"
#include "containers/slider.h"
#include "foundation/form_layout.h"
#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "host/windows/look.h"

#include <clip_form.h>
#include <random>
#include <stdexcept>

namespace wainscot {
namespace {

/// Counts how often it was given a box.
class Plain : public Glob {
public:
    explicit Plain(XY<int> size) : Glob(toSize16(size.x), toSize16(size.y)) {}
    void reshape() override {
        ++reshaped;
        Glob::reshape();
        if (onReshape) onReshape();
    }
    int reshaped = 0;
    std::function<void()> onReshape;
};

class LayoutTest : public HostTest {
protected:
    ~LayoutTest() override { UifStd::setRightToLeft(false); }

    StandardPanel* openPanel(int width = 400, int height = 300) {
        auto* panel = new StandardPanel(XY<int>{width, height});
        EXPECT_TRUE(host_->globManager().realize(panel));
        return panel;
    }
    static std::vector<IntBox> boxes(Glob const& panel) {
        std::vector<IntBox> found;
        for (Glob const* child = panel.firstChild(); child; child = child->nextSibling())
            found.push_back(child->box());
        return found;
    }
    static std::unique_ptr<Button> button(wchar_t const* text) {
        return std::make_unique<Button>(Button::InitArgs(text, "b"));
    }
};

TEST_F(LayoutTest, aFormPlacesLabelsAndControlsAndRelatesThem) {
    StandardPanel* const panel = openPanel(400, 300);
    auto* const form = panel->setLayout(std::make_unique<FormLayout>());
    auto* const first = form->addRow(L"Name", button(L"Choose"));
    auto* const second = form->addRow(L"A longer name", button(L"Choose"));
    driver_.settle();
    int const gap = UifStd::getWidgetGap();
    int const labels = Label(L"A longer name").width();
    int const height = UifStd::getButtonHeight();
    EXPECT_EQ(form->labelOf(1)->box(),
              IntBox::sized({gap, 300 - gap - 2 * height - UifStd::getRowGap()}, {labels, height}));
    EXPECT_EQ(first->box(), makeBox({gap + labels + gap, 300 - gap - height}, {400 - gap, 300 - gap}));
    EXPECT_EQ(second->box().x1, first->box().x1);
    EXPECT_EQ(first->getLabelledBy(), form->labelOf(0));
    EXPECT_EQ(GlobDescription::of(*form->labelOf(0)).role, Role::label);
    driver_.press(form->labelOf(1));
    EXPECT_EQ(get_kbd_focus(), second);
}

TEST_F(LayoutTest, equalColumnsAreAsWideAsTheWidestAndAsWhatLiesOverSeveral) {
    StandardPanel* const panel = openPanel(600, 300);
    auto* const grid = panel->setLayout(std::make_unique<GridLayout>());
    auto* const narrow = grid->add(std::make_unique<Plain>(XY<int>{20, 10}), {0, 0});
    auto* const wide = grid->add(std::make_unique<Plain>(XY<int>{70, 10}), {0, 1});
    driver_.settle();
    EXPECT_EQ(narrow->width(), 20);
    grid->setEqualColumns(true);
    driver_.settle();
    EXPECT_EQ(narrow->width(), 70);
    EXPECT_EQ(wide->box().x1, narrow->box().x2 + UifStd::getWidgetGap());
    auto* const over = grid->add(std::make_unique<Plain>(XY<int>{380, 10}), {.row = 1, .columns = 3});
    driver_.settle();
    EXPECT_EQ(narrow->width(), wide->width());
    EXPECT_GE(over->width(), 380) << "over a column in which nothing else lies";
    EXPECT_LE(over->width(), 382);
    grid->setGaps(0, 0);
    destroy(narrow);
    destroy(wide);
    driver_.settle();
    EXPECT_EQ(over->width(), 3 * 127) << "alone";
    Glob* const few = grid->add(std::make_unique<Plain>(XY<int>(10, 10)), {.row = 2});
    driver_.settle();
    EXPECT_EQ(few->width(), 127);
}

TEST_F(LayoutTest, theFormOfTheGuideFitsItsWindow) {
    auto* const form = new example::ClipForm;
    ASSERT_TRUE(host_->globManager().realize(form));
    driver_.settle();
    int const gap = UifStd::getWidgetGap();
    EXPECT_GE(form->speed->width(), 200);
    EXPECT_EQ(form->ok->box().topRight().x, form->width() - gap);
    EXPECT_EQ(form->ok->box().y1, gap);
    EXPECT_EQ(GlobDescription::of(*form->loop).name, L"At the end Begin again");
    form->loop->setString(L"Begin again, and again, and again, as long as nobody ends it");
    driver_.settle();
    EXPECT_GE(form->loop->width(), form->loop->sizeNeeds().natural.x);
    EXPECT_TRUE(form->bounds().contains(form->loop->box()));
}

// Random trees of rows and columns, against sums and largest values.
struct Tree {
    BoxLayout* layout = nullptr;
    XY<int> natural;
};

class RandomTrees : public LayoutTest {
protected:
    int upTo(int most) { return std::uniform_int_distribution<>(0, most)(random_); }

    Tree grow(std::unique_ptr<BoxLayout> made, int depth, bool isRow) {
        Tree tree{made.get(), {}};
        held_.push_back(std::move(made));
        int const count = 1 + upTo(4);
        for (int i = 0; i < count; ++i) {
            LayoutOptions const options{.stretch = upTo(2)};
            XY<int> size{1 + upTo(60), 1 + upTo(40)};
            if (depth > 0 && upTo(2) == 0) {
                Tree const inner =
                    grow(std::make_unique<BoxLayout>(isRow ? BoxLayout::column : BoxLayout::row), depth - 1,
                         !isRow);
                size = inner.natural;
                tree.layout->add(std::move(held_.back()), options);
                held_.pop_back();
            } else {
                tree.layout->add(std::make_unique<Plain>(size), options);
            }
            int const gap = i == 0 ? 0 : isRow ? UifStd::getWidgetGap() : UifStd::getRowGap();
            if (isRow)
                tree.natural = {tree.natural.x + gap + size.x, std::max(tree.natural.y, size.y)};
            else
                tree.natural = {std::max(tree.natural.x, size.x), tree.natural.y + gap + size.y};
        }
        return tree;
    }

    std::mt19937 random_{7};
    std::vector<std::unique_ptr<BoxLayout>> held_;
};

TEST_F(RandomTrees, fitWithoutOverlapAndAreMirrored) {
    for (int round = 0; round < 60; ++round) {
        UifStd::setRightToLeft(false);
        StandardPanel* const panel = openPanel(10, 10);
        bool const isRow = round % 2 == 0;
        Tree const tree =
            grow(std::make_unique<BoxLayout>(isRow ? BoxLayout::row : BoxLayout::column), 4, isRow);
        std::vector<XY<int>> made;
        panel->setLayout(std::move(held_.back()));
        held_.pop_back();
        for (Glob* child = panel->firstChild(); child; child = child->nextSibling())
            made.push_back(child->size());
        int const edge = 2 * UifStd::getWidgetGap();
        ASSERT_EQ(tree.layout->naturalSize(), tree.natural + XY<int>(edge, edge));
        sizeToLayout(*panel);
        EXPECT_EQ(panel->size(), tree.layout->naturalSize());
        for (int step = 0; step < 2; ++step) {
            std::vector<IntBox> const placed = boxes(*panel);
            IntBox const inside = panel->bounds().inset(UifStd::getWidgetGap());
            for (std::size_t i = 0; i < placed.size(); ++i) {
                EXPECT_TRUE(inside.contains(placed[i]));
                EXPECT_GE(placed[i].width(), made[i].x);
                EXPECT_GE(placed[i].height(), made[i].y);
                for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(placed[i].intersects(placed[k]));
            }
            UifStd::setRightToLeft(true);
            tree.layout->layOutNow();
            std::vector<IntBox> const mirrored = boxes(*panel);
            for (std::size_t i = 0; i < placed.size(); ++i)
                EXPECT_EQ(mirrored[i], IntBox(panel->width() - placed[i].x2, placed[i].y1,
                                              panel->width() - placed[i].x1, placed[i].y2));
            UifStd::setRightToLeft(false);
            panel->resize(panel->width() + upTo(200), panel->height() + upTo(200));
            driver_.settle();
        }
        destroy(panel);
    }
}

TEST_F(LayoutTest, roomIsSharedByStretchAndMissingRoomByWhatCanGiveWay) {
    struct Row {
        int width;
        std::array<int, 3> expected;
    };
    // Natural sizes 50, 60, 70; the second one stretches once, the third one twice up to 100 pixels. The
    // first one may shrink to 30.
    for (Row const& row : {Row{180, {50, 60, 70}}, Row{210, {50, 70, 90}}, Row{300, {50, 150, 100}},
                           Row{170, {40, 60, 70}}, Row{100, {30, 60, 70}}}) {
        StandardPanel* const panel = openPanel(row.width, 40);
        auto* const box = panel->setLayout(BoxLayout::makeRow());
        box->setMargins(0);
        box->setGaps(0, 0);
        box->add(std::make_unique<Plain>(XY<int>(50, 20)), {.minimum = {30, -1}});
        box->add(std::make_unique<Plain>(XY<int>(60, 20)), {.stretch = 1});
        box->add(std::make_unique<Plain>(XY<int>(70, 20)), {.stretch = 2, .maximum = {100, -1}});
        driver_.settle();
        std::vector<IntBox> const placed = boxes(*panel);
        int at = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(placed[i], IntBox(at, 0, at + row.expected[i], 40)) << row.width << " " << i;
            at += row.expected[i];
        }
        destroy(panel);
    }
}

TEST_F(LayoutTest, aTitleHasItsRoomAboveLinesThatWrap) {
    StandardPanel* const panel = openPanel(200, 400);
    auto* const column = panel->setLayout(BoxLayout::makeColumn());
    auto inner = std::make_unique<StandardPanel>(XY<int>{10, 10});
    inner->setTitle(L"Title");
    Label::InitArgs text(L"Some words that need several lines where there is little room for them");
    text.wraps = true;
    Label* const label = inner->setLayout(BoxLayout::makeColumn())->add(std::make_unique<Label>(text));
    StandardPanel* const titled = column->add(std::move(inner));
    driver_.settle();
    EXPECT_EQ(titled->height(), titled->heightForWidth(titled->width()));
    EXPECT_EQ(label->height(), label->heightForWidth(label->width()));
    EXPECT_TRUE(titled->getUserArea().contains(label->box()));
}

TEST_F(LayoutTest, whatLiesOverSeveralColumnsWidensTheOneThatStretches) {
    StandardPanel* const panel = openPanel(10, 10);
    auto* const grid = panel->setLayout(std::make_unique<GridLayout>());
    grid->setMargins(0);
    grid->setGaps(0, 0);
    grid->setColumnStretch(0, 1);
    Glob* const first = grid->add(std::make_unique<Plain>(XY<int>(20, 10)), {.row = 1});
    Glob* const second = grid->add(std::make_unique<Plain>(XY<int>(20, 10)), {.row = 1, .column = 1});
    grid->add(std::make_unique<Plain>(XY<int>(100, 10)), {.columns = 2});
    sizeToLayout(*panel);
    driver_.settle();
    EXPECT_EQ(first->width() + second->width(), panel->width());
    EXPECT_EQ(second->width(), 20);
}

TEST_F(LayoutTest, aGridAlignsAndSpansAndLeavesOutWhatIsHidden) {
    StandardPanel* const panel = openPanel(300, 200);
    auto* const grid = panel->setLayout(std::make_unique<GridLayout>());
    grid->setMargins(0);
    grid->setGaps(10, 10);
    auto const add = [&](XY<int> size, GridCell cell, LayoutOptions options = {}) {
        return grid->add(std::make_unique<Plain>(size), cell, options);
    };
    Glob* const wide = add({200, 20}, {.columns = 3});
    Glob* const left =
        add({40, 30}, {.row = 1}, {.horizontal = LayoutAlign::end, .vertical = LayoutAlign::end});
    Glob* const middle = add({50, 50}, {.row = 1, .column = 1}, {.vertical = LayoutAlign::centre});
    Glob* const right = add({60, 20}, {.row = 1, .column = 2}, {.vertical = LayoutAlign::start});
    add({70, 20}, {.row = 2});
    EXPECT_EQ(grid->naturalSize(), XY<int>(200, 110));
    driver_.settle();
    EXPECT_EQ(wide->box(), IntBox(0, 180, 200, 200));
    EXPECT_EQ(left->box(), IntBox(30, 120, 70, 150));
    EXPECT_EQ(middle->box(), IntBox(80, 120, 130, 170));
    EXPECT_EQ(right->box(), IntBox(140, 150, 200, 170));
    middle->setVisible(false);
    EXPECT_EQ(grid->naturalSize(), XY<int>(200, 90));
    driver_.settle();
    EXPECT_EQ(left->box(), IntBox(30, 140, 70, 170));
    destroy(wide);
    destroy(right);
    driver_.settle();
    EXPECT_EQ(left->box().y2, 200);
    EXPECT_EQ(grid->numItems(), 3u);
    EXPECT_EQ(grid->naturalSize(), XY<int>(70, 60));
    auto* const row = grid->add(BoxLayout::makeRow(), {.row = 3});
    EXPECT_TRUE(row->add(std::make_unique<Plain>(XY<int>(90, 20))));
    EXPECT_EQ(grid->naturalSize(), XY<int>(90, 90));
    EXPECT_TRUE(grid->setOptions(*row, {.size = {120, -1}}));
    EXPECT_EQ(grid->naturalSize(), XY<int>(120, 90));
    EXPECT_TRUE(grid->remove(*row));
    EXPECT_TRUE(grid->remove(*left));
    EXPECT_EQ(grid->naturalSize(), XY<int>(70, 20));
    EXPECT_EQ(panel->numChildren(), 4u);
}

TEST_F(LayoutTest, itIsDoneOnceInATurnAndTouchesOnlyWhatChanges) {
    StandardPanel* const panel = openPanel(400, 300);
    auto* const column = panel->setLayout(BoxLayout::makeColumn());
    auto* const inner = column->add(std::make_unique<StandardPanel>(XY<int>(50, 50)));
    auto* const row = inner->setLayout(BoxLayout::makeRow());
    Plain* const fixed = row->add(std::make_unique<Plain>(XY<int>(30, 20)));
    Button* const changing = row->add(button(L"short"));
    Plain* const last = column->add(std::make_unique<Plain>(XY<int>(30, 20)), {.stretch = 1});
    driver_.settle();
    std::uint64_t const before = column->numLayouts();
    EXPECT_EQ(before, 1u);
    int const reshaped = last->reshaped + fixed->reshaped;
    changing->setString(L"somewhat longer");
    changing->setString(L"much longer than it was before");
    driver_.settle();
    EXPECT_EQ(changing->width(), Button::calcSizeFor(changing->getString(), changing->getFont()).x);
    EXPECT_EQ(column->numLayouts(), before + 1);
    EXPECT_EQ(last->reshaped + fixed->reshaped, reshaped);
    fixed->setMinSize(60, 20);
    changing->setString(L"short");
    driver_.settle();
    EXPECT_EQ(fixed->width(), 60);
    EXPECT_EQ(changing->width(), Button::calcSizeFor(changing->getString(), changing->getFont()).x);
    for (int i = 1; i <= 20; ++i) panel->resize(400 + i, 300 + i);
    driver_.settle();
    EXPECT_EQ(column->numLayouts(), before + 3);
    EXPECT_EQ(last->height(), 320 - 2 * UifStd::getWidgetGap() - UifStd::getRowGap() - inner->height());
    fixed->setMinSize(70, 20);
    fixed->resize(90, 20);
    driver_.settle();
    EXPECT_EQ(fixed->width(), 90);
}

TEST_F(LayoutTest, sizesInHeightsOfAButtonFollowTheTextSize) {
    StandardPanel* const panel = openPanel(900, 700);
    auto* const row = panel->setLayout(BoxLayout::makeRow());
    LayoutOptions options{
        .size = {5, 3}, .minimum = {2, -1}, .maximum = {-1, 2}, .unit = LayoutUnit::buttonHeight};
    Glob* const item = row->add(std::make_unique<Plain>(XY<int>(10, 10)), options);
    for (double const size : {1.0, 2.0}) {
        Look::setSize(size);
        driver_.settle();
        int const unit = UifStd::getButtonHeight();
        EXPECT_EQ(item->size(), XY<int>(5 * unit, 2 * unit));
        EXPECT_EQ(row->minimumSize().x, 2 * unit + 2 * UifStd::getWidgetGap());
    }
    options.maximum = {1 << 30, 1 << 30};
    row->setOptions(*item, options);
    EXPECT_EQ(row->naturalSize().y, 3 * UifStd::getButtonHeight() + 2 * UifStd::getWidgetGap());
    Look::setSize(1);
}

// Every size of text and screen, both ways to read: nothing cut, nothing on top of the other.
TEST_F(LayoutTest, formsGrowWithTheirTexts) {
    auto* const panel = new StandardPanel(XY<int>{10, 10});
    auto* const form = panel->setLayout(std::make_unique<FormLayout>());
    form->setGrowsPanel(true);
    form->addHeading(L"Ausgabe");
    form->addRow(L"Bildwiederholfrequenz", button(L"Aus der Aufnahme \u00fcbernehmen"));
    form->addRow(L"Farbraum", std::make_unique<RadioSet>(RadioSet::InitArgs({L"Rec. 709", L"Rec. 2020"})));
    form->addRow(L"Lautst\u00e4rke", std::make_unique<Slider>(Slider::InitArgs(120)));
    Checkbox* const box =
        form->addRow(L"Ton", std::make_unique<Checkbox>(Checkbox::InitArgs(L"Stereo zusammenmischen")));
    Label::InitArgs note(L"Ein langer Hinweis, der in mehreren Zeilen unter dem Formular steht und ganz zu "
                         L"lesen ist, wie breit das Fenster auch sein mag.",
                         Label::Part::secondary);
    note.wraps = true;
    Label* const wrapped = form->add(std::make_unique<Label>(note), {.row = form->nextRow(), .columns = 2});
    sizeToLayout(*panel);
    ASSERT_TRUE(host_->globManager().realize(panel));
    for (double size : {1.0, 2.0, 0.75, 1.5}) {
        for (double scale : {1.0, 1.5}) {
            Look::setSize(size);
            Look::setDeviceScale(scale);
            box->setString(size > 1 ? L"Mono" : L"Stereo zusammenmischen, wenn es leise ist");
            driver_.settle();
            std::vector<IntBox> const placed = boxes(*panel);
            std::size_t i = 0;
            for (Glob* child = panel->firstChild(); child; child = child->nextSibling(), ++i) {
                SizeNeeds const needs = child->sizeNeeds();
                EXPECT_GE(child->width(), child == wrapped ? 0 : needs.natural.x);
                EXPECT_GE(child->height(),
                          child == wrapped ? child->heightForWidth(child->width()) : needs.natural.y);
                EXPECT_TRUE(panel->bounds().contains(placed[i]));
                for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(placed[i].intersects(placed[k]));
            }
        }
    }
    Look::setSize(1);
    int const edges = 2 * UifStd::getWidgetGap();
    int const narrow = form->minimumSize().x;
    int const lines = wrapped->heightForWidth(narrow - edges);
    int const line = wrapped->heightForWidth(4000);
    EXPECT_GT(lines, line);
    EXPECT_EQ(form->heightForWidth(narrow) - form->heightForWidth(4000), lines - line);
}

// Bad input

TEST_F(LayoutTest, whatCannotBeAnItemIsRefused) {
    expectDiagnostic("layout item refused");
    expectDiagnostic("layout refused");
    StandardPanel* const panel = openPanel();
    auto* const grid = panel->setLayout(std::make_unique<GridLayout>());
    Glob* const child = grid->add(std::make_unique<Plain>(XY<int>(10, 10)), {});
    EXPECT_FALSE(grid->add(*child, {.row = 1}));
    EXPECT_FALSE(grid->add(std::unique_ptr<Plain>(), {}));
    EXPECT_FALSE(grid->add(std::make_unique<Plain>(XY<int>(10, 10)), {.row = -1}));
    EXPECT_FALSE(grid->add(std::make_unique<Plain>(XY<int>(10, 10)), {.column = 65535}));
    EXPECT_TRUE(grid->add(std::make_unique<Plain>(XY<int>(10, 10)),
                          {.row = 65534, .column = 65534, .rows = 1 << 30, .columns = -4}));
    auto inner = BoxLayout::makeRow();
    EXPECT_TRUE(inner->add(*child));
    EXPECT_TRUE(grid->add(std::move(inner), {.row = 3}));
    EXPECT_FALSE(grid->setColumnStretch(-1, 1));
    driver_.settle();
    EXPECT_EQ(child->box().y2, panel->height() - UifStd::getWidgetGap());
    auto deep = BoxLayout::makeRow();
    bool added = true;
    for (int i = 0; i < Layout::maxDepth + 5; ++i) {
        auto outer = BoxLayout::makeRow();
        added = outer->add(std::move(deep)) && added;
        deep = std::move(outer);
    }
    EXPECT_FALSE(added);
    auto outside = BoxLayout::makeRow();
    auto* const inside = outside->add(BoxLayout::makeRow());
    EXPECT_EQ(inside->add(std::move(outside)), nullptr) << "a layout in itself";
}

TEST_F(LayoutTest, whatThrowsDoesNotKeepTheOthersFromTheirPlaces) {
    expectDiagnostic("exception in handler");
    class Throwing : public Plain {
    public:
        Throwing() : Plain({10, 10}) {}
        SizeNeeds sizeNeeds() const override {
            if (hook == 0) throw std::runtime_error("sizeNeeds");
            return {{10, 10}, {10, 10}, true};
        }
        int heightForWidth(int) const override {
            if (hook == 1) throw std::runtime_error("heightForWidth");
            return 10;
        }
        int hook = 0;
    };
    for (int hook = 0; hook < 3; ++hook) {
        StandardPanel* const panel = openPanel();
        auto* const column = panel->setLayout(BoxLayout::makeColumn());
        auto* const throwing = column->add(std::make_unique<Throwing>());
        throwing->hook = hook;
        if (hook == 2) throwing->onReshape = [] { throw std::runtime_error("reshape"); };
        Glob* const other = column->add(std::make_unique<Plain>(XY<int>(10, 30)));
        driver_.settle();
        EXPECT_EQ(other->size(), XY<int>(panel->width() - 2 * UifStd::getWidgetGap(), 30)) << hook;
        throwing->onReshape = {};
        panel->resize(500, 300);
        driver_.settle();
        EXPECT_EQ(other->size(), XY<int>(panel->width() - 2 * UifStd::getWidgetGap(), 30)) << hook;
        destroy(panel);
    }
}

TEST_F(LayoutTest, extremeSizesStayWithinTheirRange) {
    for (XY<int> window : {XY<int>(1, 1), XY<int>(0, 0), XY<int>(300, 200)}) {
        StandardPanel* const panel = openPanel(window.x, window.y);
        auto* const column = panel->setLayout(BoxLayout::makeColumn());
        EXPECT_EQ(column->naturalSize(), XY<int>(2 * UifStd::getWidgetGap(), 2 * UifStd::getWidgetGap()));
        driver_.settle();
        for (int size : {65535, 1 << 30, -5})
            for (int i = 0; i < 50; ++i)
                column->add(std::make_unique<Plain>(XY<int>(size, size)),
                            {.stretch = size, .size = {size, size}, .maximum = {-1, size}});
        column->setMargins(1 << 30);
        column->setGaps(1 << 30, 1 << 30);
        driver_.settle();
        EXPECT_EQ(column->naturalSize(), XY<int>(65535, 65535));
        for (IntBox const& box : boxes(*panel)) {
            EXPECT_GE(box.width(), 0);
            EXPECT_GE(box.height(), 0);
        }
        destroy(panel);
    }
}

TEST_F(LayoutTest, tenThousandChildrenAreAddedAndPlaced) {
    StandardPanel* const panel = openPanel();
    auto* const grid = panel->setLayout(std::make_unique<GridLayout>());
    grid->setGaps(0, 0);
    for (int i = 0; i < 10000; ++i)
        grid->add(std::make_unique<Plain>(XY<int>(3, 2)),
                  {.row = i, .column = i, .rows = 2, .columns = 65535});
    driver_.settle();
    int const edges = 2 * UifStd::getWidgetGap();
    EXPECT_EQ(grid->naturalSize().x, 3 + edges);
    EXPECT_GE(grid->naturalSize().y, 2 * 5000 + edges);
    EXPECT_EQ(panel->numChildren(), 10000u);
    EXPECT_EQ(grid->numLayouts(), 1u);
}

TEST_F(LayoutTest, panelsInPanelsAreMeasuredToALimit) {
    expectDiagnostic("layout nested too deep");
    StandardPanel* const outermost = openPanel(1000, 800);
    StandardPanel* panel = outermost;
    for (int i = 0; i < 300; ++i) {
        auto* const column = panel->setLayout(BoxLayout::makeColumn());
        column->setMargins(1);
        panel = column->add(std::make_unique<StandardPanel>(XY<int>(50, 20)));
    }
    driver_.settle();
    EXPECT_EQ(Diagnostics::countOf("layout not settled"), 0u);
    EXPECT_EQ(outermost->firstChild()->firstChild()->width(), outermost->width() - 4);
}

TEST_F(LayoutTest, aPanelThatGrowsStaysAsSmallAsTheUserMakesIt) {
    StandardPanel* const panel = openPanel(10, 10);
    auto* const row = panel->setLayout(BoxLayout::makeRow());
    row->setGrowsPanel(true);
    Button* const label = row->add(button(L"A label of some length"));
    driver_.settle();
    int const natural = row->naturalSize().x;
    EXPECT_EQ(panel->width(), natural);
    ASSERT_TRUE(driver_.resizeWindow(panel, {natural - 20, panel->height()}));
    driver_.settle();
    EXPECT_EQ(panel->width(), natural - 20);
    label->setString(L"A label that has become longer than it was");
    driver_.settle();
    EXPECT_EQ(panel->width(), row->naturalSize().x) << "what grows is shown";
}

TEST_F(LayoutTest, aChildThatNeverHasEnoughIsLeftAloneInTheEnd) {
    expectDiagnostic("layout not settled");
    class Greedy : public Glob {
    public:
        Greedy() : Glob(10, 10) {}
        SizeNeeds sizeNeeds() const override { return {{width() + 1, 10}}; }
        void reshape() override {
            Glob::reshape();
            needsChanged();
        }
    };
    StandardPanel* const panel = openPanel();
    panel->setLayout(BoxLayout::makeRow())->add(std::make_unique<Greedy>());
    driver_.settle();
    EXPECT_EQ(Diagnostics::countOf("layout not settled"), 1u);
    EXPECT_EQ(Diagnostics::countOf("not settled"), 0u);
}

} // namespace
} // namespace wainscot
