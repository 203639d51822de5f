#pragma once

#include "foundation/titled_widget.h"
#include "text/vari_box.h"

namespace wainscot {

/// A value box with a title before it.
class WAINSCOT_API TitledVariBox : public Titled<VariBox> {
public:
    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        /// A width of 0 is that of the title and of a usual box.
        explicit InitArgs(UIString title, UIString content = {}, unsigned short w = 0);

        UIString title;
        /// Shown in the box while there is no parser.
        UIString text;
        /// How much of the width the title takes; 0 = what it needs.
        int titleWidth = 0;
        VariBox::eAppearance appearance = VariBox::eStandard;
    };

    explicit TitledVariBox(InitArgs const& args);
    TitledVariBox(UIString const& title, UIString const& text, Palette const& palette, unsigned short width,
                  unsigned short height, int titleWidth, Canvas* canvas = nullptr);
    ~TitledVariBox() override;

    /// Null when it has died.
    VariBox* getVariBox() const { return getControl(); }
    // Those of the box.
    VariBoxParserBase* getParser() const;
    void setParser(VariBoxParserBase* parser, bool owns);
    static LightweightString<char> message(VariBox::eMessageType type) { return VariBox::message(type); }
};

} // namespace wainscot
