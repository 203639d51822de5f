#pragma once

#include "foundation/rect.h"
#include "host/drawing/font.h"

namespace wainscot {

/// The caret of a text box: a line between two characters, or a block over one, that flashes. It belongs to
/// the box, and lies on the box's canvas. It is seen only while a window of the program is active, and then
/// keeps still, shown, 10 seconds after the last `activateFlash` or `restartFlash`. The preference
/// "caret_flash" (on unless it is 0) says whether carets flash at all.
class WAINSCOT_API TextCursor : public rect {
public:
    enum eStyle : int { eLineStyle = 0, eBlockStyle = 1 };

    /// A change between shown and hidden comes after more than so many milliseconds.
    static constexpr double flashTime = 530;
    static constexpr double restTime = 10'000;

    /// As high as the font's size. Hidden, a line, and not flashing at first.
    TextCursor(Glib::FontDesc const& font, Canvas* canvas);
    ~TextCursor() override;

    LightweightString<char> idstring() const { return "TextCursor"; }

    void setFont(Glib::FontDesc const& font);
    /// A line is 1 pixel wide, a block as wide as the character under it. The height stays.
    void setCursorStyle(eStyle style);
    eStyle getCursorStyle() const { return style_; }
    /// The character under the caret, which a block shows when it is a letter or a digit.
    void setCurrentChar(wchar_t character);

    void show();
    void hide();
    /// Whether it is drawn at the moment, apart from the activity of the program.
    bool isShowing() const { return isShowing_; }
    void activateFlash();
    void deactivateFlash();
    /// Shows it, and lets a whole time pass until it is hidden.
    void restartFlash();
    bool isFlashing() const { return isFlashing_; }

    void draw() override;
    bool react(Event const& event) override;

private:
    void setShowing(bool showing);
    void fitWidth();
    /// Asks for the next timer event, `ms` from now.
    void wait(double ms);
    void flash();

    Glib::FontDesc font_;
    eStyle style_ = eLineStyle;
    wchar_t character_ = L' ';
    /// When it was last shown or hidden, and when it was last told to flash.
    double flashedAt_ = 0;
    double activatedAt_ = 0;
    bool isShowing_ = false;
    bool isFlashing_ = false;
};

} // namespace wainscot
