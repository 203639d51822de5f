#pragma once

#include "gallery/options.h"

namespace wainscot {
class Host;
}

namespace wainscot::gallery {

/// Uses every page, or the page named, at random, and prints what has happened. Empty when all went well,
/// else what is wrong.
LightweightString<char> useAtRandom(Host& host, Options const& options);

/// Takes the options of the file that is to be replayed: page, size, scale, theme. Empty when the file can be
/// read, else what is wrong.
LightweightString<char> takeOptions(Options& options);

/// Does what `useAtRandom` has recorded, with a check after each act.
LightweightString<char> replay(Host& host, Options const& options);

/// Has a program (this one) replay ever shorter forms of the file in processes of their own, and keeps the
/// shortest one that still fails.
LightweightString<char> shortenFile(char const* program, Options const& options);

} // namespace wainscot::gallery
