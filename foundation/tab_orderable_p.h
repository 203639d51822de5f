#pragma once

#include "foundation/tab_orderable.h"

namespace wainscot {

/// The object that is being focused. Such scopes may be nested.
class TabOrderable::Receiving {
public:
    explicit Receiving(TabOrderable& object);
    ~Receiving();
    Receiving(Receiving const&) = delete;
    Receiving& operator=(Receiving const&) = delete;

    static bool includes(TabOrderable const& object);
    /// The object dies.
    static void forget(TabOrderable const& object);

private:
    static Receiving* innermost_;
    TabOrderable const* object_;
    Receiving* outer_;
};

} // namespace wainscot
