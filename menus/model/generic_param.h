#pragma once

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/services/ui_string.h"
#include "menus/model/val_manager.h"

#include <vector>

namespace wainscot {

/// Values that can be edited through the items of menus (`menus/model/param_items.h`).
namespace GenericParam {

/// How the item of a parameter behaves; bits.
enum PresentationHint : unsigned int {
    eHintNone = 0,
    /// Choosing a value closes the menu.
    eHintClosesMenu = 1,
    /// An action leaves the menu open.
    eHintKeepsMenuOpen = 2,
    /// The texts are shown as they are, whatever they hold.
    eHintPlainText = 4,
};

// The kinds of values.
inline constexpr LightweightString<char> boolType{"bool"};
inline constexpr LightweightString<char> choiceType{"choice"};
inline constexpr LightweightString<char> actionType{"action"};
inline constexpr LightweightString<char> multiType{"multiparam"};

/// A parameter, whatever its value.
class WAINSCOT_API iParam : public virtual iObject {
public:
    /// Whether the user can change it.
    virtual bool isActive() const = 0;
    /// `PresentationHint`, added.
    virtual unsigned int getPresentationHints() const = 0;
    virtual LightweightString<char> getValueType() const = 0;
    virtual UIString getLegend() const = 0;
    /// Sets the value, active or not. False when the text names none: nothing has changed. It may destroy
    /// everything.
    virtual bool setValueFromString(LightweightString<wchar_t> const& text) = 0;
};

class WAINSCOT_API ParamBase : public iParam, public Qv::InternalRefCount {
public:
    /// Notified when the user can change it from now on, or cannot any more.
    static constexpr LightweightString<char> activeChangedMsg{"GenericParam::activeChanged"};

    ParamBase(UIString legend, LightweightString<char> valueType, unsigned int hints);
    ~ParamBase() override;

    bool isActive() const override { return isActive_; }
    void setActive(bool active);
    unsigned int getPresentationHints() const override { return hints_; }
    void setPresentationHints(unsigned int hints) { hints_ = hints; }
    LightweightString<char> getValueType() const override { return valueType_; }
    UIString getLegend() const override { return legend_; }

protected:
    /// Whether the user can change it has changed.
    virtual void activityChanged() = 0;

private:
    UIString legend_;
    LightweightString<char> valueType_;
    unsigned int hints_;
    bool isActive_ = true;
};

template <class T>
class WAINSCOT_API Param : public ValManagerBase<T>, public ParamBase {
public:
    Param(UIString legend, LightweightString<char> valueType, T value = T(), unsigned int hints = eHintNone);

    /// Changes by the user are accepted while the parameter is active.
    bool requestValChange(ValServer<T>* server, T& value) override;
    /// A change by the user that no widget asks for. False when it was refused.
    bool changeByUser(T const& value) { return this->server().updateAndNotify(value); }
    /// Active or not. What is no value of the parameter is refused, and counted in the diagnostics.
    bool setValue(T const& value) override;

protected:
    /// Whether it is a value of the parameter. True here.
    virtual bool isPossible(T const& value) const;
    void activityChanged() override;
};

template <class T>
Param<T>::Param(UIString legend, LightweightString<char> valueType, T value, unsigned int hints)
    : ValManagerBase<T>(std::move(value)), ParamBase(std::move(legend), std::move(valueType), hints) {}

template <class T>
bool Param<T>::requestValChange(ValServer<T>*, T& value) {
    return isActive() && isPossible(value);
}

template <class T>
bool Param<T>::setValue(T const& value) {
    if (isPossible(value)) return ValManagerBase<T>::setValue(value);
    Diagnostics::count("parameter value refused", toUTF8(getLegend().text()).c_str());
    return false;
}

template <class T>
bool Param<T>::isPossible(T const&) const {
    return true;
}

template <class T>
void Param<T>::activityChanged() {
    this->issueNotification(NotifyMsg(activeChangedMsg));
}

extern template class Param<bool>;
extern template class Param<unsigned int>;

/// On or off.
class WAINSCOT_API BoolParam : public Param<bool> {
public:
    explicit BoolParam(UIString legend, bool value = false, unsigned int hints = eHintNone);

    /// "true", "false", "1", "0", or the user's words for on and off.
    bool setValueFromString(LightweightString<wchar_t> const& text) override;
};

/// One of several named values; the value is its index.
class WAINSCOT_API OptionsParam : public Param<unsigned int> {
public:
    std::vector<UIString> const& options() const { return options_; }
    /// The text of a value, or its index.
    bool setValueFromString(LightweightString<wchar_t> const& text) override;

protected:
    OptionsParam(UIString legend, LightweightString<char> valueType, std::vector<UIString> options,
                 unsigned int value, unsigned int hints);
    bool isPossible(unsigned int const& value) const override { return value < options_.size(); }

private:
    std::vector<UIString> options_;
};

/// Its item opens a sub-menu of the values.
class WAINSCOT_API ChoiceParam : public OptionsParam {
public:
    ChoiceParam(UIString legend, std::vector<UIString> options, unsigned int value = 0,
                unsigned int hints = eHintNone);
};

/// Its item is stepped through the values in place.
class WAINSCOT_API MultiParam : public OptionsParam {
public:
    MultiParam(UIString legend, std::vector<UIString> options, unsigned int value = 0,
               unsigned int hints = eHintNone);
};

/// Something to be done; the value counts how often it was fired.
class WAINSCOT_API ActionParam : public Param<unsigned int> {
public:
    explicit ActionParam(UIString legend, unsigned int hints = eHintNone);

    /// By the user. False while it is inactive.
    bool fire() { return changeByUser(value() + 1); }
    /// Fires, whatever the text.
    bool setValueFromString(LightweightString<wchar_t> const& text) override;
};

} // namespace GenericParam
} // namespace wainscot
