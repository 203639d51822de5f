#include "bench/driving.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/long_text.h"
#include "host/drawing/shapes.h"
#include "host/drawing/surface.h"
#include "host/drawing/uif_std.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

/// How fast the drawing folder is. Each workload is painted as a window paints it, and its pixels are read
/// back: a workload that paints nothing fails.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr int repetitions = 7;

class Window : public CanvasClient {
public:
    Window() : surface({1200, 900}, 1.0), canvas(*this) {
        place_ = {&surface, {0, 0}, surface.bounds(), true};
        damage_ = {surface.bounds()};
    }
    CanvasPlace canvasPlace() const override { return place_; }
    void damageAbove(IntBox const&) override {}

    /// One painting visit over the whole window.
    void paint(std::function<void(Canvas&)> const& draw) {
        PaintPhase phase(damage_);
        phase.enter(&canvas, place_);
        draw(canvas);
    }

    Surface surface;
    Canvas canvas;

private:
    CanvasPlace place_;
    std::vector<IntBox> damage_;
};

/// The median time of one call, from some repetitions of as many calls as fill a tenth of a second.
double microsecondsPerCall(std::function<void()> const& call) {
    call();
    double const start = now();
    call();
    double const once = std::max(1e-4, now() - start);
    int const calls = std::clamp(static_cast<int>(100.0 / once), 1, 1000000);
    std::vector<double> times;
    for (int r = 0; r < repetitions; ++r) {
        double const begin = now();
        for (int i = 0; i < calls; ++i) call();
        times.push_back((now() - begin) * 1000.0 / calls);
    }
    return median(times);
}

void report(char const* workload, char const* metric, double value, Surface const* painted) {
    Report line(workload, 1);
    line.add(metric, value);
    if (painted)
        line.addPicture(look(painted->pixels(), static_cast<std::size_t>(painted->stride()) *
                                                    static_cast<std::size_t>(painted->deviceSize().y)));
    line.print();
}

LightweightString<wchar_t> cellText(int row, int column) {
    std::wstring const number = std::to_wstring(row * 8 + column);
    return LightweightString<wchar_t>(std::wstring_view(L"clip_" + number + L".mov"));
}

/// 45 rows of 8 cells: row colours, a text clipped to each cell, grid lines.
void drawCells(Canvas& canvas, std::vector<LightweightString<wchar_t>> const& texts) {
    Palette const palette;
    Qv::Ptr<iFont> const font = Glib::loadFont({"DejaVu Sans", 12});
    constexpr int rowHeight = 20;
    constexpr int columnWidth = 145;
    for (int row = 0; row < 45; ++row) {
        IntBox const rowBox = IntBox::sized({0, 900 - (row + 1) * rowHeight}, {1200, rowHeight});
        CanvasRenderer rowRenderer(&canvas, rowBox);
        Colour const& ground = palette.window(row % 2 ? eWindowAlternate : eWindowRecessed);
        rowRenderer.renderPrimitive(Glib::RectDescription(rowBox, ground));
        int const baseline = rowBox.y1 + getFontYOffset(rowHeight, font);
        for (int column = 0; column < 8; ++column) {
            IntBox const cell = IntBox::sized({column * columnWidth, rowBox.y1}, {columnWidth, rowHeight});
            rowRenderer.setClipRect(cell.inset(1));
            rowRenderer.renderPrimitive(
                Glib::TextDescription(texts[static_cast<std::size_t>(row * 8 + column)],
                                      {cell.x1 + 4, baseline}, font, palette.text(eTextEnabled)));
        }
    }
    CanvasRenderer grid(&canvas, {0, 0, 1200, 900});
    std::vector<IntBox> lines;
    for (int row = 0; row < 45; ++row) lines.push_back(IntBox::sized({0, row * rowHeight}, {1200, 1}));
    for (int column = 1; column < 8; ++column)
        lines.push_back(IntBox::sized({column * columnWidth, 0}, {1, 900}));
    grid.renderBoxes(lines, palette.separator());
}

void benchCells() {
    Window window;
    // The least cost for any painter, for comparison.
    double const fill = microsecondsPerCall([&] {
        window.paint([&](Canvas& c) {
            CanvasRenderer renderer(&c, window.surface.bounds());
            renderer.renderPrimitive(Glib::RectDescription(window.surface.bounds(), Colour(1, 1, 1)));
        });
    });
    report("fill of 1200x900", "us", fill, nullptr);
    std::vector<LightweightString<wchar_t>> texts;
    for (int i = 0; i < 360; ++i) texts.push_back(cellText(i / 8, i % 8));
    double const known = microsecondsPerCall([&] { window.paint([&](Canvas& c) { drawCells(c, texts); }); });
    report("cells, known texts", "frames_per_s", 1e6 / known, &window.surface);
    int next = 0;
    double const fresh = microsecondsPerCall([&] {
        for (auto& text : texts) text = cellText(++next, 0);
        window.paint([&](Canvas& c) { drawCells(c, texts); });
    });
    report("cells, new texts", "frames_per_s", 1e6 / fresh, &window.surface);
}

