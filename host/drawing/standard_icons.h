#pragma once

#include "host/drawing/image.h"

#include <span>
#include <string_view>

/// The icons that need no file. They are shapes, drawn sharp at every size: "arrow_up.png", "arrow_down.png",
/// "arrow_left.png", "arrow_right.png", "close.png", "folder.png", "pin.png", "settings.png", "size.png", and
/// the lights "led_red.png", "led_green.png", "led_blue.png", "led_yellow.png", "led_orange.png",
/// "led_white.png", each also as lit ("led_red_on.png"), and "led_grey.png". Each colour of light has a shape
/// of its own, for people who cannot tell the colours apart.
namespace wainscot::Glib {

/// Their width and height when no box is given.
inline constexpr int standardIconExtent = 16;

/// The bare names of all standard icons.
WAINSCOT_API std::span<std::wstring_view const> standardIconNames();
/// Null for an unknown name. `loadIcon` asks here when there is no file of that name.
WAINSCOT_API Qv::Ptr<Image> makeStandardIcon(std::wstring_view bareName);

} // namespace wainscot::Glib
