#include "foundation/val_server.h"

namespace wainscot {

template class ValClient<bool>;
template class ValClient<int>;
template class ValClient<unsigned int>;
template class ValClient<float>;
template class ValClient<double>;
template class ValClient<LightweightString<char>>;
template class ValClient<LightweightString<wchar_t>>;
template class ValClient<ColourData>;
template class ValClient<ThumbSettings>;
template class NotifierEx<bool>;
template class NotifierEx<int>;
template class NotifierEx<unsigned int>;
template class NotifierEx<float>;
template class NotifierEx<double>;
template class NotifierEx<LightweightString<char>>;
template class NotifierEx<LightweightString<wchar_t>>;
template class NotifierEx<ColourData>;
template class NotifierEx<ThumbSettings>;
template class ValServer<bool>;
template class ValServer<int>;
template class ValServer<unsigned int>;
template class ValServer<float>;
template class ValServer<double>;
template class ValServer<LightweightString<char>>;
template class ValServer<LightweightString<wchar_t>>;
template class ValServer<ColourData>;
template class ValServer<ThumbSettings>;

} // namespace wainscot
