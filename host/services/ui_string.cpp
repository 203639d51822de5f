#include "host/services/ui_string.h"

namespace wainscot {

LightweightString<wchar_t> UIString::text() const {
    return isResource() ? resourceStrW(id_, format_) : text_;
}

} // namespace wainscot
