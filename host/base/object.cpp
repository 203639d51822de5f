#include "host/base/object.h"

namespace wainscot {

iObject::~iObject() = default;

namespace Qv {

InternalRefCount::~InternalRefCount() = default;

void InternalRefCount::release() const noexcept {
    if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

} // namespace Qv
} // namespace wainscot
