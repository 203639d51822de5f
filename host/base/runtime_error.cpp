#include "host/base/runtime_error.h"

namespace wainscot::Qv::Exception {

RuntimeError::~RuntimeError() = default;

} // namespace wainscot::Qv::Exception
