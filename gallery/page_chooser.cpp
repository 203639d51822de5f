#include "gallery/page_chooser.h"

#include "host/base/convert.h"
#include "host/drawing/canvas_renderer.h"
#include "host/drawing/shapes.h"
#include "host/drawing/uif_std.h"
#include "host/objects/kbd_focus.h"
#include "look/focus_mark.h"

#include <algorithm>
#include <cwctype>

namespace wainscot::gallery {

namespace {

/// How many milliseconds a typed letter waits for the next one.
constexpr double typingTime = 1000;

LightweightString<wchar_t> lowered(LightweightString<wchar_t> const& text) {
    LightweightString<wchar_t> result;
    for (wchar_t const c : text.view()) result += static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return result;
}

/// Whether the text, or a word of it, begins with `beginning`, which is in small letters.
bool hasWordWith(LightweightString<wchar_t> const& text, LightweightString<wchar_t> const& beginning) {
    LightweightString<wchar_t> const small = lowered(text);
    auto const at = small.view().find(beginning.view());
    return at == 0 || small.view().find((LightweightString<wchar_t>(L" ") + beginning).view()) !=
                          std::wstring_view::npos;
}

} // namespace

PageChooser::PageChooser(std::function<void(Page const&)> choose)
    : Focusable(GlobCreationInfo(XY<int>(1, 1))), forgetTyped_([this] { typed_ = {}; }),
      choose_(std::move(choose)) {
    setName("pages");
    rows_ = rowsWith({});
}

// Rows

std::vector<PageChooser::Row> PageChooser::rowsWith(LightweightString<wchar_t> const& text) {
    LightweightString<wchar_t> const wanted = lowered(text);
    std::vector<Row> rows;
    for (Page const* const page : pages()) {
        if (lowered(page->title).find(wanted.view()) == LightweightString<wchar_t>::npos) continue;
        if (rows.empty() || rows.back().group != page->group) rows.push_back({nullptr, page->group});
        rows.push_back({page, page->group});
    }
    return rows;
}

void PageChooser::setFilter(LightweightString<wchar_t> const& text) {
    rows_ = rowsWith(text);
    current_ = rowOf(currentPage_);
    hovered_ = none;
    makeDirty();
    needsChanged();
    describeChanged(DescriptionChange::children);
}

void PageChooser::takeFirst(bool always) {
    if (always || current_ == none) take(Step::first);
}

int PageChooser::rowHeight() {
    return UifStd::getButtonHeight();
}

SizeNeeds PageChooser::sizeNeeds() const {
    int const high = static_cast<int>(rows_.size()) * rowHeight() + UifStd::getRowGap();
    return {.natural = {1, high}, .minimum = {1, high}};
}

IntBox PageChooser::boxOf(std::size_t row) const {
    int const top = height() - static_cast<int>(row) * rowHeight();
    return {0, top - rowHeight(), width(), top};
}

std::size_t PageChooser::rowAt(XY<int> place) const {
    if (!bounds().contains(place)) return none;
    auto const row = static_cast<std::size_t>((height() - 1 - place.y) / rowHeight());
    return row < rows_.size() && rows_[row].page ? row : none;
}

std::size_t PageChooser::rowOf(Page const* page) const {
    auto const found = std::ranges::find(rows_, page, &Row::page);
    return found == rows_.end() ? none : static_cast<std::size_t>(found - rows_.begin());
}

std::size_t PageChooser::pageRowFrom(std::size_t row, bool isDown) const {
    std::size_t next = row;
    do {
        if (isDown ? next + 1 >= rows_.size() : next == 0) return row;
        next += isDown ? 1 : std::size_t(-1);
    } while (!rows_[next].page);
    return next;
}

std::size_t PageChooser::firstOfGroup(PageGroup group) const {
    return static_cast<std::size_t>(std::ranges::find(rows_, group, &Row::group) - rows_.begin()) + 1;
}

std::size_t PageChooser::rowAfter(Step step) const {
    if (rows_.empty()) return none;
    std::size_t const here = current_ == none ? 0 : current_;
    std::size_t const first = firstOfGroup(rows_[here].group);
    std::size_t row = here;
    switch (step) {
    case Step::previous:
        return pageRowFrom(here, false);
    case Step::next:
        return pageRowFrom(here, true);
    case Step::previousGroup:
        // First to the beginning of the present group.
        row = pageRowFrom(first, false);
        return here != first || row == first ? first : firstOfGroup(rows_[row].group);
    case Step::nextGroup:
        while (row < rows_.size() && rows_[row].group == rows_[here].group) ++row;
        return row < rows_.size() ? row + 1 : rows_.size() - 1;
    case Step::first:
        return pageRowFrom(0, true);
    case Step::last:
        return rows_.size() - 1;
    }
    return here;
}

/// From the chosen page on, and round the end.
std::size_t PageChooser::rowBeginningWith(LightweightString<wchar_t> const& text) const {
    // A first letter goes on to the next page, further ones may stay.
    std::size_t const from = (current_ == none ? 0 : current_) + (text.size() == 1 ? 1 : 0);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        std::size_t const row = (from + i) % rows_.size();
        if (rows_[row].page && hasWordWith(rows_[row].page->title, text)) return row;
    }
    return none;
}

