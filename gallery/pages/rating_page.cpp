#include "gallery/pages/cell_panel.h"

#include "foundation/val_server_adaptor.h"
#include <star_rating.h>

namespace wainscot::gallery {

namespace {

using example::StarRating;

/// Ratings that are one value, one that stands alone, one that is disabled, and large and small ones.
class RatingPanel final : public CellPanel {
public:
    RatingPanel(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        addNote(L"These are one value:", 0, 0);
        for (int column : {0, 1}) bindToServer<int>(*add(buttonSize(), column, 1), stars_);
        addNote(L"This one is by itself, that one is disabled:", 0, 2);
        show(*add(buttonSize(), 0, 3), 3);
        StarRating* const disabled = add(buttonSize(), 1, 3);
        show(*disabled, 2);
        disabled->setActive(false);
        addNote(L"Any size will do:", 0, 4);
        show(*add({2 * buttonSize().x, 2 * buttonSize().y}, 0, 5), 4);
        show(*add({buttonSize().x / 2, buttonSize().y / 2}, 2, 5), 5);
        addNote(L"Left and Right, Home and End; the press counts where it is let go.", 0, 7);
    }

private:
    StarRating* add(XY<int> size, int column, int row) {
        GlobCreationInfo info(size);
        info.opaque = false;
        StarRating* const rating =
            addChild(std::make_unique<StarRating>(info), UserTopLeft(cell(column), rowTop(row)));
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

} // namespace

std::unique_ptr<Glob> makeRatingPage(XY<int> size, LogLine log) {
    return std::make_unique<RatingPanel>(size, std::move(log));
}

} // namespace wainscot::gallery
