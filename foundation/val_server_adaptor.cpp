#include "foundation/val_server_adaptor.h"

namespace wainscot {

template class ValServerAdaptor<bool>;
template class ValServerAdaptor<int>;
template class ValServerAdaptor<unsigned int>;
template class ValServerAdaptor<float>;
template class ValServerAdaptor<double>;
template class ValServerAdaptor<LightweightString<char>>;
template class ValServerAdaptor<LightweightString<wchar_t>>;
template class ValServerAdaptor<ColourData>;
template class ValServerAdaptor<ThumbSettings>;

} // namespace wainscot
