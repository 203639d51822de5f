#pragma once

#include "buttons/radio_button.h"
#include "foundation/automatic_size.h"
#include "foundation/standard_panel.h"
#include "host/base/lightweight_vector.h"

#include <optional>

namespace wainscot {

/// A panel of radio buttons made from a list of labels, side by side or one below the other, of equal size.
///
/// Calls its parent with `radioSetMessage()`, with this as sender, when the user has made a choice; the owner
/// reads it with `getSelectedItem()`, and may destroy everything.
///
/// It is not a tab stop: its owner adds the buttons to the owner's tab order, with `addTabStopsFrom`.
class WAINSCOT_API RadioSet : public StandardPanel, public TabOrderableHost {
public:
    /// What it tells others.
    static constexpr MessageInfo messageTable[] = {{"radio_set_message", MessageInfo::fixed,
                                                    "radio_set_message", MessageInfo::called, 0,
                                                    "the user has chosen; read `getSelectedItem()`"}};

    /// A width or height of 0 becomes the size that the labels need. Labels beyond `radio_set::maxMembers`
    /// are left out, with a diagnostic.
    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        InitArgs(Vector<LightweightString<wchar_t>> texts, XY<int> const& size);
        explicit InitArgs(Vector<LightweightString<wchar_t>> texts = {}, unsigned short w = 0,
                          unsigned short h = 0);

        Vector<LightweightString<wchar_t>> labels;
        bool vertical = false;
        /// The colour of the faces; nothing = the palette's.
        std::optional<Colour> faceColour;
    };

    explicit RadioSet(InitArgs const& args);
    /// A null colour stands for the palette's.
    RadioSet(Vector<LightweightString<wchar_t>> const& labels, Palette const& palette, int width, int height,
             bool vertical, Canvas* canvas, Colour* faceColour);
    ~RadioSet() override;

    static LightweightString<char> radioSetMessage() { return LightweightString<char>(messageTable[0].text); }
    /// The callback is told instead of the parent; null = the parent again. The message keeps its name.
    void setCallback(WidgetCallback const& callback) { reporter_.setCallback(callback.getCallback()); }

    /// -1 when none is chosen.
    int getSelectedItem() const;
    /// Chooses a button and tells nobody. A negative index leaves none chosen; an index that is too large is
    /// ignored.
    void setSelectedItem(int index);
    int getNumItems() const { return static_cast<int>(set_.count()); }
    /// Null when it has died, and for an index out of range.
    Button* getButton(int index) const { return set_.member(index); }
    bool isVertical() const { return vertical_; }

    void setPalette(Palette const& palette) override;
    void getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int order) override;
    SizeNeeds sizeNeeds() const override;
    bool react(Event const& event) override;
    void reshape() override;
    void handleLookChange(LookChange changes) override;
    void describe(GlobDescription& description) const override;
    void describeChild(Glob const& child, GlobDescription& description) const override;

private:
    bool addItem(LightweightString<wchar_t> const& label, std::optional<Colour> const& faceColour);
    /// The same; null also when it has another parent now.
    Button* childButton(int index) const;
    /// The size that the labels need, with all buttons as wide as the widest.
    XY<int> neededSize() const;
    void resizeToFit();
    bool isButton(Glob const* glob) const;
    void layOutButtons();

    radio_set set_;
    bool vertical_;
    AutomaticSize automatic_;
    Reporter reporter_;
};

} // namespace wainscot
