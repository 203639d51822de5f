#include "foundation/val_adaptor.h"

#include "foundation/val_widget.h"

namespace wainscot {

AdaptorBase::~AdaptorBase() = default;

bool AdaptorBase::isMixed() const {
    return false;
}

template class ValAdaptorBase<bool>;
template class ValAdaptorBase<int>;
template class ValAdaptorBase<unsigned int>;
template class ValAdaptorBase<float>;
template class ValAdaptorBase<double>;
template class ValAdaptorBase<LightweightString<char>>;
template class ValAdaptorBase<LightweightString<wchar_t>>;
template class ValAdaptorBase<ColourData>;
template class ValAdaptorBase<ThumbSettings>;
template class ButtonAdaptor<LightweightString<char>>;
template class ButtonAdaptor<LightweightString<wchar_t>>;

} // namespace wainscot
