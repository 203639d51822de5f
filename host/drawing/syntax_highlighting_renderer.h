#pragma once

#include "host/drawing/canvas_renderer.h"

#include <string>
#include <unordered_map>

namespace wainscot {

/// Draws a line of source text with its key words in colours of their own.
class WAINSCOT_API SyntaxHighightingRenderer {
public:
    explicit SyntaxHighightingRenderer(Qv::Ptr<iFont> font);

    /// A word of letters, digits and underscores; naming it again changes its colour.
    void addKeyWord(LightweightString<wchar_t> const& word, Colour const& colour);
    bool isKeyWord(LightweightString<wchar_t> const& word) const;

    /// Draws a line with its left end on the baseline at `position`; words that are no key words in `colour`.
    /// Every character lies where it lies in plain text.
    void render(CanvasRenderer& renderer, LightweightString<wchar_t> const& line, XY<int> const& position,
                Colour const& colour) const;

private:
    Qv::Ptr<iFont> font_;
    std::unordered_map<std::wstring, Colour> words_;
};

} // namespace wainscot
