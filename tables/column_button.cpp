#include "tables/column_button.h"

#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"
#include "host/drawing/symbols.h"
#include "host/events/dispatch_scope.h"
#include "host/events/event.h"
#include "host/objects/description.h"
#include "look/ink.h"
#include "tables/table_header_p.h"

namespace wainscot {

namespace {

Button::InitArgs argsFor(TableColumnDescription const& description) {
    Button::InitArgs args(description.title, {}, 1, UifStd::getButtonHeight());
    args.style = eButtonFlat;
    if (description.getPalette()) args.palette = *description.getPalette();
    return args;
}

} // namespace

ColumnButton::ColumnButton(TableColumnDescription const& description)
    : Button(argsFor(description)), identifier_(description.identifier),
      isResizeable_(description.isResizeable()), isMovable_(description.isMovable),
      isSortable_(description.isSortable) {
    setAlignment(eAlignLeft);
    if (!(description.getColour() == Colour())) setFaceColour(description.getColour());
}

ColumnButton::~ColumnButton() = default;

TableHeader* ColumnButton::header() const {
    return dynamic_cast<TableHeader*>(parent());
}

void ColumnButton::setSortMark(SortMark mark) {
    if (mark == mark_) return;
    mark_ = mark;
    makeDirty();
    describeChanged(DescriptionChange::state);
}

/// The table has the keys.
bool ColumnButton::isTabStopActive() {
    return false;
}

ColumnButton* ColumnButton::edgeAt(XY<int> const& place) const {
    int const reach = UifStd::getIndentWidth();
    if (!isActive()) return nullptr;
    if (isResizeable_ && place.x >= width() - reach) return const_cast<ColumnButton*>(this);
    TableHeader const* const row = header();
    return row && place.x < reach / 2 ? row->before(*this) : nullptr;
}

bool ColumnButton::react(Event const& event) {
    // The menu of the columns is that of the whole header.
    bool const isMenu = mouse_right_event(event) && !isHeldHere();
    if (isMenu && header()) return header()->react(event);
    return Button::react(event);
}

bool ColumnButton::isHeldHere() const {
    return grip_ != Grip::none;
}

// Presses

bool ColumnButton::pressBegan(Event const& event) {
    TableHeader* const row = header();
    if (!row) return false;
    XY<int> const place = eventXYToGlobXY(event, *this);
    if (ColumnButton* const resized = edgeAt(place)) {
        grip_ = Grip::edge;
        resized_ = HandlerRef<ColumnButton>(resized);
        row->beginResize(*resized);
        if (resized_ && mouse_double_click_event(event)) row->fit(*resized);
        return true;
    }
    grip_ = Grip::face;
    setState(buttonDown, eRedrawYes);
    return true;
}

void ColumnButton::pressMoved(Event const& event) {
    TableHeader* const row = header();
    if (!row) return;
    if (grip_ == Grip::edge) {
        if (ColumnButton* const resized = resized_.get())
            row->resizeFrom(*resized, event.place().x - press().place().x);
        return;
    }
    isDragged_ = isDragged_ || (isMovable_ && isMouseMoveSignificant(event));
    if (isDragged_)
        row->moveTo(*this, event.place());
    else
        setState(Press::isInside(event, *this) ? buttonDown : buttonUp, eRedrawYes);
}

void ColumnButton::pressEnded(PressEnd how) {
    TableHeader* const row = header();
    Grip const grip = std::exchange(grip_, Grip::none);
    bool const wasDragged = std::exchange(isDragged_, false);
    bool const isTakenBack = how == PressEnd::cancelled || how == PressEnd::lost;
    LifeGuard const life = guard();
    setState(buttonUp, eRedrawYes);
    if (!life.alive() || !row) return;
    if (grip == Grip::edge) {
        if (ColumnButton* const resized = resized_.get()) row->endResize(*resized, isTakenBack);
        return;
    }
    if (wasDragged) return row->endMove(*this, isTakenBack);
    if (how == PressEnd::releasedInside) clicked();
}

void ColumnButton::clicked() {
    if (TableHeader* const row = isSortable_ ? header() : nullptr) row->clicked(*this, DataColumn::sortMsg());
}

// Look

MouseCursorID ColumnButton::contextCursor(XY<int> const& place) const {
    return edgeAt(place) ? sizeHorizontalCursor : Button::contextCursor(place);
}

int ColumnButton::rightMargin() const {
    return mark_ == SortMark::none ? UifStd::getIndentWidth() : UifStd::getButtonHeight();
}

void ColumnButton::drawBackground() {
    CanvasRenderer renderer(canvas(), canvasArea());
    Palette const& palette = getPalette();
    Colour const ground = palette.window(eWindowRaised);
    bool const isLit = isDown() || (containsPointer() && isActive());
    renderer.renderPrimitive(
        Glib::RectDescription(canvasArea(), isLit ? palette.scale(ground, isDown() ? 1.3 : 1.15) : ground));
}

void ColumnButton::drawBorder() {
    CanvasRenderer renderer(canvas(), canvasArea());
    IntBox const box = canvasArea();
    int const inset = box.height() / 4;
    renderer.renderPrimitive(Glib::RectDescription({box.x2 - 1, box.y1 + inset, box.x2, box.y2 - inset},
                                                   getPalette().separator()));
}

void ColumnButton::drawText() {
    Button::drawText();
    if (mark_ == SortMark::none) return;
    Qv::Ptr<iFont> const font = Glib::loadFont({getQvUtilityFontName(), getQvUtilityFontSize()});
    IntBox const box = canvasArea();
    XY<int> const place{box.x2 - UifStd::getButtonHeight() / 2, box.y1 + getFontYOffset(box.height(), font)};
    CanvasRenderer renderer(canvas(), box);
    auto const glyph = mark_ == SortMark::ascending ? QvTTF::eSortAscending : QvTTF::eSortDescending;
    renderer.renderPrimitive(
        Glib::TextDescription(wainscot::getString(glyph), place, font, indicatorColour(), eAlignCentre));
}

void ColumnButton::describe(GlobDescription& description) const {
    Button::describe(description);
    description.role = Role::columnHeading;
    if (mark_ != SortMark::none)
        description.value = mark_ == SortMark::ascending ? L"ascending" : L"descending";
}

// Tags

TagButton::TagButton(TableColumnDescription const& description) : ColumnButton(description) {
    if (description.title.text().isEmpty()) setString(wainscot::getString(QvTTF::eTick));
    setAlignment(eAlignCentre);
}

void TagButton::clicked() {
    bool const inverts = (currentModifiers() & Key::ctrl) != 0;
    if (TableHeader* const row = header())
        row->clicked(*this, inverts ? TagColumn::invertTagsMsg : TagColumn::tagAllMsg);
}

} // namespace wainscot
