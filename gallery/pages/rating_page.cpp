#include "gallery/pages/cell_panel.h"

#include "foundation/val_server_adaptor.h"
#include <star_rating.h>

namespace wainscot::gallery {

namespace {

using example::StarRating;

/// Ratings that are one value, one that stands alone, one that is disabled, and larger ones.
class RatingPanel final : public CellPanel {
public:
    RatingPanel(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        addNote(L"These are one value:", 0, 0, columns);
        for (int column : {0, 1}) bindToServer<int>(*add(1, column, 1), stars_);
        addNote(L"This one is by itself, that one is disabled:", 0, 2, columns);
        show(*add(1, 0, 3), 3);
        StarRating* const disabled = add(1, 1, 3);
        show(*disabled, 2);
        disabled->setActive(false);
        addNote(L"Any size will do:", 0, 4, columns);
        show(*add(2, 0, 5), 4);
        show(*add(3, 0, 6, columns), 5);
        addNote(L"Left and Right, Home and End; the press counts where it is let go.", 0, 7, columns);
    }

private:
    static constexpr int columns = 2;
    /// So many times as high as a usual control.
    StarRating* add(int height, int column, int row, int across = 1) {
        GlobCreationInfo info(XY<int>(1, 1));
        info.opaque = false;
        StarRating* const rating =
            grid().add(std::make_unique<StarRating>(info), {.row = row, .column = column, .columns = across},
                       {.horizontal = LayoutAlign::start,
                        .vertical = LayoutAlign::centre,
                        .size = {5 * height, height},
                        .unit = LayoutUnit::buttonHeight});
        addTabStop(*rating);
        rating->setName("rating " + StringFromInteger(++count_));
        rating->setCallback(WidgetCallback(makeCallback<int, NotifyMsg>([this](NotifyMsg const& message) {
                                               int const* const stars = unwrapData<int>(message.payload());
                                               if (stars) say(L"rated  " + Qv::WStringFromInteger(*stars));
                                               return 1;
                                           }),
                                           ""));
        return rating;
    }
    static void show(StarRating& rating, int stars) { rating.setNewWidgetValue(stars, eRedrawYes); }

    ValServer<int> stars_{2};
    int count_ = 0;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<RatingPanel>(size, std::move(log));
}

} // namespace

extern Page const ratingPage = {"rating",
                                L"A control of your own",
                                PageGroup::controls,
                                L"The five stars that the guide builds step by step.",
                                "gallery/pages/rating_page.cpp",
                                make};

} // namespace wainscot::gallery
