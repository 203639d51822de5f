#include "host/windows/floating_note_p.h"

#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/descriptions.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/drawing/word_wrapping_text_renderer.h"
#include "host/objects/description.h"
#include "host/windows/glob_manager.h"
#include "host/windows/screen.h"
#include "host/windows/screen_places_p.h"

#include <algorithm>
#include <utility>

namespace wainscot {

namespace {

/// Texts are wrapped at this many characters.
constexpr int mostCharacters = 60;

class NoteGlob final : public Glob {
public:
    explicit NoteGlob(NoteText text);

    void draw() override;
    void describe(GlobDescription& description) const override;

    static int padding() { return UifStd::getWidgetGap(); }

private:
    void drawComposition(CanvasRenderer& renderer, IntBox const& area) const;
    XY<int> neededSize();
    static XY<int> largestSize();

    NoteText text_;
    Palette const look_;
    Glib::WordWrappingTextRenderer lines_;
    Glib::WordWrappingTextRenderer moreLines_;
};

int wrapWidth(Glib::FontDesc const& font) {
    return Glib::loadFont(font)->textWidth(L"n") * mostCharacters;
}

NoteGlob::NoteGlob(NoteText text)
    : Glob(1, 1), text_(std::move(text)), look_(Palette().makeWindowPalette()),
      lines_(Glib::loadFont(text_.font), wrapWidth(text_.font)),
      moreLines_(Glib::loadFont(text_.font), wrapWidth(text_.font)) {
    setPalette(look_);
    XY<int> const size = neededSize();
    resize(size.x, size.y);
}

XY<int> NoteGlob::neededSize() {
    lines_.analyse(text_.text);
    XY<int> size = text_.text.isEmpty() ? XY<int>() : lines_.size();
    if (!text_.more.isEmpty()) {
        moreLines_.analyse(text_.more);
        size = {std::max(size.x, moreLines_.size().x), size.y + moreLines_.size().y};
    }
    // Room for a caret behind the last character.
    size += XY<int>{2 * padding() + 1, 2 * padding()};
    XY<int> const most = largestSize();
    return {std::min(size.x, most.x), std::min(size.y, most.y)};
}

/// The largest size that fits on every monitor.
XY<int> NoteGlob::largestSize() {
    XY<int> size{glib_getRootWindowWidth(), glib_getRootWindowHeight()};
    for (IntBox const& monitor : GlobManager::instance().monitors())
        size = {std::min(size.x, monitor.width()), std::min(size.y, monitor.height())};
    return size;
}

void NoteGlob::draw() {
    CanvasRenderer renderer(canvas(), canvasArea());
    Glib::drawOutlinedRect(renderer, look_.window(eWindowRaised), look_.mark(eMarkEdge), canvasArea());
    IntBox const area = canvasArea().inset(padding());
    lines_.renderString(renderer, text_.text, area, look_.text(eTextEnabled));
    if (text_.caret >= 0) drawComposition(renderer, area);
    if (text_.more.isEmpty()) return;
    IntBox const below(area.x1, area.y1, area.x2, area.y1 + moreLines_.size().y);
    moreLines_.renderString(renderer, text_.more, below, look_.text(eTextSecondary));
}

void NoteGlob::drawComposition(CanvasRenderer& renderer, IntBox const& area) const {
    Colour const& colour = look_.text(eTextEnabled);
    renderer.renderPrimitive(Glib::LineDescription({area.x1, area.y1}, {area.x2, area.y1}, colour));
    int const x = area.x1 + Glib::loadFont(text_.font)->prefixWidth(text_.text, text_.caret);
    renderer.renderPrimitive(Glib::LineDescription({x, area.y1}, {x, area.y2}, colour));
}

void NoteGlob::describe(GlobDescription& description) const {
    Glob::describe(description);
    description.role = Role::note;
    description.name = text_.text;
    description.value = text_.more;
    if (text_.caret < 0 || !description.wants(GlobDescription::textContent)) return;
    auto const caret = static_cast<std::size_t>(text_.caret);
    description.content = {text_.text, caret, caret};
}

} // namespace

void FloatingNote::hide() {
    Glob* const shown = std::exchange(glob_, {}).get();
    if (shown) destroy(shown);
}

void FloatingNote::showAt(XY<int> place, NoteText const& text, Glob& owner) {
    GlobManager& windows = GlobManager::instance();
    Glob* const shown = glob();
    if (shown && text == text_) {
        if (place != place_) shown->setScreenPos(place);
        place_ = place;
        return;
    }
    hide();
    if (text.text.isEmpty() && text.more.isEmpty()) return;
    auto* const made = new NoteGlob(text);
    IntBox const monitor = windows.monitorFor(IntBox::sized(place, made->size()));
    XY<int> const corner = ScreenPlaces::movedOnto(monitor, IntBox::sized(place, made->size())).bottomLeft();
    LifeGuard const life = made->guard();
    if (!windows.openNote(made, corner, owner)) {
        if (life.alive()) destroy(made);
        return;
    }
    glob_ = HandlerRef<Glob>(made);
    text_ = text;
    place_ = place;
}

void FloatingNote::showBeside(IntBox const& anchor, NoteText const& text, Glob& owner) {
    XY<int> size;
    if (Glob const* const shown = glob(); shown && text == text_) {
        size = shown->size();
    } else {
        NoteGlob* const measured = new NoteGlob(text);
        size = measured->size();
        destroy(measured);
    }
    IntBox const monitor = GlobManager::instance().monitorFor(anchor);
    IntBox const box = ScreenPlaces::besideOn(monitor, anchor, size, WidgetRelativity::below,
                                              UifStd::getWidgetGap(), WidgetAlignment::start)
                           .box;
    showAt(box.bottomLeft(), text, owner);
}

void FloatingNote::showOn(IntBox const& box, NoteText const& text, Glob& owner) {
    int const padding = NoteGlob::padding();
    showAt(box.bottomLeft() - XY<int>{padding, padding}, text, owner);
}

} // namespace wainscot
