#include "host/drawing/palette.h"
#include "host/drawing/uif_std.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace wainscot {
namespace {

/// Every ground and face on which text may stand.
std::vector<Colour> groundsOf(Palette const& palette) {
    std::vector<Colour> grounds;
    for (int i = eWindowNormal; i <= eWindowAlternate; ++i)
        grounds.push_back(palette.window(eWindowShade(i)));
    for (int i = eChildPanel; i <= eChildPopup; ++i)
        grounds.push_back(palette.childWindow(eChildWindowType(i)));
    for (Colour const& face : {palette.button(), palette.warning()}) grounds.push_back(face);
    return grounds;
}

/// As a text box chooses the colour of selected text.
Colour selectedTextOn(Colour const& s, Colour const& text) {
    Colour const hue = s.green() >= s.red() && s.green() > s.blue()  ? Colour(1, 0, 1)
                       : s.blue() >= s.red() && s.blue() > s.green() ? Colour(1, 1, 0)
                                                                     : Colour(0, 1, 1);
    return Colour::mix(hue, text, 0.75);
}

/// What text and marks need on every ground of a palette.
void expectReadable(Palette const& palette) {
    SCOPED_TRACE(palette.window(eWindowNormal).getAsLong());
    for (Colour const& ground : groundsOf(palette)) {
        SCOPED_TRACE(ground.getAsLong());
        for (Colour const& text :
             {palette.text(eTextEnabled), palette.text(eTextSecondary), palette.headingText(),
              palette.subheadingText(), palette.mark(eMarkAccent)})
            EXPECT_GE(contrastRatio(text, ground), 4.5) << std::hex << text.getAsLong();
        EXPECT_GE(contrastRatio(palette.text(eTextDisabled), ground), 2.5);
    }
}

class ThemeContrast : public ::testing::TestWithParam<eTheme> {
protected:
    Palette palette = Palette::standard(GetParam());
};

TEST_P(ThemeContrast, TextsSelectionsAndMarksReadOnTheirGrounds) {
    expectReadable(palette);
    for (Colour const& ground : groundsOf(palette)) {
        EXPECT_LE(contrastRatio(palette.text(eTextDisabled), ground),
                  0.6 * contrastRatio(palette.text(eTextEnabled), ground));
        for (int i = eMarkNormal; i <= eMarkWarning; ++i)
            // No control stands on another one's face.
            EXPECT_TRUE((i == eMarkEdge && ground == palette.warning()) ||
                        contrastRatio(palette.mark(eMarkAppearance(i)), ground) >=
                            (i < eMarkAccent ? 3.0 : 4.5))
                << i << " " << std::hex << ground.getAsLong();
    }
    EXPECT_GE(contrastRatio(palette.text(eTextSelected), palette.doIt()), 4.5);
    for (eSelectionAppearance const appearance : {eSelectionActive, eSelectionInactive}) {
        Colour const& ground = palette.selection(appearance);
        EXPECT_GE(contrastRatio(palette.text(eTextSelected), ground), 4.5);
        EXPECT_GE(contrastRatio(selectedTextOn(ground, palette.text(eTextEnabled)), ground), 4.5);
    }
}

TEST_P(ThemeContrast, FacesDifferFromEachOtherAndFromTheGround) {
    // Blue and red stand for what they do, beside the grey of other buttons.
    EXPECT_GT(palette.doIt().blue(), palette.doIt().red() + 0.2);
    EXPECT_GT(palette.warning().red(), palette.warning().blue() + 0.2);
    for (Colour const& face : {palette.doIt(), palette.warning()})
        EXPECT_GE(contrastRatio(face, palette.window(eWindowNormal)), 1.25) << std::hex << face.getAsLong();
}

INSTANTIATE_TEST_SUITE_P(Themes, ThemeContrast, ::testing::Values(eThemeDark, eThemeLight));

TEST(Palette, DerivesReadableColoursFromAnyGround) {
    std::mt19937 random(11);
    for (int i = 0; i < 300; ++i) {
        Palette const palette(Colour::fromLong(static_cast<std::uint32_t>(random())));
        expectReadable(palette);
        for (Colour const& on : groundsOf(palette))
            EXPECT_GE(contrastRatio(palette.mark(eMarkEdge), on), 3.0) << std::hex << on.getAsLong();
        Colour const& ground = palette.window(eWindowNormal);
        EXPECT_LT(contrastRatio(palette.text(eTextDisabled), ground),
                  0.8 * contrastRatio(palette.text(eTextEnabled), ground));
    }
    EXPECT_EQ(Palette(Colour(1, 0, 0), Colour(0, 0, 0.2)).text(eTextEnabled), Colour(1, 0, 0));
}

TEST(Palette, FollowsTheThemeUnlessMadeFromColours) {
    Palette const following;
    Palette const child = following.makeTextPalette();
    Palette const own(Colour(0.2, 0.3, 0.4));
    Colour const before = following.window(eWindowNormal);
    Colour const childBefore = child.window(eWindowNormal);
    EXPECT_EQ(childBefore, following.childWindow(eChildText));
    EXPECT_EQ(following.makeWindowPalette().window(eWindowNormal), following.childWindow(eChildPopup));
    EXPECT_TRUE(UifStd::getColourScheme() == following);
    Palette::setCurrentTheme(eThemeLight);
    EXPECT_EQ(Palette::currentTheme(), eThemeLight);
    EXPECT_NE(following.window(eWindowNormal), before);
    EXPECT_EQ(child.window(eWindowNormal), Palette::standard(eThemeLight).childWindow(eChildText));
    EXPECT_EQ(own.window(eWindowNormal), Colour(0.2, 0.3, 0.4));
    Palette::setCurrentTheme(eThemeDark);
    EXPECT_EQ(following.window(eWindowNormal), before);
    EXPECT_TRUE(Palette() == following);
    EXPECT_FALSE(child == following);
}

TEST(Colour, MixesByTheShareOfTheFirst) {
    Colour const white(1, 1, 1);
    Colour const black;
    EXPECT_EQ(Colour::mix(white, black, 0.75), Colour(0.75, 0.75, 0.75));
    EXPECT_EQ(Colour(2, -1, std::nan("")), Colour(1, 0, 0));
    EXPECT_EQ(Colour(2, -1, 0.5, false).red(), 2.0);
    EXPECT_EQ(Colour(1, 0.5, 0).getAsLong(), 0xFF8000U);
    EXPECT_EQ(Colour::fromLong(0x123456).getAsLong(), 0x123456U);
    EXPECT_EQ(Colour::scale(white, 0.5).getAsLong(), 0x808080U);
    EXPECT_NEAR(contrastRatio(white, black), 21.0, 0.01);
    EXPECT_GT(Colour(0, 1, 0).brightness(), Colour(1, 0, 0).brightness());
    EXPECT_NEAR(white.brightness(), 1, 1e-12);
    Colour changed;
    changed.setrgb(0.25, 7, -1);
    EXPECT_EQ(changed, Colour(0.25, 1, 0));
}

TEST(UifStd, MeasuresScaleAndStayPositive) {
    int const height = UifStd::getButtonHeight();
    for (auto const measure :
         {+[] { return int(UifStd::getButtonHeight()); }, +[] { return int(UifStd::getWidgetGap()); },
          +[] { return int(UifStd::getIndentWidth()); }, +[] { return int(UifStd::getRowGap()); },
          +[] { return int(UifStd::getBorder()); }, +[] { return int(UifStd::getTableRowHeight()); },
          +[] { return int(UifStd::getCornerRadius()); }, +[] { return int(UifStd::getFont().size); },
          +[] { return int(UifStd::getTitleFont().size); },
          +[] { return int(UifStd::getSubheadingFont().size); }}) {
        UifStd::setScale(1);
        int const standard = measure();
        UifStd::setScale(2);
        EXPECT_EQ(measure(), 2 * standard);
    }
    EXPECT_EQ(UifStd::calcScaledValue(1.5F), 3);
    UifStd::setScale(std::nan(""));
    EXPECT_EQ(UifStd::getScale(), 2);
    UifStd::setScale(1);
    UifStd::Metrics broken;
    broken.rowGap = -3;
    broken.buttonHeight = 1e12;
    UifStd::setMetrics(broken);
    EXPECT_EQ(UifStd::getRowGap(), 1);
    EXPECT_GT(UifStd::getButtonHeight(2.0F), 0);
    UifStd::setMetrics({});
    EXPECT_EQ(UifStd::getButtonHeight(), height);
    EXPECT_GT(UifStd::measure(L"wide"), UifStd::measure(L"w"));
}

} // namespace
} // namespace wainscot
