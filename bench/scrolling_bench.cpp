#include "bench/driving.h"
#include "containers/scroll_bar.h"
#include "containers/slider.h"
#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/uif_std.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"

#include <cmath>

/// Thumbs dragged with the pointer, with everything that follows: the bar alone, a bar that scrolls a list of
/// a thousand rows, and a slider.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr XY<int> windowSize{1200, 900};
constexpr int numSteps = 3000;
/// Pixels from one move of the pointer to the next.
constexpr int stride = 3;
constexpr int numRows = 1000;
constexpr int rowHeight = 24;
constexpr int stripeWidth = 8;

/// Rows of text behind a bar: draws those in sight.
class RowList final : public Glob {
public:
    RowList(int w, int h) : Glob(toSize16(w), toSize16(h)) {}

    int rowsInSight() const { return height() / rowHeight; }
    int top() const { return top_; }
    void setTop(int row) {
        if (row == top_) return;
        top_ = row;
        makeDirty();
    }
    /// Tells one row from the next.
    static Colour stripeColour(int row) {
        return Colour::fromLong(static_cast<std::uint32_t>(row) * 0x3F1D7u);
    }

    void draw() override {
        Palette const& palette = getPalette();
        IntBox const area = canvasArea();
        CanvasRenderer renderer(canvas(), area);
        renderer.renderPrimitive(Glib::RectDescription(area, palette.window(eWindowRecessed)));
        Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
        for (int i = 0; i <= rowsInSight() && top_ + i < numRows; ++i) drawRow(renderer, font, i);
    }

private:
    void drawRow(CanvasRenderer& renderer, Qv::Ptr<iFont> const& font, int line) {
        Palette const& palette = getPalette();
        IntBox const area = canvasArea();
        int const row = top_ + line;
        int const upper = area.y2 - line * rowHeight;
        IntBox const box(area.x1, upper - rowHeight, area.x2, upper);
        if (row % 2 != 0)
            renderer.renderPrimitive(Glib::RectDescription(box, palette.window(eWindowAlternate)));
        renderer.renderPrimitive(
            Glib::RectDescription({box.x1, box.y1, box.x1 + stripeWidth, box.y2}, stripeColour(row)));
        int const baseline = box.y1 + getFontYOffset(rowHeight, font);
        for (int column = 0; column < 4; ++column) {
            wchar_t text[32];
            std::swprintf(text, std::size(text), L"Row %d, column %d", row, column);
            renderer.renderPrimitive(Glib::TextDescription(
                text, {box.x1 + 2 * stripeWidth + column * 250, baseline}, font, palette.text(eTextEnabled)));
        }
    }

    int top_ = 0;
};

/// Owns what is dragged, and scrolls the list.
class Ground final : public Glob {
public:
    Ground() : Glob(toSize16(windowSize.x), toSize16(windowSize.y)) {}

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == ScrollBar::thumbMovedMsg || name.startsWith("slider ")) ++numMoves;
        auto const* const bar = dynamic_cast<ScrollBar const*>(sender);
        if (bar && list && name == ScrollBar::thumbMovedMsg)
            list->setTop(static_cast<int>(std::lround(bar->getThumbPos() * numRows)));
        return 1;
    }

    RowList* list = nullptr;
    int numMoves = 0;
};

class Bench {
public:
    explicit Bench(char const* workload)
        : report_(workload, numSteps), host_(makeHost()), ground_(new Ground) {}

    Ground& ground() { return *ground_; }

    void show() {
        host_->globManager().realize(ground_, XY<int>(0, 0));
        host_->loop().settle();
    }

