#pragma once

#include "foundation/colour_data.h"
#include "foundation/data_change_type.h"
#include "foundation/thumb_settings.h"
#include "host/base/lightweight_string.h"
#include "host/base/ptr.h"
#include "host/objects/redraw_flag.h"

#include <type_traits>

namespace wainscot {

template <class T>
class ValWidget;

/// The common base of adaptors of all types. Adaptors are counted: widget and application share them.
class WAINSCOT_API AdaptorBase : public Qv::InternalRefCount {
public:
    ~AdaptorBase() override;

    /// Reads the data and shows it in the widget. Applications call it when the data changed elsewhere.
    virtual void forceWidgetUpdate(eRedrawFlag redraw) = 0;
    /// Whether the data has several values, like a selection of unlike things. False here.
    virtual bool isMixed() const;
};

/// The application's link to the data behind one widget: it derives from this, reads in `getDataValue` and
/// writes in `requestSetNewDataValue`. It does not own the widget, and may outlive it.
template <class T>
class WAINSCOT_API ValAdaptorBase : public AdaptorBase {
public:
    /// The value of the data now.
    virtual T getDataValue() const = 0;
    /// Writes a value that the user chose to the data. False = refused: the widget keeps its old value. The
    /// widget, too, may be destroyed here.
    virtual bool requestSetNewDataValue(T const& value, DataChangeType why) = 0;

    /// Does nothing while no widget has the adaptor, and when the widget has died in the reading. Defined in
    /// `val_widget.h`, for types other than those below.
    void forceWidgetUpdate(eRedrawFlag redraw) override;
    /// The widget that it was given to; null when there is none, or it has died.
    ValWidget<T>* getWidget() const { return widget_; }

private:
    friend class ValWidget<T>;
    void showWhetherMixed(eRedrawFlag redraw);
    void joinWidget(ValWidget<T>& widget) { widget_ = &widget; }
    void leaveWidget(ValWidget<T>& widget) {
        if (widget_ == &widget) widget_ = nullptr;
    }

    ValWidget<T>* widget_ = nullptr;
};

/// The adaptor of a button, whose value is its label.
template <class T>
class WAINSCOT_API ButtonAdaptor : public ValAdaptorBase<T> {
    static_assert(std::is_same_v<T, LightweightString<char>> || std::is_same_v<T, LightweightString<wchar_t>>,
                  "labels are texts");
};

extern template class ValAdaptorBase<bool>;
extern template class ValAdaptorBase<int>;
extern template class ValAdaptorBase<unsigned int>;
extern template class ValAdaptorBase<float>;
extern template class ValAdaptorBase<double>;
extern template class ValAdaptorBase<LightweightString<char>>;
extern template class ValAdaptorBase<LightweightString<wchar_t>>;
extern template class ValAdaptorBase<ColourData>;
extern template class ValAdaptorBase<ThumbSettings>;
extern template class ButtonAdaptor<LightweightString<char>>;
extern template class ButtonAdaptor<LightweightString<wchar_t>>;

} // namespace wainscot
