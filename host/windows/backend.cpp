#include "host/windows/backend.h"

namespace wainscot {

NativeWindow::~NativeWindow() = default;
Backend::~Backend() = default;

} // namespace wainscot
