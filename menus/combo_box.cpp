#include "menus/combo_box.h"

#include "host/base/first_exception.h"
#include "host/base/letter_case.h"
#include "host/drawing/uif_std.h"
#include "host/events/dispatch_scope.h"
#include "host/events/messages.h"
#include "host/objects/description.h"
#include "host/objects/kbd_focus.h"
#include "menus/drop_down_button.h"
#include "menus/menu.h"

#include <algorithm>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

/// What a list shows of its rows, unless it is told otherwise.
constexpr int usualRows = 12;

} // namespace

/// The list of a combo box: the keys that it does not need belong to the text.
class ComboBox::List final : public Menu {
public:
    List(Menu::InitArgs const& args, ComboBox& box, std::vector<unsigned short> items)
        : Menu(args), box_(&box), chosenFrom_(std::move(items)) {}

    void show(Qv::Ptr<MenuData> const& items, std::vector<unsigned short> chosenFrom) {
        chosenFrom_ = std::move(chosenFrom);
        bool const isAbove = box_ && screenBox().y1 >= box_.get()->screenBox().y2;
        LifeGuard const life = guard();
        redisplay(items);
        // It hangs on the box, whatever its height.
        if (life.alive() && isAbove && box_) setScreenPos({screenBox().x1, box_.get()->screenBox().y2});
    }
    /// The row of an item of the box; -1 when it is not shown.
    int rowOf(unsigned short item) const {
        auto const found = std::ranges::find(chosenFrom_, item);
        return found == chosenFrom_.end() ? noItem : static_cast<int>(found - chosenFrom_.begin());
    }
    int handleKeyboardEvent(int keyCode) override {
        auto const step = actionFor(keyTable, static_cast<std::uint32_t>(keyCode));
        bool const isOwn = step && (*step == Step::up || *step == Step::down || *step == Step::pageUp ||
                                    *step == Step::pageDown ||
                                    (*step == Step::choose && keyCode != static_cast<int>(Key::space) &&
                                     getHighlightedItem() != noItem));
        return isOwn ? Menu::handleKeyboardEvent(keyCode) : 0;
    }
    void informOwner(unsigned short row) override {
        if (ComboBox* const box = box_.get()) box->choose(getItems()->getItem(row));
    }

private:
    HandlerRef<ComboBox> box_;
    std::vector<unsigned short> chosenFrom_;
};

/// Opens the list below the whole box.
class ComboBox::Arrow final : public DropDownButton<List> {
public:
    Arrow(ComboBox& box, Button::InitArgs const& args) : DropDownButton(args, eStaysDown), box_(&box) {
        // For others it is a part of the box.
        setLightweight(true);
    }

    unsigned short heightFor(unsigned short wanted) const {
        return heightForList(wanted != 0 ? wanted : toSize16(usualRows * UifStd::getTableRowHeight()));
    }

protected:
    List* makeDropDown() override { return box_ && box()->isEditable() ? box()->makeList() : nullptr; }
    IntBox dropDownAnchor() const override { return box_ ? box()->screenBox() : screenBox(); }
    void informParentOfImminentAppearance() override {
        LifeGuard const life = guard();
        if (box_ && get_kbd_focus() != box()) box()->claimKbdFocus();
        if (life.alive()) DropDownButton::informParentOfImminentAppearance();
    }
    int rightMargin() const override { return 0; }

private:
    ComboBox* box() const { return box_.get(); }

    /// Null when it has died, and the arrow was taken out of it before.
    HandlerRef<ComboBox> box_;
};

ComboBox::ComboBox(InitArgs const& args) : TextBox(args), items_(args.items), maxHeight_(args.maxHeight) {
    if (!items_) items_ = Qv::makePtr<MenuData>();
    Button::InitArgs button(toSize16(height()), toSize16(height()));
    button.style = eButtonFlat;
    auto* const arrow = new Arrow(*this, button);
    arrow_ = HandlerRef<Arrow>(arrow);
    setMargins(margins().left, toSize16(height()));
    addWidget(arrow, 0, 0);
    placeArrow();
}

ComboBox::~ComboBox() = default;

// Items

void ComboBox::setItems(Qv::Ptr<MenuData> items) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    hideList();
    if (life.alive()) items_ = items ? std::move(items) : Qv::makePtr<MenuData>();
}