    /// Drags the thumb of a widget to and fro. `thumb` tells its box, `isShown` whether the pixels are right.
    template <class W, class IsShown>
    void drag(W& widget, IsShown const& isShown) {
        inject(InputEvent::Kind::pointerMoved, place(widget, widget.getThumbArea().centre()));
        inject(InputEvent::Kind::pointerPressed, place_);
        bool const isVertical = widget.height() > widget.width();
        XY<int> way = isVertical ? XY<int>{0, -stride} : XY<int>{stride, 0};
        std::vector<double> times;
        for (int step = 0; step < numSteps; ++step) {
            IntBox const before = widget.getThumbArea();
            if (!leavesRoom(widget, before.translated(way))) way = {-way.x, -way.y};
            // The line that the thumb leaves: its edge before, its track afterwards.
            XY<int> const left = place(widget, trailingEdge(before, way));
            std::uint32_t const edge = pixelAt(*host_, ground_, left);
            times.push_back(inject(InputEvent::Kind::pointerMoved, place_ + way));
            check(widget.getThumbArea() != before, "the thumb did not move");
            check(pixelAt(*host_, ground_, left) != edge, "the thumb is still to be seen where it was");
            check(isShown(), "what is painted is wrong");
        }
        inject(InputEvent::Kind::pointerReleased, place_);
        check(ground_->numMoves == numSteps, "a message is missing");
        report_.addSteps("drag_repaint_us", times);
        finish();
    }

    std::uint32_t pixelOf(Glob const& widget, XY<int> inWidget) {
        return pixelAt(*host_, ground_, place(widget, inWidget)) & 0xFFFFFF;
    }

private:
    static XY<int> place(Glob const& widget, XY<int> inWidget) { return widget.globXYToScreenXY(inWidget); }
    /// A margin at both ends for arrow buttons, and so that the thumb does not stop short of the pointer.
    static bool leavesRoom(Glob const& widget, IntBox const& thumb) {
        int const margin = ScrollBar::thickness() + 2 * stride;
        bool const isVertical = widget.height() > widget.width();
        return isVertical ? thumb.y1 >= margin && thumb.y2 <= widget.height() - margin
                          : thumb.x1 >= margin && thumb.x2 <= widget.width() - margin;
    }
    static XY<int> trailingEdge(IntBox const& thumb, XY<int> way) {
        XY<int> const centre = thumb.centre();
        if (way.x != 0) return {way.x > 0 ? thumb.x1 : thumb.x2 - 1, centre.y};
        return {centre.x, way.y > 0 ? thumb.y1 : thumb.y2 - 1};
    }

    double inject(InputEvent::Kind kind, XY<int> where) {
        place_ = where;
        return timeInput(*host_, pointerInput(kind, where));
    }

    void finish() {
        addPicture(report_, ground_);
        report_.print();
        destroy(ground_);
    }

    Report report_;
    std::unique_ptr<Host> host_;
    Ground* ground_;
    XY<int> place_;
};

ScrollBar* addBar(Ground& ground, double size) {
    ScrollBar::InitArgs args(eVertical, toSize16(windowSize.y));
    args.thumb = {0.4, size};
    auto* const bar = new ScrollBar(args);
    ground.addChild(bar, BottomLeft(windowSize.x - ScrollBar::thickness(), 0));
    return bar;
}

void benchBar() {
    Bench bench("scroll_bar");
    ScrollBar* const bar = addBar(bench.ground(), 0.1);
    bench.show();
    bench.drag(*bar, [] { return true; });
}

void benchList() {
    Bench bench("scroll_list");
    auto* const list = new RowList(windowSize.x - ScrollBar::thickness(), windowSize.y);
    bench.ground().addChild(list, BottomLeft(0, 0));
    bench.ground().list = list;
    ScrollBar* const bar = addBar(bench.ground(), static_cast<double>(list->rowsInSight()) / numRows);
    bench.show();
    bench.drag(*bar, [&] {
        return bench.pixelOf(*list, {stripeWidth / 2, list->height() - rowHeight / 2}) ==
               RowList::stripeColour(list->top()).getAsLong();
    });
}

void benchSlider() {
    Bench bench("slider");
    Slider::InitArgs args(800);
    args.value = 0.5;
    auto* const slider = new Slider(args);
    bench.ground().addChild(slider, BottomLeft(200, 400));
    bench.show();
    bench.drag(*slider, [] { return true; });
}

} // namespace

int main(int count, char** names) {
    return runWorkloads(count, names, {{"bar", benchBar}, {"list", benchList}, {"slider", benchSlider}});
}
