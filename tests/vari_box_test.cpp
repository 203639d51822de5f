#include "tests/widget_fixture.h"

#include "foundation/val_server_adaptor.h"
#include "host/base/runtime_error.h"
#include "host/services/clipboard.h"
#include "text/titled_vari_box.h"
#include "text/vari_box_parser_basic.h"
#include "text/vari_box_parser_log.h"

#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

namespace wainscot {
namespace {

using Text = LightweightString<wchar_t>;
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class VariBoxes : public WidgetTest {
protected:
    VariBox* showing(VariBoxParserBase* parser) {
        auto* const box = new VariBox(VariBox::InitArgs({}, 100));
        box->setParser(parser, true);
        return show(box);
    }
    /// With steps of 1 and 10 from 0 to 100.
    VariBox* basic(int value = 50) {
        return showing(new VariBoxParserBasic<int>(nullptr, nullptr, 0, 100, 1, 10, value));
    }
    VariBox* fractions(double value = 0.5) {
        return showing(new VariBoxParserBasic<double>(nullptr, nullptr, 0, 1, 0.1, 0.25, value));
    }
    template <class T>
    static VariBoxParser<T>& parserOf(VariBox* box) {
        return static_cast<VariBoxParser<T>&>(*box->getParser());
    }
    static int valueOf(VariBox* box) { return parserOf<int>(box).getValue(); }
    static std::string textOf(VariBox* box) { return toUTF8(box->getText()).c_str(); }
    void moveBy(XY<int> way) { driver_.moveTo(at_ += way); }
    void pressOn(VariBox* box, Driver::Button button = Driver::Button::left) {
        at_ = box->globXYToScreenXY({50, midY});
        driver_.moveTo(at_);
        driver_.press(button);
    }

    XY<int> at_;
};

template <class T>
void checkSteps(std::vector<T> const& limits, std::vector<T> const& steps, std::vector<T> const& values) {
    constexpr auto least = static_cast<long double>(std::numeric_limits<T>::lowest());
    constexpr auto most = static_cast<long double>(std::numeric_limits<T>::max());
    for (T const lower : limits) {
        for (T const upper : limits) {
            for (T const step : steps) {
                for (T const value : values) {
                    VariBoxParserBasic<T> parser(nullptr, nullptr, lower, upper, step, step, value);
                    T const before = parser.getValue();
                    long double const low = lower, high = upper;
                    EXPECT_EQ(before, std::max(std::min<long double>(value, high), low));
                    auto const share = static_cast<double>((before - low) / (high - low));
                    EXPECT_NEAR(parser.getPositionWithinRange(),
                                std::isfinite(share) && share > 0 ? share : 0, 1e-12);
                    for (bool const isUp : {true, false}) {
                        parser.setValue(before);
                        bool const isAtEnd =
                            isUp ? before == upper || before == most : before == lower || before == least;
                        long double const exact = isAtEnd
                                                      ? before
                                                      : static_cast<long double>(before) +
                                                            (isUp ? step : -static_cast<long double>(step));
                        long double const kept = std::clamp(exact, least, most);
                        T const wanted = static_cast<T>(std::max(std::min(kept, high), low));
                        EXPECT_EQ(isUp ? parser.handleMajorInc() : parser.handleMajorDec(), wanted != before);
                        EXPECT_EQ(parser.getValue(), wanted) << before << (isUp ? " + " : " - ") << step;
                    }
                }
            }
        }
    }
}

TEST_F(VariBoxes, StepsAndPositionsAreThoseOfExactArithmetic) {
    constexpr int low = std::numeric_limits<int>::min(), high = std::numeric_limits<int>::max();
    constexpr unsigned int top = std::numeric_limits<unsigned int>::max();
    constexpr double huge = std::numeric_limits<double>::max();
    constexpr float hugeF = std::numeric_limits<float>::max();
    checkSteps<int>({low, -7, 0, 5, high}, {1, 3, high}, {low, low + 1, -2, 0, 1, 4, high - 1, high});
    checkSteps<unsigned int>({0, 5, top}, {1, 3, top}, {0, 1, 4, top - 1, top});
    checkSteps<float>({-hugeF, -2, 0, 1, hugeF}, {0.25F, hugeF}, {-hugeF, -1, 0, 0.5F, hugeF});
    checkSteps<double>({-huge, -2, 0, 1, huge}, {0.25, huge}, {-huge, -1, 0, 0.5, huge});
}

TEST_F(VariBoxes, LogarithmicPositions) {
    VariBoxParserLog<double> fine(nullptr, 0, 1000, 0.1, 0.25, 0, 0, 0);
    VariBoxParserLog<int> whole(nullptr, 0, 1000, 0.1, 0.25, 0, 0, 0);
    for (double const position : {0.0, 0.1, 0.5, 0.99, 1.0}) {
        double const wanted = (std::pow(10, position) - 1) / 9 * 1000;
        fine.setPositionWithinRange(position);
        whole.setPositionWithinRange(position);
        EXPECT_NEAR(fine.getValue(), wanted, 1e-9);
        EXPECT_EQ(whole.getValue(), static_cast<int>(wanted));
        EXPECT_NEAR(fine.getPositionWithinRange(), position, 1e-12);
    }
    EXPECT_FALSE(fine.handleMinorInc()) << "at the upper limit";
    EXPECT_TRUE(fine.handleMajorDec());
    EXPECT_NEAR(fine.getPositionWithinRange(), 0.75, 1e-12);
    fine.setPositionWithinRange(-3);
    EXPECT_FALSE(fine.handleMinorDec());

    VariBoxParserLog<int> slow(nullptr, 0, 100, 0.01, 0.01, 0, 0, 0);
    int steps = 0;
    for (; slow.getValue() < 2 && steps < 1000; ++steps) slow.handleMinorInc();
    EXPECT_LE(steps, 10) << "small steps add up";
    VariBoxParserLog<int> signs(nullptr, -10, 0, 1, 1, -5, 0, 4);
    signs.init();
    EXPECT_EQ(signs.getAllowedCharacters(), "-0123456789");
    EXPECT_EQ(signs.getMaxNumChars(), 4);
    VariBoxParserLog<int> hex(nullptr, -10, 999, 1, 1, 255, 0, 0, std::ios_base::hex, 0, 4);
    hex.init();
    EXPECT_EQ(hex.getAllowedCharacters(), "-+0123456789ABCDEF");
    EXPECT_EQ(hex.getText(), L"  FF");
    hex.setText(L"-A");
    EXPECT_TRUE(hex.handleParseText());
    EXPECT_EQ(hex.getValue(), -10);
    VariBoxParserLog<double> large(nullptr, 0, 1e9, 1, 1, 1e6, 0, 0);
    EXPECT_EQ(large.getText(), L"1e+06");
    large.setText(L"2.5e+08");
    EXPECT_TRUE(large.handleParseText());
    EXPECT_EQ(large.getValue(), 2.5e8);
}

TEST_F(VariBoxes, NoValueBringsThemOutOfTheirRange) {
    expectDiagnostic("no number");
    VariBoxParserBasic<double> parser(nullptr, nullptr, noNumber, infinity, noNumber, infinity, noNumber);
    EXPECT_EQ(parser.getValue(), parser.limits_min());
    parser.setValue(infinity);
    EXPECT_EQ(parser.getValue(), parser.limits_max());
    EXPECT_EQ(parser.getPositionWithinRange(), 1);
    parser.setValue(0);
    for (double bad : {noNumber, noNumber}) {
        parser.setValue(bad);
        parser.setNewWidgetValue(bad, eRedrawYes);
        EXPECT_FALSE(parser.handleMinorInc());
        EXPECT_EQ(bad, 0);
    }
    EXPECT_TRUE(parser.handleMajorInc());
    EXPECT_EQ(parser.getValue(), parser.limits_max());
    VariBoxParserLog<float> log(nullptr, 0, 10, noNumber, 1, 5, -1, 0);
    EXPECT_FALSE(log.setPositionWithinRange(noNumber) || log.handleMinorInc());
    VariBoxParserBasic<int> scaled(nullptr, nullptr, 0, 2'000'000'000, 1, 1, 1'000'000'000, 10);
    EXPECT_EQ(scaled.getText(), L"2147483647");
}

template <class T>
using Shown = std::vector<std::tuple<VariBoxParserBasicDisplayerBase<T> const*, T, char const*>>;

/// A text of "" is refused.
template <class T>
void checkTexts(Shown<T> const& rows, Shown<T> const& read) {
    for (auto const& [displayer, value, text] : rows) {
        Qv::Ptr<VariBoxParserBasicDisplayerBase<T> const> const held(displayer);
        EXPECT_EQ(displayer->valueToString(value), fromUTF8(text));
        EXPECT_NEAR(static_cast<double>(displayer->stringToValue(fromUTF8(text))), static_cast<double>(value),
                    1e-3)
            << text;
    }
    for (auto const& [displayer, value, text] : read) {
        Qv::Ptr<VariBoxParserBasicDisplayerBase<T> const> const held(displayer);
        if (value == std::numeric_limits<T>::max())
            EXPECT_THROW(displayer->stringToValue(fromUTF8(text)), Qv::Exception::RuntimeError) << text;
        else
            EXPECT_NEAR(static_cast<double>(displayer->stringToValue(fromUTF8(text))),
                        static_cast<double>(value), 1e-9)
                << text;
    }
}

TEST_F(VariBoxes, DisplayersShowAndRead) {
    constexpr double no = std::numeric_limits<double>::max();
    auto const plain = [] { return new VariBoxPlainDisplayer<double>; };
    auto const cent = [] { return new VariBoxPercentDisplayer<double>; };
    auto const gain = [] { return new VariBoxDecibelDisplayer<double>; };
    auto const time = [] {
        return new VariBoxUnitDisplayer<double>(L"s", {{L"ms", 0.001}, {L"min", 60}, {L"f/s2", 2}});
    };
    checkTexts<double>({{plain(), 1.5, "1.5"},
                        {cent(), 0.125, "12.5 %"},
                        {gain(), 0.70794, "-3 dB"},
                        {gain(), 0, "-\u221e dB"},
                        {time(), 2.25, "2.25 s"}},
                       {{plain(), -1234.5, " \u22121 234,5 "},
                        {plain(), no, "1e3"},
                        {plain(), no, ""},
                        {cent(), 0.5, "25+25%"},
                        {cent(), no, "%"},
                        {gain(), 1, "0dB"},
                        {gain(), 0, "-inf"},
                        {gain(), 0, "-INF DB"},
                        {gain(), 0, "\u2212\u221e"},
                        {gain(), no, "inf"},
                        {gain(), 0.1, "-2*10 DB"},
                        {time(), 30, "2*12+6"},
                        {time(), 1.5, "1.5s"},
                        {time(), 9, "4f/s2 + 2s/2"},
                        {time(), 61.02, "1min + 1 + 20ms"},
                        {time(), -6, "-2*-(-3)"},
                        {time(), 7, "1+2*3"},
                        {time(), 2, "8/2/2"},
                        {time(), no, "1/0"},
                        {time(), no, "(1"},
                        {time(), no, "1)"},
                        {time(), no, "1s s"},
                        {time(), no, "3 4"},
                        {time(), no, "1.2.3.4"},
                        {time(), no, "2+"},
                        {time(), no, "()"},
                        {time(), no, "parsec"}});
    constexpr int none = std::numeric_limits<int>::max();
    auto const pal = [] { return new VariBoxTimecodeDisplayer<int>(25); };
    auto const drop = [] { return new VariBoxTimecodeDisplayer<int>(30, true); };
    auto const whole = [] { return new VariBoxPlainDisplayer<int>; };
    checkTexts<int>({{pal(), 90061 * 25 + 3, "25:01:01:03"},
                     {pal(), -26, "-00:00:01:01"},
                     {drop(), 1799, "00:00:59;29"},
                     {drop(), 1800, "00:01:00;02"},
                     {drop(), 17981, "00:09:59;29"},
                     {drop(), 17982, "00:10:00;00"},
                     {drop(), 107892, "01:00:00;00"}},
                    {{pal(), 2250, "90:00"},
                     {pal(), 90, "90"},
                     {pal(), 25 * 10, "1000"},
                     {pal(), none, "1:75:00"},
                     {pal(), none, "1:30"},
                     {pal(), none, ":10"},
                     {pal(), none, "1:2:3:4:5"},
                     {pal(), none, "1::2"},
                     {pal(), none, "x"},
                     {pal(), none, ""},
                     {drop(), 1800, "1:00;00"},
                     {drop(), 1798, "59;28"},
                     {whole(), none, "1.5"},
                     {whole(), 12, "12,0"}});
    std::string deep(1'000'000, '(');
    EXPECT_FALSE(sumOf(fromUTF8(deep.c_str())));
    EXPECT_EQ(sumOf(fromUTF8((deep + "1" + std::string(deep.size(), ')')).c_str())), 1);
}

/// Every frame has a label of its own, and is found by it.
TEST_F(VariBoxes, DropFrameLosesNothing) {
    Qv::Ptr<VariBoxTimecodeDisplayer<int>> const drop(new VariBoxTimecodeDisplayer<int>(60, true));
    for (int frame = 0; frame < 75'000; frame += frame % 3600 < 20 ? 1 : 7)
        ASSERT_EQ(drop->stringToValue(drop->valueToString(frame)), frame);
}

TEST_F(VariBoxes, ADragIsCountedInThreesOfPixels) {
    VariBox* const box = basic();
    pressOn(box);
    EXPECT_EQ(host_->offscreen()->unboundedMotion(), true);
    EXPECT_EQ(host_->offscreen()->cursor(), hiddenCursor);
    moveBy({2, 0});
    EXPECT_EQ(told(), "");
    moveBy({1, 0});
    EXPECT_EQ(valueOf(box), 51) << "small moves add up";
    moveBy({-90, 2});
    EXPECT_EQ(valueOf(box), 50) << "one event, one step";
    moveBy({2, 5});
    driver_.holdModifiers(Key::ctrl);
    moveBy({3, 0});
    driver_.holdModifiers(0);
    driver_.press(Driver::Button::right);
    moveBy({3, 0});
    driver_.release(Driver::Button::right);
    moveBy({0, -3});
    EXPECT_EQ(valueOf(box), 70);
    EXPECT_EQ(told(), "varibox_ValueChanged varibox_ValueChanged varibox_ValueChanged varibox_ValueChanged "
                      "varibox_ValueChanged varibox_ValueChanged");
    driver_.holdModifiers(Key::shift);
    moveBy({29, 0});
    EXPECT_EQ(told(), "") << "a tenth";
    moveBy({1, 0});
    driver_.holdModifiers(0);
    driver_.release();
    EXPECT_EQ(valueOf(box), 71);
    EXPECT_EQ(told(), "varibox_ValueChanged varibox_ChangeComplete");
    EXPECT_EQ(EventSystem::live().pointer.place, box->globXYToScreenXY({50, midY}));
    EXPECT_FALSE(host_->offscreen()->unboundedMotion());
    driver_.click(box);
    EXPECT_EQ(told(), "varibox_ChangeComplete");

    VariBox* const fine = fractions();
    driver_.holdModifiers(Key::shift);
    pressOn(fine, Driver::Button::right);
    moveBy({3, 0});
    driver_.release(Driver::Button::right);
    driver_.holdModifiers(0);
    EXPECT_DOUBLE_EQ(parserOf<double>(fine).getValue(), 0.51);
}

/// The model knows only the numbers.
TEST_F(VariBoxes, RandomUseAgreesWithAModel) {
    std::mt19937 random(19);
    auto const pick = [&](int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random);
    };
    VariBox* const box = basic();
    int value = 50;
    auto const step = [&](bool up, bool major) {
        value = std::clamp(value + (up ? 1 : -1) * (major ? 10 : 1), 0, 100);
    };
    for (int i = 0; i < 600; ++i) {
        bool const isMajor = pick(0, 3) == 0;
        int const start = value;
        int const what = pick(0, 4);
        switch (what) {
        case 0: {
            bool const isRight = pick(0, 1) != 0;
            auto const button = isRight ? Driver::Button::right : Driver::Button::left;
            driver_.advance(1000);
            driver_.holdModifiers(isMajor ? Key::ctrl : 0);
            pressOn(box, button);
            XY<int> left;
            bool hasMoved = false;
            for (int moves = pick(1, 6); moves > 0; --moves) {
                XY<int> const way{pick(-9, 9), pick(-9, 9)};
                moveBy(way);
                left = left + way;
                int const far = std::abs(left.x) >= std::abs(left.y) ? left.x : left.y;
                if (std::abs(far) < 3) continue;
                step(far > 0, isMajor);
                left = {};
                hasMoved = true;
            }
            if (!hasMoved) moveBy(XY<int>{6, 6} - left), step(true, isMajor);
            driver_.holdModifiers(0);
            if (pick(0, 3) == 0) driver_.key(Key::escape), value = start;
            driver_.release(button);
            break;
        }
        case 1: {
            int const notches = pick(-2, 2);
            driver_.advance(1000);
            driver_.holdModifiers(isMajor ? Key::ctrl : 0);
            driver_.wheel(box, notches);
            driver_.holdModifiers(0);
            for (int n = 0; n < std::abs(notches); ++n) step(notches > 0, isMajor);
            break;
        }
        case 2: {
            bool const isUp = pick(0, 1) != 0;
            box->claimKbdFocus();
            driver_.key(isMajor ? (isUp ? Key::pageUp : Key::pageDown) : (isUp ? Key::up : Key::down));
            step(isUp, isMajor);
            break;
        }
        default: {
            int const typed = pick(-20, 140);
            box->claimKbdFocus();
            driver_.type(Qv::WStringFromInteger(typed));
            bool const isKept = pick(0, 2) != 0;
            driver_.key(isKept ? Key::enter : Key::escape);
            if (isKept) value = std::clamp(typed, 0, 100);
            EXPECT_EQ(get_kbd_focus(), box);
        }
        }
        ASSERT_EQ(valueOf(box), value) << "after step " << i << ", of kind " << what << ", from " << start;
        ASSERT_EQ(textOf(box), std::to_string(value));
        ASSERT_FALSE(box->isEditing() || box->isDragging());
        ASSERT_EQ(i % 60 == 0 ? Consistency(driver_).fault() : "", "");
    }
}

TEST_F(VariBoxes, TheTextIsEditedInABoxThatComesAndGoes) {
    expectDiagnostic("no value");
    VariBox* const box = showing(new VariBoxParserBasic<double>(
        nullptr, new VariBoxUnitDisplayer<double>(L"s"), -100, 100, 1, 10, 1.0 / 3, 0));
    EXPECT_EQ(box->numChildren(), 0u);
    box->claimKbdFocus();
    driver_.key(Key::enter);
    EXPECT_EQ(box->numChildren(), 1u);
    driver_.key(Key::enter);
    EXPECT_EQ(parserOf<double>(box).getValue(), 1.0 / 3) << "what was not changed is not read";
    EXPECT_EQ(told(), "");
    driver_.type(L"0.333 s");
    driver_.key(Key::enter);
    EXPECT_EQ(parserOf<double>(box).getValue(), 1.0 / 3) << "what is shown stands for the whole value";
    EXPECT_EQ(told(), "");
    driver_.type(L"\u22122,5");
    EXPECT_EQ(toUTF8(box->getEnteredText()), "\u22122,5");
    driver_.key(Key::up);
    EXPECT_EQ(parserOf<double>(box).getValue(), -1.5) << "stepped from what was entered";
    EXPECT_EQ(toUTF8(box->getEnteredText()), "-1.5 s");
    driver_.type(L"parsec");
    driver_.key(Key::enter);
    EXPECT_TRUE(box->isEditing()) << "what cannot be read can be mended";
    EXPECT_TRUE(box->getParser()->isTextRefused());
    driver_.type(L"4");
    told();
    root_->claimKbdFocus();
    EXPECT_EQ(parserOf<double>(box).getValue(), 4);
    EXPECT_EQ(told(), "varibox_ValueChanged varibox_ChangeComplete");
    box->claimKbdFocus();
    driver_.type(L"nothing");
    root_->claimKbdFocus();
    EXPECT_EQ(textOf(box), "4 s");
    EXPECT_FALSE(box->isEditing());
    WindowsClipboard::addText(L"9");
    box->claimKbdFocus();
    driver_.key(Key::ctrl | 'V');
    box->setActive(false);
    EXPECT_EQ(textOf(box), "4 s") << "dropped";
    driver_.settle();
    EXPECT_EQ(box->numChildren(), 0u);
    box->setActive(true);
    VariFriendlyTextBox* const kept = box->getTextBox();
    driver_.doubleClick(box);
    EXPECT_TRUE(kept->isVisible() && box->isEditing());
    driver_.key(Key::escape);
    EXPECT_FALSE(kept->isVisible());
    pressOn(box);
    EXPECT_TRUE(kept->isDragging());
    driver_.release();

    box->claimKbdFocus();
    driver_.type(L"5");
    box->setParser(nullptr, false);
    EXPECT_FALSE(box->isEditing());
    driver_.click(box);
    driver_.key(Key::up);
    EXPECT_EQ(textOf(box), "");
    auto own = std::make_unique<VariBoxParserBasic<int>>(nullptr, nullptr, 0, 9, 1, 1, 4);
    box->setParser(own.get(), false);
    driver_.type(L"5");
    EXPECT_TRUE(box->isEditing());
    own.reset();
    EXPECT_FALSE(box->isEditing() || box->getParser());
    VariBox* const from = basic();
    box->setParser(from->getParser(), true);
    EXPECT_FALSE(from->getParser());
    EXPECT_EQ(textOf(box), "50");

    VariBox* const scaled = showing(new VariBoxParserBasic<int>(nullptr, nullptr, 0, 100, 1, 10, 5, 10));
    EXPECT_EQ(textOf(scaled), "50");
    scaled->claimKbdFocus();
    driver_.type(L"x");
    EXPECT_FALSE(scaled->isEditing()) << "no number begins so: it may be a key of the application";
    for (wchar_t const* const refused : {L"79x", L"7.6", L"2*3"}) {
        driver_.type(refused);
        driver_.key(Key::enter);
        EXPECT_TRUE(scaled->isEditing()) << refused;
        EXPECT_EQ(valueOf(scaled), 5);
    }
    driver_.type(L"79");
    driver_.key(Key::enter);
    EXPECT_EQ(valueOf(scaled), 7);
    // A click on the box that has the focus puts the cursor.
    driver_.clickAt(scaled->screenBox().centre());
    EXPECT_TRUE(scaled->isEditing());
    driver_.type(L"1");
    EXPECT_EQ(toUTF8(scaled->getEnteredText()), "710");
    driver_.key(Key::escape);
    WindowsClipboard::addText(Text(1'000'000, L'7'));
    driver_.key(Key::ctrl | 'V');
    driver_.key(Key::enter);
    EXPECT_TRUE(scaled->isEditing() || valueOf(scaled) == 100);
}

TEST_F(VariBoxes, TheDataHearsOfADragOnce) {
    VariBox* const box = basic();
    auto const data = Qv::makePtr<TestData<int>>();
    data->value = 50;
    parserOf<int>(box).bindTo(data);
    auto const heard = [&] { return std::exchange(data->whys, {}); };
    driver_.click(box);
    EXPECT_THAT(heard(), IsEmpty());
    pressOn(box);
    EXPECT_EQ(box->getParser()->getDataChangeType(), DataChangeType::started);
    moveBy({3, 0});
    moveBy({3, 0});
    driver_.release();
    EXPECT_THAT(heard(), ElementsAre(0, 1, 1, 2));
    EXPECT_THAT(std::exchange(data->asked, {}), ElementsAre(50, 51, 52, 52));
    driver_.advance(1000);
    pressOn(box);
    moveBy({3, 0});
    driver_.key(Key::escape);
    driver_.release();
    EXPECT_THAT(heard(), ElementsAre(0, 1, 1, 2));
    EXPECT_EQ(data->value, 52);
    driver_.wheel(box, 1);
    driver_.key(Key::pageDown);
    driver_.type(L"8");
    driver_.key(Key::enter);
    EXPECT_THAT(heard(), ElementsAre(3, 3, 3));
    data->mixed = true;
    told();
    auto const plain = picture();
    data->forceWidgetUpdate(eRedrawYes);
    EXPECT_TRUE(picture() != plain);
    EXPECT_TRUE(Driver::describe(*box).states & GlobDescription::mixed);
    // The value of the first of them is no less a choice for all.
    driver_.type(L"8");
    driver_.key(Key::enter);
    EXPECT_EQ(told(), "varibox_ValueChanged varibox_ChangeComplete");
    data->mixed = false;
    data->forceWidgetUpdate(eRedrawYes);
    data->accepts = false;
    driver_.key(Key::up);
    EXPECT_EQ(valueOf(box), 8);
    EXPECT_EQ(told(), "");
    data->onAsk = [] { throw std::runtime_error("no"); };
    expectDiagnostic("exception in handler");
    driver_.key(Key::up);
    EXPECT_EQ(valueOf(box), 8);
    using End = std::function<void()>;
    End const ends[] = {[&] { box->setActive(false); }, [&] { box->setVisible(false); },
                        [&] { deactivate(); },
                        [&] { parserOf<int>(box).setDataAdaptor(Qv::makePtr<TestData<int>>()); },
                        [&] { box->setParser(nullptr, false); }};
    data->accepts = true;
    data->onAsk = nullptr;
    for (End const& end : ends) {
        parserOf<int>(box).setDataAdaptor(data);
        heard();
        pressOn(box);
        moveBy({3, 0});
        end();
        EXPECT_THAT(heard(), testing::Contains(2).Times(1));
        driver_.release();
        activate(root_);
        box->setActive(true);
        box->setVisible(true);
        EXPECT_FALSE(box->isDragging());
    }
}

TEST_F(VariBoxes, TheDefaultComesBack) {
    VariBox* const box = basic();
    parserOf<int>(box).setDefaultValue(20);
    driver_.doubleClick(box);
    EXPECT_EQ(valueOf(box), 20);
    EXPECT_EQ(told(), "varibox_ChangeComplete varibox_ValueChanged varibox_ChangeComplete");
    parserOf<int>(box).setValue(70);
    driver_.click(box, Driver::Button::right);
    ASSERT_TRUE(box->contextMenu());
    driver_.key(Key::down);
    driver_.key(Key::enter);
    EXPECT_EQ(valueOf(box), 20);
    EXPECT_FALSE(box->contextMenu());
    pressOn(box);
    moveBy({3, 0});
    driver_.release();
    driver_.press(Driver::Button::left, 2);
    driver_.release();
    EXPECT_EQ(valueOf(box), 21) << "the first press was a drag";
    pressOn(box, Driver::Button::right);
    moveBy({3, 0});
    driver_.release(Driver::Button::right);
    EXPECT_FALSE(box->contextMenu());
}

TEST_F(VariBoxes, ATitledBoxIsOneStopAndTellsItsOwner) {
    auto* const titled = show(new TitledVariBox(L"Gain", {}, Palette(), 200, 24, 0));
    titled->setParser(new VariBoxParserBasic<int>(nullptr, nullptr, 0, 9, 1, 1, 4), true);
    std::vector<TabOrderable*> stops;
    titled->getTabOrderables(stops, 0);
    EXPECT_THAT(stops, ElementsAre(titled->getVariBox()));
    EXPECT_EQ(Driver::describe(*titled->getVariBox()).name, L"Gain");
    driver_.wheel(titled->getVariBox(), -1);
    EXPECT_EQ(told(), "varibox_ValueChanged varibox_ChangeComplete");
    EXPECT_EQ(VariBox::message(static_cast<VariBox::eMessageType>(7)), "varibox_<INVALID>");
}

/// What the application writes may fail at any time.
class Faulty final : public VariBoxParserBasicDisplayerBase<int> {
public:
    Text valueToString(int) const override { throw std::runtime_error("show"); }
    int stringToValue(Text const&) const override { throw std::logic_error("read"); }
};

TEST_F(VariBoxes, AFaultyDisplayerHarmsNothing) {
    for (char const* const kind : {"no text", "text not read", "no value"}) expectDiagnostic(kind);
    VariBox* const box = showing(new VariBoxParserBasic<int>(nullptr, new Faulty, 0, 9, 1, 1, 4));
    EXPECT_EQ(textOf(box), "");
    box->claimKbdFocus();
    driver_.type(L"3");
    driver_.key(Key::enter);
    driver_.key(Key::escape);
    EXPECT_EQ(valueOf(box), 4);
}

TEST_F(VariBoxes, ParsersComeAndGo) {
    auto* const box = basic();
    auto* const disabled =
        new VariBoxParserLog<int>(nullptr, 0, 0xFFFF, 0.01, 0.1, 0, 0, 2, std::ios_base::hex);
    disabled->setEnabled(false);
    box->setParser(disabled, true);
    EXPECT_FALSE(box->isActive());
    box->getTextBox();
    auto* const hex = new VariBoxParserLog<int>(nullptr, 0, 0xFFFF, 0.01, 0.1, 0, 0, 0, std::ios_base::hex);
    box->setParser(hex, true);
    EXPECT_TRUE(box->isActive()) << "only its parser had disabled it";
    box->claimKbdFocus();
    driver_.type(L"beef");
    driver_.key(Key::enter);
    EXPECT_EQ(valueOf(box), 0xBEEF) << "small letters, and more of them than the former parser took";

    /// Takes the parser away while it is asked.
    class Leaving final : public VariBoxPlainDisplayer<int> {
    public:
        explicit Leaving(VariBox* box) : box_(box) {}
        int stringToValue(Text const& text) const override {
            destroyed_ = true;
            delete box_->getParser();
            return VariBoxPlainDisplayer<int>::stringToValue(text);
        }
        mutable bool destroyed_ = false;

    private:
        VariBox* box_;
    };
    Qv::Ptr<Leaving> const leaving(new Leaving(box));
    box->setParser(new VariBoxParserBasic<int>(nullptr, leaving.get(), 0, 100, 1, 10, 5), false);
    driver_.type(L"7");
    driver_.key(Key::enter);
    EXPECT_TRUE(leaving->destroyed_);
    EXPECT_FALSE(box->getParser());
    EXPECT_EQ(Consistency(driver_).fault(), "");
}

} // namespace
} // namespace wainscot