unsigned short ComboBox::getChosenItem() const {
    Text const text = getText();
    auto const items = items_->items();
    auto const found = std::ranges::find_if(items, [&](MenuItem const& item) {
        return item.isSelectable() && item.shows(text.view()) && !text.empty();
    });
    return found == items.end() ? MenuData::none : static_cast<unsigned short>(found - items.begin());
}

/// The data is asked first; then all hear of it, whatever becomes of the others.
void ComboBox::choose(MenuItem const& item) {
    if (!isActive()) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    FirstException thrown;
    // The list may change in each report.
    MenuItem const chosen = item;
    hasTyped_ = false;
    typed_ = {};
    thrown.run([&] { setByUser(chosen.getDisplayString()); });
    if (life.alive()) noteTextAtFocus();
    if (life.alive() && isEditing()) highlightAllText(true);
    if (life.alive()) thrown.run([&] { informOwner(eChanged, true, 0); });
    if (life.alive())
        thrown.run([&] { MenuData(std::vector<MenuItem>{chosen}).issueCallback(0, parent(), this); });
    if (life.alive() && parent()) sendMessage(chosenMsg, parent(), static_cast<Glob*>(this));
    thrown.rethrow();
}

void ComboBox::step(int direction) {
    unsigned short const chosen = getChosenItem();
    int const end = direction > 0 ? -1 : static_cast<int>(items_->numItems());
    int const item = items_->nextToSelect(chosen != MenuData::none ? chosen : end, direction);
    if (item >= 0) choose(items_->getItem(static_cast<unsigned short>(item)));
}

// The list

void ComboBox::setAppearing(std::function<void()> prepare) {
    if (arrow_) arrow_.get()->setAppearing(std::move(prepare));
}

bool ComboBox::isListOpen() const {
    return arrow_ && arrow_.get()->isDropDownOpen();
}

bool ComboBox::showList() {
    Arrow* const arrow = arrow_.get();
    if (!arrow || isListOpen()) return false;
    DispatchScope const scope;
    LifeGuard const life = guard();
    arrow->openByKey();
    return life.alive() && isListOpen();
}

void ComboBox::hideList() {
    if (Arrow* const arrow = arrow_.get()) arrow->removeMenuFromScreen();
}

std::vector<unsigned short> ComboBox::matchingItems() const {
    bool const isFiltered = hasTyped_ && items_->numItems() > longestPlainList;
    std::vector<unsigned short> matching;
    auto const items = items_->items();
    for (std::size_t i = 0; i < items.size(); ++i)
        if (!isFiltered ||
            (items[i].isSelectable() && holdsText(items[i].getDisplayString().view(), typed_.view())))
            matching.push_back(static_cast<unsigned short>(i));
    return matching;
}

namespace {

Qv::Ptr<MenuData> copiesOf(MenuData const& items, std::vector<unsigned short> const& indices) {
    std::vector<MenuItem> copies;
    copies.reserve(indices.size());
    for (unsigned short const index : indices) copies.push_back(items.getItem(index));
    return Qv::makePtr<MenuData>(std::move(copies));
}

} // namespace

ComboBox::List* ComboBox::makeList() {
    std::vector<unsigned short> matching = matchingItems();
    if (matching.empty()) return nullptr;
    Menu::InitArgs args(copiesOf(*items_, matching), arrow_.get());
    args.maxHeight = arrow_.get()->heightFor(maxHeight_);
    args.minWidth = toSize16(width());
    auto* const list = new List(args, *this, std::move(matching));
    if (unsigned short const chosen = getChosenItem(); chosen != MenuData::none)
        list->setHighlightedItem(list->rowOf(chosen));
    return list;
}

// Typing

int ComboBox::performKey(std::uint32_t key) {
    LifeGuard const life = guard();
    Text const before = getText();
    int const answer = TextBox::performKey(key);
    if (!life.alive() || getText() == before) return answer;
    typed_ = getText();
    hasTyped_ = true;
    if (isPrintable(static_cast<int>(key))) complete();
    return answer;
}

