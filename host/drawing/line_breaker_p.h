#pragma once

#include "host/drawing/font.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace wainscot {

class Font;

/// Breaks styled text into lines of a given width: after blanks, and inside a word only where it is wider
/// than a line. Every line takes at least one grapheme cluster. Cost is proportional to the text.
class LineBreaker {
public:
    /// A stretch of one font.
    struct Span {
        std::wstring_view text;
        Qv::Ptr<iFont> font;
    };
    /// A part of a span on a line, and where it begins there.
    struct Fragment {
        std::size_t span;
        std::size_t start;
        std::size_t length;
        double x;
        double width;
    };
    struct Line {
        std::vector<Fragment> fragments;
        /// Without the blanks at the end.
        double width = 0;
        int ascent = 0;
        int descent = 0;
        /// Whether the line ends where the text says so, not at the width.
        bool endsParagraph = false;
    };

    /// A width below 1 means that lines end only where the text says so.
    LineBreaker(std::vector<Span> spans, int width) : spans_(std::move(spans)), limit_(width) {}

    /// An empty text gives one empty line.
    std::vector<Line> breakLines();

private:
    void addSpan(std::size_t index);
    void addWord(std::size_t span, std::size_t start, std::size_t length, std::size_t blanks);
    double continuationWidth(std::size_t span) const;
    void addPiece(std::size_t span, std::size_t start, std::size_t length, double width);
    std::size_t fittingPlain(Font const& font, std::wstring_view piece) const;
    std::size_t fittingTurned(Font const& font, std::wstring_view piece) const;
    void cutWord(std::size_t span, std::size_t start, std::size_t length);
    void endLine(bool endsParagraph);
    bool isLimited() const { return limit_ > 0; }
    /// Measured widths are rounded, so half a pixel more still fits.
    bool fits(double width) const { return width < limit_ + 0.5; }

    std::vector<Span> spans_;
    int limit_;
    std::vector<Line> lines_;
    Line line_;
    /// Where the next piece goes, blanks included.
    double x_ = 0;
    /// The last piece is text to which the next span may belong.
    bool wordIsOpen_ = false;
};

} // namespace wainscot