/// A thousand small shapes of each kind.
void benchShapes() {
    Palette const palette;
    Window window;
    auto const each = [&](auto draw) {
        return microsecondsPerCall([&] {
                   window.paint([&](Canvas& canvas) {
                       for (int i = 0; i < 1000; ++i) {
                           IntBox const box = IntBox::sized({i % 40 * 30, i / 40 * 36}, {24, 24});
                           CanvasRenderer renderer(&canvas, box);
                           draw(renderer, box);
                       }
                   });
               }) /
               1000;
    };
    double const boxes = each([&](CanvasRenderer& renderer, IntBox const& box) {
        renderer.renderPrimitive(Glib::RectDescription(box.inset(2), palette.button()));
    });
    report("box 20x20", "us", boxes, &window.surface);
    double const rounded = each([&](CanvasRenderer& renderer, IntBox const& box) {
        Glib::drawRoundedRectFilled(renderer, palette.doIt(), box, 4);
    });
    report("rounded box 24x24", "us", rounded, &window.surface);
    double const edged = each([&](CanvasRenderer& renderer, IntBox const& box) {
        Glib::drawRoundedRect(renderer, palette.button(), palette.mark(eMarkEdge), box, 1, 4);
    });
    report("rounded box with edge 24x24", "us", edged, &window.surface);
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    double const label = each([&](CanvasRenderer& renderer, IntBox const& box) {
        renderer.renderPrimitive(Glib::TextDescription(L"b00", box.bottomLeft() + XY<int>(0, 8), font,
                                                       palette.text(eTextEnabled)));
    });
    report("label of 3 letters", "us", label, &window.surface);
    window.paint([&](Canvas& canvas) {
        CanvasRenderer renderer(&canvas, window.surface.bounds());
        renderer.renderPrimitive(Glib::RectDescription(window.surface.bounds(), palette.button()));
    });
    double const icon = each([&](CanvasRenderer& renderer, IntBox const& box) {
        renderer.renderPrimitive(
            Glib::ImageDescription(Glib::loadIcon(L"folder.png"), IntBox::sized(box.bottomLeft(), {20, 20})));
    });
    report("icon 20x20", "us", icon, &window.surface);
}

void benchMeasuring() {
    Qv::Ptr<iFont> const font = Glib::loadFont({"DejaVu Sans", 12});
    std::vector<LightweightString<wchar_t>> known;
    for (int i = 0; i < 500; ++i) known.push_back(cellText(i, 0));
    long sum = 0;
    double const again = microsecondsPerCall([&] {
        for (auto const& text : known) sum += font->textWidth(text);
    });
    report("measure known text", "us", again / 500, nullptr);
    std::vector<LightweightString<wchar_t>> fresh;
    for (int i = 0; i < 200000; ++i) fresh.push_back(cellText(1000000 + i, 0));
    double const start = now();
    for (auto const& text : fresh) sum += font->textWidth(text);
    report("measure 200,000 new texts", "us", (now() - start) * 1000 / 200000, nullptr);
    check(sum > 0, "nothing was measured");
}

/// Words of 26 letters from `letter` on, each with a blank behind it.
std::wstring wordsOf(wchar_t letter, int length) {
    std::wstring text;
    for (int i = 0; i < length; ++i)
        text += i % 6 == 5 ? L' ' : static_cast<wchar_t>(letter + i % 26 * 7919 % 26);
    return text;
}

/// The median times in milliseconds until a text is set, and until its end is found.
void benchSetting(std::string const& name, std::wstring const& characters) {
    LightweightString<wchar_t> const text((std::wstring_view(characters)));
    std::vector<double> setting, measuring;
    for (int r = 0; r < repetitions; ++r) {
        Glib::LongText line(Glib::loadFont({"DejaVu Sans", 12}));
        double const start = now();
        line.setText(text);
        setting.push_back(now() - start);
        check(line.gapX(text.size()) == line.width() || line.gapX(0) == line.width(), "the end is elsewhere");
        measuring.push_back(now() - start);
    }
    report((name + ": set " + std::to_string(text.size()) + " characters").c_str(), "ms", median(setting),
           nullptr);
    report((name + ": set and measure").c_str(), "ms", median(measuring), nullptr);
}

/// Words are typed into the middle of a line and taken out again, a letter at a time; each time what can be
/// seen is drawn.
void benchTyping(std::string const& name, std::wstring const& text) {
    constexpr std::size_t typed = 200;
    Glib::LongText line(Glib::loadFont({"DejaVu Sans", 12}));
    line.setText(text);
    Window window;
    window.paint([&](Canvas& canvas) {
        CanvasRenderer renderer(&canvas, {0, 0, 600, 32});
        renderer.renderPrimitive(Glib::RectDescription(IntBox(0, 0, 600, 32), Colour(1, 1, 1)));
    });
    std::size_t step = 0;
    std::size_t at = text.size() / 2;
    double const key = microsecondsPerCall([&] {
        bool const types = step++ % (2 * typed) < typed;
        if (types) {
            line.replace(at, 0, {&text[at % 12], 1});
            ++at;
        } else
            line.replace(--at, 1, {});
        int const left = line.gapX(at) - 300;
        window.paint([&](Canvas& canvas) {
            CanvasRenderer renderer(&canvas, {0, 0, 600, 32});
            line.draw(renderer, {-left, 10}, Colour());
        });
    });
    report(name.c_str(), "us", key, &window.surface);
}

void benchLongText() {
    for (int const length : {100, 10000, 1000000})
        benchTyping("long text: type into " + std::to_string(length) + " characters", wordsOf(L'a', length));
    benchSetting("long text", wordsOf(L'a', 1000000));
    for (int const length : {10000, 1000000})
        benchTyping("right-to-left text: type into " + std::to_string(length) + " characters",
                    wordsOf(L'\u05D0', length));
    benchSetting("right-to-left text", wordsOf(L'\u05D0', 1000000));
}

} // namespace

/// Without arguments all groups; else those named: cells, shapes, measuring, long.
int main(int count, char** names) {
    return runWorkloads(count, names,
                        {{"cells", benchCells},
                         {"shapes", benchShapes},
                         {"measuring", benchMeasuring},
                         {"long", benchLongText}});
}
