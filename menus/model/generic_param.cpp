#include "menus/model/generic_param.h"

#include "host/base/data_convert.h"
#include "host/services/text_ids.h"

#include <algorithm>

namespace wainscot::GenericParam {

template class Param<bool>;
template class Param<unsigned int>;

ParamBase::ParamBase(UIString legend, LightweightString<char> valueType, unsigned int hints)
    : legend_(std::move(legend)), valueType_(std::move(valueType)), hints_(hints) {}

ParamBase::~ParamBase() = default;

void ParamBase::setActive(bool active) {
    if (std::exchange(isActive_, active) != active) activityChanged();
}

BoolParam::BoolParam(UIString legend, bool value, unsigned int hints)
    : Param(std::move(legend), boolType, value, hints) {}

bool BoolParam::setValueFromString(LightweightString<wchar_t> const& text) {
    bool const isOn = text == L"true" || text == L"1" || text == resourceStrW(TextId::on);
    bool const isOff = text == L"false" || text == L"0" || text == resourceStrW(TextId::off);
    return (isOn || isOff) && setValue(isOn);
}

OptionsParam::OptionsParam(UIString legend, LightweightString<char> valueType, std::vector<UIString> options,
                           unsigned int value, unsigned int hints)
    : Param(std::move(legend), std::move(valueType), value, hints), options_(std::move(options)) {}

bool OptionsParam::setValueFromString(LightweightString<wchar_t> const& text) {
    auto const named = std::find_if(options_.begin(), options_.end(),
                                    [&](UIString const& option) { return option.text() == text; });
    if (named != options_.end()) return setValue(static_cast<unsigned int>(named - options_.begin()));
    std::optional<int> const index = Qv::IntFromWString(text);
    return index && *index >= 0 && isPossible(static_cast<unsigned int>(*index)) &&
           setValue(static_cast<unsigned int>(*index));
}

ChoiceParam::ChoiceParam(UIString legend, std::vector<UIString> options, unsigned int value,
                         unsigned int hints)
    : OptionsParam(std::move(legend), choiceType, std::move(options), value, hints) {}

MultiParam::MultiParam(UIString legend, std::vector<UIString> options, unsigned int value, unsigned int hints)
    : OptionsParam(std::move(legend), multiType, std::move(options), value, hints) {}

ActionParam::ActionParam(UIString legend, unsigned int hints)
    : Param(std::move(legend), actionType, 0, hints) {}

bool ActionParam::setValueFromString(LightweightString<wchar_t> const&) {
    return setValue(value() + 1);
}

} // namespace wainscot::GenericParam
