#pragma once

#include "host/events/event.h"

namespace wainscot {

class GlobManager;

/// What keys do besides going to the holder of the focus (`holder`; may be null). Each function answers
/// whether the key did something.
namespace KeyCommands {
/// Transport keys, which start and stop the player, work wherever the focus is, except while text is being
/// entered.
bool runTransport(Event const& key, Glob const* holder, GlobManager const& windows);
/// Runs the command to which a key is bound, after nobody else wanted the key.
bool runBound(std::uint32_t key);
/// Tells the focus holder and its ancestors to cut, copy or paste, if the key means that.
bool sendClipboardMessage(std::uint32_t key, Glob* holder);
} // namespace KeyCommands

} // namespace wainscot
