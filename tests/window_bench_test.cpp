#include "driver/windows/window_bench.h"
#include "tests/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace wainscot;

TEST(WindowBenches, NameTheProgramThatIsNotInstalledAndRefuseAllElse) {
    TemporaryFolder const folder;
    TestEnvironment const path{{"PATH", folder.path()}};
    for (std::string const missing : {"Xvfb", "openbox", "xdotool"}) {
        WindowBench bench;
        EXPECT_EQ(bench.problem(), missing + " is not installed");
        EXPECT_EQ(bench.start({"desktop-probe"})->waitForExit(), ChildProcess::notStarted);
        EXPECT_EQ(bench.findWindow("probe"), 0u);
        EXPECT_FALSE(bench.key({"a"}) || bench.click() || bench.grabCorner(1) || bench.settle());
        EXPECT_EQ(bench.placeOf(1) + bench.sizeOf(1), XY<int>());
        EXPECT_EQ(bench.colourAt({0, 0}), 0u);
        bench.dragFilesOver(1, {});
        bench.minimise(1);
        std::filesystem::create_symlink("/usr/bin/" + missing, folder.path(missing));
    }
    EXPECT_EQ(WindowBench().problem(), "");
}

TEST(WindowBenches, OutliveTheirServer) {
    WindowBench bench;
    ASSERT_EQ(bench.problem(), "");
    ASSERT_TRUE(bench.movePointer({3, 3}));
    std::string const self = std::to_string(getpid());
    std::ifstream children("/proc/self/task/" + self + "/children");
    for (pid_t child = 0; children >> child;) {
        std::string name;
        std::ifstream("/proc/" + std::to_string(child) + "/comm") >> name;
        if (name == "Xvfb") kill(child, SIGKILL);
    }
    EXPECT_TRUE(waitUntil([&] { return !bench.movePointer({3, 3}); }));
    EXPECT_EQ(bench.colourAt({3, 3}), 0u);
    EXPECT_FALSE(bench.isActive(1) || bench.isViewable(1));
    bench.requestClose(1);
}