// What the user does

bool PageChooser::react(Event const& event) {
    if (mouse_move_event(event)) setHovered(rowAt(eventXYToGlobXY(event, *this)));
    if (reactToPress(event)) return true;
    if (!isKeyPressEvent(event)) return Focusable::react(event);
    auto const step = actionFor(keyTable, event.keyCode());
    if (step) take(*step);
    return step || type(event.keyCode()) || Focusable::react(event);
}

bool PageChooser::pressBegan(Event const& event) {
    std::size_t const row = rowAt(eventXYToGlobXY(event, *this));
    LifeGuard const life = guard();
    claimKbdFocus();
    if (life.alive() && row != none) choose(row);
    return true;
}

void PageChooser::take(Step step) {
    choose(rowAfter(step));
}

bool PageChooser::type(std::uint32_t character) {
    if (!Glib::isPlainKey(character)) return false;
    auto const letter = static_cast<wchar_t>(Key::base(character));
    // A space belongs to a title only where something stands before it.
    bool const isText = std::iswprint(static_cast<wint_t>(letter)) && (letter != L' ' || !typed_.empty());
    if (!isText) return false;
    LightweightString<wchar_t> one;
    one += letter;
    typed_ += lowered(one);
    forgetTyped_.start(typingTime);
    std::size_t const row = rowBeginningWith(typed_);
    if (row != none) choose(row);
    return true;
}

void PageChooser::choose(std::size_t row) {
    if (row == none || row == current_ || !rows_[row].page) return;
    Page const& page = *rows_[row].page;
    LifeGuard const life = guard();
    setCurrent(page);
    if (life.alive() && choose_) choose_(page);
}

void PageChooser::setCurrent(Page const& page) {
    currentPage_ = &page;
    current_ = rowOf(&page);
    makeDirty();
    describeChanged(DescriptionChange::value);
    bringCurrentIntoView();
}

void PageChooser::bringCurrentIntoView() {
    if (current_ == none) return;
    // With its heading, where it is the first under it.
    IntBox wanted = boxOf(current_);
    if (current_ > 0 && !rows_[current_ - 1].page) wanted.y2 = boxOf(current_ - 1).y2;
    bringIntoView(wanted);
}

void PageChooser::setHovered(std::size_t row) {
    if (row == hovered_) return;
    hovered_ = row;
    makeDirty();
}

void PageChooser::handleMouseContainment(bool inside) {
    if (!inside) setHovered(none);
    Focusable::handleMouseContainment(inside);
}

void PageChooser::handleKbdFocus() {
    makeDirty();
    Focusable::handleKbdFocus();
}

/// When the list has got more rows, too.
void PageChooser::reshape() {
    Focusable::reshape();
    bringCurrentIntoView();
}

void PageChooser::handleLookChange(LookChange changes) {
    Focusable::handleLookChange(changes);
    needsChanged();
}

// Drawing

