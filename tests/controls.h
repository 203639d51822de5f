#pragma once

#include "buttons/button.h"
#include "buttons/checkbox.h"
#include "buttons/checkbox_radio_set.h"
#include "containers/scroll_bar.h"
#include "containers/slider.h"
#include "host/drawing/uif_std.h"
#include "text/multi_line_text_box.h"
#include "text/text_box.h"

namespace wainscot {

// The controls that the tables and fixtures show.

inline Button* newButton(UIString const& label = L"b") {
    return new Button(label, "b", 80, 24);
}

inline Checkbox* newBox(UIString const& label = L"box", bool ticked = false) {
    return Checkbox::make(0, 0, label, ticked).release();
}

inline CheckboxRadioSet* newSet(std::vector<UIString> labels, int selected = -1, unsigned char columns = 1) {
    CheckboxRadioSet::InitArgs args(std::move(labels));
    args.columns = columns;
    args.selected = selected;
    return new CheckboxRadioSet(args);
}

/// Of 208 pixels, with a track of 200 from 4 on, or with arrows of 152 from 28 on.
inline ScrollBar* newBar(Orientation lie, ThumbSettings const& thumb, bool resizable = false,
                         bool arrows = false) {
    ScrollBar::InitArgs args(lie, 208);
    args.thumb = thumb;
    args.resizable = resizable;
    args.arrowButtons = arrows;
    return new ScrollBar(args);
}

/// With a channel of 200 pixels from 4 on.
inline Slider* newSlider(double value, double minimum = 0, double maximum = 1,
                         Orientation lie = eHorizontal) {
    Slider::InitArgs args(static_cast<unsigned short>(200 + UifStd::getIndentWidth()), lie);
    args.minimum = minimum;
    args.maximum = maximum;
    args.value = value;
    return new Slider(args);
}

/// Sends the names of these events to `owner`.
inline TextBox* newTextBox(LightweightString<wchar_t> const& text,
                           std::vector<eCallbackEvent> const& events = {}, EventHandler* owner = nullptr) {
    constexpr char const* names[] = {"start", "end", "changed", "return", "double"};
    auto* const box = new TextBox(TextBox::InitArgs(120, 24, text));
    for (eCallbackEvent const event : events) box->requestCallback(names[event], owner, event);
    return box;
}

} // namespace wainscot
