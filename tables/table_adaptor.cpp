#include "tables/table_adaptor.h"

namespace wainscot {

iTableAdaptor::~iTableAdaptor() = default;

void iTableAdaptor::getFieldColours(XY<int> const&, Palette&) const {}

DBFieldTypes::eType iTableAdaptor::getFieldType(XY<int> const&) const {
    return DBFieldTypes::eText;
}

unsigned short iTableAdaptor::getRowHeight(unsigned int) const {
    return 0;
}

bool iTableAdaptor::getTag(unsigned int) const {
    return false;
}

bool iTableAdaptor::isReadOnly(XY<int> const&) const {
    return false;
}

std::optional<Glib::FontDesc> iTableAdaptor::getFont(XY<int> const&) const {
    return std::nullopt;
}

iTableAdaptor::Text iTableAdaptor::getGhostText(XY<int> const&) const {
    return {};
}

iTableAdaptor::Text iTableAdaptor::contextString(XY<int> const&) const {
    return {};
}

MouseCursorID iTableAdaptor::contextCursor(XY<int> const&, XY<int> const&) const {
    return arrowCursor;
}

int iTableAdaptor::getTextStyle(XY<int> const&) const {
    return 1;
}

std::pair<int, int> iTableAdaptor::getTextAlignment(XY<int> const&) const {
    return {-1, 1};
}

void iTableAdaptor::getFieldChoices(XY<int> const&, std::vector<MenuItem>&) const {}

bool iTableAdaptor::canBeCurrent(XY<int> const&) const {
    return true;
}

bool iTableAdaptor::drawField(CellContext&) {
    return false;
}

void iTableAdaptor::storeFieldText(Text const&, XY<int> const&) {}

void iTableAdaptor::setTags(std::map<unsigned int, bool> const&, bool) {}

bool iTableAdaptor::setAllTags(bool) {
    return false;
}

void iTableAdaptor::handleMouseContainment(XY<int> const&, bool) {}

void iTableAdaptor::handleMouseClickEvent(XY<int> const&, Event const&) {}

bool iTableAdaptor::handleMouseDragStart(XY<int> const&, Event const&) {
    return false;
}

bool iTableAdaptor::requestAddRow() {
    return false;
}

void iTableAdaptor::swapFields(unsigned int, unsigned int, unsigned int) {}

unsigned int iTableAdaptor::getNumTagged() const {
    unsigned int count = 0;
    for (unsigned int row = 0, size = getSize(); row < size; ++row) count += getTag(row) ? 1 : 0;
    return count;
}

void iTableAdaptor::sort(LightweightString<char> const&, bool) {}

std::uint64_t iTableAdaptor::getRowIdentity(unsigned int) const {
    return 0;
}

std::optional<unsigned int> iTableAdaptor::findRow(std::uint64_t) const {
    return std::nullopt;
}

bool iTableAdaptor::hasRowHeights() const {
    return true;
}

bool iTableAdaptor::anyTagged() const {
    return getFirstTagged() >= 0;
}

int iTableAdaptor::getFirstTagged() const {
    auto const first = findTagged(0);
    return first ? static_cast<int>(*first) : -1;
}

std::optional<unsigned int> iTableAdaptor::findTagged(unsigned int from) const {
    LifeGuard const life(life_);
    unsigned int const size = getSize();
    for (unsigned int row = from; life.alive() && row < size; ++row)
        if (getTag(row)) return row;
    return std::nullopt;
}

void iTableAdaptor::setTag(unsigned int row, bool tagged) {
    setTags({{row, tagged}}, true);
}

} // namespace wainscot
