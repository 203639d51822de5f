#include "foundation/layout/box_layout.h"
#include "gallery/pages/input_page_parts.h"
#include "gallery/pages/label_page.h"

#include "host/base/convert.h"
#include "host/drawing/shapes.h"
#include "host/events/event.h"
#include "host/objects/drag_drop_item.h"
#include "host/windows/drag_drop_manager.h"

#include <array>

namespace wainscot::gallery {

namespace {

constexpr std::array<wchar_t const*, 3> clips{L"Interview", L"Titles", L"Music"};

/// A thing that can be dragged away.
class Source final : public LabelGlob {
public:
    Source(LightweightString<char> type, LightweightString<wchar_t> label, LogLine log)
        : LabelGlob(std::move(label)), type_(std::move(type)), log_(std::move(log)) {
        setFocusable(false);
        setContextString(L"Drag me to a place that takes me", L"Escape takes it back.");
    }

    bool react(Event const& event) override {
        bool const begins =
            mouse_move_event(event) && event.heldButtons() != 0 && isMouseMoveSignificant(event);
        if (begins && !DragDropManager::instance().isDragging()) {
            DragDropManager::instance().beginDrag(Qv::Ptr<DragDropItem>(new DragDropItem(type_, label())),
                                                  this);
            return true;
        }
        return LabelGlob::react(event);
    }
    void handleDragEnd(DragDropItem& item, bool taken) override {
        log_(item.label() + (taken ? L"  was taken" : L"  came back"));
        // The release that ended the drag was not heard here.
        Event release(EventKind::leftRelease, XY<int>{-1, -1});
        LabelGlob::react(release);
    }

private:
    LightweightString<char> type_;
    LogLine log_;
};

/// Takes things of one kind, and files.
class Target final : public ReadOut {
public:
    Target(LightweightString<char> type, LightweightString<wchar_t> heading, LogLine log)
        : ReadOut(std::move(heading)), type_(std::move(type)), log_(std::move(log)) {}

    bool canAccept(DragDropItem const& item, XY<int> const&, eDropReason) override {
        return item.type() == type_ || item.type() == DroppedFiles::filesType;
    }
    bool acceptDrop(DragDropItem& item, XY<int> const&, eDropReason) override {
        if (auto const* files = dynamic_cast<DroppedFiles*>(&item))
            for (auto const& path : files->paths()) take(path);
        else
            take(item.label());
        return true;
    }
    void handleDragHover(DragDropItem const&, XY<int> const&, bool inside) override {
        if (inside == hovered_) return;
        hovered_ = inside;
        makeDirty();
    }
    void draw() override {
        ReadOut::draw();
        if (!hovered_) return;
        CanvasRenderer renderer(canvas(), canvasArea());
        Glib::drawFrame(renderer, getPalette().selection(eSelectionActive), canvasArea(),
                        UifStd::getBorder());
    }

private:
    void take(LightweightString<wchar_t> const& name) {
        setText(text() + (text().isEmpty() ? L"" : L"\n") + name);
        log_(LightweightString<wchar_t>(L"dropped  ") + name);
    }

    LightweightString<char> type_;
    LogLine log_;
    bool hovered_ = false;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    auto page = std::make_unique<LabelPage>(size, log);
    auto layout = BoxLayout::makeColumn();
    BoxLayout* const sources = layout->add(BoxLayout::makeRow());
    for (wchar_t const* clip : clips) sources->add(std::make_unique<Source>("clip", clip, log));
    sources->add(std::make_unique<Source>("marker", L"A marker", log));
    BoxLayout* const targets = layout->add(BoxLayout::makeRow(), {.stretch = 1});
    targets->add(std::make_unique<Target>("clip", L"Takes clips, and files from other programs", log),
                 {.stretch = 1});
    targets->add(std::make_unique<Target>("marker", L"Takes markers, and files", log), {.stretch = 1});
    page->setLayout(std::move(layout));
    return page;
}

} // namespace

extern Page const draggingPage = {"dragging",
                                  L"Dragging",
                                  PageGroup::testBench,
                                  L"Things are dragged onto places that take or refuse them.",
                                  "gallery/pages/dragging_page.cpp",
                                  make};

} // namespace wainscot::gallery
