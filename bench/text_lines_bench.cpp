#include "bench/driving.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "text/multi_line_text_box.h"

/// Documents of many lines, and of one very long line, that are opened, typed into and scrolled.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;
using Text = LightweightString<wchar_t>;

constexpr int repetitions = 3;
constexpr int numTyped = 200;
constexpr int numScrolls = 200;
constexpr XY<int> boxSize{1200, 900};

/// Small letters in words of five; a line feed after so many characters, 0 = nowhere.
Text letters(std::size_t length, std::size_t lineLength) {
    Text text;
    text.reserve(length);
    for (std::size_t i = 0; i < length; ++i) {
        bool const isEnd = lineLength > 0 && i % lineLength == lineLength - 1;
        text.push_back(isEnd ? L'\n' : i % 6 == 5 ? L' ' : static_cast<wchar_t>(L'a' + i * 7 % 26));
    }
    return text;
}

/// A window with one box.
class Pad {
public:
    explicit Pad(bool wraps)
        : host_(makeHost()), ground_(new Glob(toSize16(boxSize.x), toSize16(boxSize.y))) {
        MultiLineTextBox::InitArgs args(boxSize);
        args.font = {"DejaVu Sans", 12};
        args.wrap = wraps;
        box_ = new MultiLineTextBox(args);
        ground_->addChild(static_cast<Glob*>(box_), BottomLeft(0, 0));
        host_->globManager().realize(ground_, XY<int>(0, 0));
        box_->claimKbdFocus();
        host_->loop().settle();
    }

    MultiLineTextBox& box() { return *box_; }
    Glob* ground() { return ground_; }
    /// Milliseconds of a call with all its effects.
    template <class Act>
    double time(Act const& act) {
        double const start = now();
        act();
        host_->loop().settle();
        return now() - start;
    }
    double key(std::uint32_t code) { return timeInput(*host_, keyInput(code)); }

private:
    std::unique_ptr<Host> host_;
    Glob* ground_;
    MultiLineTextBox* box_;
};

void benchDocument(char const* name, std::size_t length, std::size_t lineLength, bool wraps) {
    Report report(name, static_cast<long>(length));
    Text const text = letters(length, lineLength);
    Steps keys, returns, rows;
    std::vector<double> loading, first, jumping;
    for (int r = 0; r < repetitions; ++r) {
        Pad pad(wraps);
        double const before = residentBytes();
        loading.push_back(pad.time([&] { pad.box().setText(text); }));
        jumping.push_back(pad.time([&] { pad.box().setCursorIndex(static_cast<int>(length / 2)); }));
        first.push_back(pad.key('x') / 1000);
        std::vector<double> times;
        for (int i = 1; i < numTyped; ++i) times.push_back(pad.key(i % 6 == 5 ? ' ' : 'x'));
        keys.add(times);
        times.clear();
        for (int i = 0; i < numTyped / 10; ++i) times.push_back(pad.key(i % 2 ? Key::backspace : Key::enter));
        returns.add(times);
        check(pad.box().getText({0}, {10}) == text.substr(0, 10), "another text is shown");
        check(pad.box().numUndoItems() > 0, "nothing was typed");
        times.clear();
        for (int i = 0; i < numScrolls; ++i) {
            std::size_t const top = pad.box().getTopRow();
            times.push_back(pad.key(Key::ctrl | Key::down));
            check(lineLength == 0 || pad.box().getTopRow() != top, "nothing was scrolled");
        }
        rows.add(times);
        // Later ones use the memory of the first again.
        if (r == 0) report.add("rss_bytes_per_character", (residentBytes() - before) / double(length));
        if (r + 1 < repetitions) continue;
        addPicture(report, pad.ground());
    }
    report.addRuns("load_and_paint_ms", loading);
    report.addRuns("jump_to_middle_ms", jumping);
    report.addRuns("first_key_ms", first);
    keys.addTo(report, "key_us");
    returns.addTo(report, "return_us");
    rows.addTo(report, "scroll_row_us");
    report.print();
}

constexpr std::size_t lineLength = 40;

void benchLines() {
    for (std::size_t const numLines : {100'000, 1'000'000}) {
        benchDocument("lines", numLines * lineLength, lineLength, false);
        benchDocument("wrapped_lines", numLines * lineLength, lineLength, true);
    }
}

void benchLongLine() {
    constexpr std::size_t length = 10'000'000;
    benchDocument("long_line", length, 0, false);
    benchDocument("wrapped_long_line", length, 0, true);
}

} // namespace

/// Without arguments all groups; else those named: lines, long_line.
int main(int count, char** names) {
    return runWorkloads(count, names, {{"lines", benchLines}, {"long_line", benchLongLine}});
}
