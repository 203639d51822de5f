#include "menus/model/menu_item_p.h"

#include "host/base/convert.h"
#include "host/drawing/uif_std.h"
#include "host/events/key_names.h"
#include "host/events/keybinding_manager.h"
#include "menus/model/menu_item_action.h"
#include "menus/model/menu_label_p.h"

#include <charconv>
#include <utility>

namespace wainscot {

namespace {

using Text = LightweightString<wchar_t>;

constexpr std::uint32_t newItemFlags = MenuItemFlag::active | MenuItemFlag::closesMenu;

constinit std::uint64_t typeChanges = 0;

/// The number in a text that `IdStamp::asString` may have written; 0 for other texts.
std::uint64_t stampIn(LightweightString<char> const& text) {
    std::uint64_t number = 0;
    auto const [end, error] = std::from_chars(text.begin(), text.end(), number);
    bool const isWhole = end == text.end() && error == std::errc() && text[0] != '0';
    return isWhole ? number : 0;
}

/// In the format, as far as it is shown.
Text inFormat(Text const& label, ResStrFmt format) {
    if (format == eResStrPlain) return label;
    std::size_t const shown = MenuLabel::shown(label.view()).size();
    return formatString(label.substr(0, shown), format) + label.substr(shown);
}

} // namespace

MenuItemAction::~MenuItemAction() = default;

void MenuItemAction::showIn(MenuItem&) const {}

NotifierBase* MenuItemAction::source() const {
    return nullptr;
}

MenuItem::Type& MenuItem::Type::operator=(Type const& other) noexcept {
    typeChanges += value_ != other.value_;
    value_ = other.value_;
    return *this;
}

std::uint64_t MenuItem::numTypeChanges() {
    return typeChanges;
}

MenuItem::MenuItem(UIString const& label) {
    storeLabel(label.text());
    init();
}

MenuItem::MenuItem(UIString const& label, WidgetCallback callback, MenuItemType type, ResStrFmt format)
    : callback_(std::move(callback)), type_(type), hasCallback_(true) {
    storeLabel(inFormat(label.text(), format));
    init();
}

MenuItem::MenuItem(UIString const& label, Action action) {
    hasCallback_ = bool(action);
    callback_ = WidgetCallback(std::move(action), LightweightString<char>());
    storeLabel(label.text());
    init();
}

MenuItem::MenuItem(UIString const& label, WidgetCallback callback, std::vector<UIString> const& options,
                   std::uint32_t format)
    : callback_(std::move(callback)), hasCallback_(true) {
    Rare& own = editRare();
    own.optionFormat = format;
    for (UIString const& option : options) {
        own.options.emplace_back(menuFormatString(option.text(), format));
        own.options.back().setFlags(MenuItemFlag::active);
    }
    storeLabel(label.text());
    init();
}

MenuItem::MenuItem(UIString const& label, WidgetCallback callback, std::vector<MenuItem> options)
    : MenuItem(label, std::move(options)) {
    setCallback(std::move(callback));
}

MenuItem::MenuItem(UIString const& label, std::vector<MenuItem> options) {
    editRare().options = std::move(options);
    storeLabel(label.text());
    init();
}

MenuItem::MenuItem(UIString const& label, WidgetCallback callback, Colour const& text, MenuItemType type)
    : MenuItem(label, std::move(callback), type) {
    editRare().text = text;
}

MenuItem::MenuItem(UIString const& label, WidgetCallback callback, Colour const& text,
                   Colour const& background, MenuItemType type)
    : MenuItem(label, std::move(callback), type) {
    setColours(text, background);
}

MenuItem::MenuItem(UIString const& label, Qv::Ptr<iSubMenuCreator> creator) : MenuItem(label) {
    setSubMenuCreator(std::move(creator));
}

MenuItem MenuItem::plain(Text const& text) {
    MenuItem item;
    item.isPlain_ = true;
    item.label_ = text;
    return item;
}

MenuItem MenuItem::plain(Text const& text, WidgetCallback callback, MenuItemType type) {
    MenuItem item = plain(text);
    item.setCallback(std::move(callback));
    item.type_ = type;
    return item;
}

/// For constructors: what they have stored stays.
void MenuItem::init() {
    flags_ |= newItemFlags;
    stamp_ = IdStamp::make();
    if (isChoosable(type())) parseOptions();
}

/// The text of an option ends before the first "]", so that it cannot have options itself.
void MenuItem::parseOptions() {
    if (label_.find(L"||") == label_.npos) return;
    std::vector<MenuLabel::View> const texts = MenuLabel::partsAtRight(label_.view()).options;
    if (texts.empty()) return;
    Rare& own = editRare();
    for (MenuLabel::View const text : texts) {
        own.options.emplace_back(menuFormatString(Text(text), own.optionFormat));
        own.options.back().setFlags(MenuItemFlag::active);
    }
}

void MenuItem::storeLabel(Text label) {
    label_ = std::move(label);
    isRich_ = !isPlain_ && HTMLRenderer::isHTML(label_);
    if (isRich_) editRare().formatted = {};
}

void MenuItem::label(UIString const& label) {
    storeLabel(label.text());
}

Text MenuItem::getDisplayString() const {
    return isPlain_ ? label_ : label_.substr(0, MenuLabel::shown(label_.view()).size());
}

bool MenuItem::shows(std::wstring_view text) const {
    return (isPlain_ ? label_.view() : MenuLabel::shown(label_.view())) == text;
}

Text MenuItem::getRightAlignedText() const {
    return isPlain_ ? Text() : Text(MenuLabel::atRight(label_.view()));
}

Text MenuItem::getShownRightAlignedText() const {
    return isPlain_ ? Text() : MenuLabel::partsAtRight(label_.view()).plain;
}

HTMLRenderer::ParagraphsPtr MenuItem::formattedLabel() const {
    if (!isRich_) return nullptr;
    Rare::Formatted& kept = rare().formatted;
    Colour const text = getTextColour();
    Colour const background = getBackgroundColour();
    if (!kept.paragraphs || kept.text != text || kept.background != background)
        kept = {HTMLRenderer::parse(getDisplayString(), Palette(text, background)), text, background};
    return kept.paragraphs;
}

Text MenuItem::getIncidentalText() const {
    return rare().incidentalText;
}

void MenuItem::setIncidentalText(UIString const& text) {
    if (rare_ || !text.isEmpty()) editRare().incidentalText = text.text();
}

void MenuItem::setCommand(char const* command) {
    setIncidentalText({});
    auto const keys = KeybindingManager::instance().getKeysAssignedToCommand(command);
    if (!keys.empty()) setIncidentalText(fromUTF8(keyToString(keys.front())));
}

std::span<MenuItem const> MenuItem::options() const {
    return rare().options;
}

void MenuItem::setOptions(std::vector<MenuItem> const& options) {
    // The old ones are released last: they may hold this item's list.
    std::vector<MenuItem> old = options;
    if (rare_ || !options.empty()) editRare().options.swap(old);
}

unsigned int MenuItem::getCurOption() const {
    return rare().currentOption;
}

void MenuItem::setCurOption(unsigned int option) {
    if (getCurOption() != option) editRare().currentOption = option;
}

void MenuItem::incCurOption() {
    std::size_t const count = options().size();
    if (count > 0) setCurOption(getCurOption() + std::size_t(1) < count ? getCurOption() + 1 : 0);
}

MenuItem const* MenuItem::currentOption() const {
    return getCurOption() < options().size() ? &options()[getCurOption()] : nullptr;
}

std::uint32_t MenuItem::getOptionFormat() const {
    return rare().optionFormat;
}

void MenuItem::setActive(bool active) {
    flags_ = active ? flags_ | MenuItemFlag::active : flags_ & ~std::uint32_t(MenuItemFlag::active);
}

Colour MenuItem::getDefaultColour() {
    return UifStd::getColourScheme().text(eTextEnabled);
}

Colour MenuItem::getTextColour() const {
    return rare().text.value_or(getDefaultColour());
}

Colour MenuItem::getBackgroundColour() const {
    return rare().background.value_or(UifStd::getColourScheme().window(eWindowRaised));
}

Glib::FontDesc MenuItem::getFont() const {
    return rare().font.value_or(UifStd::getFont());
}

void MenuItem::setColours(Colour const& text, Colour const& background) {
    Rare& own = editRare();
    own.text = text;
    own.background = background;
}

void MenuItem::setFont(Glib::FontDesc const& font) {
    editRare().font = font;
}

MenuItem::Layout MenuItem::getLayout() const {
    return rare().layout;
}

void MenuItem::setLayout(Layout const& layout) {
    if (!(layout == getLayout())) editRare().layout = layout;
}

LightweightString<char> MenuItem::id() const {
    return stamp_.valid() ? stamp_.asString() : rare().id;
}

void MenuItem::id(LightweightString<char> const& id) {
    stamp_.invalidate();
    if (rare_ || !id.empty()) editRare().id = LightweightString<char>(id.c_str());
}

bool MenuItem::hasId(LightweightString<char> const& id) const {
    return stamp_.valid() ? stamp_.value() == stampIn(id) : rare().id == id;
}

bool operator==(MenuItem const& a, MenuItem const& b) {
    return a.stamp_.valid() ? b.hasId(a.id()) : a.hasId(b.id());
}

std::vector<WidgetCallback> MenuItem::callbacks() const {
    std::vector<WidgetCallback> all;
    if (!hasCallback_) return all;
    std::vector<WidgetCallback> const& more = rare().moreCallbacks;
    all.reserve(1 + more.size());
    all.push_back(callback_);
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

MenuItemAction* MenuItem::action() const {
    return hasCallback_ ? dynamic_cast<MenuItemAction*>(callback_.getCallback().get()) : nullptr;
}

void MenuItem::setCallback(WidgetCallback callback) {
    // The old ones are released last, for the same reason as old options.
    std::vector<WidgetCallback> old;
    if (!rare().moreCallbacks.empty()) editRare().moreCallbacks.swap(old);
    WidgetCallback const oldFirst = std::exchange(callback_, std::move(callback));
    hasCallback_ = true;
}

void MenuItem::addCallback(WidgetCallback callback) {
    if (hasCallback_)
        editRare().moreCallbacks.push_back(std::move(callback));
    else
        setCallback(std::move(callback));
}

Qv::Ptr<MenuItem::iIconRenderer> MenuItem::iconRenderer() const {
    return rare().iconRenderer;
}

void MenuItem::setIconRenderer(Qv::Ptr<iIconRenderer> renderer) {
    if (rare_ || renderer) editRare().iconRenderer = std::move(renderer);
}

/// What an item has that was never given any of it.
MenuItem::Rare const& MenuItem::rare() const {
    static Rare const standard;
    return rare_ ? static_cast<Rare const&>(*rare_) : standard;
}

MenuItem::Rare& MenuItem::editRare() {
    if (!rare_)
        rare_ = Qv::makePtr<Rare>();
    else if (rare_->refCount() > 1)
        rare_ = Qv::makePtr<Rare>(rare());
    return static_cast<Rare&>(*rare_);
}

} // namespace wainscot
