#pragma once

#include "driver/windows/window_bench.h"

#include <gtest/gtest.h>

namespace wainscot {

/// The gallery in a real window, used with the real pointer and keys. Widgets are found by role and name; a
/// gallery without a screen, which lays out its page in the same way, gives their places.
class GalleryWindow : public testing::Test {
protected:
    /// Pixels from the upper-left corner of the window's contents.
    struct Area {
        XY<int> corner;
        XY<int> size;
        XY<int> middle() const { return corner + XY<int>{size.x / 2, size.y / 2}; }
    };

    void SetUp() override;
    void TearDown() override;

    /// Returns when the page is on the screen and has the keyboard.
    void open(std::string const& page, XY<int> size = {1000, 700}, std::vector<std::string> const& more = {});
    /// Of a widget of the page, as in `button "Apply"`.
    Area areaOf(std::string const& widget);

    /// A place of the window, or the middle of a widget, on the screen.
    XY<int> at(XY<int> place) { return bench_.placeOf(window_) + place; }
    XY<int> middleOf(std::string const& widget) { return at(areaOf(widget).middle()); }
    void clickAt(XY<int> place);
    void clickOn(std::string const& widget) { clickAt(middleOf(widget)); }
    void pressAt(XY<int> place);

    /// The next line that begins with `line`.
    std::string next(std::string_view line) { return gallery_->waitForLine(line); }
    void expectLines(std::vector<std::string> const& lines);
    /// No line so far has this text.
    void expectNothingOf(std::string const& text);

    /// How often the gallery has been woken, once it was left alone for a while.
    long wakeUpsAtRest();

    WindowBench bench_;
    std::unique_ptr<ChildProcess> gallery_;
    WindowBench::WindowId window_ = 0;

private:
    std::string page_;
    std::string size_;
};

} // namespace wainscot
