#include "host/drawing/palette.h"

#include "host/base/host_value.h"
#include <array>

namespace wainscot {
namespace {

/// One answer for every role. All members are colours, so that two of these compare role by role.
struct Colours {
    Colour button;
    std::array<Colour, 4> text;
    std::array<Colour, 4> window;
    std::array<Colour, 2> selection;
    std::array<Colour, 5> mark;
    Colour heading;
    Colour subheading;
    Colour doIt;
    Colour warning;
    std::array<Colour, 3> childWindow;
    Colour separator;

    friend bool operator==(Colours const&, Colours const&) = default;
};

constexpr Colour rgb(std::uint32_t value) {
    return Colour::fromLong(value);
}

// Greys without a cast, so that pictures are judged beside nothing that colours them.
constexpr Colours darkColours = {
    .button = rgb(0x3C3C3C),
    .text = {rgb(0xE6E6E6), rgb(0x808080), rgb(0xFFFFFF), rgb(0xBEBEBE)},
    .window = {rgb(0x282828), rgb(0x1B1B1B), rgb(0x323232), rgb(0x212121)},
    .selection = {rgb(0x2B62C4), rgb(0x4A4A4A)},
    .mark = {rgb(0xD2D2D2), rgb(0x868686), rgb(0xF2F2F2), rgb(0x7AADFA), rgb(0xFF9580)},
    .heading = rgb(0xF5F5F5),
    .subheading = rgb(0xC8C8C8),
    .doIt = rgb(0x2B62C4),
    .warning = rgb(0x682B25),
    .childWindow = {rgb(0x2E2E2E), rgb(0x1B1B1B), rgb(0x343434)},
    .separator = rgb(0x474747),
};

constexpr Colours lightColours = {
    .button = rgb(0xFCFCFC),
    .text = {rgb(0x1A1A1A), rgb(0x828282), rgb(0xFFFFFF), rgb(0x525252)},
    .window = {rgb(0xEFEFEF), rgb(0xFFFFFF), rgb(0xE3E3E3), rgb(0xF7F7F7)},
    .selection = {rgb(0x1B489E), rgb(0x434343)},
    .mark = {rgb(0x3A3A3A), rgb(0x797979), rgb(0x121212), rgb(0x1A56B8), rgb(0xAD2318)},
    .heading = rgb(0x0D0D0D),
    .subheading = rgb(0x383838),
    .doIt = rgb(0x1F5FC4),
    .warning = rgb(0xF6C9C1),
    .childWindow = {rgb(0xE9E9E9), rgb(0xFFFFFF), rgb(0xF8F8F8)},
    .separator = rgb(0xCBCBCB),
};

/// What each mark must have against its grounds.
constexpr std::array<double, 5> markRatios = {3, 3, 3, 4.5, 4.5};

constexpr Colours const& coloursOf(eTheme theme) {
    return theme == eThemeLight ? lightColours : darkColours;
}

bool isDarkGround(Colour const& ground) {
    return contrastRatio(ground, rgb(0xFFFFFF)) >= contrastRatio(ground, rgb(0x000000));
}

/// Black or white, whichever stands out more.
Colour extremeOn(Colour const& ground) {
    return isDarkGround(ground) ? rgb(0xFFFFFF) : rgb(0x000000);
}

/// The weakest mixture of the text with its ground that can still be read.
Colour weakened(Colour const& text, Colour const& ground, double ratio) {
    for (int step = 6; step < 20; ++step) {
        Colour const tried = Colour::mix(text, ground, step / 20.0);
        if (contrastRatio(tried, ground) >= ratio) return tried;
    }
    return text;
}

Colour stepped(Colour const& ground, double amount) {
    return Colour::mix(extremeOn(ground), ground, amount);
}

/// A ground that stands out from another, where text still reads on it as well as needed; else the same.
Colour groundOver(Colour const& ground, double amount, Colour const& text) {
    Colour const wanted = stepped(ground, amount);
    double const needed = std::min(4.5, contrastRatio(ground, text));
    return contrastRatio(wanted, text) >= needed ? wanted : ground;
}

/// A face in as much of its own colour as leaves text on it readable as well as needed.
Colour faceOf(Colour const& colour, Colour const& ground, Colour const& text) {
    double const needed = std::min(4.5, contrastRatio(ground, text));
    for (int step = 0; step < 20; ++step) {
        Colour const tried = Colour::mix(ground, colour, step / 20.0);
        if (contrastRatio(tried, text) >= needed) return tried;
    }
    return ground;
}

Colours derivedFrom(Colour const& text, Colour const& ground) {
    Colours result = isDarkGround(ground) ? darkColours : lightColours;
    Colour const recessed = Colour::mix(isDarkGround(ground) ? rgb(0) : rgb(0xFFFFFF), ground, 0.3);
    result.window = {ground, recessed, groundOver(ground, 0.05, text), groundOver(ground, 0.03, text)};
    result.button = groundOver(ground, 0.1, text);
    result.childWindow = {ground, recessed, result.window[eWindowRaised]};
    result.warning = faceOf(result.warning, ground, text);
    // What reads on the ground nearest to the text reads on all.
    Colour hardest = ground;
    for (Colour const& other :
         {result.button, result.warning, result.window[eWindowRaised], result.window[eWindowAlternate]})
        if (contrastRatio(other, text) < contrastRatio(hardest, text)) hardest = other;
    result.text = {text, weakened(text, hardest, 2.5), result.text[eTextSelected],
                   weakened(text, hardest, 4.5)};
    for (std::size_t i = 0; i < markRatios.size(); ++i)
        result.mark[i] = Palette::readable(result.mark[i], hardest, markRatios[i]);
    result.heading = Palette::readable(result.heading, hardest);
    result.subheading = Palette::readable(result.subheading, hardest);
    result.separator = stepped(ground, 0.15);
    return result;
}

Colours derivedFrom(Colour const& ground) {
    Colours const& theme = coloursOf(isDarkGround(ground) ? eThemeDark : eThemeLight);
    return derivedFrom(Palette::readable(theme.text[eTextEnabled], ground), ground);
}

Colours forChild(Colours colours, Colour const& ground) {
    colours.window[eWindowNormal] = ground;
    return colours;
}

constinit HostValue<eTheme> theTheme;
static_assert(eTheme() == eThemeDark, "the start value");

} // namespace

/// The colours under either theme; what was made from colours of its own has the same under both.
class PaletteData : public Qv::InternalRefCount {
public:
    PaletteData(Colours const& dark, Colours const& light) : themes_{dark, light} {}
    explicit PaletteData(Colours const& colours) : themes_{colours, colours} {}

