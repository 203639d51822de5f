#pragma once

#include "host/base/export.h"

#include <cstdint>

namespace wainscot {

class Glob;
enum class DescriptionChange : std::uint8_t;

/// Hears of changed descriptions. At most one listener is installed.
class WAINSCOT_API DescriptionListener {
public:
    virtual ~DescriptionListener();
    /// Must not destroy anything.
    virtual void descriptionChanged(Glob& glob, DescriptionChange what) = 0;

    static DescriptionListener* current();
    static void install(DescriptionListener* listener);
};

} // namespace wainscot
