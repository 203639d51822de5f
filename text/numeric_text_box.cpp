#include "text/numeric_text_box.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "text/local_number.h"

#include <algorithm>
#include <cmath>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

constexpr LightweightString<wchar_t> eligible{L"-0123456789."};
constexpr LightweightString<wchar_t> eligibleWhole{L"-0123456789"};
constexpr wchar_t point = L'.';
constexpr int decimals = 3;
constexpr int stepsInRange = 500;

} // namespace

NumericTextBox::NumericTextBox(InitArgs const& args) : TextBox(args) {
    setValueRange(0, 100);
}

Text NumericTextBox::getEligibleCharacters() const {
    return eligible;
}

bool NumericTextBox::isAllowed(wchar_t character, bool allowPoint) const {
    return character == point ? allowPoint : eligible.find(character) != Text::npos;
}

bool NumericTextBox::storeRange(double low, double high, double step, bool allowPoint) {
    if (!std::isfinite(low) || !std::isfinite(high)) {
        Diagnostics::count("no number", "NumericTextBox::setValueRange");
        return false;
    }
    low_ = low;
    high_ = high;
    step_ = step;
    setCharacters(allowPoint ? eligible : eligibleWhole, eOnlyCharacters);
    describeChanged(DescriptionChange::value);
    return true;
}

bool NumericTextBox::setValueRange(double low, double high) {
    return storeRange(low, high, high / stepsInRange - low / stepsInRange, true);
}

bool NumericTextBox::setValueRange(int low, int high) {
    std::int64_t const range = std::int64_t(high) - low;
    return storeRange(low, high, static_cast<double>(std::max<std::int64_t>(range / stepsInRange, 1)), false);
}

std::optional<double> NumericTextBox::getNumber() const {
    return Qv::FloatFromWString(getText());
}

bool NumericTextBox::setNumber(double number) {
    if (!std::isfinite(number)) {
        Diagnostics::count("no number", "NumericTextBox::setNumber");
        return false;
    }
    setText(Qv::WStringFromFloat(number, decimals, true));
    return true;
}

bool NumericTextBox::isTextValid() const {
    if (getNumber()) return true;
    Diagnostics::count("no number", "NumericTextBox");
    return false;
}

/// Above the upper limit first, then below the lower one, which wins where they are the wrong way round.
void NumericTextBox::nudge(bool up) {
    DispatchScope const scope;
    double const before = getNumber().value_or(0);
    double const wanted = std::max(std::min(before + (up ? step_ : -step_), high_), low_);
    Text const text = Qv::WStringFromFloat(wanted, decimals, true);
    if (valEqualsVal(wanted, before) || text == getText()) return;
    FirstException thrown;
    LifeGuard const life = guard();
    thrown.run([&] { setByUser(text); });
    if (life.alive()) thrown.run([&] { informOwner(eEditEnd, true, 0); });
    thrown.rethrow();
}

int NumericTextBox::handleKeyboardEvent(int keyCode) {
    auto const step = actionFor(keyTable, static_cast<std::uint32_t>(keyCode));
    if (!step || wasOffered() || !takesInput()) return TextBox::handleKeyboardEvent(keyCode);
    nudge(*step == Step::up);
    return handled;
}

int NumericTextBox::handleMouseEvent(Event const& event) {
    if (!mouse_wheel_event(event)) return TextBox::handleMouseEvent(event);
    if (isActive()) nudge(event.amount() > 0);
    return handled;
}

/// Of a number as a whole, a box for whole numbers takes what stands before the point.
void NumericTextBox::paste(Text const& text) {
    auto const number = plainNumber(text);
    if (!number) return TextBox::paste(text);
    TextBox::paste(isRestricted(point) ? number->substr(0, number->find(point)) : *number);
}

void NumericTextBox::describe(GlobDescription& description) const {
    TextBox::describe(description);
    description.role = Role::numberBox;
    if (auto const number = getNumber()) description.number = NumberValue{*number, low_, high_, step_, 0};
}

} // namespace wainscot
