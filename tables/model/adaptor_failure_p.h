#pragma once

namespace wainscot {

/// To be called where what an adaptor has thrown is caught: counts it, with its text, among what has gone
/// wrong.
void noteAdaptorFailure(char const* where);

} // namespace wainscot
