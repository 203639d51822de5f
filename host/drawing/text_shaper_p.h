#pragma once

#include "host/drawing/font_p.h"

namespace wainscot {

/// Shapes one piece of text: finds its runs of one direction, script and face, and places their glyphs. The
/// text and the context must outlive the shaper.
class TextShaper {
public:
    TextShaper(Font const& font, std::wstring_view text, BlockContext const* context = nullptr);
    ~TextShaper();
    TextShaper(TextShaper const&) = delete;
    TextShaper& operator=(TextShaper const&) = delete;

    TextLayoutPtr shape();
    /// Always through the shaper; for comparison.
    TextLayoutPtr shapeInFull();

    static hb_script_t scriptOf(std::uint32_t character);
    /// True for scripts that do not end a run.
    static bool takesPartInAnyScript(hb_script_t script);

private:
    struct Run {
        std::size_t start;
        std::size_t end;
        std::uint16_t face;
        hb_script_t script;
        bool rightToLeft;
        bool endsPart;
    };

    void sanitise();
    void begin();
    void shapeRuns();
    TextLayoutPtr finish();
    void findRuns();
    void orderRuns();
    void splitRunsAsInContext();
    void addRuns(std::vector<Run>& ordered, std::size_t start, std::size_t end, bool rightToLeft) const;
    void addAgainstItsScript(std::vector<Run>& ordered, Run const& run) const;
    bool shapeByPairs();
    void shapeRun(Run const& run);
    void placeSymbols(Run const& run);
    void shapeStretch(Run const& run, std::size_t shown);
    void addToBuffer(Run const& run);
    void endPart();
    void placeGlyphs(Run const& run, std::size_t shown);
    void placeGaps(Run const& run, std::size_t first, std::size_t last, double left, double right);

    Font const& font_;
    std::wstring_view source_;
    BlockContext const* context_;
    std::vector<std::uint32_t> text_;
    std::vector<Run> runs_;
    std::shared_ptr<TextLayout> layout_;
    /// Made when it is needed: most texts are laid out from their pairs.
    hb_buffer_t* buffer_ = nullptr;
    double x_ = 0;
    bool simple_ = true;
    bool mayTurn_ = false;
    bool paragraphTurned_ = false;
};

} // namespace wainscot
