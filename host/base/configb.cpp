#include "host/base/configb.h"

#include <limits>

namespace wainscot {

bool configb::in(LightweightString<char> const& key, int& value) const {
    std::int64_t wide = 0;
    bool const fits =
        read(key, wide) && wide >= std::numeric_limits<int>::min() && wide <= std::numeric_limits<int>::max();
    if (fits) value = static_cast<int>(wide);
    return fits;
}

} // namespace wainscot
