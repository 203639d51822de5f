#include "menus/model/val_manager.h"

namespace wainscot {

template class ValManagerBase<bool>;
template class ValManagerBase<unsigned int>;

} // namespace wainscot
