#pragma once

#include "host/events/event.h"

namespace wainscot {

class GlobManager;

/// What keys do beside going to the object that has the focus (`holder`; null when nothing has). Each answers
/// whether the key did something.
namespace KeyCommands {
/// Keys that start and stop the player work wherever the focus is, but where text is being entered.
bool runTransport(Event const& key, Glob const* holder, GlobManager const& windows);
/// Keys that are bound to commands run them when nobody else wanted the key.
bool runBound(std::uint32_t key);
/// Tells the focus holder and its ancestors to cut, copy or paste when that is what the key asks for.
bool sendClipboardMessage(std::uint32_t key, Glob* holder);
} // namespace KeyCommands

} // namespace wainscot
