#include "foundation/focusable.h"

namespace wainscot {

template class Focusable<Pressable<Glob>>;
template class Focusable<Pressable<rect>>;
template class Focusable<Pressable<StandardPanel>>;

} // namespace wainscot
