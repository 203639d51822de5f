#include "text/titled_vari_box.h"

namespace wainscot {

namespace {

std::unique_ptr<VariBox> boxFor(TitledVariBox::InitArgs const& args) {
    VariBox::InitArgs box(args.text);
    box.palette = args.palette;
    box.height = args.height;
    box.appearance = args.appearance;
    return std::make_unique<VariBox>(box);
}

TitledVariBox::InitArgs argsFor(UIString const& title, UIString const& text, Palette const& palette,
                                unsigned short width, unsigned short height, int titleWidth, Canvas* canvas) {
    TitledVariBox::InitArgs args(title, text, width);
    args.palette = palette;
    args.height = height;
    args.titleWidth = titleWidth;
    args.canvas = canvas;
    return args;
}

} // namespace

TitledVariBox::InitArgs::InitArgs(UIString label, UIString content, unsigned short w)
    : GlobCreationInfo(w, 0), title(std::move(label)), text(std::move(content)) {}

TitledVariBox::TitledVariBox(InitArgs const& args)
    : Titled(args.title, boxFor(args), args, args.titleWidth) {}

TitledVariBox::TitledVariBox(UIString const& title, UIString const& text, Palette const& palette,
                             unsigned short width, unsigned short height, int titleWidth, Canvas* canvas)
    : TitledVariBox(argsFor(title, text, palette, width, height, titleWidth, canvas)) {}

TitledVariBox::~TitledVariBox() = default;

VariBoxParserBase* TitledVariBox::getParser() const {
    return getVariBox() ? getVariBox()->getParser() : nullptr;
}

void TitledVariBox::setParser(VariBoxParserBase* parser, bool owns) {
    if (VariBox* const box = getVariBox()) box->setParser(parser, owns);
}

} // namespace wainscot
