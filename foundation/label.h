#pragma once

#include "foundation/automatic_size.h"
#include "foundation/fitted_label.h"
#include "host/messages/handler_ref.h"
#include "host/objects/glob.h"

namespace wainscot {

/// A text that names something or explains it. It takes no input of its own: a press goes on to what lies
/// behind, or gives the keyboard focus to what it names.
///
/// It lies at the left edge, or at the right one for languages that are read from right to left, in the
/// middle of its height. A text that does not fit is cut, and shown whole as a tip.
class WAINSCOT_API Label : public Glob {
public:
    /// What its text is to the reader; decides font and colour.
    enum class Part : unsigned char { normal, secondary, heading };

    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        explicit InitArgs(UIString label, Part labelPart = Part::normal, unsigned short w = 0,
                          unsigned short h = 0);

        UIString text;
        Part part;
        bool wraps = false;
    };

    /// A width of 0 becomes what the text needs, a height of 0 that of a button, or of the wrapped lines.
    explicit Label(InitArgs const& args);
    explicit Label(UIString text, Part part = Part::normal) : Label(InitArgs(std::move(text), part)) {}
    ~Label() override;

    UIString const& getString() const { return label_.text(); }
    void setString(UIString const& text);
    /// The standard font of its part until this is called.
    void setFont(Glib::FontDesc const& font);
    Glib::FontDesc const& getFont() const { return label_.font(); }
    Part getPart() const { return part_; }
    /// Left and right are changed over for languages that are read from right to left.
    void setAlignment(TextAlignment alignment);
    TextAlignment getAlignment() const { return static_cast<TextAlignment>(alignment_); }
    /// Breaks the text into lines at its width; the height that it needs then depends on the width.
    void setWraps(bool wraps);
    bool wraps() const { return wraps_; }

    /// It names that control for assistive tools and drivers, and a press on it gives that one the keyboard
    /// focus; see `Glob::setLabelledBy`. The control may die first.
    void setLabelFor(Glob& control);
    /// Names nothing any more.
    void clearLabelFor();
    /// Null when there is none, or it has died.
    Glob* getLabelFor() const { return control_.get(); }

    SizeNeeds sizeNeeds() const override;
    int heightForWidth(int width) const override;
    bool react(Event const& event) override;
    void draw() override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;
    bool getTooltipDetails(XY<int> const& place, TooltipDetails& details) const override;

private:
    Glib::FontDesc standardFont() const;
    Colour colour() const;
    TextAlignment shownAlignment() const;
    XY<int> neededSize() const;
    int wrappedHeight(int width) const;
    void textChanged();
    void resizeToText();
    void drawLine(CanvasRenderer& renderer, IntBox const& box);
    void drawLines(CanvasRenderer& renderer, IntBox const& box);

    FittedLabel label_;
    HandlerRef<Glob> control_;
    AutomaticSize automatic_;
    Part part_;
    unsigned char alignment_ = eAlignLeft;
    bool wraps_;
    bool hasOwnFont_ = false;
};

} // namespace wainscot
