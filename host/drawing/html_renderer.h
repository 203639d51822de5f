#pragma once

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/palette.h"

#include <memory>
#include <vector>

namespace wainscot {

/// Simple rich text: paragraphs (p), bold (b, strong), italic (i, em), line breaks (br) and links (a href).
/// Characters may be written as `&lt;`, `&gt;`, `&amp;`, `&quot;`, `&apos;`, `&nbsp;` and by number. Unknown
/// tags are ordinary text.
class WAINSCOT_API HTMLRenderer {
public:
    /// A stretch of one look.
    struct Span {
        LightweightString<wchar_t> text;
        unsigned int style = Glib::eFontRegular;
        Colour colour;
        /// Where a link leads; empty for other text.
        LightweightString<wchar_t> url;
    };
    /// A paragraph; line breaks stand in it as line feeds.
    struct Paragraph {
        std::vector<Span> spans;
    };
    struct Layout;

    /// A parsed text, which never changes. It keeps the lines of the last width and font, so that asking
    /// again costs only what is in sight. User-interface thread only.
    class WAINSCOT_API Paragraphs {
    public:
        explicit Paragraphs(std::vector<Paragraph> list);
        ~Paragraphs();
        Paragraphs(Paragraphs const&) = delete;
        Paragraphs& operator=(Paragraphs const&) = delete;

        auto begin() const { return list_.begin(); }
        auto end() const { return list_.end(); }
        std::size_t size() const { return list_.size(); }
        bool empty() const { return list_.empty(); }
        Paragraph const& operator[](std::size_t index) const { return list_[index]; }

        /// The lines at a width, below 1 for not wrapped; valid until another width or font is asked for.
        Layout const& layout(Glib::FontDesc const& font, int width) const;

    private:
        std::vector<Paragraph> list_;
        mutable std::unique_ptr<Layout> wrapped_;
        mutable std::unique_ptr<Layout> unwrapped_;
    };
    using ParagraphsPtr = std::shared_ptr<Paragraphs const>;

    /// Whether a text has a known tag; "<" alone does not count.
    static bool isHTML(LightweightString<wchar_t> const& text);
    /// Links have the colour of the palette's focus mark, other text that of its enabled text. Never null.
    static ParagraphsPtr parse(LightweightString<wchar_t> const& text, Palette const& palette);

    /// Draws from the top of `area`, wrapped to its width.
    static void render(CanvasRenderer& renderer, Paragraphs const& text, Glib::FontDesc const& font,
                       IntBox const& area);
    /// The width of the widest line when nothing is wrapped.
    static int calcMaxWidth(Paragraphs const& text, Glib::FontDesc const& font);
    /// How many lines there are when wrapped to `width`; below 1 means not wrapped.
    static int calcNumDisplayLines(Paragraphs const& text, Glib::FontDesc const& font, int width);
    /// The height of the lines.
    static int calcHeight(Paragraphs const& text, Glib::FontDesc const& font, int width);
    /// The target of the link under a place, for a text drawn in `area`; empty when there is no link.
    static LightweightString<wchar_t> getURLAtPosition(Paragraphs const& text, Glib::FontDesc const& font,
                                                       IntBox const& area, XY<int> const& place);
};

} // namespace wainscot
