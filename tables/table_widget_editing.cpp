#include "host/events/dispatch_scope.h"
#include "host/objects/kbd_focus.h"
#include "tables/table_asking_p.h"
#include "tables/table_body_p.h"

namespace wainscot {

void TableWidget::registerFieldEditor(DBFieldTypes::eType type, Qv::Ptr<iCellEditor> editor) {
    if (editor)
        editors_[type] = std::move(editor);
    else
        editors_.erase(type);
    drawRows();
}

iCellEditor* TableWidget::findEditorForFieldType(DBFieldTypes::eType type) const {
    auto const found = editors_.find(type);
    return found == editors_.end() ? nullptr : found->second.get();
}

void TableWidget::enableEditing(bool enable) {
    if (enable == editingEnabled_) return;
    editingEnabled_ = enable;
    if (!enable) endEditing(true);
}

void TableWidget::setEditingEnabled(bool enable, XY<int> position) {
    DispatchScope const scope;
    if (!validViewPos(position)) position = current_;
    if (enable)
        beginEditing(position);
    else
        endEditing(true);
}

/// Between cells of one type the widget stays.
void TableWidget::beginEditing(XY<int> const& position) {
    DispatchScope const scope;
    LifeGuard const life = guard();
    bool const isPossible = validViewPos(position) && isEditable(position);
    auto const type =
        isPossible ? ask([&] { return adaptor_->getFieldType(viewToData(position)); }, DBFieldTypes::eNone)
                   : DBFieldTypes::eNone;
    Qv::Ptr<iCellEditor> const wanted(isPossible ? findEditorForFieldType(type) : nullptr);
    saveCurrentFieldData();
    if (!life.alive()) return;
    if (!wanted || wanted.get() != editor_.get() || type != editingType_) endEditing(false);
    if (!life.alive() || !wanted || !validViewPos(position) || !body_) return;
    editing_ = position;
    editingType_ = type;
    editor_ = wanted;
    if (!editingWidget_) {
        Glob* const widget = wanted->getWidget(body_);
        if (!life.alive()) return;
        editingWidget_ = HandlerRef<Glob>(widget);
        if (widget && !widget->parent()) body_->addChild(widget, BottomLeft(0, 0));
        if (life.alive() && editingWidget_) editingWidget_.get()->setActive(true);
    }
    if (life.alive()) initEditingWidgetForNewField();
}

void TableWidget::initEditingWidgetForNewField() {
    Glob* const widget = editingWidget_.get();
    if (!editor_ || !widget || !validViewPos(editing_)) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    Qv::Ptr<iCellEditor> const editor = editor_;
    positionEditingWidget();
    if (!life.alive() || !editingWidget_) return;
    tellAdaptor([&] {
        iTableAdaptor::CellContext context(*this, *adaptor_, viewToData(editing_));
        context.area = getCellArea(editing_);
        editor->initWidgetFromData(context);
    });
    if (life.alive() && editingWidget_) editingWidget_.get()->claimKbdFocus();
}

void TableWidget::positionEditingWidget() {
    Glob* const widget = editingWidget_.get();
    if (!widget || !body_ || !validViewPos(editing_)) return;
    IntBox const box = bodyBoxOf(editing_);
    body_->reshapeWidgetAt(widget, box.bottomLeft(), box.size());
}

void TableWidget::saveCurrentFieldData() {
    DispatchScope const scope;
    LifeGuard const life = guard();
    // The editor may end the editing when it is asked.
    Qv::Ptr<iCellEditor> const editor = editor_;
    if (!editor || !editor->hasChanged() || !life.alive() || editor_ != editor) return;
    editor->clearChanged();
    if (life.alive() && editor_ == editor) storeCurrentFieldData();
}

void TableWidget::storeCurrentFieldData() {
    if (!editor_ || !editingWidget_ || !validViewPos(editing_)) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    Qv::Ptr<iCellEditor> const editor = editor_;
    auto const row = static_cast<unsigned int>(editing_.y);
    unsigned short const before = heights_.heightOf(row);
    tellAdaptor([&] {
        iTableAdaptor::CellContext context(*this, *adaptor_, viewToData(editing_));
        context.area = getCellArea(editing_);
        editor->storeData(context);
    });
    if (!life.alive()) return;
    if (row < heights_.count()) ask([&] { return heights_.changed(row, 1), true; }, false);
    if (heights_.heightOf(row) != before)
        layOut();
    else
        drawRow(row);
    if (life.alive()) report(dataStored);
}

void TableWidget::endEditing(bool save) {
    if (!editor_) return;
    DispatchScope const scope;
    LifeGuard const life = guard();
    if (save) saveCurrentFieldData();
    if (!life.alive() || !editor_) return;
    Qv::Ptr<iCellEditor> const editor = std::exchange(editor_, nullptr);
    Glob* const widget = editingWidget_.get();
    editingWidget_ = {};
    XY<int> const position = std::exchange(editing_, XY<int>(-1, -1));
    bool const hadFocus = widget && isWithin(get_kbd_focus(), widget);
    editor->releaseWidget();
    if (hadFocus && life.alive()) claimKbdFocus();
    if (widget && is_good_glob_ptr(widget)) destroy(widget);
    if (life.alive() && validRow(position.y)) drawRow(static_cast<unsigned int>(position.y));
}

} // namespace wainscot