void PageChooser::drawBackground() {
    CanvasRenderer renderer(canvas(), canvasArea());
    renderer.renderPrimitive(Glib::RectDescription(canvasArea(), getPalette().window(eWindowRecessed)));
    for (std::size_t row = 0; row < rows_.size(); ++row) drawRow(renderer, row);
    if (!hasPages()) drawNothingFound(renderer);
    if (!glib_showsKbdFocus(this)) return;
    IntBox const marked = current_ == none ? bounds() : boxOf(current_);
    ControlLook::drawFocusMark(renderer, marked.translated(canvasArea().bottomLeft()), getPalette(),
                               UifStd::getCornerRadius());
}

void PageChooser::drawNothingFound(CanvasRenderer& renderer) const {
    IntBox const box = boxOf(0).translated(canvasArea().bottomLeft());
    Qv::Ptr<iFont> const font = Glib::loadFont(UifStd::getFont());
    int const indent = 2 * UifStd::getIndentWidth();
    renderer.renderPrimitive(Glib::TextDescription(
        L"Nothing found", {box.x1 + indent, box.y1 + getFontYOffset(box.height(), font)}, font,
        getPalette().text(eTextSecondary)));
}

void PageChooser::drawRow(CanvasRenderer& renderer, std::size_t row) const {
    Palette const& palette = getPalette();
    IntBox const box = boxOf(row).translated(canvasArea().bottomLeft());
    Page const* const page = rows_[row].page;
    bool const isCurrent = row == current_;
    int const gap = UifStd::getIndentWidth();
    IntBox const bar(box.x1 + gap / 2, box.y1, box.x2 - gap / 2, box.y2);
    Colour const ground = isCurrent ? palette.selection(eSelectionActive) : palette.window(eWindowRaised);
    if (isCurrent || (row == hovered_ && page))
        Glib::drawRoundedRectFilled(renderer, ground, bar, UifStd::getCornerRadius());
    Qv::Ptr<iFont> const font = Glib::loadFont(page ? UifStd::getFont() : UifStd::getSubheadingFont());
    LightweightString<wchar_t> const text =
        page ? LightweightString<wchar_t>(page->title) : titleOf(rows_[row].group);
    Colour const ink = !page       ? palette.subheadingText()
                       : isCurrent ? palette.text(eTextSelected)
                                   : palette.text(eTextEnabled);
    int const indent = (page ? 4 : 2) * gap;
    int const room = std::max(box.width() - indent - 2 * gap, 1);
    // Headings stand nearer to what they head.
    int const drop = page ? 0 : gap / 2;
    renderer.renderPrimitive(Glib::TextDescription(
        Glib::fitTextToWidth(font, text, toSize16(room)),
        {box.x1 + indent, box.y1 - drop + getFontYOffset(box.height(), font)}, font, ink));
}

// Description

void PageChooser::describe(GlobDescription& description) const {
    Focusable::describe(description);
    description.role = Role::list;
    description.name = L"Pages";
    if (currentPage_) description.value = currentPage_->title;
}

std::size_t PageChooser::numItems(ItemKey in) const {
    return in.isEmpty() ? rows_.size() : 0;
}

DescribedItems::Range PageChooser::itemsInSight(ItemKey in) const {
    return {0, numItems(in)};
}

ItemKey PageChooser::itemAt(ItemKey in, std::size_t index) const {
    return index < numItems(in) ? ItemKey{index + 1} : ItemKey();
}

bool PageChooser::describeItem(ItemKey item, GlobDescription& description) const {
    if (item.isEmpty() || item.value > rows_.size()) return false;
    std::size_t const row = item.value - 1;
    Page const* const page = rows_[row].page;
    description.role = page ? Role::listItem : Role::label;
    description.name = page ? LightweightString<wchar_t>(page->title) : titleOf(rows_[row].group);
    description.states = GlobDescription::visible | GlobDescription::enabled;
    if (row == current_) description.states |= GlobDescription::selected;
    if (page) description.actions = GlobDescription::press;
    description.box = boxOf(row).translated(screenBox().bottomLeft());
    return true;
}

bool PageChooser::performItemAction(ItemKey item, std::uint32_t action) {
    bool const isPage = !item.isEmpty() && item.value <= rows_.size() && rows_[item.value - 1].page;
    if (!isPage || action != GlobDescription::press) return false;
    choose(item.value - 1);
    return true;
}

} // namespace wainscot::gallery
