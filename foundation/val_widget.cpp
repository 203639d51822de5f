#include "foundation/val_widget.h"

namespace wainscot {

WidgetBase::~WidgetBase() = default;

template class ValWidget<bool>;
template class ValWidget<int>;
template class ValWidget<unsigned int>;
template class ValWidget<float>;
template class ValWidget<double>;
template class ValWidget<LightweightString<char>>;
template class ValWidget<LightweightString<wchar_t>>;
template class ValWidget<ColourData>;
template class ValWidget<ThumbSettings>;

} // namespace wainscot
