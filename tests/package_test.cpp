#include "driver/windows/window_bench.h"
#include "host/drawing/palette.h"
#include "tests/temporary_folder.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>

using namespace wainscot;
using testing::HasSubstr;

namespace {

/// What a command writes, with a last line that tells its exit code.
std::string outcomeOf(std::string const& command) {
    FILE* const pipe = popen((command + " 2>&1 </dev/null; echo exit $?").c_str(), "r");
    if (!pipe) return {};
    std::string text;
    char part[4096];
    while (std::size_t const count = std::fread(part, 1, sizeof part, pipe)) text.append(part, count);
    pclose(pipe);
    return text;
}

constexpr char const* englishRun =
    "  button \"Import\"\n  button \"Close\"\n\nheard: import\nwindows: 0\nexit 0\n";
constexpr char const* germanRun =
    "  button \"Import\"\n  button \"Schließen\"\n\nheard: import\nwindows: 0\nexit 0\n";

} // namespace

/// One case, because all of it needs the same installed tree.
TEST(Package, ServesProgramsThatKnowOnlyWhatIsInstalled) {
    TemporaryFolder const folder;
    std::string const place = folder.path();
    std::string const build = WindowBench::besideTests("..");
    ASSERT_THAT(outcomeOf(std::string(WAINSCOT_SOURCE_DIR) + "/tools/package " + build + " " + place),
                HasSubstr("exit 0\n"));
    std::string const bare = "env -u DISPLAY -u WAYLAND_DISPLAY -u WAINSCOT_DATA_DIR ";
    EXPECT_THAT(outcomeOf(bare + place + "/cmake/first_panel --check"), HasSubstr(englishRun));
    // The other language comes from the installed texts.
    EXPECT_THAT(outcomeOf(bare + "LC_ALL= LANG=de_DE.UTF-8 " + place + "/pkgconfig/first_panel --check"),
                HasSubstr(germanRun));
    EXPECT_THAT(outcomeOf(bare + place + "/readme/first"), HasSubstr("no display can be used"));
    EXPECT_THAT(outcomeOf(bare + place + "/tree/bin/wainscot-gallery --list"), HasSubstr("exit 0\n"));

    // The first program of README.md in a real window, through the installed desktop module.
    WindowBench bench;
    ASSERT_EQ(bench.problem(), "");
    std::unique_ptr<ChildProcess> const program = bench.start({place + "/readme/first"});
    WindowBench::WindowId const window = bench.findWindow("First panel");
    ASSERT_NE(window, 0u) << bench.errors();
    // Away from the button, whose face it would brighten.
    bench.movePointer({5, 5});
    ASSERT_TRUE(bench.waitForColour(window, {50, 40}, Palette().button().getAsLong()));
    bench.movePointer(bench.placeOf(window) + XY<int>(100, 40));
    bench.click();
    EXPECT_EQ(program->waitForLine("hello"), "hello") << bench.errors();
    bench.requestClose(window);
    EXPECT_EQ(program->waitForExit(), 0);
}
