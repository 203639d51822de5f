#include "host/drawing/standard_icons.h"

#include "host/drawing/icon_sketch_p.h"

#include <array>

namespace wainscot::Glib {

namespace {

using Point = IconSketch::Point;

constexpr Colour white(1, 1, 1);
/// A colour that stands out from dark and from light grounds alike.
constexpr Colour ink = Colour::fromLong(0x808080);

// Lights

constexpr Colour red = Colour::fromLong(0xE8432E);
constexpr Colour green = Colour::fromLong(0x37B24A);
constexpr Colour blue = Colour::fromLong(0x3F86F0);
constexpr Colour yellow = Colour::fromLong(0xF2C522);
constexpr Colour orange = Colour::fromLong(0xF0862A);
constexpr Colour pale = Colour::fromLong(0xEBEBEB);
constexpr Colour grey = Colour::fromLong(0x8A8A8A);

constexpr Point square[] = {{0.16, 0.16}, {0.84, 0.16}, {0.84, 0.84}, {0.16, 0.84}};
constexpr Point diamond[] = {{0.5, 0.07}, {0.93, 0.5}, {0.5, 0.93}, {0.07, 0.5}};
constexpr Point peakUp[] = {{0.5, 0.12}, {0.92, 0.85}, {0.08, 0.85}};
constexpr Point peakDown[] = {{0.08, 0.15}, {0.92, 0.15}, {0.5, 0.88}};

/// Draws the path as a light that is lit or not.
void light(IconSketch& sketch, Colour const& hue, bool lit) {
    Colour const body = lit ? hue : Colour::mix(hue, grey, 0.6);
    sketch.stroke(Colour::scale(body, 0.45), 2 * sketch.hairline(), true);
    if (lit)
        sketch.glow(Colour::mix(white, hue, 0.7), hue);
    else
        sketch.fill(Colour::mix(white, body, 0.12), Colour::scale(body, 0.85));
}

template <bool lit>
void redLight(IconSketch& sketch) {
    sketch.polygon(square);
    light(sketch, red, lit);
}

template <bool lit>
void greenLight(IconSketch& sketch) {
    sketch.circle(0.4);
    light(sketch, green, lit);
}

template <bool lit>
void blueLight(IconSketch& sketch) {
    sketch.polygon(diamond);
    light(sketch, blue, lit);
}

template <bool lit>
void yellowLight(IconSketch& sketch) {
    sketch.polygon(peakUp);
    light(sketch, yellow, lit);
}

template <bool lit>
void orangeLight(IconSketch& sketch) {
    sketch.polygon(peakDown);
    light(sketch, orange, lit);
}

template <bool lit>
void whiteLight(IconSketch& sketch) {
    sketch.star(5, 0.46, 0.22);
    light(sketch, pale, lit);
}

/// The light that is off: smaller, and filled, as rings are what nobody has chosen.
void greyLight(IconSketch& sketch) {
    sketch.circle(0.3);
    light(sketch, grey, false);
}

// Marks

constexpr Point folderBack[] = {{0.06, 0.18}, {0.38, 0.18}, {0.48, 0.3},
                                {0.94, 0.3},  {0.94, 0.84}, {0.06, 0.84}};
constexpr Point folderFront[] = {{0.06, 0.44}, {0.94, 0.44}, {0.94, 0.84}, {0.06, 0.84}};

void folder(IconSketch& sketch) {
    constexpr Colour amber = Colour::fromLong(0xE3A93C);
    sketch.polygon(folderBack);
    sketch.stroke(Colour::scale(amber, 0.55), 2 * sketch.hairline(), true);
    sketch.fill(Colour::scale(amber, 0.8), Colour::scale(amber, 0.7));
    sketch.polygon(folderFront);
    sketch.fill(Colour::mix(white, amber, 0.35), amber);
}

constexpr Point arrow[] = {{0.5, 0.1},   {0.88, 0.5}, {0.62, 0.5}, {0.62, 0.88},
                           {0.38, 0.88}, {0.38, 0.5}, {0.12, 0.5}};

template <int quarters>
void arrowTo(IconSketch& sketch) {
    sketch.turn(quarters);
    sketch.polygon(arrow);
    sketch.fill(ink, ink);
}

void close(IconSketch& sketch) {
    static constexpr Point falling[] = {{0.2, 0.2}, {0.8, 0.8}};
    static constexpr Point rising[] = {{0.8, 0.2}, {0.2, 0.8}};
    sketch.line(falling);
    sketch.line(rising);
    sketch.stroke(ink, sketch.bar() * 1.15);
}

constexpr Point pinShape[] = {{0.28, 0.08}, {0.72, 0.08}, {0.72, 0.18}, {0.65, 0.22},
                              {0.67, 0.44}, {0.82, 0.58}, {0.82, 0.64}, {0.18, 0.64},
                              {0.18, 0.58}, {0.33, 0.44}, {0.35, 0.22}, {0.28, 0.18}};
constexpr Point needle[] = {{0.45, 0.64}, {0.55, 0.64}, {0.5, 0.96}};

void pin(IconSketch& sketch) {
    sketch.polygon(pinShape, false);
    sketch.fill(ink, ink);
    sketch.polygon(needle, false);
    sketch.fill(ink, ink);
}

void resizing(IconSketch& sketch) {
    static constexpr Point upper[] = {{0.5, 0.14}, {0.86, 0.14}, {0.86, 0.5}};
    static constexpr Point lower[] = {{0.14, 0.5}, {0.14, 0.86}, {0.5, 0.86}};
    static constexpr Point between[] = {{0.84, 0.16}, {0.16, 0.84}};
    sketch.line(upper);
    sketch.line(lower);
    sketch.line(between);
    sketch.stroke(ink, sketch.bar());
}

void settings(IconSketch& sketch) {
    sketch.star(8, 0.47, 0.34, 0.55);
    sketch.circle(0.15);
    sketch.fill(ink, ink);
}

struct Drawing {
    std::wstring_view name;
    void (*draw)(IconSketch& sketch);
};

constexpr std::array drawings{
    Drawing{L"led_red.png", redLight<false>},
    Drawing{L"led_red_on.png", redLight<true>},
    Drawing{L"led_green.png", greenLight<false>},
    Drawing{L"led_green_on.png", greenLight<true>},
    Drawing{L"led_blue.png", blueLight<false>},
    Drawing{L"led_blue_on.png", blueLight<true>},
    Drawing{L"led_yellow.png", yellowLight<false>},
    Drawing{L"led_yellow_on.png", yellowLight<true>},
    Drawing{L"led_orange.png", orangeLight<false>},
    Drawing{L"led_orange_on.png", orangeLight<true>},
    Drawing{L"led_white.png", whiteLight<false>},
    Drawing{L"led_white_on.png", whiteLight<true>},
    Drawing{L"led_grey.png", greyLight},
    Drawing{L"folder.png", folder},
    Drawing{L"arrow_up.png", arrowTo<0>},
    Drawing{L"arrow_right.png", arrowTo<1>},
    Drawing{L"arrow_down.png", arrowTo<2>},
    Drawing{L"arrow_left.png", arrowTo<3>},
    Drawing{L"close.png", close},
    Drawing{L"pin.png", pin},
    Drawing{L"size.png", resizing},
    Drawing{L"settings.png", settings},
};

constexpr auto namesOf(std::array<Drawing, drawings.size()> const& all) {
    std::array<std::wstring_view, drawings.size()> names;
    for (std::size_t i = 0; i < all.size(); ++i) names[i] = all[i].name;
    return names;
}

constexpr auto names = namesOf(drawings);

} // namespace

std::span<std::wstring_view const> standardIconNames() {
    return names;
}

Qv::Ptr<Image> makeStandardIcon(std::wstring_view bareName) {
    for (Drawing const& drawing : drawings)
        if (drawing.name == bareName)
            return Image::fromPainter({standardIconExtent, standardIconExtent},
                                      [draw = drawing.draw](XY<int> size, std::span<std::uint32_t> pixels) {
                                          IconSketch sketch(size, pixels);
                                          draw(sketch);
                                      });
    return {};
}

} // namespace wainscot::Glib