    Colours const& now() const { return themes_[theTheme.get()]; }
    Colours const& under(eTheme theme) const { return themes_[theme]; }

private:
    std::array<Colours, 2> themes_;
};

namespace {

using DataPtr = Qv::Ptr<PaletteData const>;

/// Lives for ever: palettes may be asked while the program ends.
PaletteData const& followingData() {
    static auto const& shared = *new DataPtr(new PaletteData(darkColours, lightColours));
    return *shared;
}

DataPtr makeData(Colours const& dark, Colours const& light) {
    return DataPtr(new PaletteData(dark, light));
}

template <class Pick>
DataPtr withGround(PaletteData const& data, Pick pick) {
    Colours const& dark = data.under(eThemeDark);
    Colours const& light = data.under(eThemeLight);
    return makeData(forChild(dark, pick(dark)), forChild(light, pick(light)));
}

} // namespace

Palette::Palette() noexcept = default;
Palette::Palette(Palette const&) noexcept = default;
Palette::Palette(Palette&&) noexcept = default;
Palette& Palette::operator=(Palette const&) noexcept = default;
Palette& Palette::operator=(Palette&&) noexcept = default;
Palette::~Palette() = default;

Palette::Palette(DataPtr data) noexcept : data_(std::move(data)) {}
Palette::Palette(Colour const& ground) : data_(new PaletteData(derivedFrom(ground))) {}
Palette::Palette(Colour const& text, Colour const& ground)
    : data_(new PaletteData(derivedFrom(text, ground))) {}

Palette Palette::standard(eTheme theme) {
    static auto const& dark = *new Palette(DataPtr(new PaletteData(darkColours)));
    static auto const& light = *new Palette(DataPtr(new PaletteData(lightColours)));
    return theme == eThemeLight ? light : dark;
}

eTheme Palette::currentTheme() {
    return theTheme.get();
}

void Palette::setCurrentTheme(eTheme theme) {
    theTheme.set(theme == eThemeLight ? eThemeLight : eThemeDark);
}

PaletteData const& Palette::data() const {
    return data_ ? *data_ : followingData();
}

Colour const& Palette::button() const {
    return data().now().button;
}

Colour const& Palette::text(eTextAppearance appearance) const {
    return data().now().text[appearance & 3U];
}

Colour const& Palette::window(eWindowShade shade) const {
    return data().now().window[shade & 3U];
}

Colour const& Palette::selection(eSelectionAppearance appearance) const {
    return data().now().selection[appearance & 1U];
}

Colour const& Palette::mark(eMarkAppearance appearance) const {
    return data().now().mark[std::min<unsigned>(appearance, eMarkWarning)];
}

Colour const& Palette::headingText() const {
    return data().now().heading;
}

Colour const& Palette::subheadingText() const {
    return data().now().subheading;
}

Colour const& Palette::doIt() const {
    return data().now().doIt;
}

Colour const& Palette::warning() const {
    return data().now().warning;
}

Colour const& Palette::childWindow(eChildWindowType type) const {
    return data().now().childWindow[std::min<unsigned>(type, eChildPopup)];
}

Colour const& Palette::separator() const {
    return data().now().separator;
}

Colour Palette::scale(Colour const& colour, double factor) const {
    if (isDark() || !(factor > 0)) return Colour::scale(colour, factor);
    return Colour::scale(colour, 1.0 / factor);
}

bool Palette::isDark() const {
    return isDarkGround(window(eWindowNormal));
}

Colour Palette::readable(Colour const& colour, Colour const& ground, double ratio) {
    constexpr int steps = 20;
    Colour const extreme = extremeOn(ground);
    for (int step = 0; step < steps; ++step) {
        Colour const tried = Colour::mix(extreme, colour, static_cast<double>(step) / steps);
        if (contrastRatio(tried, ground) >= ratio) return tried;
    }
    return extreme;
}

Palette Palette::makeChildPalette(eChildWindowType type) const {
    auto const ground = [type](Colours const& c) {
        return c.childWindow[std::min<unsigned>(type, eChildPopup)];
    };
    return Palette(withGround(data(), ground));
}

Palette Palette::makeWindowPalette() const {
    return makeChildPalette(eChildPopup);
}

Palette Palette::makeTextPalette() const {
    return makeChildPalette(eChildText);
}

bool operator==(Palette const& a, Palette const& b) {
    PaletteData const& first = a.data();
    PaletteData const& second = b.data();
    return &first == &second || (first.under(eThemeDark) == second.under(eThemeDark) &&
                                 first.under(eThemeLight) == second.under(eThemeLight));
}

} // namespace wainscot
