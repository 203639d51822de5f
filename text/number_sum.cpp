#include "text/number_sum.h"

#include "host/base/convert.h"
#include "host/base/letter_case.h"
#include "text/local_number.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

constexpr wchar_t timesSign = 0xD7;
/// In the row of operators that wait.
constexpr wchar_t negation = L'n';

bool isOfNumber(wchar_t c) {
    return (c >= L'0' && c <= L'9') || c == L'.' || c == L',';
}

bool isBlank(wchar_t c) {
    return c == L' ' || c == L'\t' || c == 0xA0 || c == 0x202F;
}

/// The sign of an operator or parenthesis, as the rest of the file knows it; 0 for other characters.
wchar_t operatorOf(wchar_t c) {
    if (c == trueMinus) return L'-';
    if (c == timesSign) return L'*';
    return std::wstring_view(L"+-*/()").find(c) != std::wstring_view::npos ? c : 0;
}

int rankOf(wchar_t sign) {
    return sign == L'(' ? 0 : sign == L'+' || sign == L'-' ? 1 : sign == negation ? 3 : 2;
}

/// Reads a calculation from left to right; operators wait until their operands are complete.
class Calculation {
public:
    Calculation(std::wstring_view text, std::span<NumberUnit const> units) : rest_(text), units_(units) {}

    std::optional<double> result() {
        while (!rest_.empty())
            if (!takeNext()) return std::nullopt;
        if (wantsOperand_) return std::nullopt;
        finishDownTo(1);
        if (!waiting_.empty() || values_.size() != 1) return std::nullopt;
        return std::isfinite(values_.back()) ? std::optional(values_.back()) : std::nullopt;
    }

private:
    bool takeNext() {
        wchar_t const c = rest_.front();
        if (isBlank(c)) return rest_.remove_prefix(1), true;
        if (canHaveUnit_ && takeUnit()) return true;
        if (isOfNumber(c)) return takeNumber();
        wchar_t const sign = operatorOf(c);
        if (sign == 0) return false;
        rest_.remove_prefix(1);
        if (sign == L'(') return wantsOperand_ && (waiting_.push_back(sign), true);
        if (wantsOperand_) return takeSign(sign);
        canHaveUnit_ = false;
        return sign == L')' ? closeParenthesis() : takeOperator(sign);
    }

    bool takeNumber() {
        auto const end = std::ranges::find_if_not(rest_, isOfNumber);
        std::wstring_view const digits = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
        rest_.remove_prefix(digits.size());
        auto const plain = wantsOperand_ ? plainNumber(Text(digits)) : std::nullopt;
        auto const number = plain ? Qv::FloatFromWString(*plain) : std::nullopt;
        if (!number) return false;
        values_.push_back(*number);
        wantsOperand_ = false;
        canHaveUnit_ = true;
        return true;
    }

    /// Names may hold digits and operators, so the longest that fits counts.
    bool takeUnit() {
        NumberUnit const* found = nullptr;
        bool isExact = false;
        for (NumberUnit const& unit : units_) {
            std::wstring_view const name = unit.name.view();
            if (name.empty() || (found && name.size() < found->name.size()) || !isHere(name)) continue;
            if (found && name.size() == found->name.size() && isExact) continue;
            found = &unit;
            isExact = rest_.starts_with(name);
        }
        if (!found) return false;
        rest_.remove_prefix(found->name.size());
        values_.back() *= found->factor;
        canHaveUnit_ = false;
        return true;
    }

    bool isHere(std::wstring_view name) const {
        if (!isSameText(rest_.substr(0, name.size()), name)) return false;
        if (name.size() == rest_.size()) return true;
        wchar_t const next = rest_[name.size()];
        return isOfNumber(next) || isBlank(next) || operatorOf(next) != 0;
    }

    bool takeSign(wchar_t sign) {
        if (sign == L'-') waiting_.push_back(negation);
        return sign == L'-' || sign == L'+';
    }

    bool takeOperator(wchar_t sign) {
        finishDownTo(rankOf(sign));
        waiting_.push_back(sign);
        wantsOperand_ = true;
        return true;
    }

    bool closeParenthesis() {
        finishDownTo(1);
        if (waiting_.empty()) return false;
        waiting_.pop_back();
        return true;
    }

    /// Carries out what waits and binds at least as strongly; a parenthesis stays.
    void finishDownTo(int rank) {
        while (!waiting_.empty() && rankOf(waiting_.back()) >= rank) {
            wchar_t const sign = waiting_.back();
            waiting_.pop_back();
            double const right = values_.back();
            if (sign != negation) values_.pop_back();
            double& left = values_.back();
            switch (sign) {
            case L'+':
                left += right;
                break;
            case L'-':
                left -= right;
                break;
            case L'*':
                left *= right;
                break;
            case L'/':
                left /= right;
                break;
            default:
                left = -right;
            }
        }
    }

    std::wstring_view rest_;
    std::span<NumberUnit const> units_;
    std::vector<double> values_;
    std::vector<wchar_t> waiting_;
    bool wantsOperand_ = true;
    bool canHaveUnit_ = false;
};

} // namespace

std::optional<double> sumOf(Text const& text, std::span<NumberUnit const> units) {
    return Calculation(text.view(), units).result();
}

} // namespace wainscot
