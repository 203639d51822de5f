#pragma once

#include "host/base/lightweight_string.h"
#include "host/base/xy.h"

#include <vector>

namespace wainscot::gallery {

/// What the command line asks for.
struct Options {
    bool help = false;
    bool list = false;
    bool offscreen = false;
    bool echo = false;
    bool focus = false;
    bool bare = false;
    bool busy = false;
    LightweightString<char> page;
    LightweightString<char> shots;
    LightweightString<char> script;
    /// How many things to do at random on each page, and the seed that decides which.
    int random = 0;
    int seed = 1;
    /// Check after that many things; 0 = never.
    int check = 0;
    /// Files of what was done: one to write, one to do again, one to make shorter.
    LightweightString<char> record;
    LightweightString<char> replay;
    LightweightString<char> shorten;
    double scale = 1.0;
    bool scaleGiven = false;
    bool light = false;
    XY<int> size{1200, 800};

    static char const* usage();
};

/// Empty when all was understood, else what is wrong and what is allowed.
LightweightString<char> parseOptions(std::vector<LightweightString<char>> const& arguments, Options& options);

} // namespace wainscot::gallery
