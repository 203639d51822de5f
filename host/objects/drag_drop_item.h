#pragma once

#include "host/base/lightweight_string.h"
#include "host/base/object.h"

#include <vector>

namespace wainscot {

/// What is being dragged. Programs derive from it and keep there what a receiver needs.
class WAINSCOT_API DragDropItem : public Qv::InternalRefCount {
public:
    /// `type` says what it is ("clip", "tab", "files"); receivers decide by it.
    explicit DragDropItem(LightweightString<char> type, LightweightString<wchar_t> label = {});
    ~DragDropItem() override;

    LightweightString<char> const& type() const { return type_; }
    /// Shown beside the pointer while it is dragged.
    LightweightString<wchar_t> const& label() const { return label_; }

private:
    LightweightString<char> type_;
    LightweightString<wchar_t> label_;
};

/// Files that another program has dropped on a window; the type is "files".
class WAINSCOT_API DroppedFiles final : public DragDropItem {
public:
    static constexpr LightweightString<char> filesType{"files"};

    explicit DroppedFiles(std::vector<LightweightString<wchar_t>> paths);
    ~DroppedFiles() override;

    /// Full paths.
    std::vector<LightweightString<wchar_t>> const& paths() const { return paths_; }

private:
    std::vector<LightweightString<wchar_t>> paths_;
};

} // namespace wainscot
