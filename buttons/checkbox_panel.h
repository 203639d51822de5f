#pragma once

#include "buttons/checkbox.h"
#include "host/messages/handler_ref.h"

#include <vector>

namespace wainscot {

/// A panel of checkboxes in rows and columns, row by row from the upper left corner; the base of groups and
/// sets. It owns the checkboxes.
///
/// It is not a tab stop: its owner adds the checkboxes to the owner's tab order, with `addTabStopsFrom`.
class WAINSCOT_API CheckboxPanel : public StandardPanel, public TabOrderableHost {
public:
    /// A width or height of 0 becomes the size that the checkboxes need.
    class WAINSCOT_API InitArgs : public GlobCreationInfo {
    public:
        InitArgs(std::vector<UIString> texts, XY<int> const& size);
        explicit InitArgs(std::vector<UIString> texts = {}, unsigned short w = 0, unsigned short h = 0);

        std::vector<UIString> labels;
        unsigned char columns = 1;
        Checkbox::eAppearance appearance = Checkbox::tickBox;
        Border::eType border = Border::none;
        UIString title;
        /// Leaves room for bold labels.
        bool bold = false;
    };

    ~CheckboxPanel() override;

    /// The height of `rows` rows, without border and title; a row height of 0 stands for the height of a
    /// button.
    static unsigned short calcHeightForRows(unsigned char rows, unsigned short rowHeight = 0);

    /// Dead checkboxes are counted: the others keep their indices.
    int getNumCheckboxes() const { return static_cast<int>(boxes_.size()); }
    /// Null when it has died, and for an index out of range.
    Checkbox* getCheckbox(int index) const;
    int getColumns() const { return columns_; }
    void setAppearance(Checkbox::eAppearance appearance);

    void setPalette(Palette const& palette) override;
    void getTabOrderables(std::vector<TabOrderable*>& controls, unsigned int order) override;
    SizeNeeds sizeNeeds() const override;
    void reshape() override;
    void handleLookChange(LookChange changes) override;
    void describeChild(Glob const& child, GlobDescription& description) const override;

protected:
    explicit CheckboxPanel(InitArgs const& args);
    /// Takes over a checkbox as the last one.
    void addBox(std::unique_ptr<Checkbox> box);
    /// The index of a checkbox; -1 when it is not in the panel.
    int indexOf(Glob const* glob) const;
    void layOutBoxes();
    /// Whether an automatic size leaves room for bold labels.
    void setBoldRoom(bool bold);

private:
    static StandardPanel::InitArgs panelArgs(InitArgs const& args);
    /// The same; null also when it has another parent now.
    Checkbox* childBox(int index) const;
    /// The size that the checkboxes need, with all columns as wide as the widest checkbox.
    XY<int> neededSize() const;
    void resizeToFit();

    std::vector<HandlerRef<Checkbox>> boxes_;
    int columns_;
    bool bold_;
    AutomaticSize automatic_;
};

} // namespace wainscot
