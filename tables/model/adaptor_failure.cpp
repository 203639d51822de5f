#include "tables/model/adaptor_failure_p.h"

#include "host/base/diagnostics.h"
#include "host/base/lightweight_string.h"

#include <exception>

namespace wainscot {

void noteAdaptorFailure(char const* where) {
    LightweightString<char> detail(where);
    try {
        throw;
    } catch (std::exception const& problem) {
        detail += LightweightString<char>(": ") + problem.what();
    } catch (...) {
        detail += ": not derived from std::exception";
    }
    Diagnostics::count("adaptor failed", detail.c_str());
}

} // namespace wainscot
