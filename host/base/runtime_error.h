#pragma once

#include "host/base/export.h"

#include <stdexcept>

namespace wainscot::Qv::Exception {

/// Something cannot be done with what was given, such as reading a number from a text.
class WAINSCOT_API RuntimeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    RuntimeError(RuntimeError const&) = default;
    RuntimeError& operator=(RuntimeError const&) = default;
    ~RuntimeError() override;
};

} // namespace wainscot::Qv::Exception