/// The completion is selected from its end, so that the cursor stays behind what was typed.
void ComboBox::complete() {
    auto const length = static_cast<int>(typed_.size());
    if (!completes_ || typed_.empty() || getCursorPosition() != length) return;
    for (MenuItem const& item : items_->items()) {
        Text const text = item.getDisplayString();
        if (!item.isSelectable() || text.size() <= typed_.size() ||
            !beginsWithText(text.view(), typed_.view()))
            continue;
        LifeGuard const life = guard();
        paste(text.substr(typed_.size()));
        if (life.alive()) setSelection({static_cast<int>(getText().size()), length});
        return;
    }
}

void ComboBox::handleCursorChange() {
    LifeGuard const life = guard();
    TextBox::handleCursorChange();
    if (life.alive() && hasTyped_ && isEditing()) followTyping();
}

/// A list that is open shows what fits the typed text; a long one opens.
void ComboBox::followTyping() {
    bool const isLong = items_->numItems() > longestPlainList;
    if (!isListOpen()) {
        if (isLong && !typed_.empty() && getChosenItem() == MenuData::none) showList();
        return;
    }
    auto* const list = static_cast<List*>(arrow_.get()->getDropDown());
    LifeGuard const life = guard();
    if (isLong) {
        std::vector<unsigned short> matching = matchingItems();
        if (matching.empty()) return hideList();
        Qv::Ptr<MenuData> const copies = copiesOf(*items_, matching);
        list->show(copies, std::move(matching));
    }
    if (!life.alive() || !isListOpen()) return;
    unsigned short const chosen = getChosenItem();
    list->setHighlightedItem(chosen == MenuData::none ? Menu::noItem : list->rowOf(chosen));
}

TextBox::Use ComboBox::performAction(std::uint32_t key, bool hadAnchor) {
    if (auto const wanted = actionFor(keyTable, key)) {
        LifeGuard const life = guard();
        if (*wanted != openList) {
            step(*wanted == nextItem ? 1 : -1);
        } else if (isListOpen()) {
            hideList();
        } else {
            hasTyped_ = false;
            showList();
        }
        return life.alive() ? Use::last : Use::yes;
    }
    LifeGuard const life = guard();
    if (Key::base(key) == Key::enter) takeSpelling();
    return life.alive() ? TextBox::performAction(key, hadAnchor) : Use::yes;
}

/// A text that is that of an item but for large and small letters is taken for it.
void ComboBox::takeSpelling() {
    Text const text = getText();
    auto const items = items_->items();
    auto const found = std::ranges::find_if(items, [&](MenuItem const& item) {
        return item.isSelectable() && isSameText(item.getDisplayString().view(), text.view());
    });
    bool const isOther = hasTyped_ && !text.empty() && found != items.end() && !found->shows(text.view());
    if (isOther) noteEdit(engine().replaceAll(found->getDisplayString()));
}

/// What comes next is entered here as well.
void ComboBox::leaveByReturn() {
    highlightAllText(true);
}

void ComboBox::handleEditEnd() {
    LifeGuard const life = guard();
    takeSpelling();
    if (!life.alive()) return;
    hasTyped_ = false;
    hideList();
    TextBox::handleEditEnd();
}

// Look

int ComboBox::handleMouseEvent(Event const& event) {
    if (!mouse_wheel_event(event)) return TextBox::handleMouseEvent(event);
    if (isActive() && isEditable() && !isListOpen()) step(event.amount() < 1 ? 1 : -1);
    return handled;
}

void ComboBox::placeArrow() {
    Arrow* const arrow = arrow_.get();
    if (!arrow) return;
    int const edge = getBorder().getSize();
    int const size = std::max(height() - 2 * edge, 0);
    setWidgetPos(arrow, {width() - size - edge, edge});
    arrow->resize(size, size);
}

void ComboBox::reshape() {
    LifeGuard const life = guard();
    TextBox::reshape();
    if (life.alive()) placeArrow();
}

void ComboBox::setActive(bool active, eRedrawFlag redraw) {
    LifeGuard const life = guard();
    TextBox::setActive(active, redraw);
    if (life.alive() && arrow_) arrow_.get()->setActive(active, redraw);
}

void ComboBox::describe(GlobDescription& description) const {
    TextBox::describe(description);
    if (isListOpen()) description.states |= GlobDescription::expanded;
}

} // namespace wainscot
