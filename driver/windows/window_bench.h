#pragma once

#include "driver/windows/child_process.h"
#include "host/base/xy.h"

#include <cstdint>
#include <memory>
#include <optional>

struct _XDisplay;

namespace wainscot {

/// A screen of its own for tests with real windows: an X server without hardware (Xvfb), a window manager
/// (openbox), a pointer and keys (xdotool), and a home folder, language and time zone of their own.
/// Everything is ended and removed with it. Any number of benches may be used at once.
///
/// Places on the screen are those of X: pixels from the upper-left corner. A call that finds no window, or no
/// bench that works, changes nothing and gives false, 0 or nothing. Errors of X are ignored in the whole test
/// program from the first bench on, because windows vanish while they are looked at.
class WAINSCOT_API WindowBench {
public:
    using WindowId = unsigned long;

    enum class WindowManager { openbox, none };

    /// Starts everything and returns when it works, or when `problem` tells why it does not.
    explicit WindowBench(WindowManager windowManager = WindowManager::openbox, int bitsPerPixel = 24);
    ~WindowBench();
    WindowBench(WindowBench const&) = delete;
    WindowBench& operator=(WindowBench const&) = delete;

    /// Why the bench does not work, with the name of a program that is not installed; empty when it works.
    std::string const& problem() const { return problem_; }
    XY<int> screenSize() const { return {1024, 768}; }

    /// Sets a variable for the programs that are started from now on.
    void setVariable(std::string const& name, std::string const& value) { environment_[name] = value; }
    /// Starts a program on the screen; never null. A name without "/" is looked for beside the test program.
    std::unique_ptr<ChildProcess> start(std::vector<std::string> words);
    /// The full name of a file beside the test program, by its place relative to it.
    static std::string besideTests(std::string const& name);
    /// What the programs have written to their standard error streams.
    std::string errors() const;

    /// Runs xdotool with these words to its end; false when it fails.
    bool xdotool(std::vector<std::string> const& words);
    /// Presses and releases keys by their names ("a", "shift+Tab", "KP_1"), one after the other.
    bool key(std::vector<std::string> const& names);
    bool movePointer(XY<int> place);
    /// Moves the pointer in small steps, as a hand does.
    bool glidePointer(XY<int> from, XY<int> to);
    /// Takes the lower right corner of a window's frame with the left button and pulls a little, until the
    /// window follows. Gives the pointer's place. Nothing when the window never follows; then the button is
    /// up.
    std::optional<XY<int>> grabCorner(WindowId window);
    /// Returns when the window manager has let the press pass. Presses that follow each other faster than
    /// that may get lost.
    bool pressButton(int button = 1);
    bool releaseButton(int button = 1);
    /// Presses and releases; too slow for double clicks beside a window manager.
    bool click(int button = 1);
    bool wheel(int notches);
    /// Waits until no program holds the pointer: until then every press goes to that program.
    bool waitForFreePointer();
    /// Chooses a keyboard layout ("us", "de", "ru") and returns when the server has it.
    bool setLayout(std::string const& layout);

    /// Sets the resource text of the screen, which tells programs its dots per inch, for example.
    void setResources(std::string const& text);

    /// Waits until the window manager has done all that it has been asked for; false when it does not answer.
    bool settle();
    /// Waits until the window with this title is on the screen, in its frame and at its place; 0 when none
    /// comes.
    WindowId findWindow(std::string const& title);
    std::string titleOf(WindowId window);
    /// Upper-left corner and size of the contents on the screen.
    XY<int> placeOf(WindowId window);
    XY<int> sizeOf(WindowId window);
    bool isViewable(WindowId window);
    /// Whether the keyboard belongs to the window.
    bool isActive(WindowId window);
    /// Bits of a pixel of the window.
    int depthOf(WindowId window);
    /// From now on programs find a compositor, although transparency is not shown.
    void pretendCompositor();
    /// Asks the window manager to close the window, as its close button does.
    void requestClose(WindowId window);
    void minimise(WindowId window);
    void activate(WindowId window);
    /// Another program drags files over a place on the screen, and away again.
    void dragFilesOver(WindowId window, XY<int> place);
    void dragFilesAway(WindowId window);

    /// The colour of a pixel of the screen, 0xRRGGBB.
    std::uint32_t colourAt(XY<int> place);
    bool waitForColour(XY<int> place, std::uint32_t colour);
    /// The same for a place in a window, which may still be moving: into its frame, for example.
    bool waitForColour(WindowId window, XY<int> place, std::uint32_t colour);

private:
    bool works() const { return display_ && problem_.empty(); }
    bool makeHome();
    bool startServer(int bitsPerPixel);
    bool startWindowManager();
    bool managesNewWindows(std::chrono::milliseconds enough);
    std::string whyNot(ChildProcess& program, std::string const& name) const;
    std::unique_ptr<ChildProcess> launch(std::vector<std::string> const& words);
    bool run(std::vector<std::string> const& words);
    void tellDragged(WindowId window, char const* message, long second, long third, long fourth);
    void tellWindowManager(WindowId window, char const* message, long first, long second);

    std::string problem_;
    std::string folder_;
    ChildProcess::Environment environment_;
    std::unique_ptr<ChildProcess> server_;
    std::unique_ptr<ChildProcess> windowManager_;
    _XDisplay* display_ = nullptr;
};

} // namespace wainscot
