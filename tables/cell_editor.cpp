#include "tables/cell_editor.h"

namespace wainscot {

iCellEditor::~iCellEditor() = default;

} // namespace wainscot
