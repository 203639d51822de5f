#pragma once

#include "foundation/layout/layout.h"
#include "foundation/press.h"
#include "foundation/standard_panel.h"
#include "host/messages/handler_ref.h"

#include <array>
#include <optional>
#include <vector>

namespace wainscot {

/// What few panels have.
struct StandardPanel::Extras {
    /// A widget that may die by itself.
    using WidgetRef = HandlerRef<Glob>;

    /// The places of standard widgets; those of the chain first, in its order.
    enum Slot : std::size_t { closeSlot, sizeSlot, pinSlot, optionSlot, doItSlot, numSlots };
    static constexpr std::size_t chainLength = doItSlot;

    Glob* inSlot(Slot slot) const { return slots[slot].get(); }
    Glob* inSlot(std::size_t slot) const { return slots[slot].get(); }

    UIString title;
    /// Nothing = the standard font for titles at the time.
    std::optional<Glib::FontDesc> titleFont;
    std::array<WidgetRef, numSlots> slots;
    /// Whether the option slot holds the latch.
    bool optionIsLatch = false;
    std::unique_ptr<Layout> layout;
    /// Lives as long as `titleWidget`.
    iTitleBox* titleBox = nullptr;
    WidgetRef titleWidget;
    std::vector<WidgetRef> status;

    /// While minimised: the hidden widgets, and the height of the full panel.
    std::vector<WidgetRef> hidden;
    int fullHeight = 0;
    /// The press that drags an edge or the title strip, and the panel's box when it began, in root
    /// coordinates.
    Press press;
    IntBox dragBox;
};

} // namespace wainscot
