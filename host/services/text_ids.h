#pragma once

#include "host/services/resources.h"

/// The resource texts that the host itself uses. They are built in in English, and so always available.
namespace wainscot::TextId {

/// The word for "off", with which the options of check boxes in menus are compared.
inline constexpr ResId off = 10001;
inline constexpr ResId on = 10002;
/// "ltr" or "rtl": which way the language is read.
inline constexpr ResId readingDirection = 10003;

inline constexpr ResId fileSystem = 10101;
inline constexpr ResId home = 10102;
inline constexpr ResId desktop = 10103;
inline constexpr ResId documents = 10104;
inline constexpr ResId downloads = 10105;
inline constexpr ResId music = 10106;
inline constexpr ResId pictures = 10107;
inline constexpr ResId videos = 10108;

inline constexpr ResId nameEmpty = 10201;
inline constexpr ResId nameReserved = 10202;
inline constexpr ResId nameSeparator = 10203;
inline constexpr ResId nameTooLong = 10204;

// Buttons that every panel can have.
inline constexpr ResId ok = 10301;
inline constexpr ResId close = 10302;
inline constexpr ResId changeSize = 10303;
inline constexpr ResId keepOpen = 10304;
inline constexpr ResId settings = 10305;
inline constexpr ResId options = 10306;

/// What a control shows instead of its value where the data has unlike values.
inline constexpr ResId severalValues = 10311;

// The context menu of text boxes.
inline constexpr ResId undo = 10321;
inline constexpr ResId redo = 10322;
inline constexpr ResId cut = 10323;
inline constexpr ResId copy = 10324;
inline constexpr ResId paste = 10325;
inline constexpr ResId selectAll = 10326;

// The context menu of value boxes.
inline constexpr ResId putDefaultBack = 10331;
/// The button below a menu that adds an item.
inline constexpr ResId addItem = 10332;

// The strip of a tabbed dialogue.
inline constexpr ResId previousTabs = 10341;
inline constexpr ResId nextTabs = 10342;
inline constexpr ResId allTabs = 10343;

// A branch of a tree whose children are not known yet.
inline constexpr ResId stillLoading = 10351;

inline constexpr ResId linkUnusable = 10401;
inline constexpr ResId linkNotAllowed = 10402;

} // namespace wainscot::TextId
