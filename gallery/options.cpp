#include "gallery/options.h"

#include "gallery/page.h"

#include "host/base/convert.h"

namespace wainscot::gallery {

namespace {

using Text = LightweightString<char>;

constexpr int maxExtent = 16000;

Text pageNames() {
    Text names;
    for (Page const* const page : pages()) names += Text(names.empty() ? "" : ", ") + page->name;
    return names;
}

Text setPage(Options& options, Text const& value) {
    options.page = value;
    return findPage(value) ? Text() : Text("there is no page \"") + value + "\"; there are " + pageNames();
}

Text setShots(Options& options, Text const& value) {
    options.shots = value;
    return {};
}

Text setScript(Options& options, Text const& value) {
    options.script = value;
    options.offscreen = true;
    return {};
}

Text setScale(Options& options, Text const& value) {
    auto const scale = Qv::FloatFromWString(fromUTF8(value));
    if (!scale || *scale < 0.5 || *scale > 4.0)
        return Text("--scale takes a number from 0.5 to 4, not \"") + value + "\"";
    options.scale = *scale;
    options.scaleGiven = true;
    return {};
}

Text setTheme(Options& options, Text const& value) {
    options.light = value == "light";
    bool const known = options.light || value == "dark";
    return known ? Text() : Text("--theme takes dark or light, not \"") + value + "\"";
}

Text setSize(Options& options, Text const& value) {
    std::size_t const cross = value.find('x');
    auto const width = Qv::IntFromWString(fromUTF8(value.substr(0, cross)));
    auto const height = cross == Text::npos ? width : Qv::IntFromWString(fromUTF8(value.substr(cross + 1)));
    bool const fits = cross != Text::npos && width && height && *width >= 1 && *height >= 1 &&
                      *width <= maxExtent && *height <= maxExtent;
    if (!fits) return Text("--size takes WIDTHxHEIGHT from 1x1 to 16000x16000, not \"") + value + "\"";
    options.size = {*width, *height};
    return {};
}

Text setNumber(int& number, char const* name, Text const& value) {
    auto const read = Qv::IntFromWString(fromUTF8(value));
    if (!read || *read < 0) return Text(name) + " takes a number from 0 up, not \"" + value + "\"";
    number = *read;
    return {};
}

Text setRandom(Options& options, Text const& value) {
    return setNumber(options.random, "--random", value);
}

Text setSeed(Options& options, Text const& value) {
    return setNumber(options.seed, "--seed", value);
}

Text setCheck(Options& options, Text const& value) {
    return setNumber(options.check, "--check", value);
}

Text setRecord(Options& options, Text const& value) {
    options.record = value;
    return {};
}

Text setReplay(Options& options, Text const& value) {
    options.replay = value;
    return {};
}

Text setShorten(Options& options, Text const& value) {
    options.shorten = value;
    return {};
}

struct Option {
    char const* name;
    Text (*set)(Options&, Text const& value);
};

constexpr Option valueOptions[] = {
    {"--page", setPage},   {"--shots", setShots},   {"--script", setScript}, {"--scale", setScale},
    {"--theme", setTheme}, {"--size", setSize},     {"--random", setRandom}, {"--seed", setSeed},
    {"--check", setCheck}, {"--record", setRecord}, {"--replay", setReplay}, {"--shorten", setShorten}};

struct Switch {
    char const* name;
    bool Options::*flag;
};

constexpr Switch switches[] = {{"--help", &Options::help},           {"--list", &Options::list},
                               {"--offscreen", &Options::offscreen}, {"--echo", &Options::echo},
                               {"--bare", &Options::bare},           {"--busy", &Options::busy},
                               {"--focus", &Options::focus}};

Text allowed() {
    Text names("--desktop");
    for (Switch const& known : switches) names += Text(", ") + known.name;
    for (Option const& known : valueOptions) names += Text(", ") + known.name;
    return names;
}

} // namespace

char const* Options::usage() {
    return "wainscot-gallery: every widget on a page of its own\n"
           "  --desktop         open the window (what happens without any option)\n"
           "  --offscreen       run without a screen\n"
           "  --list            print the names of the pages\n"
           "  --page NAME       begin with this page\n"
           "  --shots DIR       write every page, or the one named, as DIR/NAME.png\n"
           "  --bare            pictures show the page alone, without the list and the messages\n"
           "  --script FILE     do what the file says, without a screen\n"
           "  --random N        do N things at random on every page, or the one named, without a screen\n"
           "  --seed S          which things\n"
           "  --check N         after each N things, check that what is shown and kept fits together\n"
           "  --record FILE     write what is done at random, page by page\n"
           "  --replay FILE     do it again, with a check after each thing\n"
           "  --shorten FILE    leave out of the file all that its fault does not need\n"
           "  --scale N         device pixels in a pixel, 0.5 to 4\n"
           "  --theme THEME     dark or light\n"
           "  --size WxH        size of the window\n"
           "  --echo            also print each line of the log\n"
           "  --focus           print what takes the keyboard focus\n"
           "  --busy            compute on a second thread all the time, as a program that renders does\n"
           "  --help            print this\n";
}

LightweightString<char> parseOptions(std::vector<LightweightString<char>> const& arguments,
                                     Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        Text const& name = arguments[i];
        if (name == "--desktop") {
            options.offscreen = false;
            continue;
        }
        bool known = false;
        for (Switch const& candidate : switches) {
            if (name != candidate.name) continue;
            options.*candidate.flag = true;
            known = true;
        }
        for (Option const& candidate : valueOptions) {
            if (name != candidate.name) continue;
            if (i + 1 == arguments.size()) return name + " needs a value";
            Text const problem = candidate.set(options, arguments[++i]);
            if (!problem.empty()) return problem;
            known = true;
        }
        if (!known) return Text("there is no option \"") + name + "\"; there are " + allowed();
    }
    return {};
}

} // namespace wainscot::gallery
